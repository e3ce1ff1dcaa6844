#pragma once

#include "projection/SettingOptions.h"

#include <cstddef>
#include <string>

namespace uvtool
{

/// With what settings the library projected.
struct ProjectionReport
{
    std::string kind; ///< as the command calls it
    bool isZUp = false;
    NamedSettings settings;
    std::string mode; ///< triplanar: as the option calls it
};

/// What a projection made of a geometry.
struct ProjectedCounts
{
    std::size_t degenerateTriangles = 0;  ///< without an area in the scene
    std::size_t trianglesWithoutAxis = 0; ///< that no side of the box was found for
    std::size_t verticesBefore = 0;       ///< places in space
    std::size_t vertices = 0;             ///< places in space and in UV

    ProjectedCounts& operator+=(const ProjectedCounts& other)
    {
        degenerateTriangles += other.degenerateTriangles;
        trianglesWithoutAxis += other.trianglesWithoutAxis;
        verticesBefore += other.verticesBefore;
        vertices += other.vertices;
        return *this;
    }
};

} // namespace uvtool
