#include "Unfold3D/commands/IslandLayout.h"

#include "Unfold3D/layout/Placement.h"

#include <algorithm>

namespace unfold3d
{

bool hasLayout(const Session& session, const std::vector<int>& vertices)
{
    return std::any_of(vertices.begin(), vertices.end(), [&](int vertex) {
        const auto v = static_cast<std::size_t>(vertex);
        const Vec3& p = session.mesh.positions[v];
        return session.uvs[v].x != p.x || session.uvs[v].y != p.y || session.w[v] != p.z;
    });
}

std::vector<Vec2> layoutOf(const Session& session, const std::vector<int>& vertices)
{
    std::vector<Vec2> uvs;
    uvs.reserve(vertices.size());
    for (const int v : vertices)
        uvs.push_back(session.uvs[static_cast<std::size_t>(v)]);
    return uvs;
}

void layNewInRows(std::vector<IslandLayout>& layouts)
{
    std::vector<std::vector<Vec2>*> withoutPlace;
    for (IslandLayout& layout : layouts)
        if (layout.obstacle == Obstacle::None && !layout.hadLayout && !layout.isUnchanged)
            withoutPlace.push_back(&layout.uv);
    layInRows(withoutPlace);
}

void putIntoSession(Session& session, int island, const IslandLayout& layout)
{
    if (layout.obstacle != Obstacle::None || layout.isUnchanged)
        return;
    const auto isFixed = [&](std::size_t i) {
        return !layout.isFixed.empty() && layout.isFixed[i];
    };
    for (const int v : session.islands.vertices[island])
        session.isFixed[static_cast<std::size_t>(v)] = 0;
    for (const int v : layout.staying)
        session.isFixed[static_cast<std::size_t>(v)] = 1;
    for (std::size_t i = 0; i < layout.vertices.size(); ++i) {
        const auto vertex = static_cast<std::size_t>(layout.vertices[i]);
        session.isFixed[vertex] = static_cast<char>(isFixed(i));
        if (isFixed(i))
            continue;
        session.uvs[vertex] = layout.uv[i];
        session.w[vertex] = 0.0;
    }
    // Vertices that only left-out triangles use go with their anchors.
    for (const int v : session.islands.vertices[island]) {
        const auto vertex = static_cast<std::size_t>(v);
        const auto anchor = static_cast<std::size_t>(session.islands.anchor[vertex]);
        if (anchor == vertex || session.isFixed[vertex])
            continue;
        session.isFixed[vertex] = session.isFixed[anchor];
        if (session.isFixed[anchor])
            continue;
        session.uvs[vertex] = session.uvs[anchor];
        session.w[vertex] = 0.0;
    }
    session.isChanged[static_cast<std::size_t>(island)] = 1;
}

} // namespace unfold3d
