#pragma once

#include <string>
#include <utility>
#include <vector>

namespace unfold3d
{

/// Something about the layout of an island that its user should know.
struct LayoutWarning
{
    LayoutWarning(std::string sentence, std::vector<std::vector<int>> where = {})
        : text(std::move(sentence)), places(std::move(where))
    {}
    bool operator==(const LayoutWarning&) const = default;

    std::string text;                     ///< a sentence that doesn't name the island
    std::vector<std::vector<int>> places; ///< vertices of the island, those of each place together
};

} // namespace unfold3d
