#include "ui/dialogs/NumberText.h"

#include "calcore/Number.h"

#include <charconv>
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

double typedNumber(std::string_view text, std::string_view decimalPoint)
{
    while (!text.empty() && isBlank(text.front())) text.remove_prefix(1);
    std::size_t index = !text.empty() && (text[0] == '-' || text[0] == '+') ? 1 : 0;
    const std::size_t whole = pastDigits(text, index);
    std::size_t digits = whole - index;
    std::string normalised(text.substr(0, whole));
    index = whole;
    if (!decimalPoint.empty() && text.substr(index).starts_with(decimalPoint)) {
        const std::size_t first = index + decimalPoint.size();
        index = pastDigits(text, first);
        digits += index - first;
        normalised += '.';
        normalised += text.substr(first, index - first);
    }
    if (digits == 0) return 0.0;
    if (index < text.size() && (text[index] == 'e' || text[index] == 'E')) {
        const std::size_t sign = index + 1;
        const std::size_t first =
            sign < text.size() && (text[sign] == '-' || text[sign] == '+') ? sign + 1 : sign;
        const std::size_t last = pastDigits(text, first);
        if (last > first)
            normalised += text.substr(index, last - index);   // an "e" without digits ends the number
    }
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
