#include "UVUtils/model/RadixSort.h"

#include <algorithm>
#include <array>
#include <vector>

// A least-significant-digit radix sort.

namespace
{

constexpr unsigned int digitBits = 11; // 2048 counters of a digit still lie in the first cache
constexpr unsigned int digitCount = 6; // 66 bits, which covers a key
constexpr std::size_t digitValues = std::size_t{1} << digitBits;
/// Below this many items counting digits costs more than comparing keys.
constexpr std::size_t fewItems = 512;

using Counts = std::array<std::uint32_t, digitValues>;

std::size_t digitOf(std::uint64_t key, unsigned int digit)
{
    return (key >> (digit * digitBits)) & (digitValues - 1);
}

std::vector<Counts> countDigits(std::span<const KeyedId> items)
{
    std::vector<Counts> counts(digitCount, Counts{});
    for (const KeyedId& item : items)
        for (unsigned int digit = 0; digit < digitCount; ++digit)
            ++counts[digit][digitOf(item.key, digit)];
    return counts;
}

void scatterByDigit(std::span<const KeyedId> from, std::span<KeyedId> to, unsigned int digit,
                    const Counts& counts)
{
    Counts next;
    std::uint32_t place = 0;
    for (std::size_t value = 0; value < digitValues; ++value) {
        next[value] = place;
        place += counts[value];
    }
    for (const KeyedId& item : from)
        to[next[digitOf(item.key, digit)]++] = item;
}

} // namespace

void sortByKey(std::span<KeyedId> items)
{
    if (items.size() < fewItems) {
        std::stable_sort(items.begin(), items.end(),
                         [](const KeyedId& a, const KeyedId& b) { return a.key < b.key; });
        return;
    }
    const std::vector<Counts> counts = countDigits(items);
    std::vector<KeyedId> buffer(items.size());
    std::span<KeyedId> from = items;
    std::span<KeyedId> to = buffer;
    for (unsigned int digit = 0; digit < digitCount; ++digit) {
        if (counts[digit][digitOf(items[0].key, digit)] == items.size())
            continue; // all items have this digit in common
        scatterByDigit(from, to, digit, counts[digit]);
        std::swap(from, to);
    }
    if (from.data() != items.data())
        std::copy(from.begin(), from.end(), items.begin());
}
