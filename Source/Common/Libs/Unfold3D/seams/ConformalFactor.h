#pragma once

#include "Unfold3D/base/IslandMesh.h"
#include "Unfold3D/base/RunControl.h"
#include "Unfold3D/base/Vec.h"
#include "Unfold3D/linear/SparseCholesky.h"
#include "Unfold3D/linear/SymbolicCholesky.h"

#include <array>
#include <span>
#include <vector>

namespace unfold3d
{

/// Foretells how a surface stretches when it is cut along seams and laid flat, without laying it
/// flat: the logarithm u of the scale of a conformal flattening whose border keeps its length. The
/// surface comes out e^u times as long as it is; u solves a Poisson equation with the curvature of
/// the surface on its right side (Ben-Chen, Gotsman and Bunin 2008, "Conformal Flattening by
/// Curvature Prescription and Metric Scaling"; Springborn, Schroeder and Pinkall 2008).
///
/// The matrix is analysed once; each question is one factorisation with one number for a vertex.
class ConformalFactor
{
public:
    /// Both lists are read now and not kept. Triangles of no area are measured as
    /// base/RestTriangle.h tells; a vertex that no triangle uses gets the factor 0.
    ConformalFactor(std::span<const Vec3> positions, std::span<const Triangle> triangles,
                    const RunControl& control);

    /// isCut  [vertex]  stands on a border or on a seam, where u is 0
    ///
    /// Returns u [vertex]. A part of the surface without any such vertex is taken as a sphere that
    /// its curvature is dealt out on evenly: u has the mean 0 there and tells where it would stick
    /// out. Throws Stopped.
    std::vector<double> solve(std::span<const char> isCut, const RunControl& control);

    /// [vertex] a third of the area of its triangles
    const std::vector<double>& areas() const { return areas_; }
    /// [vertex] what is missing from a full turn around it; meant for vertices that aren't cut
    const std::vector<double>& angleDefects() const { return angleDefects_; }

private:
    void assemble(std::span<const char> isFixed);
    /// The lowest vertex of each part that has no cut vertex.
    std::vector<int> anchorsOfClosedParts(std::span<const char> isCut);
    void dealOutMean(std::span<const int> anchors, std::vector<double>& values) const;

    std::vector<double> areas_;
    std::vector<double> angleDefects_;
    std::vector<int> part_;        ///< [vertex] lowest vertex of the part that it belongs to
    std::vector<double> partArea_; ///< [vertex] area of the part, at its lowest vertex
    SymbolicCholesky symbolic_;
    std::vector<double> stiffness_; ///< [entry] minus the sum of the cotangent weights
    BlockMatrix matrix_;
    SparseCholesky cholesky_;
};

/// The symmetric Dirichlet energy per area, over the 4 of an isometric layout, to be expected where
/// the factor differs by `strain` from that at which the island keeps its size. A layout of least
/// energy does with less than the conformal map that u is of, much less where u is large.
double strainExcess(double strain);

/// Weight of a factor in the mean that is best for an island: strainExcess falls off from a
/// parabola by as much.
double strainWeight(double strain);

} // namespace unfold3d
