#pragma once

#include "OpenSG/Geometry.h"
#include "OpenSG/GraphOp.h"

namespace osg
{

/// Removes the triangles without an area from all geometries that it walks over; see
/// DegenerateTriangles for which these are and what stays. This can't be undone.
class RemoveDegPolysGraphOp : public SingleTypeGraphOp<Geometry>
{
public:
    explicit RemoveDegPolysGraphOp(const char* name = "RemoveDegPolys");
    static const char* getClassname() { return "RemoveDegPolysGraphOp"; }

    [[nodiscard]] std::unique_ptr<GraphOp> create() const override;
    /// There are none.
    void setParams(std::string params) override;
    [[nodiscard]] std::string usage() const override;

    bool travNodeEnter(const NodePtr& node) override;
    bool travNodeLeave(const NodePtr& node) override;

    /// How many were removed so far, by all walks together.
    [[nodiscard]] unsigned int getRemovedPolysCount() const { return _removedPolysCount; }

    /// Would a walk remove anything from this geometry? False for null.
    [[nodiscard]] static bool hasDegenerateTriangles(const GeometryPtr& geometry);

private:
    unsigned int _removedPolysCount = 0;
};

} // namespace osg
