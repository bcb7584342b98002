#pragma once

#include <concepts>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>

namespace belvor {

/// The shortest decimal that reads back as the same double, the same on every system. `number` is finite.
std::string shortestDecimal(double number);

/// A JSON text on one line that grows at its end. Commas are set by themselves. Every call may throw
/// std::bad_alloc.
class JsonText {
public:
    enum class Letters { ascii, utf8 };
    /// In ASCII, where other letters are escaped, or in UTF-8.
    explicit JsonText(Letters used = Letters::ascii) noexcept : letters(used) {}

    JsonText& beginObject() { return begin('{'); }
    JsonText& endObject() { return end('}'); }
    JsonText& beginList() { return begin('['); }
    JsonText& endList() { return end(']'); }
    /// The name of the value that follows.
    JsonText& key(std::string_view name);
    /// Text that is not UTF-8 has U+FFFD for what is none.
    JsonText& value(std::string_view text);
    JsonText& value(const char* text) { return value(std::string_view(text)); }
    /// Numbers read back as they were; those that are not finite are null.
    JsonText& value(double number);
    JsonText& value(std::integral auto number) { return plain(std::to_string(number)); }
    JsonText& value(bool yes) { return plain(yes ? "true" : "false"); }
    JsonText& null() { return plain("null"); }
    JsonText& numbers(std::span<const double> all);

    const std::string& text() const noexcept { return written; }

private:
    JsonText& begin(char mark);
    JsonText& end(char mark);
    JsonText& plain(std::string_view token);
    void separate();

    Letters letters;
    std::string written;
};

}   // namespace belvor
