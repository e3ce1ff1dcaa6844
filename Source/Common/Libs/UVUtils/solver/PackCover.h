#pragma once

namespace kyUnfold3D
{

/// What a packing reached, and what it could have reached: shares of the area of all tiles that the
/// islands cover. What an island covers twice counts twice.
struct PackCover
{
    double covered = 0.0;
    double mostCovered = 0.0; ///< no layout of the islands exceeds it with these settings
};

} // namespace kyUnfold3D
