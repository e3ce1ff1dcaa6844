#pragma once

#include "OpenSG/Geometry.h"

#include <vector>

/// The edges of one geometry that are held straight, as they are kept for an undo.
///
/// Two vertex ids an edge, one edge after the other; empty lists for a geometry without
/// constraints.
struct UVConstraintData
{
    std::vector<unsigned int> edgesU; ///< held at one v: horizontal
    std::vector<unsigned int> edgesV; ///< held at one u: vertical

    bool operator==(const UVConstraintData&) const = default;
};

/// The constraints of a geometry as a record: one entry, with empty lists where it has none.
/// An empty record for a null geometry.
std::vector<UVConstraintData> getUVConstraints(const osg::GeometryPtr& geometry);

/// Gives a geometry the constraints of a record, with notices: its first entry replaces what is
/// there, and one without edges takes the attachment away. An empty record says nothing about
/// constraints and leaves them alone, and so does a null geometry.
void setUVConstraints(const osg::GeometryPtr& geometry,
                      const std::vector<UVConstraintData>& constraints);

/// The edges of one direction, two vertex ids each; directions are numbered as in
/// osg::UVConstraintAttachment. Empty for a null geometry and for one without constraints.
std::vector<unsigned int> getUVConstraints(const osg::GeometryPtr& geometry,
                                           unsigned int direction);

/// Gives a geometry these edges of one direction, two vertex ids each, with notices; the other
/// direction stays. With the last edge the attachment goes. Leaves a null geometry alone.
void setUVConstraints(const osg::GeometryPtr& geometry, unsigned int direction,
                      const std::vector<unsigned int>& edges);
