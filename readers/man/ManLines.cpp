#include "readers/man/ManLines.h"

#include "calcore/Number.h"

#include <algorithm>
#include <limits>

namespace belvor {

bool ManLines::nextLine() noexcept
{
    if (next == data.size()) return false;
    const std::size_t end = data.find('\n', next);
    cut = end == std::string_view::npos;
    text = data.substr(next, cut ? end : end - next);
    next = cut ? data.size() : end + 1;
    if (!text.empty() && text.back() == '\r') text.remove_suffix(1);
    place = 0;
    if (number < std::numeric_limits<int>::max()) ++number;
    return true;
}

bool ManLines::nextRecord(BadFile::Code whenCut)
{
    constexpr std::size_t linesBetweenPauses = 4096;
    cutFault = whenCut;
    for (std::size_t passed = 1; nextLine(); ++passed) {
        if (!text.empty() && text[0] != '#' && !std::all_of(text.begin(), text.end(), isBlank)) return true;
        if (passed % linesBetweenPauses == 0 && pause) pause();
    }
    return false;
}

std::string_view ManLines::word() noexcept
{
    while (place < text.size() && isBlank(text[place])) ++place;
    const std::size_t start = place;
    while (place < text.size() && !isBlank(text[place])) ++place;
    return text.substr(start, place - start);
}

double ManLines::real()
{
    const std::string_view found = word();
    double value = 0.0;
    if (!isDouble(found, value)) failOnWord(found, BadFile::badReal);
    return value;
}

std::int32_t ManLines::integer()
{
    const std::string_view found = word();
    std::int32_t value = 0;
    if (!isLong(found, value)) failOnWord(found, BadFile::badInteger);
    return value;
}

std::int32_t ManLines::integer(std::int32_t least, std::int32_t most)
{
    const std::int32_t value = integer();
    if (value < least || value > most) fail(BadFile::badInteger);
    return value;
}

void ManLines::failOnWord(std::string_view found, BadFile::Code code) const
{
    fail(found.empty() && cut ? cutFault : code);
}

void ManLines::fail(BadFile::Code code, int where) const { throw BadFile(code, name, where); }

double ManLines::fraction() const noexcept
{
    return data.empty() ? 1.0 : static_cast<double>(next) / static_cast<double>(data.size());
}

}   // namespace belvor
