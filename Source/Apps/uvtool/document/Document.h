#pragma once

#include <array>
#include <bitset>
#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <memory>
#include <string>
#include <vector>

/// What a mesh file holds, in one form for all formats.
///
/// A reader fills a Document, a command changes UV slots in it or parts corners from one another,
/// and nothing else, a writer puts it back. What the tool doesn't understand (comments, skins,
/// extensions, images) stays in the payload, which the reader of a format leaves there for the
/// writer of the same format.
namespace uvtool
{

using Vec2f = std::array<float, 2>;
using Vec3f = std::array<float, 3>;
using Vec4f = std::array<float, 4>;
using Vec3d = std::array<double, 3>;

/// Mark of a corner that has no value of an attribute.
inline constexpr std::uint32_t absentIndex = 0xFFFFFFFFU;

inline constexpr std::size_t slotCount = 8;

/// One attribute of a geometry: a list of values, and for each polygon corner the number of its
/// value there. Both are empty when the geometry doesn't have the attribute.
template <class T>
struct CornerAttribute
{
    std::vector<T> values;
    std::vector<std::uint32_t>
        ofCorner; ///< [cornerCount] or empty; absentIndex where there is none

    bool exists() const { return !ofCorner.empty(); }
    bool has(std::size_t corner) const
    {
        return corner < ofCorner.size() && ofCorner[corner] != absentIndex;
    }
    const T& at(std::size_t corner) const { return values[ofCorner[corner]]; }
};

/// One mesh of the file: an `o` of an OBJ, a primitive of a glTF mesh.
///
///   corners            0 1 2 3 4 5 6 ...          attributes are indexed by these
///   polygonOffsets     0       4     7            corners of polygon p: [offset p, offset p+1)
///   triangles          0 1 2 0 2 3 4 5 6          corners of the triangles that stand for the
///   polygons polygonOfTriangle  0     0     1
///
/// Triangles keep the winding of their polygon. All coordinates are finite, every index is in
/// range: readers refuse anything else, so that nothing after them needs to look again.
struct DocumentGeometry
{
    std::string name;

    CornerAttribute<Vec3d> positions; ///< every corner has one
    CornerAttribute<Vec3f> normals;
    CornerAttribute<Vec4f> colors;
    std::array<CornerAttribute<Vec2f>, slotCount> uvs; ///< v runs upward

    std::vector<std::uint32_t> polygonOffsets{0}; ///< [polygonCount + 1]
    std::vector<std::uint32_t>
        sourceOfPolygon; ///< [polygonCount] the reader's number of the polygon
    std::vector<std::int32_t> materialOfPolygon;  ///< [polygonCount] or empty; -1 for none
    std::vector<std::uint32_t> triangles;         ///< [3 * triangleCount] corners
    std::vector<std::uint32_t> polygonOfTriangle; ///< [triangleCount], ascending

    /// From the geometry's own space to the scene's, columns first; the first place where the file
    /// shows the geometry.
    std::array<double, 16> toWorld{1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1};

    /// Slots that a command wrote. A writer leaves the others as they were read.
    std::bitset<slotCount> changedSlots;

    /// Positions of equal value are different vertices. Set by commands that part corners; else a
    /// writer that lists vertices anew may join those that have everything in common.
    bool keepsPositionsApart = false;

    /// A command took some out, which a writer has to leave out.
    bool hasLostTriangles = false;

    /// [positions behind those that were read] Which of these each is a copy of, for corners that
    /// a command parted.
    std::vector<std::uint32_t> sourceOfNewPosition;

    /// [slot][values behind those that were read] The same for UVs; empty in a slot where these
    /// are no copies but new.
    std::array<std::vector<std::uint32_t>, slotCount> sourceOfNewUV;

    /// The reader's own number of this geometry, for its writer.
    std::size_t source = 0;

    std::size_t cornerCount() const { return positions.ofCorner.size(); }
    std::size_t polygonCount() const { return polygonOffsets.size() - 1; }
    std::size_t triangleCount() const { return polygonOfTriangle.size(); }

    /// Has the triangle a UV at every corner?
    bool isMapped(std::size_t triangle, std::size_t slot) const
    {
        return uvs[slot].has(triangles[3 * triangle]) &&
               uvs[slot].has(triangles[3 * triangle + 1]) &&
               uvs[slot].has(triangles[3 * triangle + 2]);
    }

    std::size_t readPositionCount() const
    {
        return positions.values.size() - sourceOfNewPosition.size();
    }
    bool isChanged() const
    {
        return changedSlots.any() || !sourceOfNewPosition.empty() || hasLostTriangles;
    }
};

/// What formats have in common about a material; the rest is in the payload.
struct DocumentMaterial
{
    std::string name;
    Vec4f color{0.8F, 0.8F, 0.8F, 1.0F};
};

/// Base of what a reader keeps for the writer of its format.
struct FormatPayload
{
    FormatPayload() = default;
    FormatPayload(const FormatPayload&) = delete;
    FormatPayload& operator=(const FormatPayload&) = delete;
    virtual ~FormatPayload() = default;
};

struct Document
{
    std::filesystem::path path; ///< where it was read from
    std::vector<DocumentGeometry> geometries;
    std::vector<DocumentMaterial> materials;
    std::vector<std::string> warnings;            ///< what the reader passed over, one line each
    std::shared_ptr<const FormatPayload> payload; ///< null when there is nothing to keep
};

} // namespace uvtool
