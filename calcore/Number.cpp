#include "calcore/Number.h"

#include <charconv>
#include <cstdlib>
#include <system_error>

namespace belvor {
namespace {

/// std::from_chars knows no leading plus sign.
std::string_view withoutPlus(std::string_view text) noexcept
{
    if (text.size() > 1 && text[0] == '+' && text[1] != '-' && text[1] != '+') text.remove_prefix(1);
    return text;
}

bool startsNumber(std::string_view text) noexcept
{
    if (!text.empty() && text[0] == '-') text.remove_prefix(1);
    return !text.empty() && (isDigit(text[0]) || text[0] == '.');
}

/// Overflow and underflow come back from from_chars as the same error. A number that is too
/// small has a decimal exponent, counted from its first significant digit, below zero.
bool isTiny(std::string_view text) noexcept
{
    long shift = 0;
    bool point = false, significant = false;
    std::size_t i = text[0] == '-' ? 1 : 0;
    for (; i < text.size() && (isDigit(text[i]) || text[i] == '.'); ++i) {
        if (text[i] == '.') {
            point = true;
            continue;
        }
        if (text[i] != '0') significant = true;
        if (significant && !point) ++shift;
        if (!significant && point) --shift;
    }
    if (i >= text.size()) return shift <= 0;
    long exponent = 0;
    const std::string_view digits = withoutPlus(text.substr(i + 1));
    const auto [end, error] = std::from_chars(digits.data(), digits.data() + digits.size(), exponent);
    if (error != std::errc()) return digits[0] == '-';
    return exponent < -shift;
}

}   // namespace

bool isDouble(std::string_view text, double& value) noexcept
{
    text = withoutPlus(text);
    if (!startsNumber(text)) return false;
    double result = 0.0;
    const char* const last = text.data() + text.size();
    const auto [end, error] = std::from_chars(text.data(), last, result);
    if (end != last) return false;
    if (error == std::errc::result_out_of_range) {
        if (!isTiny(text)) return false;
        result = 0.0;
    } else if (error != std::errc()) {
        return false;
    }
    value = result;
    return true;
}

bool isLong(std::string_view text, std::int32_t& value) noexcept
{
    text = withoutPlus(text);
    std::int32_t result = 0;
    const char* const last = text.data() + text.size();
    const auto [end, error] = std::from_chars(text.data(), last, result);
    if (error != std::errc() || end != last) return false;
    value = result;
    return true;
}

}   // namespace belvor
