#pragma once

#include "OpenSG/Geometry.h"
#include "OpenSG/Vector.h"

#include <embree3/rtcore.h>

#include <span>
#include <vector>

namespace bench
{

/// Embree's own closest-point query, driven the plain way: a scene with one triangle mesh, a
/// callback that measures a triangle in float, and a search that starts with all of space.
class EmbreeClosest
{
public:
    explicit EmbreeClosest(const osg::GeometryPtr& geometry);
    ~EmbreeClosest();
    EmbreeClosest(const EmbreeClosest&) = delete;
    EmbreeClosest& operator=(const EmbreeClosest&) = delete;

    /// The triangle that is closest, and how far it is.
    struct Answer
    {
        unsigned int triangle = 0;
        float distance = 0;
    };
    [[nodiscard]] Answer find(const osg::Pnt3f& point) const;

private:
    void addMesh(const osg::GeometryPtr& geometry);

    RTCDevice device_;
    RTCScene scene_;
};

} // namespace bench
