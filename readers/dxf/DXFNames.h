#pragma once

#include <map>
#include <string>
#include <string_view>

namespace belvor {

struct DXFBlock;

/// The order of the names of layers and blocks. Byte by byte; or, where names match in any case, without
/// regard to the case of A to Z and to blanks at the end.
struct DXFNameOrder {
    using is_transparent = void;
    bool anyCase = false;

    bool operator()(std::string_view a, std::string_view b) const noexcept;
};

using DXFBlocks = std::map<std::string, DXFBlock, DXFNameOrder>;

/// Without the blanks at its end.
std::string_view withoutBlanksAtEnd(std::string_view name) noexcept;

/// How the names of a drawing are encoded.
class DXFNameEncoding {
public:
    /// The values of the header's $DWGCODEPAGE and $ACADVER.
    void setCodePage(std::string_view name);
    void setRelease(std::string_view version);

    /// The name in UTF-8, without escapes of the form `\U+XXXX` and blanks at its end. `room` holds what is
    /// not a view of `name`.
    std::string_view readable(std::string_view name, std::string& room);

    /// Whether a name had characters that nobody knows.
    bool metUnknown() const noexcept { return unknownMet; }

private:
    int codePage = 0;
    bool isUtf8Release = false, unknownMet = false;
};

}   // namespace belvor
