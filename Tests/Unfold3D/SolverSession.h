#pragma once

#include "Unfold3D/Unfold3D.h"
#include "Unfold3D/base/IslandMesh.h"

#include <string>
#include <vector>

/// A solver run as the application drives it: the commands with their keys, and what came of the
/// last one.
class SolverSession
{
public:
    /// Imports a mesh whose UVs are its positions, as one that was never mapped is imported.
    explicit SolverSession(const unfold3d::IslandMesh& mesh);
    /// Imports a mesh with UVs, one for each vertex.
    SolverSession(const unfold3d::IslandMesh& mesh, const std::vector<unfold3d::Vec2>& uvs);

    struct UnfoldKeys
    {
        int iterations = 1;
        bool preventCrossings = true;
        bool processSelection = true;
    };

    void selectVertices(const std::vector<int>& ids);
    void selectAllVertices();
    /// Pins edges; `ids` in the numbers of edges as the engine counts them.
    void pinEdges(const std::vector<int>& ids, bool vertical);
    void unfold() { unfold(UnfoldKeys()); }
    void unfold(const UnfoldKeys& keys);
    /// The layout as the application stores it.
    std::vector<unfold3d::Vec2> exportFloats();
    std::vector<unfold3d::Vec2> exportDoubles();

    std::string error() const { return NU3D::CUnfold3DAPI::GetErrorString(last_); }
    bool hasError() const { return NU3D::CUnfold3DAPI::HasError(last_); }
    std::string warning() const { return NU3D::CUnfold3DAPI::GetWarningString(last_); }
    bool hasWarning() const { return NU3D::CUnfold3DAPI::HasWarning(last_); }
    const NU3D::CRef& last() const { return last_; }
    NU3D::CUnfold3DAPI& api() { return api_; }

private:
    void import(const unfold3d::IslandMesh& mesh, std::vector<double> coordsUVW);
    void run(const std::string& command, const NU3D::CRef& params);

    NU3D::CUnfold3DAPI api_;
    NU3D::CRef last_;
};
