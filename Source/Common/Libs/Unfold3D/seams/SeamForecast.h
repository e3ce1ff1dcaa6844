#pragma once

#include "Unfold3D/base/RunControl.h"
#include "Unfold3D/linear/VertexGraph.h"
#include "Unfold3D/seams/CoarseMesh.h"
#include "Unfold3D/seams/ConformalFactor.h"
#include "Unfold3D/seams/FactorPeaks.h"
#include "Unfold3D/seams/PartShares.h"
#include "Unfold3D/seams/SeamDraft.h"

#include <vector>

namespace unfold3d
{

/// What is to be expected when a surface is laid flat along the seams of a draft.
struct SeamForecast
{
    std::vector<double> strain; ///< [vertex of the forecaster] logarithm of the scale, 0 where its
                                ///< part keeps its size
    std::vector<double>
        energies; ///< [part] symmetric Dirichlet, mean over the area; 4 is isometric
};

/// Makes forecasts for changing seams on one mesh; each costs a factorisation and a pass over the
/// mesh. How a surface strains shows on a few thousand vertices, so large meshes come coarse.
class SeamForecaster
{
public:
    /// All are kept by reference. `coarse` is made of the mesh, or the same where that is small.
    SeamForecaster(const SeamMesh& mesh, const CoarseMesh& coarse, const RunControl& control);

    /// Vertices of the surface that is forecast on, fewer than the mesh has where that is large.
    int vertexCount() const { return coarse_.vertexCount(); }
    /// The vertex of the mesh that a vertex of the forecaster is.
    int vertexOf(int vertex) const { return coarse_.vertexOf[static_cast<std::size_t>(vertex)]; }
    /// To be found anew when the parts of the draft have changed.
    PartShares sharesOf(const MeshParts& parts) const
    {
        return findPartShares(mesh_, coarse_, parts);
    }

    /// Throws Stopped.
    SeamForecast forecast(const SeamDraft& draft, const PartShares& shares);
    /// The factor u of seams/ConformalFactor.h itself [vertex of the forecaster].
    std::vector<double> factors(const SeamDraft& draft);
    /// The peaks of factors or of strain, as seams/FactorPeaks.h finds them, at vertices of the
    /// mesh.
    std::vector<FactorPeak> peaksOf(std::span<const double> values) const;

private:
    const SeamMesh& mesh_;
    const RunControl& control_;
    const CoarseMesh& coarse_;
    ConformalFactor factor_;
    VertexGraph graph_;
};

} // namespace unfold3d
