#pragma once

#include "Unfold3D/base/IslandMesh.h"
#include "Unfold3D/base/RunControl.h"
#include "Unfold3D/base/Vec.h"

#include <embree3/rtcore.h>

#include <memory>
#include <span>
#include <type_traits>

namespace unfold3d
{

/// A surface that keeps light off itself, ready to be asked how much arrives where. Many threads
/// may ask at the same time.
class Occluder
{
public:
    /// positions  not empty; neither list is kept
    Occluder(std::span<const Vec3> positions, std::span<const Triangle> triangles,
             const RunControl& control);

    /// The share of light from some directions, all of length 1, that reaches a point of the
    /// surface from the side of `normal`: cosine weighted, 1 where no direction is on that side.
    double lightAt(Vec3 point, Vec3 normal, std::span<const Vec3> directions) const;

private:
    void placeInUnitCube(std::span<const Vec3> positions);
    Vec3 placed(Vec3 p) const { return scale_ * (p - centre_); }
    void addGeometry(std::span<const Vec3> positions, std::span<const Triangle> triangles);
    bool isBlocked(Vec3 origin, Vec3 direction) const;

    Vec3 centre_;
    double scale_ = 1.0; ///< to a unit cube: rays are traced in floats
    std::unique_ptr<std::remove_pointer_t<RTCDevice>, decltype(&rtcReleaseDevice)> device_;
    std::unique_ptr<std::remove_pointer_t<RTCScene>, decltype(&rtcReleaseScene)> scene_;
};

} // namespace unfold3d
