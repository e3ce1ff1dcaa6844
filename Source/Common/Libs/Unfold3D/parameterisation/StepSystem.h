#pragma once

#include "Unfold3D/base/RunControl.h"
#include "Unfold3D/linear/RefinedCholesky.h"
#include "Unfold3D/parameterisation/EliminationMesh.h"
#include "Unfold3D/parameterisation/Spring.h"
#include "Unfold3D/parameterisation/StraightLines.h"

#include <span>
#include <vector>

namespace unfold3d
{

/// The linear system of one Newton step on the layout of an island. Its pattern is analysed once;
/// then for each step: set(), add() what else there is, solve().
class StepSystem
{
public:
    explicit StepSystem(EliminationMesh mesh);

    const EliminationMesh& mesh() const { return mesh_; }
    /// The column of each node.
    std::span<const int> columnOfNode() const { return mesh_.symbolic.newOfOld; }

    /// Whether all nodes of a spring meet in the pattern.
    bool covers(const Spring& spring) const;

    /// Begins a step with the derivatives of the energy at `uv` ([column]; nothing flipped unless
    /// the energy allows it).
    void set(std::span<const Vec2> uv, const LayoutEnergy& energy, Curvature kind);
    /// Adds a spring that the pattern covers.
    void add(const Spring& spring);

    /// Lets the vertices of each line move along with the line's node, in the line's coordinate. To
    /// be called after everything was added, with a pattern that StraightLines::addPairs completed.
    void hold(const StraightLines& lines);

    /// Lets nodes stay where they are; isFixed [node]. To be called last.
    void fix(std::span<const char> isFixed);

    /// Solves for the step; returns how much its quadratic model promises to gain, doubled.
    double solve(const RunControl& control);
    /// [column] the step that solve() found.
    std::span<const Vec2> direction() const { return direction_; }

private:
    /// A coordinate that is no unknown any more.
    struct Held
    {
        int column;
        std::size_t component;
        int lineColumn;
        std::vector<int> neighbours; ///< columns that meet this one, without the line's
    };
    void findHeld(const StraightLines& lines);
    void hold(const Held& held);
    double& entry(int rowColumn, std::size_t row, int column, std::size_t component);

    EliminationMesh mesh_;
    BlockMatrix hessian_;
    RefinedCholesky cholesky_;
    double tolerance_ = 0.0; ///< of the solution
    std::vector<Vec2> gradient_;
    std::vector<Vec2> direction_;
    std::vector<Held> held_; ///< of this step
};

} // namespace unfold3d
