#include "Unfold3D/seams/FindSeams.h"

#include "Unfold3D/seams/BakingSeams.h"
#include "Unfold3D/seams/ManufacturedSeams.h"
#include "Unfold3D/seams/OrganicSeams.h"
#include "Unfold3D/seams/SeamMesh.h"

namespace unfold3d
{

namespace
{

struct ByMode
{
    const SeamMesh& mesh;
    RunControl& control;

    std::vector<char> operator()(const OrganicOptions& options) const
    {
        return organicSeams(mesh, options, control);
    }
    std::vector<char> operator()(const ManufacturedOptions& options) const
    {
        return manufacturedSeams(mesh, options, control);
    }
    std::vector<char> operator()(const BakingOptions& options) const
    {
        return bakingSeams(mesh, options, control);
    }
};

} // namespace

std::vector<std::array<int, 2>> findSeams(const ImportedMesh& mesh, const SeamOptions& options,
                                          RunControl& control)
{
    const SeamMesh surface = makeSeamMesh(mesh, control);
    const std::vector<char> isSeam = std::visit(ByMode{surface, control}, options);
    std::vector<std::array<int, 2>> seams;
    const auto add = [&](int h) {
        seams.push_back(
            {surface.importedTriangle[static_cast<std::size_t>(h / 3)], surface.importedCorner(h)});
    };
    for (const int h : surface.torn)
        add(h);
    for (int e = 0; e < surface.edgeCount(); ++e)
        if (isSeam[static_cast<std::size_t>(e)])
            add(surface.halvesOf(e)[0]);
    return seams;
}

} // namespace unfold3d
