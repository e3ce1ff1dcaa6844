#pragma once

#include "document/Document.h"
#include "layout/DocumentLayout.h"

#include <array>
#include <cstdint>
#include <set>
#include <utility>
#include <vector>

namespace uvtool
{

/// Sides of the triangles of a document that a picture is to point out.
class MarkedSides
{
public:
    /// The side from corner k to the next one.
    void add(const TriangleSource& source, std::uint32_t k)
    {
        sides_.insert({{source.geometry, source.triangle}, k});
    }

    /// Calls `use` with the numbers of the sides (3 * triangle + k) of a list of triangles that are
    /// marked.
    template <class Use>
    void forEachIn(const std::vector<TriangleSource>& triangles, const Use& use) const
    {
        if (sides_.empty())
            return;
        for (std::uint32_t t = 0; t < triangles.size(); ++t)
            for (std::uint32_t k = 0; k < 3; ++k)
                if (sides_.contains({{triangles[t].geometry, triangles[t].triangle}, k}))
                    use(3 * t + k);
    }

private:
    using Triangle = std::pair<std::uint32_t, std::uint32_t>;

    std::set<std::pair<Triangle, std::uint32_t>> sides_;
};

/// Where the marked sides lie in a layout, from end to end.
std::vector<std::array<Vec2f, 2>> linesIn(const DocumentLayout& layout, const MarkedSides& marked);

} // namespace uvtool
