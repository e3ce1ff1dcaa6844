#pragma once

#include "OpenSG/Prefetch.h"

#include <bit>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <vector>

/// Numbers under hashes, which may be those of several: open addressing with linear probing. The
/// place of a hash is given by its highest bits, so that growing moves entries from front to back.
class NumberTable
{
public:
    /// expectedCount  so many numbers find room; with more the table grows
    explicit NumberTable(unsigned int expectedCount)
        : bits_(static_cast<unsigned int>(std::bit_width(expectedCount | 7U)) + 1),
          entries_(std::size_t{1} << bits_)
    {}

    void prefetch(std::uint32_t hash) const { osg::prefetch(&entries_[placeOf(hash)]); }

    /// The first number that `isSame` accepts among those with that hash, or else `number`, which
    /// is entered then. `number` is not the highest unsigned int. Constant time while hashes are
    /// spread evenly.
    template <class IsSame>
    unsigned int findOrEnter(std::uint32_t hash, unsigned int number, const IsSame& isSame)
    {
        std::size_t place = placeOf(hash);
        for (; entries_[place].number != noNumber; place = following(place))
            if (entries_[place].hash == hash && isSame(entries_[place].number))
                return entries_[place].number;
        entries_[place] = {hash, number};
        if (++count_ > entries_.size() / 2)
            grow();
        return number;
    }

private:
    static constexpr unsigned int noNumber = std::numeric_limits<unsigned int>::max();
    struct Entry
    {
        std::uint32_t hash = 0;
        unsigned int number = noNumber;
    };

    std::size_t placeOf(std::uint32_t hash) const { return std::uint64_t{hash} << bits_ >> 32U; }
    std::size_t following(std::size_t place) const { return (place + 1) & (entries_.size() - 1); }

    void grow()
    {
        ++bits_;
        std::vector<Entry> old(std::size_t{1} << bits_);
        old.swap(entries_);
        for (const Entry& entry : old) {
            if (entry.number == noNumber)
                continue;
            std::size_t place = placeOf(entry.hash);
            while (entries_[place].number != noNumber)
                place = following(place);
            entries_[place] = entry;
        }
    }

    unsigned int bits_;
    std::vector<Entry> entries_;
    std::size_t count_ = 0;
};
