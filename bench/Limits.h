#pragma once

#include <string_view>

namespace belvor::bench {

/// What reading a file costs at the least: each of its bytes looked at once.
unsigned sumOfBytes(std::string_view bytes) noexcept;

/// What reading a text file of numbers costs at the least: each number converted, with nothing around it.
double sumOfNumbers(std::string_view bytes) noexcept;

}   // namespace belvor::bench
