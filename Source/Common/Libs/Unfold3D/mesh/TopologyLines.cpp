#include "Unfold3D/mesh/TopologyLines.h"

#include <utility>

namespace unfold3d
{

void TopologyLines::add(std::string line)
{
    if (count_++ < maxLines)
        kept_.push_back(std::move(line));
}

void TopologyLines::append(const TopologyLines& other)
{
    const int countAfter = count_ + other.count_;
    for (const std::string& line : other.kept_)
        add(line);
    count_ = countAfter;
}

std::vector<std::string> TopologyLines::lines() const
{
    std::vector<std::string> result = kept_;
    const int unsaid = count_ - static_cast<int>(kept_.size());
    if (unsaid > 0)
        result.push_back("... and " + std::to_string(unsaid) + " more");
    return result;
}

} // namespace unfold3d
