#pragma once

#include "PatchMeshes.h"

#include "Unfold3D/Unfold3D.h"

#include <benchmark/benchmark.h>

#include <vector>

/// The engine's commands as the application gives them. Each throws std::runtime_error with the
/// engine's text when it fails.
namespace bench
{

NU3D::CRef table();
void expectSuccess(const NU3D::CRef& result);

void import(NU3D::CUnfold3DAPI& api, const FlatMesh& mesh);
void unfold(NU3D::CUnfold3DAPI& api, bool preventCrossings);
/// Relaxes the selection, or all where there is none.
void optimize(NU3D::CUnfold3DAPI& api);
void selectVertices(NU3D::CUnfold3DAPI& api, const std::vector<int>& ids);
/// Three coordinates for each vertex.
std::vector<double> exportedUVs(NU3D::CUnfold3DAPI& api);

/// Size, time for a triangle and peak of memory.
void report(benchmark::State& state, const FlatMesh& mesh);

} // namespace bench
