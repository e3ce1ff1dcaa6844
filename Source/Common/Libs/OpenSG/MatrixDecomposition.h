#pragma once

#include "OpenSG/Matrix.h"

namespace osg
{

/// A transformation as a scale along the coordinate axes, then a rotation, then a translation.
struct TransformParts
{
    Vec3f translation;
    Quaternion rotation;
    Vec3f scale{1, 1, 1};
};

/// Takes a matrix apart, so that translation * rotation * scale is the matrix again.
///
/// A mirroring becomes a negative factor along z. Shear and projection have no place in the parts
/// and are dropped: m = translation * rotation * scale * shear with ones on the shear's diagonal.
/// Columns that are zero or depend on others get the scale 0, with some axis that completes the
/// rotation. If the upper 3x3 is not finite, rotation and scale are those of the identity.
TransformParts decompose(const TransformationMatrix<float>& matrix);

} // namespace osg
