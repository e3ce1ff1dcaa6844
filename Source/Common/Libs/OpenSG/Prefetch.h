#pragma once

#if defined(_MSC_VER)
#include <intrin.h>
#endif

namespace osg
{

/// Asks for memory that is needed in a moment, where a loop jumps about in more of it than caches
/// hold. Any address will do; nothing is read or written.
inline void prefetch(const void* address)
{
#if defined(_MSC_VER)
    _mm_prefetch(static_cast<const char*>(address), _MM_HINT_T0);
#else
    __builtin_prefetch(address);
#endif
}

} // namespace osg
