#pragma once

#include <cstdint>

#if defined(__SSE2__)
#include <emmintrin.h>
#endif

// Four floats that are worked on in one go, in the vector types of GCC and Clang. Each lane gives
// what the same operation on a single float gives.

using Lanes = float __attribute__((vector_size(16)));
using LaneMask = std::int32_t __attribute__((vector_size(16)));

inline Lanes lanesOf(float value)
{
    return Lanes{value, value, value, value};
}

/// The second one where no comparison holds.
inline Lanes larger(Lanes a, Lanes b)
{
#if defined(__SSE2__)
    return _mm_max_ps(a, b);
#else
    return a > b ? a : b;
#endif
}

/// The second one where no comparison holds.
inline Lanes smaller(Lanes a, Lanes b)
{
#if defined(__SSE2__)
    return _mm_min_ps(a, b);
#else
    return a < b ? a : b;
#endif
}

inline Lanes squareRoot(Lanes a)
{
#if defined(__SSE2__)
    return _mm_sqrt_ps(a);
#else
    return Lanes{__builtin_sqrtf(a[0]), __builtin_sqrtf(a[1]), __builtin_sqrtf(a[2]),
                 __builtin_sqrtf(a[3])};
#endif
}

/// A bit for each lane for which a comparison holds.
inline unsigned int bitsOf(LaneMask mask)
{
#if defined(__SSE2__)
    return static_cast<unsigned int>(_mm_movemask_ps(reinterpret_cast<__m128>(mask)));
#else
    unsigned int bits = 0;
    for (unsigned int lane = 0; lane < 4; ++lane)
        bits |= (mask[lane] != 0 ? 1U : 0U) << lane;
    return bits;
#endif
}
