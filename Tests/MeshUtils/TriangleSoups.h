#pragma once

#include "OpenSG/TinyGeometry.h"

#include <random>
#include <string>
#include <vector>

/// Triangles and points around them, as hard on a search as they come. The same on every run.
struct Soup
{
    std::string name;
    osg::RefPtr<osg::Geometry> geometry;
    std::vector<osg::Pnt3f> points;
};

/// Loose triangles, grids with exact ties, slivers and collapsed triangles, copies of one triangle,
/// ids out of range, corners that are no numbers, all far off, tiny and huge; with points on
/// vertices, in the middle of edges, nearby, and far away.
std::vector<Soup> hardSoups();

/// n x n unit squares of two triangles, in the plane z = 0 with its corner in the origin.
osg::RefPtr<osg::Geometry> flatGrid(unsigned int n);

osg::RefPtr<osg::Geometry> soupOf(const std::vector<osg::Pnt3f>& positions, const tiny::Ids& ids);

/// Each component between -size and size.
osg::Pnt3f randomPoint(std::mt19937& random, float size);
