#pragma once

#include <cstddef>
#include <cstdint>

namespace uvtool
{

/// How often something was found, and where first.
struct Finding
{
    std::size_t count = 0;
    std::int64_t first = -1; ///< number of the triangle; -1 while the count is 0
    std::int64_t other = -1; ///< the second triangle where the finding is about two

    void add(std::size_t triangle, std::int64_t second = -1)
    {
        if (count++ == 0) {
            first = static_cast<std::int64_t>(triangle);
            other = second;
        }
    }
};

} // namespace uvtool
