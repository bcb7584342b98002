#include "bench/Limits.h"

#include <charconv>

namespace belvor::bench {

unsigned sumOfBytes(std::string_view bytes) noexcept
{
    unsigned sum = 0;
    for (const char c : bytes) sum += static_cast<unsigned char>(c);
    return sum;
}

double sumOfNumbers(std::string_view bytes) noexcept
{
    const char* at = bytes.data();
    const char* const end = at + bytes.size();
    double sum = 0;
    while (at != end) {
        double value = 0;
        const auto [next, error] = std::from_chars(at, end, value);
        if (error == std::errc()) {
            sum += value;
            at = next;
        } else {
            ++at;
        }
    }
    return sum;
}

}   // namespace belvor::bench
