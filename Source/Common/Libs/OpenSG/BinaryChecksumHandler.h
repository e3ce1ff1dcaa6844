#pragma once

#include "OpenSG/FieldContainerPtr.h"

#include <cstddef>
#include <cstdint>

namespace osg
{

/// Collects bytes and gives a 64-bit checksum of them (FNV-1a): equal data, equal value.
class BinaryChecksumHandler
{
public:
    void write(const void* data, std::size_t byteCount);

    /// Writes a container: the name of its class, then field by field what it holds. Containers in
    /// its fields are followed; internal fields and the way up ("parents") are not. Does nothing
    /// for a null handle.
    void write(const FieldContainerPtr& container);

    /// 0 if nothing was written, and never 0 otherwise.
    [[nodiscard]] std::uint64_t getValue() const;

private:
    // The constants of the 64-bit FNV-1a hash by Fowler, Noll and Vo.
    static constexpr std::uint64_t Offset = 0xcbf29ce484222325U;
    static constexpr std::uint64_t Prime = 0x100000001b3U;

    std::uint64_t _hash = Offset;
    bool _empty = true;
};

} // namespace osg
