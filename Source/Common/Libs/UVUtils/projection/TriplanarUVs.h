#pragma once

#include "OpenSG/Matrix.h"
#include "UVUtils/projection/TriplanarAxes.h"

#include <array>
#include <cstddef>
#include <span>
#include <vector>

/// The packed work of a triplanar projection on one geometry, whose triangles have vertices of
/// their own.
///
/// corners  [3 * triangle + corner] ids of positions; one beyond the positions is at the origin
namespace triplanar
{

/// How many triangles the corners make up.
inline std::size_t countTriangles(std::span<const unsigned int> corners)
{
    return corners.size() / 3;
}

/// The ways from the space of positions to the projection box.
struct BoxView
{
    osg::Matrix toBox;
    /// [axis] into the space in which the image covers x and y from -1 to 1
    std::array<osg::Matrix, axisCount> toImages;

    /// The same from a space of which `matrix` leads to the one of this view.
    BoxView from(const osg::Matrix& matrix) const;
};

/// The axes of triangles that may take several, as masks (TriplanarAxes.h).
struct TriangleAxes
{
    std::vector<unsigned char> candidates; ///< [triangle] the axes that it may take
    std::vector<unsigned char> assigned;   ///< [triangle] the bit of its axis, 0 without one
    bool isAnyAmbiguous = false;           ///< has any triangle several candidates?
};

/// (p1 - p0) x (p2 - p0), of length 1 unless it is shorter than 1e-6.
osg::Vec3f computeNormal(const osg::Pnt3f& p0, const osg::Pnt3f& p1, const osg::Pnt3f& p2);

/// [triangle] the bit of the axis that it faces most.
///
/// toBox  from the space of the positions to that of the projection box
std::vector<unsigned char> dominantAxes(std::span<const osg::Pnt3f> positions,
                                        std::span<const unsigned int> corners,
                                        const osg::Matrix& toBox);

/// Each triangle gets its candidates, and the axis if there is just one. One whose normal is not of
/// length 1 (computeNormal) may have none.
TriangleAxes candidateAxes(std::span<const osg::Pnt3f> positions,
                           std::span<const unsigned int> corners, const osg::Matrix& toBox);

/// Writes the UVs of the corners, each on the image of its triangle's axis; those of triangles
/// without an axis stay.
///
/// toImages  as in BoxView
/// uvs       by the same ids as positions; one beyond the end is dropped
void writeTriplanarUVs(std::span<const osg::Pnt3f> positions, std::span<const unsigned int> corners,
                       std::span<const unsigned char> assigned,
                       const std::array<osg::Matrix, axisCount>& toImages,
                       std::span<osg::Vec2f> uvs);

} // namespace triplanar
