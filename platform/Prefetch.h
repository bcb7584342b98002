#pragma once

namespace belvor {

/// Has the processor get the cache line at `place`, which need not be valid, for a later read.
inline void prefetch(const void* place) noexcept
{
    __builtin_prefetch(place);
    asm volatile("");   // else a compiler removes calls of functions that do nothing but this
}

}   // namespace belvor
