#include "OpenSG/Traverse.h"

#include <vector>

namespace osg
{

namespace
{

struct Visit
{
    NodePtr node;
    bool isOnTheWayBack = false;
};

} // namespace

unsigned traverse(const NodePtr& root, const std::function<unsigned(NodePtr&)>& visitor)
{
    return traverse(root, visitor, {});
}

unsigned traverse(const NodePtr& root, const std::function<unsigned(NodePtr&)>& enter,
                  const std::function<unsigned(NodePtr&)>& leave)
{
    std::vector<Visit> waiting; // the next one is the last
    if (root)
        waiting.push_back({root});
    while (!waiting.empty()) {
        auto [node, isOnTheWayBack] = waiting.back();
        waiting.pop_back();
        const unsigned answer = isOnTheWayBack ? leave(node) : enter(node);
        if (answer == TraverseResult::Quit)
            return TraverseResult::Quit;
        if (isOnTheWayBack || node == NullFC)
            continue;
        if (leave)
            waiting.push_back({node, true});
        if (answer == TraverseResult::Skip)
            continue;
        for (unsigned i = node->getNChildren(); i-- > 0;)
            waiting.push_back({node->getChild(i)});
    }
    return TraverseResult::Continue;
}

} // namespace osg
