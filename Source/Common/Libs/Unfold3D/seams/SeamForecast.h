#pragma once

#include "Unfold3D/base/RunControl.h"
#include "Unfold3D/linear/VertexGraph.h"
#include "Unfold3D/seams/ConformalFactor.h"
#include "Unfold3D/seams/SeamDraft.h"

#include <vector>

namespace unfold3d
{

/// What is to be expected when a surface is laid flat along the seams of a draft.
struct SeamForecast
{
    std::vector<double> strain; ///< [vertex] logarithm of the scale, 0 where its part keeps its
                                ///< size
    std::vector<double>
        energies; ///< [part] symmetric Dirichlet, mean over the area; 4 is isometric
};

/// Makes forecasts for changing seams on one mesh; each costs a factorisation.
class SeamForecaster
{
public:
    /// The mesh and `control` are kept by reference.
    SeamForecaster(const SeamMesh& mesh, const RunControl& control);

    /// Throws Stopped.
    SeamForecast forecast(const SeamDraft& draft);
    /// The factor u of seams/ConformalFactor.h itself [vertex].
    std::vector<double> factors(const SeamDraft& draft);

    const VertexGraph& graph() const { return graph_; }
    const std::vector<double>& areas() const { return factor_.areas(); }               ///< [vertex]
    const std::vector<double>& angleDefects() const { return factor_.angleDefects(); } ///< [vertex]

private:
    const SeamMesh& mesh_;
    const RunControl& control_;
    ConformalFactor factor_;
    VertexGraph graph_;
};

} // namespace unfold3d
