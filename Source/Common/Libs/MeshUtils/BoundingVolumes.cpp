#include "MeshUtils/BoundingVolumes.h"

#include <embree3/rtcore.h>

#include <memory>
#include <new>
#include <utility>

namespace
{

constexpr unsigned int Width = 4;
constexpr unsigned int LeafSize = 4;

SearchBox boxFrom(const RTCBounds& bounds)
{
    return {{bounds.lower_x, bounds.lower_y, bounds.lower_z},
            {bounds.upper_x, bounds.upper_y, bounds.upper_z}};
}

/// A subtree as Embree makes it, on whatever thread: a leaf if it has triangles.
struct Subtree
{
    unsigned int childCount = 0;
    unsigned int triangleCount = 0;
    std::array<Subtree*, Width> children = {};
    std::array<SearchBox, Width> boxes = {};
    std::array<unsigned int, LeafSize> triangles = {};
};

void* createSubtree(RTCThreadLocalAllocator allocator)
{
    return new (rtcThreadLocalAlloc(allocator, sizeof(Subtree), 16)) Subtree();
}

void* createNode(RTCThreadLocalAllocator allocator, unsigned int /*childCount*/, void* /*user*/)
{
    return createSubtree(allocator);
}

void setChildren(void* node, void** children, unsigned int childCount, void* /*user*/)
{
    auto& subtree = *static_cast<Subtree*>(node);
    subtree.childCount = childCount;
    for (unsigned int i = 0; i < childCount; ++i)
        subtree.children[i] = static_cast<Subtree*>(children[i]);
}

void setBounds(void* node, const RTCBounds** bounds, unsigned int childCount, void* /*user*/)
{
    for (unsigned int i = 0; i < childCount; ++i)
        static_cast<Subtree*>(node)->boxes[i] = boxFrom(*bounds[i]);
}

void* createLeaf(RTCThreadLocalAllocator allocator, const RTCBuildPrimitive* primitives,
                 std::size_t count, void* /*user*/)
{
    auto* const leaf = static_cast<Subtree*>(createSubtree(allocator));
    leaf->triangleCount = static_cast<unsigned int>(count);
    for (std::size_t i = 0; i < count; ++i)
        leaf->triangles[i] = primitives[i].primID;
    return leaf;
}

std::vector<RTCBuildPrimitive> primitivesOf(std::span<const SortedTriangle> triangles,
                                            const SearchSpace& space)
{
    std::vector<RTCBuildPrimitive> primitives;
    primitives.reserve(triangles.size());
    for (const SortedTriangle& triangle : triangles) {
        const SearchBox box = space.boxOf(triangle);
        primitives.push_back({box.lower[0], box.lower[1], box.lower[2], 0, box.upper[0],
                              box.upper[1], box.upper[2],
                              static_cast<unsigned int>(primitives.size())});
    }
    return primitives;
}

RTCBuildArguments buildArguments(RTCBVH bvh, std::vector<RTCBuildPrimitive>& primitives)
{
    RTCBuildArguments arguments = rtcDefaultBuildArguments();
    arguments.maxBranchingFactor = Width;
    arguments.maxLeafSize = LeafSize;
    arguments.maxDepth = BoxTree<Width>::MaxDepth - 8;
    arguments.sahBlockSize = LeafSize;
    arguments.bvh = bvh;
    arguments.primitives = primitives.data();
    arguments.primitiveCount = primitives.size();
    arguments.primitiveArrayCapacity = primitives.size();
    arguments.createNode = createNode;
    arguments.setNodeChildren = setChildren;
    arguments.setNodeBounds = setBounds;
    arguments.createLeaf = createLeaf;
    return arguments;
}

/// Lays a finished tree out: nodes depth first, triangles in the order of their leaves.
class Layout
{
public:
    Layout(BoxTree<Width>& tree, std::size_t triangleCount) : tree_(tree)
    {
        order_.reserve(triangleCount);
        tree_.nodes.reserve(triangleCount / 4);
    }

    void addRoot(const Subtree& root)
    {
        if (root.triangleCount == 0) {
            addNode(root);
            return;
        }
        constexpr float far = SearchSpace::Farthest;
        tree_.nodes.emplace_back();
        addLeaf(0, 0, root, {{-far, -far, -far}, {far, far, far}});
    }
    [[nodiscard]] std::span<const unsigned int> order() const { return order_; }

private:
    std::uint32_t addNode(const Subtree& subtree)
    {
        const auto number = static_cast<std::uint32_t>(tree_.nodes.size());
        tree_.nodes.emplace_back();
        for (unsigned int lane = 0; lane < subtree.childCount; ++lane) {
            const Subtree& child = *subtree.children[lane];
            if (child.triangleCount > 0) {
                addLeaf(number, lane, child, subtree.boxes[lane]);
                continue;
            }
            const std::uint32_t numberOfChild = addNode(child);
            tree_.nodes[number].setChild(lane, subtree.boxes[lane], numberOfChild, 0);
        }
        return number;
    }

    void addLeaf(std::uint32_t parent, unsigned int lane, const Subtree& leaf, const SearchBox& box)
    {
        tree_.nodes[parent].setChild(lane, box, static_cast<std::uint32_t>(order_.size()),
                                     leaf.triangleCount);
        order_.insert(order_.end(), leaf.triangles.begin(),
                      leaf.triangles.begin() + leaf.triangleCount);
    }

    BoxTree<Width>& tree_;
    std::vector<unsigned int> order_;
};

} // namespace

BoxTree<4> buildBoundingVolumes(SurfaceTriangles& triangles)
{
    BoxTree<Width> tree;
    if (triangles.isEmpty())
        return tree;
    tree.space = SearchSpace(triangles.packed());
    std::vector<RTCBuildPrimitive> primitives = primitivesOf(triangles.packed(), tree.space);
    const auto freeDevice = [](RTCDevice device) { rtcReleaseDevice(device); };
    const auto freeBvh = [](RTCBVH bvh) { rtcReleaseBVH(bvh); };
    const std::unique_ptr<RTCDeviceTy, decltype(freeDevice)> device(rtcNewDevice(nullptr));
    if (!device)
        return tree;
    const std::unique_ptr<RTCBVHTy, decltype(freeBvh)> bvh(rtcNewBVH(device.get()));
    const RTCBuildArguments arguments = buildArguments(bvh.get(), primitives);
    if (const auto* const root = static_cast<const Subtree*>(rtcBuildBVH(&arguments))) {
        Layout layout(tree, triangles.packed().size());
        layout.addRoot(*root);
        triangles.reorder(layout.order());
    }
    return tree;
}
