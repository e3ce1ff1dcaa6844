#pragma once

#include <cstdint>

namespace osg
{

/// A set of fields of a container: one bit for each field, distinct along the whole inheritance
/// chain of a class, so that a notice for one field never looks like a notice for another.
///
/// all() is the mask of a container that changed as a whole; it touches every field.
struct FieldMask
{
    /// How many fields a class, its bases included, can have.
    static constexpr unsigned BitCount = 128;

    std::uint64_t lo = 0;
    std::uint64_t hi = 0;

    /// The mask of the one field with number n, 0 to BitCount - 1; empty for any other n.
    static constexpr FieldMask bit(unsigned n)
    {
        if (n < 64)
            return {std::uint64_t{1} << n, 0};
        if (n < BitCount)
            return {0, std::uint64_t{1} << (n - 64)};
        return {};
    }
    static constexpr FieldMask all() { return {~std::uint64_t{0}, ~std::uint64_t{0}}; }

    /// Whether any field is in the set. `(mask & X::SomeFieldMask).any()` asks for a field.
    [[nodiscard]] constexpr bool any() const { return (lo | hi) != 0; }

    constexpr FieldMask operator&(const FieldMask& other) const
    {
        return {lo & other.lo, hi & other.hi};
    }
    constexpr FieldMask operator|(const FieldMask& other) const
    {
        return {lo | other.lo, hi | other.hi};
    }
    constexpr FieldMask operator~() const { return {~lo, ~hi}; }
    constexpr FieldMask& operator|=(const FieldMask& other) { return *this = *this | other; }
    constexpr FieldMask& operator&=(const FieldMask& other) { return *this = *this & other; }
    constexpr bool operator==(const FieldMask&) const = default;
};

} // namespace osg
