#pragma once

#include "Unfold3D/base/IslandMesh.h"
#include "Unfold3D/base/Obstacle.h"
#include "Unfold3D/base/RunControl.h"
#include "Unfold3D/base/Vec.h"
#include "Unfold3D/start/ConvexMap.h"
#include "Unfold3D/start/FilledDisk.h"

#include <array>
#include <optional>
#include <vector>

namespace unfold3d
{

/// A first layout of an island, to be improved by parameterisation/Flatten.h: every triangle has a
/// positive area by an exact test, and the border does not cross itself. Nothing is promised about
/// scale.
struct FlatStart
{
    /// Which map it came from.
    enum Method : std::int8_t
    {
        Projected, ///< seen along its mean normal
        Harmonic,  ///< as an elastic skin in a round frame
        Balanced,  ///< the same, softened where it comes out too small
        Filled,    ///< flattened together with what fills its holes
        Grid       ///< a drawing of the connections alone, which no shape can upset
    };

    Method method = Projected;
    double distortion = 0.0; ///< symmetric Dirichlet energy at its best scale, mean over the area
    std::vector<Vec2> uv;    ///< [vertex]
};

/// A name for a report.
const char* nameOf(FlatStart::Method method);

/// Finds starts for one island, those first that promise the quickest way to a good layout. Holes,
/// any number of border loops, and fans that meet in a vertex only are fine.
///
/// The first start costs a pass over the mesh where the island is flat or nearly so, else a sparse
/// factorisation, else up to five of them and, where there are holes, a flattening.
class FlatStartFinder
{
public:
    /// Both are kept by reference.
    FlatStartFinder(const IslandMesh& mesh, const RunControl& control);

    /// Why there is no start: Closed, Handle or TouchesItself. With None there is at least one.
    Obstacle obstacle() const { return obstacle_; }

    /// The next start, or nothing when there are no more. Throws Stopped.
    std::optional<FlatStart> next();

    /// An order of elimination for the vertices of the island, when a start took one.
    const std::vector<int>& eliminationOrder() const { return eliminationOrder_; }

private:
    std::optional<FlatStart> tryProjected() const;
    std::optional<FlatStart> tryHarmonic();
    std::optional<FlatStart> tryFilled();
    std::optional<FlatStart> trySprung();
    FlatStart drawGrid() const;
    void balance();
    /// A map of the disk, measured on the island; nothing when it is no embedding.
    std::optional<FlatStart> measured(FlatStart::Method method, std::vector<Vec2> uv) const;
    FlatStart withoutFilling(FlatStart ofDisk) const;

    const IslandMesh& mesh_;
    const RunControl& control_;
    Obstacle obstacle_ = Obstacle::None;
    FilledDisk disk_;
    std::optional<ConvexMapper> mapper_; ///< made when first needed
    std::vector<int> eliminationOrder_;
    std::vector<std::array<double, 3>> springs_;
    std::optional<FlatStart> sprung_; ///< the best that springs gave; uv [vertex of the disk]
    int stage_ = 0;
};

/// The first start of an island without an obstacle.
FlatStart flatStart(const IslandMesh& mesh, const RunControl& control);

} // namespace unfold3d
