#include "solver/UnfoldPart.h"

#include "check/Orientation.h"
#include "mesh/EdgeGroups.h"
#include "solver/SolverGeometry.h"

#include "UVUtils/solver/kyUnfold3D.h"

#include <cmath>

namespace uvtool
{
namespace
{

kyUnfold3D::UnfoldSettings settingsOf(const UnfoldOptions& options)
{
    kyUnfold3D::UnfoldSettings settings;
    if (options.iterations)
        settings.setOptimizeIterations(*options.iterations);
    settings.setPreventBorderIntersections(!options.allowCrossings);
    settings.setRoomSpace(options.room);
    return settings;
}

/// Sides as pairs of vertices.
std::vector<unsigned int> pairsOf(const Part& part, const std::vector<std::uint32_t>& sides)
{
    std::vector<unsigned int> pairs;
    for (const std::uint32_t side : sides) {
        pairs.push_back(part.mesh.triangles[side]);
        pairs.push_back(part.mesh.triangles[endCorner(side)]);
    }
    return pairs;
}

/// The islands that the solver left alone. They still have what it starts from, x and y of the
/// positions, which is no layout: for a flat piece, that the result may equal, it is one.
std::vector<char> islandsLeftAlone(const Part& part, const Islands& islands,
                                   const std::vector<osg::Vector<float, 2>>& uvs)
{
    std::vector<char> isSame(islands.count(), 1);
    std::vector<char> isLayout(islands.count(), 1);
    for (std::size_t t = 0; t < part.mesh.triangleCount(); ++t) {
        const auto island = static_cast<std::size_t>(islands.ofTriangle[t]);
        std::array<Vec2f, 3> corners{};
        for (std::size_t k = 0; k < 3; ++k) {
            const std::uint32_t vertex = part.mesh.triangles[3 * t + k];
            corners[k] = {uvs[vertex][0], uvs[vertex][1]};
            if (corners[k][0] != part.positions[vertex][0] ||
                corners[k][1] != part.positions[vertex][1])
                isSame[island] = 0;
        }
        if (orientation(corners[0], corners[1], corners[2]) <= 0)
            isLayout[island] = 0;
    }
    for (std::size_t i = 0; i < isSame.size(); ++i)
        isSame[i] = isSame[i] != 0 && isLayout[i] == 0 ? 1 : 0;
    return isSame;
}

void takeOver(Part& part, const std::vector<osg::Vector<float, 2>>& uvs)
{
    const int exponent = -part.frame.exponent();
    part.uvs.resize(uvs.size());
    for (std::size_t v = 0; v < uvs.size(); ++v)
        part.uvs[v] = {std::ldexp(uvs[v][0], exponent), std::ldexp(uvs[v][1], exponent)};
}

} // namespace

SolverAnswer unfoldPart(Part& part, const UnfoldOptions& options, const HeldSides& held,
                        Console& console)
{
    const auto geometry = makeGeometry({part.positions, part.mesh.triangles, {}}, 0);
    std::vector<osg::Vector<float, 2>> uvs;
    SolverAnswer answer = askLibrary(console, [&] {
        return kyUnfold3D::unfold(geometry, kyUVTypes::UVSet0, uvs, kyUnfold3D::Positions3D,
                                  settingsOf(options), nullptr, pairsOf(part, held.horizontal),
                                  pairsOf(part, held.vertical));
    });
    if (answer.outcome != Success)
        return answer;
    const Islands islands = findIslands(part.mesh.triangles, part.mesh.vertexCount());
    const std::vector<char> isLeftAlone = islandsLeftAlone(part, islands, uvs);
    takeOver(part, uvs);
    leaveOut(part, islands, isLeftAlone);
    part.turns.assign(part.mesh.triangleCount(), 1);
    return answer;
}

} // namespace uvtool
