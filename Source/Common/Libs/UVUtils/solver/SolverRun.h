#pragma once

#include "OpenSG/Geometry.h"
#include "OpenSG/Vector.h"
#include "UVUtils/model/kyUVTypes.h"
#include "UVUtils/solver/SolverProgress.h"
#include "UVUtils/solver/SolverTable.h"
#include "UVUtils/solver/UVWInputMode.h"
#include "UVUtils/solver/kyUnfold3DData.h"
#include "Unfold3D/Unfold3D.h"
#include "Utils/kyStackedProgress.h"

#include <functional>
#include <initializer_list>
#include <vector>

namespace kyUnfold3D
{

/// One run of the solver: an instance of its own, the mesh that goes into it, and the progress
/// that its callbacks feed. Whatever ends the run, an exception included, takes all three away.
class SolverRun
{
public:
    SolverRun(const char* progressName, kyUnfold3DData& mesh);
    SolverRun(const SolverRun&) = delete;
    SolverRun& operator=(const SolverRun&) = delete;

    /// A command's result, and what the run makes of it.
    struct Answer
    {
        NU3D::CRef result; ///< a table, empty at worst
        kyUVTypes::ReturnCode code = kyUVTypes::Failure;
    };

    /// Has the solver do a command and checks its result.
    Answer perform(const char* command, const SolverTable& table);

    kyUnfold3DData& mesh() { return mesh_; }
    /// The next phase takes this share of the whole run; the shares of a run add up to 1.
    void beginShare(double share) { reporter_.setScale(share); }
    SolverProgressState& state() { return published_.state; }

private:
    /// The callbacks find this run's state.
    struct Published
    {
        explicit Published(kyStackedProgress& reporter);
        ~Published();
        Published(const Published&) = delete;
        Published& operator=(const Published&) = delete;

        SolverProgressState state;
    };

    // The order matters: the solver goes first, then the state that its callbacks look for, then
    // the reporter that the state points to.
    kyUnfold3DData& mesh_;
    kyStackedProgress reporter_;
    Published published_;
    NU3D::CUnfold3DAPI solver_;
};

/// How a run is called in the progress and in the log.
struct RunNames
{
    const char* progress;
    const char* inErrors;
};

/// What the mesh of a run is read from; see kyUnfold3DData.
struct MeshSource
{
    const osg::GeometryPtr& geometry;
    kyUVTypes::UVSet uvSet;
    UVWInputMode inputMode;
    const std::vector<osg::Vector<float, 2>>& uvs;
};

/// The frame of every operation: reads the mesh, opens a run, sends "Init" and does the steps. A
/// mesh that can't be read is `Failure` without a word. No exception leaves it: each is logged
/// under the operation's name and is `Failure`.
kyUVTypes::ReturnCode runSolver(const RunNames& names, const MeshSource& source,
                                const std::function<kyUVTypes::ReturnCode(SolverRun&)>& steps);

using SolverStep = std::function<kyUVTypes::ReturnCode()>;

/// Does the steps in order; the first that returns anything but `Success` ends the row with that.
kyUVTypes::ReturnCode runInOrder(std::initializer_list<SolverStep> steps);

} // namespace kyUnfold3D
