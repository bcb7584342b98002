#pragma once

#include <zlib.h>

#include <cstddef>
#include <new>

namespace belvor {

/// Makes zlib allocate with operator new, so that exhausted memory is std::bad_alloc as everywhere.
inline void takeMemoryFromHere(z_stream& stream) noexcept
{
    stream.zalloc = [](void*, unsigned count, unsigned size) -> void* {
        return ::operator new (std::size_t{count} * size, std::nothrow);
    };
    stream.zfree = [](void*, void* memory) { ::operator delete(memory); };
}

}   // namespace belvor
