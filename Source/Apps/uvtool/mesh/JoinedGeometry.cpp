#include "mesh/JoinedGeometry.h"

#include "document/Transform.h"
#include "mesh/EqualValues.h"
#include "mesh/NearPoints.h"
#include "mesh/SolverFrame.h"

#include <algorithm>
#include <cmath>

namespace uvtool
{
namespace
{

/// In the frame, as the library's.
constexpr double weldDistance = 1.1920929e-7;

} // namespace

JoinedGeometry::JoinedGeometry(const Document& document, std::span<const std::size_t> numbers,
                               std::size_t slot)
    : numbers_(numbers.begin(), numbers.end())
{
    whole_.name = document.path.stem().string();
    for (const std::size_t number : numbers) {
        const DocumentGeometry& geometry = document.geometries[number];
        firstTriangles_.push_back(whole_.triangleCount());
        addUVs(geometry, slot);
        addPolygons(geometry);
    }
    firstTriangles_.push_back(whole_.triangleCount());
    addPositions(document);
}

TriangleSource JoinedGeometry::sourceOf(std::uint32_t triangle) const
{
    const auto next = std::upper_bound(firstTriangles_.begin(), firstTriangles_.end(), triangle);
    const auto surface = static_cast<std::size_t>(next - firstTriangles_.begin()) - 1;
    return {static_cast<std::uint32_t>(numbers_[surface]),
            triangle - static_cast<std::uint32_t>(firstTriangles_[surface])};
}

std::uint32_t JoinedGeometry::triangleOf(const TriangleSource& source) const
{
    const auto at = std::lower_bound(numbers_.begin(), numbers_.end(), source.geometry);
    const auto surface = static_cast<std::size_t>(at - numbers_.begin());
    return static_cast<std::uint32_t>(firstTriangles_[surface]) + source.triangle;
}

std::size_t JoinedGeometry::write(const SlotValues& uvs, std::size_t slot, Document& document) const
{
    std::size_t replaced = 0;
    for (std::size_t i = 0; i < numbers_.size(); ++i) {
        const SlotValues share = shareOf(i, uvs);
        if (!share.values.empty())
            replaced += writeSlot(document.geometries[numbers_[i]], slot, share);
    }
    return replaced;
}

void JoinedGeometry::addPolygons(const DocumentGeometry& geometry)
{
    const std::uint32_t firstCorner = whole_.polygonOffsets.back();
    const auto firstPolygon = static_cast<std::uint32_t>(whole_.polygonCount());
    for (std::size_t p = 0; p < geometry.polygonCount(); ++p)
        whole_.polygonOffsets.push_back(firstCorner + geometry.polygonOffsets[p + 1]);
    for (const std::uint32_t corner : geometry.triangles)
        whole_.triangles.push_back(firstCorner + corner);
    for (const std::uint32_t polygon : geometry.polygonOfTriangle)
        whole_.polygonOfTriangle.push_back(firstPolygon + polygon);
}

/// Corners of surfaces without the slot have no UV there.
void JoinedGeometry::addUVs(const DocumentGeometry& geometry, std::size_t slot)
{
    const CornerAttribute<Vec2f>& from = geometry.uvs[slot];
    CornerAttribute<Vec2f>& to = whole_.uvs[slot];
    if (!from.exists() && !to.exists())
        return;
    const auto firstValue = static_cast<std::uint32_t>(to.values.size());
    to.values.insert(to.values.end(), from.values.begin(), from.values.end());
    to.ofCorner.resize(whole_.polygonOffsets.back(), absentIndex);
    for (std::size_t c = 0; c < geometry.cornerCount(); ++c)
        to.ofCorner.push_back(from.has(c) ? firstValue + from.ofCorner[c] : absentIndex);
}

void JoinedGeometry::addPositions(const Document& document)
{
    FirstUseNumbers<Vec3d, ValueHash> places(0);
    CornerAttribute<Vec3d>& positions = whole_.positions;
    for (const std::size_t number : numbers_) {
        const DocumentGeometry& geometry = document.geometries[number];
        for (std::size_t c = 0; c < geometry.cornerCount(); ++c) {
            const Vec3d point = toScene(geometry.toWorld, geometry.positions.at(c));
            positions.ofCorner.push_back(places.of(point));
            if (places.size() > positions.values.size())
                positions.values.push_back(point);
        }
    }
    const double distance = std::ldexp(weldDistance, -SolverFrame(positions.values).exponent());
    const std::vector<std::uint32_t> lowest = lowestNearPoints(positions.values, distance);
    for (std::uint32_t& place : positions.ofCorner)
        place = lowest[place];
}

/// Only the values that the surface uses, numbered in order of first use.
SlotValues JoinedGeometry::shareOf(std::size_t surface, const SlotValues& uvs) const
{
    SlotValues share;
    std::vector<std::uint32_t> used;
    for (std::size_t i = 3 * firstTriangles_[surface]; i < 3 * firstTriangles_[surface + 1]; ++i)
        share.ofTriangleCorner.push_back(uvs.ofTriangleCorner[i]);
    for (const std::uint32_t value : share.ofTriangleCorner)
        if (value != absentIndex)
            used.push_back(value);
    std::sort(used.begin(), used.end());
    used.erase(std::unique(used.begin(), used.end()), used.end());
    for (const std::uint32_t value : used)
        share.values.push_back(uvs.values[value]);
    for (std::uint32_t& value : share.ofTriangleCorner)
        if (value != absentIndex)
            value = static_cast<std::uint32_t>(std::lower_bound(used.begin(), used.end(), value) -
                                               used.begin());
    return share;
}

} // namespace uvtool
