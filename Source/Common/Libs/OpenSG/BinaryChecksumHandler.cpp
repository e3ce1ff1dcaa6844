#include "OpenSG/BinaryChecksumHandler.h"

#include "OpenSG/FieldContainer.h"

#include <algorithm>
#include <bit>
#include <cstring>
#include <vector>

namespace osg
{

namespace
{

template <class Word>
Word wordAt(const unsigned char* bytes)
{
    Word word;
    std::memcpy(&word, bytes, sizeof(word));
    return word;
}

} // namespace

const unsigned char* BinaryChecksumHandler::takeStripes(const unsigned char* bytes,
                                                        std::size_t stripeCount, Lanes& lanes)
{
    // Four variables, not an array, so that they stay in registers.
    auto [first, second, third, fourth] = lanes;
    for (; stripeCount > 0; --stripeCount, bytes += StripeBytes) {
        first = mixed(first, wordAt<std::uint64_t>(bytes));
        second = mixed(second, wordAt<std::uint64_t>(bytes + 8));
        third = mixed(third, wordAt<std::uint64_t>(bytes + 16));
        fourth = mixed(fourth, wordAt<std::uint64_t>(bytes + 24));
    }
    lanes = {first, second, third, fourth};
    return bytes;
}

void BinaryChecksumHandler::write(const void* data, std::size_t byteCount)
{
    if (byteCount == 0)
        return;
    const auto* bytes = static_cast<const unsigned char*>(data);
    const std::size_t restCount = _byteCount % StripeBytes;
    _byteCount += byteCount;
    if (restCount > 0) {
        const std::size_t taken = std::min(byteCount, StripeBytes - restCount);
        std::copy_n(bytes, taken, _rest.data() + restCount);
        bytes += taken;
        byteCount -= taken;
        if (restCount + taken < StripeBytes)
            return;
        takeStripes(_rest.data(), 1, _lanes);
    }
    bytes = takeStripes(bytes, byteCount / StripeBytes, _lanes);
    std::copy_n(bytes, byteCount % StripeBytes, _rest.data());
}

void BinaryChecksumHandler::write(const FieldContainerPtr& container)
{
    if (container == NullFC)
        return;
    const FieldContainerType& type = container->getType();
    write(type.getName().c_str(), type.getName().size() + 1);
    for (unsigned i = 1; i <= type.getNumFieldDescs(); ++i) {
        const FieldDescription& field = *type.getFieldDesc(i);
        if (field.internal || field.name == "parents")
            continue;
        if (field.write)
            field.write(*container, *this);
        if (field.containers) {
            std::vector<FieldContainerPtr> held;
            field.containers(*container, held);
            for (const FieldContainerPtr& below : held)
                write(below);
        }
    }
}

/// What the whole stripes come to.
std::uint64_t BinaryChecksumHandler::joinedLanes() const
{
    if (_byteCount < StripeBytes)
        return Primes[4];
    std::uint64_t hash = std::rotl(_lanes[0], 1) + std::rotl(_lanes[1], 7) +
                         std::rotl(_lanes[2], 12) + std::rotl(_lanes[3], 18);
    for (const std::uint64_t lane : _lanes)
        hash = (hash ^ mixed(0, lane)) * Primes[0] + Primes[3];
    return hash;
}

/// Adds what is left behind them, in the largest words that fit.
std::uint64_t BinaryChecksumHandler::withRest(std::uint64_t hash) const
{
    const unsigned char* bytes = _rest.data();
    std::size_t count = _byteCount % StripeBytes;
    for (; count >= 8; count -= 8, bytes += 8)
        hash = std::rotl(hash ^ mixed(0, wordAt<std::uint64_t>(bytes)), 27) * Primes[0] + Primes[3];
    if (count >= 4) {
        const std::uint64_t word = wordAt<std::uint32_t>(bytes);
        hash = std::rotl(hash ^ (word * Primes[0]), 23) * Primes[1] + Primes[2];
        count -= 4;
        bytes += 4;
    }
    for (; count > 0; --count, ++bytes)
        hash = std::rotl(hash ^ (*bytes * Primes[4]), 11) * Primes[0];
    return hash;
}

std::uint64_t BinaryChecksumHandler::getValue() const
{
    if (_byteCount == 0)
        return 0;
    std::uint64_t hash = withRest(joinedLanes() + _byteCount);
    hash = (hash ^ (hash >> 33U)) * Primes[1];
    hash = (hash ^ (hash >> 29U)) * Primes[2];
    hash ^= hash >> 32U;
    return hash == 0 ? 1 : hash;
}

} // namespace osg
