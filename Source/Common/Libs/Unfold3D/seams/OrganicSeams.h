#pragma once

#include "Unfold3D/base/RunControl.h"
#include "Unfold3D/seams/SeamMesh.h"
#include "Unfold3D/seams/SeamOptions.h"

#include <vector>

namespace unfold3d
{

std::vector<char> organicSeams(const SeamMesh& mesh, const OrganicOptions& options,
                               RunControl& control);

} // namespace unfold3d
