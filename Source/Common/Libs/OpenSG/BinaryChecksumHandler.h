#pragma once

#include "OpenSG/FieldContainerPtr.h"

#include <array>
#include <bit>
#include <cstddef>
#include <cstdint>

namespace osg
{

/// Collects bytes and gives a 64-bit checksum of them (XXH64 with seed 0): equal data, equal value,
/// into however many writes it is cut. Large blocks cost little more than reading them.
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
    // Y. Collet, "xxHash fast digest algorithm", the 64-bit variant: four lanes, each of which
    // takes every fourth word of 8 bytes, so that the processor works on all of them at once.
    static constexpr std::size_t LaneCount = 4;
    static constexpr std::size_t StripeBytes = LaneCount * sizeof(std::uint64_t);
    static constexpr std::array<std::uint64_t, 5> Primes{0x9E3779B185EBCA87U, 0xC2B2AE3D27D4EB4FU,
                                                         0x165667B19E3779F9U, 0x85EBCA77C2B2AE63U,
                                                         0x27D4EB2F165667C5U};
    using Lanes = std::array<std::uint64_t, LaneCount>;

    static constexpr std::uint64_t mixed(std::uint64_t lane, std::uint64_t word)
    {
        return std::rotl(lane + word * Primes[1], 31) * Primes[0];
    }
    static const unsigned char* takeStripes(const unsigned char* bytes, std::size_t stripeCount,
                                            Lanes& lanes);
    [[nodiscard]] std::uint64_t joinedLanes() const;
    [[nodiscard]] std::uint64_t withRest(std::uint64_t hash) const;

    Lanes _lanes{Primes[0] + Primes[1], Primes[1], 0, 0 - Primes[0]};
    std::array<unsigned char, StripeBytes> _rest{}; ///< what does not make a stripe yet
    std::uint64_t _byteCount = 0;                   ///< of all writes
};

} // namespace osg
