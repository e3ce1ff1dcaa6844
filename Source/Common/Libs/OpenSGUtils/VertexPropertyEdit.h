#pragma once

#include "OpenSG/ChangeNotice.h"
#include "OpenSG/Geometry.h"
#include "OpenSG/RefPtr.h"
#include "OpenSG/WritableProperty.h"

#include <vector>

/// A rewriting of all vertex properties of a geometry (positions, normals, both colours, all
/// texture slots) that tells of them once everything is in place, so that no listener meets
/// properties that don't fit each other.
class VertexPropertyEdit
{
public:
    /// Calls `rewrite` with each property that isn't null or empty. One that others hold too is
    /// replaced by a copy first.
    template <class Rewrite>
    VertexPropertyEdit(const osg::GeometryPtr& geometry, const Rewrite& rewrite)
        : geometry_(geometry)
    {
        for (unsigned n = 0; n < osg::Geometry::VertexPropertyCount; ++n) {
            const osg::GeoPropertyPtr property = geometry->getVertexProperty(n);
            if (!property || property->getSize() == 0)
                continue;
            properties_.push_back(osg::writable(property));
            rewrite(*properties_.back());
            geometry->setVertexProperty(n, properties_.back());
            fields_ |= osg::Geometry::vertexPropertyFieldMask(n);
        }
    }

    /// One notice for each property that was rewritten and one for the geometry with their fields;
    /// none if there were none.
    void notify() const
    {
        for (const auto& property : properties_)
            osg::notifyChanged(property.get(), osg::FieldMask::all());
        if (fields_.any())
            osg::notifyChanged(geometry_, fields_);
    }

private:
    osg::GeometryPtr geometry_;
    std::vector<osg::RefPtr<osg::GeoProperty>> properties_; ///< held, a notice may replace them
    osg::FieldMask fields_;
};
