#include "OpenSG/Traverse.h"

#include <vector>

namespace osg
{

unsigned traverse(const NodePtr& root, const std::function<unsigned(NodePtr&)>& visitor)
{
    std::vector<NodePtr> waiting; // the next one is the last
    if (root)
        waiting.push_back(root);
    while (!waiting.empty()) {
        NodePtr node = waiting.back();
        waiting.pop_back();
        const unsigned answer = visitor(node);
        if (answer == TraverseResult::Quit)
            return TraverseResult::Quit;
        if (answer == TraverseResult::Skip || node == NullFC)
            continue;
        for (unsigned i = node->getNChildren(); i-- > 0;)
            waiting.push_back(node->getChild(i));
    }
    return TraverseResult::Continue;
}

} // namespace osg
