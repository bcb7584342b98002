#include "text/CodePages.h"

#include "text/CodePageTables.h"
#include "text/Utf8.h"

#include <algorithm>
#include <optional>

namespace belvor {
namespace {

unsigned char toByteOf(char c) noexcept { return static_cast<unsigned char>(c); }

bool isSameName(std::string_view name, std::string_view upperCase) noexcept
{
    return std::equal(name.begin(), name.end(), upperCase.begin(), upperCase.end(),
                      [](char a, char b) { return (a >= 'a' && a <= 'z' ? a - 0x20 : a) == b; });
}

constexpr struct {
    std::string_view name;
    int codePage;
} codePageNames[] = {
    {"ANSI_1250", 1250}, {"ANSI_1251", 1251},     {"ANSI_1252", 1252},    {"ANSI_1253", 1253},
    {"ANSI_1254", 1254}, {"ANSI_1255", 1255},     {"ANSI_1256", 1256},    {"ANSI_1257", 1257},
    {"ANSI_1258", 1258}, {"ANSI_932", 932},       {"ANSI_936", 936},      {"ANSI_949", 949},
    {"ANSI_950", 950},   {"DOS932", 932},         {"GB2312", 936},        {"KSC5601", 949},
    {"BIG5", 950},       {"UTF-8", utf8CodePage}, {"UTF8", utf8CodePage},
};

std::string fromSingleBytes(std::string_view bytes, const SingleByteTable& table)
{
    std::string text;
    for (const char c : bytes) {
        if (toByteOf(c) < 128) text += c;
        else appendUtf8(text, table.upperHalf[toByteOf(c) - 128u]);
    }
    return text;
}

char16_t characterOf(const DoubleByteTable& table, int lead, int trail) noexcept
{
    const int row = lead - table.firstLead, column = trail - DoubleByteTable::firstTrail;
    if (row < 0 || row >= table.rowCount || column < 0) return replacementCharacter;
    const std::u16string_view characters = table.rows[row];
    const auto index = static_cast<std::size_t>(column);
    return index < characters.size() ? characters[index] : static_cast<char16_t>(replacementCharacter);
}

std::string fromDoubleBytes(std::string_view bytes, const DoubleByteTable& table)
{
    std::string text;
    for (std::size_t i = 0; i < bytes.size(); ++i) {
        const int lead = toByteOf(bytes[i]);
        if (lead < 128) {
            text += bytes[i];
            continue;
        }
        char16_t character = table.singles[static_cast<std::size_t>(lead - 128)];
        if (character == replacementCharacter && i + 1 < bytes.size()) {
            character = characterOf(table, lead, toByteOf(bytes[i + 1]));
            if (character != replacementCharacter) ++i;   // else the second byte begins a new character
        }
        appendUtf8(text, character);
    }
    return text;
}

std::string fromUnknown(std::string_view bytes)
{
    if (isUtf8(bytes)) return std::string(bytes);
    std::string text;
    for (const char c : bytes) {
        if (toByteOf(c) < 128) text += c;
        else appendUtf8(text, replacementCharacter);
    }
    return text;
}

/// The number of the `\U+XXXX` at the start of the text.
std::optional<char32_t> escapeAt(std::string_view text) noexcept
{
    if (text.size() < 7 || (text[1] != 'U' && text[1] != 'u') || text[0] != '\\' || text[2] != '+') return {};
    char32_t number = 0;
    for (const char c : text.substr(3, 4)) {
        const char lower = static_cast<char>(c | 0x20);
        if (c >= '0' && c <= '9') number = number * 16 + static_cast<char32_t>(c - '0');
        else if (lower >= 'a' && lower <= 'f') number = number * 16 + static_cast<char32_t>(lower - 'a' + 10);
        else return {};
    }
    return number;
}

constexpr bool isHighSurrogate(char32_t c) noexcept { return c >= 0xD800 && c < 0xDC00; }
constexpr bool isLowSurrogate(char32_t c) noexcept { return c >= 0xDC00 && c < 0xE000; }

}   // namespace

int codePageNamed(std::string_view name) noexcept
{
    while (!name.empty() && name.front() == ' ') name.remove_prefix(1);
    while (!name.empty() && name.back() == ' ') name.remove_suffix(1);
    for (const auto& known : codePageNames)
        if (isSameName(name, known.name)) return known.codePage;
    return 0;
}

std::string toUtf8(std::string_view bytes, int codePage)
{
    if (std::all_of(bytes.begin(), bytes.end(), [](char c) { return toByteOf(c) < 128; }))
        return std::string(bytes);
    if (codePage == utf8CodePage) return validUtf8(bytes);
    if (const SingleByteTable* const table = singleByteTable(codePage)) return fromSingleBytes(bytes, *table);
    if (const DoubleByteTable* const table = doubleByteTable(codePage)) return fromDoubleBytes(bytes, *table);
    return fromUnknown(bytes);
}

std::string withoutUnicodeEscapes(std::string_view text)
{
    constexpr std::size_t escapeLength = 7;
    std::string result;
    while (!text.empty()) {
        const auto first = escapeAt(text);
        if (!first) {
            result += text.front();
            text.remove_prefix(1);
            continue;
        }
        text.remove_prefix(escapeLength);
        const auto second = isHighSurrogate(*first) ? escapeAt(text) : std::nullopt;
        if (second && isLowSurrogate(*second)) {
            appendUtf8(result, 0x10000 + ((*first - 0xD800) << 10) + (*second - 0xDC00));
            text.remove_prefix(escapeLength);
        } else {
            appendUtf8(result, *first < ' ' || *first == 0x7F ? replacementCharacter : *first);
        }
    }
    return result;
}

}   // namespace belvor
