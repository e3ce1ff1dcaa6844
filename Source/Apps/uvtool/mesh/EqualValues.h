#pragma once

#include <array>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <span>
#include <type_traits>
#include <vector>

namespace uvtool
{

/// Mixes 64 bits so that each of them depends on all of the input (the finaliser of splitmix64).
inline std::uint64_t mixBits(std::uint64_t x)
{
    x = (x ^ (x >> 30U)) * 0xbf58476d1ce4e5b9U;
    x = (x ^ (x >> 27U)) * 0x94d049bb133111ebU;
    return x ^ (x >> 31U);
}

/// Numbers things by their keys: equal keys get the number of the first, in order of first use.
/// An open table over the numbers given so far; answers depend on the keys alone.
template <class Key, class Hash>
class FirstUseNumbers
{
public:
    explicit FirstUseNumbers(std::size_t expected) : slots_(std::bit_ceil(2 * expected + 2), empty)
    {
        keys_.reserve(expected);
    }

    std::uint32_t of(const Key& key)
    {
        const std::size_t slot = find(key);
        if (slots_[slot] != empty)
            return slots_[slot];
        const auto number = static_cast<std::uint32_t>(keys_.size());
        slots_[slot] = number;
        keys_.push_back(key);
        if (2 * keys_.size() > slots_.size())
            grow();
        return number;
    }

    std::size_t size() const { return keys_.size(); }

private:
    static constexpr std::uint32_t empty = 0xFFFFFFFFU;

    /// The slot that holds the key, or the free one where it belongs.
    std::size_t find(const Key& key) const
    {
        const std::size_t mask = slots_.size() - 1;
        std::size_t at = static_cast<std::size_t>(Hash{}(key)) & mask;
        while (slots_[at] != empty && !(keys_[slots_[at]] == key))
            at = (at + 1) & mask;
        return at;
    }

    void grow()
    {
        slots_.assign(2 * slots_.size(), empty);
        for (std::size_t i = 0; i < keys_.size(); ++i)
            slots_[find(keys_[i])] = static_cast<std::uint32_t>(i);
    }

    std::vector<std::uint32_t> slots_; ///< numbers; a power of two of them, at least half free
    std::vector<Key> keys_;
};

/// Hash of an array of floating-point numbers; minus zero counts as zero, as in a comparison.
struct ValueHash
{
    template <class Number, std::size_t N>
    std::uint64_t operator()(const std::array<Number, N>& value) const
    {
        using Bits = std::conditional_t<sizeof(Number) == 8, std::uint64_t, std::uint32_t>;
        std::uint64_t hash = 0;
        for (const Number number : value)
            hash = mixBits(hash ^ std::bit_cast<Bits>(number + Number{0}));
        return hash;
    }
};

/// For each value a number that it shares with all values equal to it, from 0 in order of first
/// use.
template <class T>
std::vector<std::uint32_t> numberEqualValues(std::span<const T> values)
{
    FirstUseNumbers<T, ValueHash> numbers(values.size());
    std::vector<std::uint32_t> numberOfValue;
    numberOfValue.reserve(values.size());
    for (const T& value : values)
        numberOfValue.push_back(numbers.of(value));
    return numberOfValue;
}

} // namespace uvtool
