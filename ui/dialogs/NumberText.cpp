#include "ui/dialogs/NumberText.h"

#include "calcore/Number.h"

#include <algorithm>
#include <charconv>
#include <iterator>
#include <limits>

namespace belvor {
namespace {

std::size_t pastDigits(std::string_view text, std::size_t index) noexcept
{
    while (index < text.size() && isDigit(text[index])) ++index;
    return index;
}

}   // namespace

std::string shownNumber(double value, std::string_view decimalPoint)
{
    char digits[32];
    const auto end = std::to_chars(digits, digits + sizeof digits, value, std::chars_format::general, 4).ptr;
    std::string text;
    for (const char* c = digits; c != end; ++c) {
        if (*c == '.') text += decimalPoint;
        else text += *c >= 'a' && *c <= 'z' ? static_cast<char>(*c - 'a' + 'A') : *c;
    }
    return text;
}

namespace {

/// The text of a number at the beginning of `text`, with a point; empty when there is none. `text` is left
/// with what follows.
std::string takeNumber(std::string_view& text, std::string_view decimalPoint)
{
    std::size_t index = !text.empty() && (text[0] == '-' || text[0] == '+') ? 1 : 0;
    const std::size_t whole = pastDigits(text, index);
    std::size_t digits = whole - index;
    std::string normalised(text.substr(0, whole));
    index = whole;
    const std::string_view rest = text.substr(index);
    const std::size_t separator = !decimalPoint.empty() && rest.starts_with(decimalPoint)
                                      ? decimalPoint.size()
                                  : rest.starts_with('.') ? 1
                                                          : 0;
    if (separator != 0) {
        const std::size_t first = index + separator;
        index = pastDigits(text, first);
        digits += index - first;
        normalised += '.';
        normalised += text.substr(first, index - first);
    }
    if (digits == 0) return {};
    if (index < text.size() && (text[index] == 'e' || text[index] == 'E')) {
        const std::size_t sign = index + 1;
        const std::size_t first =
            sign < text.size() && (text[sign] == '-' || text[sign] == '+') ? sign + 1 : sign;
        const std::size_t last = pastDigits(text, first);
        if (last > first) {   // an "e" without digits ends the number
            normalised += text.substr(index, last - index);
            index = last;
        }
    }
    text.remove_prefix(index);
    return normalised;
}

std::string_view withoutBlanks(std::string_view text) noexcept
{
    while (!text.empty() && isBlank(text.front())) text.remove_prefix(1);
    while (!text.empty() && isBlank(text.back())) text.remove_suffix(1);
    return text;
}

}   // namespace

FieldText kindOfField(std::string_view text, std::string_view decimalPoint)
{
    std::string_view rest = withoutBlanks(text);
    const std::string normalised = takeNumber(rest, decimalPoint);
    if (rest.empty()) return normalised.empty() ? FieldText::unfinished : FieldText::number;
    const std::string_view ends[] = {"-", "+", ".",  decimalPoint, "-.", "+.",
                                     "e", "E", "e-", "E-",         "e+", "E+"};
    const bool begins = std::find(std::begin(ends), std::end(ends), rest) != std::end(ends);
    return begins && (normalised.empty() != (rest[0] == 'e' || rest[0] == 'E')) ? FieldText::unfinished
                                                                                : FieldText::other;
}

double typedNumber(std::string_view text, std::string_view decimalPoint)
{
    std::string_view rest = withoutBlanks(text);
    const std::string normalised = takeNumber(rest, decimalPoint);
    if (normalised.empty()) return 0.0;
    double value = 0.0;
    if (isDouble(normalised, value)) return value;
    return normalised[0] == '-' ? -std::numeric_limits<double>::infinity()
                                : std::numeric_limits<double>::infinity();
}

std::string filled(std::string_view format, std::initializer_list<std::string_view> values)
{
    std::string result;
    auto value = values.begin();
    while (!format.empty()) {
        const std::size_t hole = value == values.end()        ? 0
                                 : format.starts_with("%lu")  ? 3
                                 : format.starts_with("%.4G") ? 4
                                                              : 0;
        if (hole != 0) result += *value++;
        else result += format[0];
        format.remove_prefix(hole != 0 ? hole : 1);
    }
    return result;
}

}   // namespace belvor
