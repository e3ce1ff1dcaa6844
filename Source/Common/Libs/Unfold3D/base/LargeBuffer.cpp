#include "Unfold3D/base/LargeBuffer.h"

#include <cstdlib>
#include <new>

#if defined(__linux__)
#include <sys/mman.h>
#endif

namespace unfold3d
{

namespace
{

constexpr std::size_t largePage = std::size_t{1} << 21;
constexpr std::size_t cacheLine = 64;

} // namespace

LargeMemory::LargeMemory(std::size_t bytes)
{
    // Small arrays would waste most of a large page.
    const std::size_t alignment = bytes >= 2 * largePage ? largePage : cacheLine;
    const std::size_t size = (bytes + alignment - 1) / alignment * alignment;
    data_.reset(std::aligned_alloc(alignment, size > 0 ? size : alignment));
    if (!data_)
        throw std::bad_alloc();
#if defined(__linux__)
    if (alignment == largePage)
        madvise(data_.get(), size, MADV_HUGEPAGE); // only a hint
#endif
}

void LargeMemory::Free::operator()(void* data) const
{
    std::free(data);
}

} // namespace unfold3d
