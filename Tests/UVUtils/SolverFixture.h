#pragma once

#include "UVUtils/Captures.h"
#include "UVUtils/Meshes.h"
#include "UVUtils/RecordingSolver.h"
#include "UVUtils/solver/SolverProgress.h"
#include "UVUtils/solver/kyUnfold3D.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

using Texts = std::vector<std::string>;

/// Runs of the bridge on a quad, against the recording solver.
class SolverFixture : public testing::Test
{
protected:
    void TearDown() override
    {
        EXPECT_EQ(kyUnfold3D::gSolverProgress, nullptr) << "a run leaves no state behind";
        EXPECT_EQ(solver.alive(), 0) << "the solver instance ends with its run";
    }

    /// Arguments of an unfold beside the mesh.
    struct Args
    {
        const kyUnfold3D::PackSettings* pack = nullptr;
        FlatEdgeList horizontal = {};
        FlatEdgeList vertical = {};
        Ids selected = {};
        kyUnfold3D::UnfoldSettings settings = {};
        kyUnfold3D::UVWInputMode mode = kyUnfold3D::Positions3D;
    };
    kyUVTypes::ReturnCode unfold(const Args& args)
    {
        return kyUnfold3D::unfold(mesh, kyUVTypes::UVSet0, uvs, args.mode, args.settings, args.pack,
                                  args.horizontal, args.vertical, args.selected);
    }
    kyUVTypes::ReturnCode unfold()
    {
        return kyUnfold3D::unfold(mesh, kyUVTypes::UVSet0, uvs, kyUnfold3D::Positions3D, {},
                                  nullptr, {}, {});
    }
    kyUVTypes::ReturnCode pack(const kyUnfold3D::PackSettings& settings = {})
    {
        return kyUnfold3D::pack(mesh, kyUVTypes::UVSet0, uvs, settings);
    }
    kyUVTypes::ReturnCode pack(const Ids& selected)
    {
        return kyUnfold3D::pack(mesh, kyUVTypes::UVSet0, uvs, kyUnfold3D::PackSettings(), selected);
    }

    kyUVTypes::ReturnCode optimize(const kyUnfold3D::OptimizeSettings& settings = {})
    {
        return kyUnfold3D::optimize(mesh, kyUVTypes::UVSet0, uvs, settings, {1, 0}, {2, 0});
    }
    kyUVTypes::ReturnCode seam(const kyUnfold3D::SeamSettings& settings = {})
    {
        return kyUnfold3D::seam(mesh, kyUVTypes::UVSet0, settings, seams);
    }

    RecordingSolver solver;
    LogCapture log;
    OutputCapture output;
    osg::RefPtr<osg::Geometry> mesh{quad()};
    UVs uvs;
    FlatEdgeList seams{7, 7};
    const kyUnfold3D::PackSettings packSettings;
};
