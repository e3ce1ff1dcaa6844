#pragma once

#include <cstdint>
#include <span>

/// A number to sort by, and what it belongs to.
struct KeyedId
{
    std::uint64_t key = 0;
    unsigned int id = 0;
};

/// Sorts by ascending key; items with equal keys keep their order. Linear in the items, whatever
/// their keys are.
void sortByKey(std::span<KeyedId> items);
