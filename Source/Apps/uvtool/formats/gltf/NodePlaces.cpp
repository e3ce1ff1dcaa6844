#include "formats/gltf/NodePlaces.h"

#include <algorithm>
#include <cmath>
#include <optional>
#include <utility>

namespace uvtool
{
namespace
{

SceneMatrix product(const SceneMatrix& a, const SceneMatrix& b)
{
    SceneMatrix c{};
    for (std::size_t column = 0; column < 4; ++column)
        for (std::size_t row = 0; row < 4; ++row)
            for (std::size_t k = 0; k < 4; ++k)
                c[4 * column + row] += a[4 * k + row] * b[4 * column + k];
    return c;
}

/// A member that is a list of N numbers; `otherwise` when there is none.
template <std::size_t N>
std::array<double, N> numbers(const GltfObject& node, const char* key,
                              const std::array<double, N>& otherwise)
{
    if (!node.has(key))
        return otherwise;
    const Json& list = node.json()[key];
    const bool isGood =
        list.is_array() && list.size() == N &&
        std::all_of(list.begin(), list.end(), [](const Json& n) { return n.is_number(); });
    if (!isGood)
        node.fail(std::string("has a ") + key + " that is no list of " + std::to_string(N) +
                  " numbers");
    std::array<double, N> values{};
    std::transform(list.begin(), list.end(), values.begin(),
                   [](const Json& n) { return n.get<double>(); });
    return values;
}

SceneMatrix localMatrix(const GltfObject& node)
{
    const SceneMatrix identity{1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1};
    if (node.has("matrix"))
        return numbers(node, "matrix", identity);
    const auto [x, y, z, w] = numbers<4>(node, "rotation", {0, 0, 0, 1});
    const auto scale = numbers<3>(node, "scale", {1, 1, 1});
    const auto move = numbers<3>(node, "translation", {0, 0, 0});
    SceneMatrix matrix{1 - 2 * (y * y + z * z),
                       2 * (x * y + z * w),
                       2 * (x * z - y * w),
                       0,
                       2 * (x * y - z * w),
                       1 - 2 * (x * x + z * z),
                       2 * (y * z + x * w),
                       0,
                       2 * (x * z + y * w),
                       2 * (y * z - x * w),
                       1 - 2 * (x * x + y * y),
                       0,
                       move[0],
                       move[1],
                       move[2],
                       1};
    for (std::size_t column = 0; column < 3; ++column)
        for (std::size_t row = 0; row < 3; ++row)
            matrix[4 * column + row] *= scale[column];
    return matrix;
}

/// Walks the trees of nodes, each node once.
class NodeWalk
{
public:
    explicit NodeWalk(const Json& json)
        : json_(json), nodeCount_(gltfArray(json, "nodes").size()), isVisited_(nodeCount_, false),
          places_(gltfArray(json, "meshes").size())
    {}

    std::vector<SceneMatrix> walk()
    {
        walkDefaultScene();
        // Nodes outside the scene: roots before their children.
        const std::vector<bool> isChild = findChildren();
        for (std::size_t node = 0; node < nodeCount_; ++node) {
            if (!isChild[node] && !isVisited_[node])
                walkFrom(node);
        }
        for (std::size_t node = 0; node < nodeCount_; ++node) {
            if (!isVisited_[node])
                nodeObject(node).fail("is its own ancestor");
        }
        std::vector<SceneMatrix> places;
        places.reserve(places_.size());
        for (const std::optional<SceneMatrix>& place : places_)
            places.push_back(place.value_or(SceneMatrix{1, 0, 0, 0, 0, 1, 0, 0, //
                                                        0, 0, 1, 0, 0, 0, 0, 1}));
        return places;
    }

private:
    GltfObject nodeObject(std::size_t node) const
    {
        return gltfElement(json_, "nodes", "node", node);
    }

    /// The list of nodes `key`; numbers are checked.
    std::vector<std::size_t> nodesIn(const GltfObject& owner, const char* key) const
    {
        std::vector<std::size_t> nodes;
        if (!owner.has(key))
            return nodes;
        const Json& list = owner.json()[key];
        if (!list.is_array())
            owner.fail(std::string("has ") + key + " that are no list");
        for (const Json& value : list) {
            const std::optional<std::size_t> node = wholeNumber(value);
            if (!node || *node >= nodeCount_)
                owner.fail("names a node that is not in the file");
            nodes.push_back(*node);
        }
        return nodes;
    }

    void walkDefaultScene()
    {
        const std::size_t sceneCount = gltfArray(json_, "scenes").size();
        if (sceneCount == 0)
            return;
        const GltfObject root(json_, "the file");
        const std::size_t scene = root.index("scene", sceneCount).value_or(0);
        for (const std::size_t node :
             nodesIn(gltfElement(json_, "scenes", "scene", scene), "nodes"))
            walkFrom(node);
    }

    std::vector<bool> findChildren() const
    {
        std::vector<bool> isChild(nodeCount_, false);
        for (std::size_t node = 0; node < nodeCount_; ++node) {
            for (const std::size_t child : nodesIn(nodeObject(node), "children"))
                isChild[child] = true;
        }
        return isChild;
    }

    void walkFrom(std::size_t root)
    {
        if (isVisited_[root])
            return;
        std::vector<std::pair<std::size_t, SceneMatrix>> open;
        const auto enter = [&](std::size_t node, const SceneMatrix* parent) {
            if (isVisited_[node])
                nodeObject(node).fail("has two parents");
            isVisited_[node] = true;
            const SceneMatrix local = localMatrix(nodeObject(node));
            open.emplace_back(node, parent == nullptr ? local : product(*parent, local));
        };
        enter(root, nullptr);
        while (!open.empty()) {
            const auto [node, place] = open.back();
            open.pop_back();
            visit(nodeObject(node), place);
            const std::vector<std::size_t> children = nodesIn(nodeObject(node), "children");
            for (auto child = children.rbegin(); child != children.rend(); ++child)
                enter(*child, &place);
        }
    }

    void visit(const GltfObject& node, const SceneMatrix& place)
    {
        const std::optional<std::size_t> mesh = node.index("mesh", places_.size());
        if (!mesh || places_[*mesh])
            return;
        if (!std::all_of(place.begin(), place.end(), [](double x) { return std::isfinite(x); }))
            node.fail("has a place that isn't finite");
        places_[*mesh] = place;
    }

    const Json& json_;
    const std::size_t nodeCount_;
    std::vector<bool> isVisited_;
    std::vector<std::optional<SceneMatrix>> places_;
};

} // namespace

std::vector<SceneMatrix> placesOfMeshes(const Json& json)
{
    return NodeWalk(json).walk();
}

} // namespace uvtool
