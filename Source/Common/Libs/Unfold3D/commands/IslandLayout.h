#pragma once

#include "Unfold3D/base/IslandMesh.h"
#include "Unfold3D/base/LayoutWarning.h"
#include "Unfold3D/base/Obstacle.h"
#include "Unfold3D/commands/Session.h"

#include <string>
#include <vector>

namespace unfold3d
{

/// What a command made of one island.
struct IslandLayout
{
    Obstacle obstacle = Obstacle::None;  ///< why it can't be laid flat; then there are no UVs
    std::vector<int> vertices;           ///< of the session's mesh
    std::vector<Vec2> uv;                ///< [position in vertices]
    std::vector<char> isFixed;           ///< [position in vertices] stayed; empty when none had to
    std::vector<int> staying;            ///< of the island, beside `vertices`, that have to stay
    bool hadLayout = false;              ///< its UVs before weren't just its positions in space
    bool isUnchanged = false;            ///< its UVs are those it had
    std::string method;                  ///< which methods served
    std::vector<LayoutWarning> warnings; ///< places in `vertices`, by position
};

/// Whether vertices had a layout: UVs that only repeat the positions in space say nothing.
bool hasLayout(const Session& session, const std::vector<int>& vertices);

/// The UVs of vertices, [position in vertices].
std::vector<Vec2> layoutOf(const Session& session, const std::vector<int>& vertices);

/// Lays islands that had no layout into rows.
void layNewInRows(std::vector<IslandLayout>& layouts);

/// Makes a layout the present one of an island, unless it has an obstacle or is unchanged.
void putIntoSession(Session& session, int island, const IslandLayout& layout);

} // namespace unfold3d
