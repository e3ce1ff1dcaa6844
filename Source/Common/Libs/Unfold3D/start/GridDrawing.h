#pragma once

#include "Unfold3D/base/Vec.h"
#include "Unfold3D/start/FilledDisk.h"

#include <vector>

namespace unfold3d
{

/// Draws a disk on a grid of whole numbers from 0 to twice its vertex count, whatever its shape:
/// every triangle turns counter-clockwise, exactly, and the outline doesn't cross itself. Angles
/// and areas are nothing like those in space. Linear.
///
/// Returns [vertex of the disk].
std::vector<Vec2> drawOnGrid(const FilledDisk& disk);

} // namespace unfold3d
