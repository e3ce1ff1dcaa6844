#pragma once

#include "Unfold3D/contract/CUnfold3DAPI.h"

#include <memory>

namespace unfold3d
{

/// The engine behind the contract: keeps one imported mesh and does the commands on it. Its
/// commands define it; it is declared here so that the contract includes nothing of what stands
/// behind it.
std::unique_ptr<NU3D::Backend> makeEngine();

} // namespace unfold3d
