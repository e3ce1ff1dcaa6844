#pragma once

#include "Unfold3D/Unfold3D.h"
#include "Unfold3D/base/IslandMesh.h"

#include <initializer_list>
#include <span>
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

    /// An entry of the parameters of a command.
    struct Key
    {
        Key(const char* n) : name(n) {}
        template <class T>
        Key(const char* n, const T& v) : name(n), value(v, NU3D::VALPROP_VALUE)
        {}
        const char* name;
        NU3D::CRef value;
    };
    void run(const std::string& command, std::span<const Key> keys);
    void run(const std::string& command, std::initializer_list<Key> keys)
    {
        run(command, std::span(keys.begin(), keys.size()));
    }

    /// Selects elements by the numbers that the engine counts them with.
    void select(const char* kind, const std::vector<int>& ids);
    void selectAllVertices();
    void pinEdges(const std::vector<int>& ids, bool vertical);
    void unfold();
    /// The keys of Optimize, at what the application passes by default.
    struct OptimizeKeys
    {
        int iterations = 1;
        bool bordersApart = true;
        bool noFlips = true;
        float power = 1.0F;
        float lengths = 1.0F;
    };
    void optimize(const OptimizeKeys& keys);
    std::vector<unfold3d::Vec2> exportUVs();

    std::string error() const { return NU3D::CUnfold3DAPI::GetErrorString(last_); }
    bool hasError() const { return NU3D::CUnfold3DAPI::HasError(last_); }
    std::string warning() const { return NU3D::CUnfold3DAPI::GetWarningString(last_); }
    const NU3D::CRef& last() const { return last_; }
    NU3D::CUnfold3DAPI& api() { return api_; }

private:
    void import(const unfold3d::IslandMesh& mesh, const std::vector<double>& coordsUVW);

    NU3D::CUnfold3DAPI api_;
    NU3D::CRef last_;
};
