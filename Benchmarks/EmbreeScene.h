#pragma once

#include "OpenSG/Geometry.h"
#include "OpenSG/Vector.h"

#include <embree3/rtcore.h>

namespace bench
{

/// Embree's own queries, driven the plain way: a scene with one triangle mesh; for closest points a
/// callback that measures a triangle in float, and a search that starts with all of space; for rays
/// one at a time.
class EmbreeScene
{
public:
    explicit EmbreeScene(const osg::GeometryPtr& geometry);
    ~EmbreeScene();
    EmbreeScene(const EmbreeScene&) = delete;
    EmbreeScene& operator=(const EmbreeScene&) = delete;

    /// The triangle that is closest or hit first, and how far it is.
    struct Answer
    {
        unsigned int triangle = 0;
        float distance = 0;
    };
    [[nodiscard]] Answer closest(const osg::Pnt3f& point) const;
    /// The distance counts in lengths of the direction; 0 without a hit.
    [[nodiscard]] Answer firstHit(const osg::Pnt3f& origin, const osg::Vec3f& direction) const;

private:
    void addMesh(const osg::GeometryPtr& geometry);

    RTCDevice device_;
    RTCScene scene_;
};

} // namespace bench
