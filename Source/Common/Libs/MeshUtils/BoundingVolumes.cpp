#include "MeshUtils/BoundingVolumes.h"

#include <algorithm>
#include <utility>

namespace
{

constexpr std::size_t LeafSize = BoxTree::PacketSize;
constexpr std::size_t BinCount = 16;
/// From this depth on ranges are halved, which bounds the depth whatever the triangles are.
constexpr unsigned int HalvingDepth = BoxTree::MaxDepth - 12;

/// A box of which all sides are compared in one go. The last lane is free.
struct LaneBox
{
    Lanes lower = lanesOf(std::numeric_limits<float>::infinity());
    Lanes upper = -lanesOf(std::numeric_limits<float>::infinity());

    void widen(const LaneBox& other)
    {
        lower = smaller(other.lower, lower);
        upper = larger(other.upper, upper);
    }
    /// Half the surface; 0 for an empty box.
    [[nodiscard]] float area() const
    {
        const Lanes size = larger(upper - lower, Lanes{});
        return size[0] * size[1] + size[1] * size[2] + size[2] * size[0];
    }
    [[nodiscard]] unsigned int longestAxis() const
    {
        const Lanes size = upper - lower;
        const unsigned int axis = size[1] > size[0] ? 1 : 0;
        return size[2] > size[axis] ? 2 : axis;
    }
    [[nodiscard]] SearchBox searchBox() const
    {
        return {{lower[0], lower[1], lower[2]}, {upper[0], upper[1], upper[2]}};
    }
};

/// A triangle's box, with the halves of its place in the free lanes: whole numbers, so that no
/// operation on lanes meets an odd float.
struct Item
{
    LaneBox box;

    Item(const SearchBox& from, std::size_t place)
    {
        box.lower =
            Lanes{from.lower[0], from.lower[1], from.lower[2], static_cast<float>(place & 0xFFFFU)};
        box.upper =
            Lanes{from.upper[0], from.upper[1], from.upper[2], static_cast<float>(place >> 16U)};
    }
    [[nodiscard]] unsigned int place() const
    {
        return static_cast<unsigned int>(box.lower[3]) | static_cast<unsigned int>(box.upper[3])
                                                             << 16U;
    }
};

struct Range
{
    std::size_t begin = 0;
    std::size_t end = 0;
    LaneBox box;

    [[nodiscard]] std::size_t count() const { return end - begin; }
    [[nodiscard]] bool isLeaf() const { return count() <= LeafSize; }
};

/// Cuts the longest axis of a range in equal bins and deals items to them by their middles.
class Bins
{
public:
    explicit Bins(const LaneBox& box)
        : axis_(box.longestAxis()), lowest_(2 * box.lower[axis_]),
          perLength_(BinCount / std::max(2 * box.upper[axis_] - lowest_, 1e-37F))
    {}

    [[nodiscard]] std::size_t binOf(const Item& item) const
    {
        const float twiceMiddle = item.box.lower[axis_] + item.box.upper[axis_];
        const float bin = (twiceMiddle - lowest_) * perLength_;
        return static_cast<std::size_t>(std::clamp(bin, 0.F, static_cast<float>(BinCount - 1)));
    }
    void add(const Item& item)
    {
        const std::size_t bin = binOf(item);
        boxes_[bin].widen(item.box);
        ++counts_[bin];
    }

    /// Sets the boxes of both sides and returns the first bin of the upper one; 0 if all items lie
    /// in one bin.
    std::size_t bestSplit(LaneBox& lower, LaneBox& upper) const
    {
        std::array<LaneBox, BinCount> upperBoxes;
        std::array<float, BinCount> upperCosts = {};
        sweepDown(upperBoxes, upperCosts);
        LaneBox box;
        std::size_t count = 0;
        std::size_t best = 0;
        float bestCost = std::numeric_limits<float>::infinity();
        for (std::size_t bin = 1; bin < BinCount; ++bin) {
            box.widen(boxes_[bin - 1]);
            count += counts_[bin - 1];
            const float cost = costOf(box, count) + upperCosts[bin];
            if (count == 0 || upperCosts[bin] < 0 || cost >= bestCost)
                continue;
            bestCost = cost;
            best = bin;
            lower = box;
            upper = upperBoxes[bin];
        }
        return best;
    }

private:
    /// Of looking into a box: as likely as its surface is large, as dear as it has packets.
    static float costOf(const LaneBox& box, std::size_t count)
    {
        const std::size_t packets = (count + LeafSize - 1) / LeafSize;
        return box.area() * static_cast<float>(packets);
    }
    /// What lies from each bin on; a cost of -1 for nothing.
    void sweepDown(std::array<LaneBox, BinCount>& boxes, std::array<float, BinCount>& costs) const
    {
        LaneBox box;
        std::size_t count = 0;
        for (std::size_t bin = BinCount; bin-- > 0;) {
            box.widen(boxes_[bin]);
            count += counts_[bin];
            boxes[bin] = box;
            costs[bin] = count > 0 ? costOf(box, count) : -1;
        }
    }

    unsigned int axis_;
    float lowest_; ///< twice the lower end, to go with the sum of an item's ends
    float perLength_;
    std::array<LaneBox, BinCount> boxes_;
    std::array<std::size_t, BinCount> counts_ = {};
};

class HierarchyBuilder
{
public:
    explicit HierarchyBuilder(std::span<const SortedTriangle> triangles)
    {
        tree_.space = SearchSpace(triangles);
        tree_.nodes.reserve(triangles.size() / BoxNode::Width);
        tree_.firstOfPacket.reserve(triangles.size() / 2);
        items_.reserve(triangles.size());
        for (const SortedTriangle& triangle : triangles)
            items_.emplace_back(tree_.space.boxOf(triangle), items_.size());
    }

    void build() { addNode(rangeOf(0, items_.size()), 0); }

    [[nodiscard]] std::vector<unsigned int> order() const
    {
        std::vector<unsigned int> order;
        order.reserve(items_.size());
        for (const Item& item : items_)
            order.push_back(item.place());
        return order;
    }
    BoxTree takeTree() { return std::move(tree_); }

private:
    using Ranges = std::array<Range, BoxNode::Width>;

    [[nodiscard]] Range rangeOf(std::size_t begin, std::size_t end) const
    {
        Range range{begin, end, {}};
        for (std::size_t i = begin; i < end; ++i)
            range.box.widen(items_[i].box);
        return range;
    }

    std::uint32_t addNode(const Range& range, unsigned int depth)
    {
        const auto number = static_cast<std::uint32_t>(tree_.nodes.size());
        tree_.nodes.emplace_back();
        Ranges children;
        const unsigned int count = splitInEight(range, depth, children);
        for (unsigned int lane = 0; lane < count; ++lane) {
            const Range& child = children[lane];
            const std::uint32_t first = child.isLeaf() ? tree_.addLeaf(child.begin, child.count())
                                                       : addNode(child, depth + 1);
            tree_.nodes[number].setChild(lane, child.box.searchBox(), first,
                                         child.isLeaf() ? static_cast<std::uint32_t>(child.count())
                                                        : 0);
        }
        return number;
    }

    /// Splits the largest part again and again. Returns how many parts there are, in the order of
    /// the items.
    unsigned int splitInEight(const Range& range, unsigned int depth, Ranges& parts)
    {
        parts[0] = range;
        unsigned int count = 1;
        for (; count < BoxNode::Width; ++count) {
            Range* largest = nullptr;
            for (unsigned int i = 0; i < count; ++i)
                if (!parts[i].isLeaf() && (!largest || parts[i].box.area() > largest->box.area()))
                    largest = &parts[i];
            if (!largest)
                break;
            const auto [lower, upper] = depth < HalvingDepth ? split(*largest) : halve(*largest);
            *largest = lower;
            parts[count] = upper;
        }
        std::sort(parts.begin(), parts.begin() + count,
                  [](const Range& a, const Range& b) { return a.begin < b.begin; });
        return count;
    }

    std::pair<Range, Range> split(const Range& range)
    {
        Bins bins(range.box);
        for (std::size_t i = range.begin; i < range.end; ++i)
            bins.add(items_[i]);
        Range lower;
        Range upper;
        const std::size_t firstUpper = bins.bestSplit(lower.box, upper.box);
        if (firstUpper == 0)
            return halve(range);
        const auto at = [this](std::size_t i) {
            return items_.begin() + static_cast<std::ptrdiff_t>(i);
        };
        const auto middle = std::partition(at(range.begin), at(range.end), [&](const Item& item) {
            return bins.binOf(item) < firstUpper;
        });
        lower.begin = range.begin;
        lower.end = upper.begin = static_cast<std::size_t>(middle - items_.begin());
        upper.end = range.end;
        return {lower, upper};
    }

    [[nodiscard]] std::pair<Range, Range> halve(const Range& range) const
    {
        const std::size_t middle = range.begin + range.count() / 2;
        return {rangeOf(range.begin, middle), rangeOf(middle, range.end)};
    }

    std::vector<Item> items_;
    BoxTree tree_;
};

} // namespace

BoxTree buildBoundingVolumes(SurfaceTriangles& triangles)
{
    if (triangles.isEmpty())
        return BoxTree();
    HierarchyBuilder builder(triangles.packed());
    builder.build();
    triangles.reorder(builder.order());
    BoxTree tree = builder.takeTree();
    tree.finishLeaves(triangles.packed());
    return tree;
}
