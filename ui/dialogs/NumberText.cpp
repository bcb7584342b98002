#include "ui/dialogs/NumberText.h"

#include "calcore/Number.h"

#include <charconv>
#include <limits>

namespace belvor {
namespace {

std::size_t pastDigits(std::string_view text, std::size_t place) noexcept
{
    while (place < text.size() && isDigit(text[place])) ++place;
    return place;
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
    std::size_t place = !text.empty() && (text[0] == '-' || text[0] == '+') ? 1 : 0;
    const std::size_t whole = pastDigits(text, place);
    std::size_t digits = whole - place;
    std::string plain(text.substr(0, whole));
    place = whole;
    if (!decimalPoint.empty() && text.substr(place).starts_with(decimalPoint)) {
        const std::size_t first = place + decimalPoint.size();
        place = pastDigits(text, first);
        digits += place - first;
        plain += '.';
        plain += text.substr(first, place - first);
    }
    if (digits == 0) return 0.0;
    if (place < text.size() && (text[place] == 'e' || text[place] == 'E')) {
        const std::size_t sign = place + 1;
        const std::size_t first =
            sign < text.size() && (text[sign] == '-' || text[sign] == '+') ? sign + 1 : sign;
        const std::size_t last = pastDigits(text, first);
        if (last > first)
            plain += text.substr(place, last - place);   // an "e" without digits ends the number
    }
    double value = 0.0;
    if (isDouble(plain, value)) return value;
    return plain[0] == '-' ? -std::numeric_limits<double>::infinity()
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
