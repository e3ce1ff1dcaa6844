#include "OpenSGUtils/RemoveDegPolysGraphOp.h"

#include "OpenSGUtils/DegenerateTriangles.h"

namespace osg
{

RemoveDegPolysGraphOp::RemoveDegPolysGraphOp(const char* name) : SingleTypeGraphOp(name) {}

std::unique_ptr<GraphOp> RemoveDegPolysGraphOp::create() const
{
    return std::make_unique<RemoveDegPolysGraphOp>();
}

void RemoveDegPolysGraphOp::setParams(std::string /*params*/) {}

std::string RemoveDegPolysGraphOp::usage() const
{
    return {};
}

bool RemoveDegPolysGraphOp::travNodeEnter(const NodePtr& node)
{
    const std::size_t count = DegenerateTriangles::remove(coreAs<Geometry>(node));
    _removedPolysCount += static_cast<unsigned int>(count);
    return true;
}

bool RemoveDegPolysGraphOp::travNodeLeave(const NodePtr& /*node*/)
{
    return true;
}

bool RemoveDegPolysGraphOp::hasDegenerateTriangles(const GeometryPtr& geometry)
{
    return DegenerateTriangles::hasAny(geometry);
}

} // namespace osg
