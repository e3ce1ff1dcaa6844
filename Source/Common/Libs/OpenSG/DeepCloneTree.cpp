#include "OpenSG/DeepCloneTree.h"

#include <algorithm>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace osg
{

namespace
{

/// A class has no blanks in its name.
std::vector<std::string> namesIn(std::string_view list)
{
    constexpr std::string_view between = ", \t\r\n";
    std::vector<std::string> names;
    std::size_t begin = list.find_first_not_of(between);
    while (begin != std::string_view::npos) {
        const std::size_t end = std::min(list.find_first_of(between, begin), list.size());
        names.emplace_back(list.substr(begin, end - begin));
        begin = list.find_first_not_of(between, end);
    }
    return names;
}

/// Copies containers on demand, and fills the fields of the copies one after the other.
///
/// The last copy is filled first. Until then it holds what the original holds, and so is the last
/// of the holders of that core or attachment, where it is found at once, be there ever so many.
class Cloner
{
public:
    explicit Cloner(std::vector<std::string> sharedTypes) : _sharedTypes(std::move(sharedTypes)) {}

    /// What stands for a container in the new tree; its fields may be yet to be filled.
    FieldContainerPtr cloneOf(const FieldContainerPtr& original)
    {
        const auto found = _cloneOfOriginal.find(original.get());
        if (found != _cloneOfOriginal.end())
            return found->second;
        const FieldContainerPtr clone = isShared(*original) ? original : original->shallowCopy();
        _cloneOfOriginal.emplace(original.get(), clone);
        if (clone != original)
            _toFill.push_back({original, clone});
        return clone;
    }

    void fillAll()
    {
        const FieldDescription::Replacement replacementOf =
            [this](const FieldContainerPtr& original) { return cloneOf(original); };
        while (!_toFill.empty()) { // grows on the way
            const auto [original, clone] = _toFill.back();
            _toFill.pop_back();
            const FieldContainerType& type = original->getType();
            for (unsigned field = 1; field <= type.getNumFieldDescs(); ++field)
                if (const auto copyContainers = type.getFieldDesc(field)->copyContainers)
                    copyContainers(*original, *clone, replacementOf);
        }
    }

private:
    struct Copied
    {
        FieldContainerPtr original;
        FieldContainerPtr clone;
    };

    [[nodiscard]] bool isShared(const FieldContainer& container) const
    {
        const FieldContainerType& type = container.getType();
        return !type.isDerivedFrom(Node::getClassType()) &&
               std::any_of(_sharedTypes.begin(), _sharedTypes.end(),
                           [&](const std::string& name) { return type.isDerivedFrom(name); });
    }

    std::vector<std::string> _sharedTypes;
    std::unordered_map<const FieldContainer*, FieldContainerPtr>
        _cloneOfOriginal; ///< looked up only
    std::vector<Copied> _toFill;
};

} // namespace

NodePtr deepCloneTree(const NodePtr& root, const std::string& sharedTypes)
{
    if (root == NullFC)
        return {};
    Cloner cloner(namesIn(sharedTypes));
    const FieldContainerPtr clone = cloner.cloneOf(root);
    cloner.fillAll();
    return dcast<Node>(clone);
}

} // namespace osg
