#pragma once

#include "Unfold3D/base/RunControl.h"
#include "Unfold3D/seams/CheapestPaths.h"
#include "Unfold3D/seams/Patches.h"
#include "Unfold3D/seams/SeamMesh.h"

#include <span>
#include <vector>

namespace unfold3d
{

/// Cuts patches until each has the connections of a flat sheet: a closed one is slit from end to
/// end, handles are cut, and border loops are joined, except those of flat holes: loops that turn
/// as a hole in a flat plate does stay holes, as they need no cut.
///
/// Handles go by a shortest system of loops: a tree of cheapest paths, a tree over the triangles
/// beside it that crosses dear edges first, and a loop or an arc for each edge that is in neither
/// (Eppstein 2003; Erickson and Whittlesey 2005; Chambers, Colin de Verdiere, Erickson, Lazarus and
/// Whittlesey 2008 for arcs between borders). After the cheapest few the trees are made anew, as
/// what was cut is free from then on.
///
/// Keeps storage for the whole mesh; opening a patch costs by its size, a few sorts of its edges.
class PatchOpener
{
public:
    /// costs   [edge]  of cutting it
    /// isSeam  [edge]  read by every call, and gets the cuts
    /// All are kept by reference.
    PatchOpener(const SeamMesh& mesh, std::span<const PathCost> costs, std::vector<char>& isSeam,
                const RunControl& control);

    /// Whether holes in flat surroundings stay as they are; true unless told otherwise.
    void keepFlatHoles(bool keep) { keepsFlatHoles_ = keep; }

    /// Opens a patch; its triangles may hang together in several parts. Returns the edges that were
    /// cut.
    std::vector<int> open(std::span<const int> patch);

private:
    struct Borders
    {
        std::vector<BorderLoop> rims;  ///< loops at which cuts may end
        std::vector<BorderLoop> holes; ///< loops that stay holes
    };

    std::vector<std::vector<int>> partsOf(std::span<const int> patch);
    bool openFurther(std::span<const int> part);
    Borders bordersOf(std::span<const int> part);
    int characteristicOf(std::span<const int> part) const;
    void slit(std::span<const int> part);
    void cutHandleOfClosed(std::span<const int> part);
    bool cutArcs(std::span<const int> part, const Borders& borders);
    std::vector<int> edgesBesideTrees(std::span<const int> part,
                                      const std::vector<BorderLoop>& holes);
    PathCost loopCost(int edge) const;
    void cutLoop(int edge);
    void cut(int edge);
    int setOf(int triangle);
    bool joinSets(int triangleA, int triangleB);

    const SeamMesh& mesh_;
    std::span<const PathCost> costs_;
    std::vector<char>& isSeam_;
    const RunControl& control_;
    bool keepsFlatHoles_ = true;
    CheapestPaths paths_;
    LoopFinder loops_;
    std::vector<int> parent_;    ///< [triangle] sets of triangles; each its own between uses
    std::vector<char> isMarked_; ///< [triangle] cleared after use
    std::vector<int> cuts_;      ///< of the present call
};

/// Opens all patches.
void openPatches(const SeamMesh& mesh, std::span<const PathCost> costs, std::vector<char>& isSeam,
                 const RunControl& control);

} // namespace unfold3d
