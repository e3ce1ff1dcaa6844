#pragma once

#include <string>
#include <string_view>
#include <vector>

/// Small things that are done to texts.
class kyString
{
public:
    kyString() = delete;

    /// All texts in one, with a separator between each two.
    ///
    /// skipEmpty  empty texts count for nothing, so that no two separators meet
    static std::string join(const std::vector<std::string>& strings, std::string_view separator,
                            bool skipEmpty = false);
};
