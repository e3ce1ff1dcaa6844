#include "report/EditText.h"

#include "report/Remarks.h"

#include <array>
#include <cstdio>

namespace uvtool
{

std::string textOfBounds(const UVBox& bounds)
{
    std::array<char, 128> text{};
    std::snprintf(text.data(), text.size(), "%.4g %.4g to %.4g %.4g",
                  static_cast<double>(bounds.lo[0]), static_cast<double>(bounds.lo[1]),
                  static_cast<double>(bounds.hi[0]), static_cast<double>(bounds.hi[1]));
    return text.data();
}

std::vector<std::string> textOfEdit(const Report& report)
{
    EditReport all;
    for (const GeometryReport& geometry : report.geometries) {
        if (!geometry.edit)
            continue;
        all.before += geometry.edit->before;
        all.after += geometry.edit->after;
        all.islands += geometry.edit->islands;
        all.islandsMoved += geometry.edit->islandsMoved;
    }
    if (all.islands == 0)
        return {};
    std::array<char, 96> density{};
    std::snprintf(density.data(), density.size(), "%.4g in UV for 1 in the scene, now %.4g",
                  all.before.texelDensity(), all.after.texelDensity());
    return {std::to_string(all.islandsMoved) + " of " + counted(all.islands, "island", "islands") +
                " moved; bounds: " + textOfBounds(all.before.bounds) + ", now " +
                textOfBounds(all.after.bounds),
            std::string("texel density: ") + density.data()};
}

} // namespace uvtool
