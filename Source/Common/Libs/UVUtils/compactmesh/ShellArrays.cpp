#include "UVUtils/compactmesh/ShellArrays.h"

#include "UVUtils/model/IndexView.h"
#include "UVUtils/model/UVSlot.h"

#include <algorithm>

namespace
{

unsigned int indexCountOf(std::span<const ActiveSurface> surfaces)
{
    unsigned int count = 0;
    for (const ActiveSurface& surface : surfaces)
        count += surface.geometry->getIndices()->getSize();
    return count;
}

void appendTriangles(const ActiveSurface& surface, std::vector<unsigned int>& triangles)
{
    const IndexView indices(surface.geometry->getIndices());
    const auto ids = indices.triangles();
    const std::size_t first = triangles.size();
    triangles.resize(first + ids.size());
    std::transform(ids.begin(), ids.end(), triangles.begin() + static_cast<std::ptrdiff_t>(first),
                   [&](unsigned int id) { return surface.firstId + id; });
}

void copyVertices(const ActiveSurface& surface, kyUVTypes::UVSet set, ShellArrays& shell)
{
    const auto positions = osg::dcast<osg::GeoPositions3f>(surface.geometry->getPositions());
    std::copy_n(positions->getData(), surface.vertexCount,
                shell.positions.begin() + surface.firstId);
    if (const auto uvs = uvSlot(surface.geometry, set))
        std::copy_n(uvs->getData(), std::min(uvs->getSize(), surface.vertexCount),
                    shell.uvs.begin() + surface.firstId);
}

} // namespace

ShellArrays gatherShell(std::span<const ActiveSurface> surfaces, kyUVTypes::UVSet set)
{
    ShellArrays shell;
    shell.positions.resize(vertexCountOf(surfaces));
    shell.uvs.resize(shell.positions.size());
    shell.triangles.reserve(indexCountOf(surfaces));
    for (const ActiveSurface& surface : surfaces) {
        copyVertices(surface, set, shell);
        const auto firstTriangle = static_cast<unsigned int>(shell.triangles.size() / 3);
        appendTriangles(surface, shell.triangles);
        shell.surfaces.push_back({firstTriangle,
                                  static_cast<unsigned int>(shell.triangles.size() / 3),
                                  surface.firstId + surface.vertexCount});
    }
    return shell;
}

std::vector<unsigned int> gatherTriangles(std::span<const ActiveSurface> surfaces)
{
    std::vector<unsigned int> triangles;
    triangles.reserve(indexCountOf(surfaces));
    for (const ActiveSurface& surface : surfaces)
        appendTriangles(surface, triangles);
    return triangles;
}
