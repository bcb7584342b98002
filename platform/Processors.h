#pragma once

#include <string_view>

namespace belvor {

/// How many processors this process may use at once, at least 1: those that its affinity
/// leaves it, and no more than the processor time that its control group or job grants.
unsigned usableProcessors() noexcept;

/// The processors that a control group grants, from the content of its file cpu.max
/// ("QUOTA PERIOD" in microseconds, or "max PERIOD"): the quota over the period, rounded up.
/// 0 when there is no limit or the text is not of that form.
unsigned processorsGranted(std::string_view cpuMax) noexcept;

/// Whether this processor, and the system, have vectors of 4 doubles (AVX2) and of 8 (AVX-512 with all that
/// our code of that width is compiled for). Other kinds of processors: false.
bool hasWideVectors() noexcept;
bool hasWidestVectors() noexcept;

}   // namespace belvor
