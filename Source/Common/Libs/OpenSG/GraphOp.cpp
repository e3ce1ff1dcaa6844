#include "OpenSG/GraphOp.h"

namespace osg
{

GraphOp::GraphOp(const char* name) : _name(name ? name : "") {}

GraphOp::~GraphOp() = default;

bool GraphOp::traverse(const NodePtr& root)
{
    const unsigned result = osg::traverse(
        root, [this](NodePtr& node) { return traverseEnter(node); },
        [this](NodePtr& node) { return traverseLeave(node); });
    return result != TraverseResult::Quit;
}

} // namespace osg
