#include "solver/PackParts.h"

#include "solver/SolverGeometry.h"

#include "UVUtils/solver/kyUnfold3D.h"

#include <algorithm>
#include <cmath>

namespace uvtool
{
namespace
{

/// Several parts as one mesh; vertices and triangles of one follow those of the one before.
struct JointMesh
{
    std::vector<Vec3f> positions;
    std::vector<std::uint32_t> triangles;
    std::vector<Vec2f> uvs;
};

/// Islands are compared by their size in the scene and never by their place, so that each part may
/// stay at the origin of its frame, where its positions are exact.
void append(JointMesh& joint, const Part& part)
{
    const auto firstVertex = static_cast<std::uint32_t>(joint.uvs.size());
    for (Vec3f position : part.positions) {
        for (float& x : position)
            x = std::ldexp(x, -part.frame.exponent());
        joint.positions.push_back(position);
    }
    for (const std::uint32_t vertex : part.mesh.triangles)
        joint.triangles.push_back(firstVertex + vertex);
    joint.uvs.insert(joint.uvs.end(), part.uvs.begin(), part.uvs.end());
}

kyUnfold3D::PackSettings settingsOf(const PackOptions& options)
{
    kyUnfold3D::PackSettings settings = options.settings;
    settings.setResolution(options.resolution);
    settings.setIslandPadding(options.gap * texelSize(options));
    settings.setTilePadding(options.marginTexels() * texelSize(options));
    return settings;
}

} // namespace

SolverAnswer packParts(std::span<Part* const> parts, const PackOptions& options, Console& console,
                       kyUnfold3D::PackCover& cover)
{
    JointMesh joint;
    for (const Part* const part : parts)
        append(joint, *part);
    const auto geometry = makeGeometry({joint.positions, joint.triangles, joint.uvs}, 0);
    std::vector<osg::Vector<float, 2>> uvs;
    SolverAnswer answer = askLibrary(console, [&] {
        return kyUnfold3D::pack(geometry, kyUVTypes::UVSet0, uvs, settingsOf(options), {}, cover);
    });
    if (answer.outcome != Success)
        return answer;

    std::size_t next = 0;
    for (Part* const part : parts)
        for (Vec2f& uv : part->uvs) {
            uv = {uvs[next][0], uvs[next][1]};
            ++next;
        }
    return answer;
}

double texelSize(const PackOptions& options)
{
    const kyUnfold3D::PackSettings::Box& box = options.settings.getBox();
    return std::max(box.maxU - box.minU, box.maxV - box.minV) / options.resolution;
}

std::vector<UVBox> boxesOf(const kyUnfold3D::PackSettings& settings)
{
    const kyUnfold3D::PackSettings::Box& box = settings.getBox();
    std::vector<UVBox> boxes;
    for (int row = 0; row < settings.getTilesV(); ++row) {
        for (int column = 0; column < settings.getTilesU(); ++column) {
            const auto u = [&](double x) {
                return static_cast<float>(x + column * (box.maxU - box.minU));
            };
            const auto v = [&](double y) {
                return static_cast<float>(y + row * (box.maxV - box.minV));
            };
            boxes.push_back({{u(box.minU), v(box.minV)}, {u(box.maxU), v(box.maxV)}});
        }
    }
    return boxes;
}

} // namespace uvtool
