#include "UVUtils/editing/VertexNormals.h"

std::vector<osg::Vec3f> areaWeightedNormals(std::span<const unsigned int> triangles,
                                            std::span<const osg::Pnt3f> positions)
{
    std::vector<osg::Vec3f> normals(positions.size());
    for (std::size_t first = 0; first < triangles.size(); first += 3) {
        const std::span corners = triangles.subspan(first, 3);
        const osg::Pnt3f& a = positions[corners[0]];
        // Its length is twice the area.
        const osg::Vec3f normal = cross(positions[corners[1]] - a, positions[corners[2]] - a);
        for (const unsigned int corner : corners)
            normals[corner] += normal;
    }
    for (osg::Vec3f& normal : normals)
        normal.normalize();
    return normals;
}
