#pragma once

#include "OpenSG/Vector.h"

#include <vector>

/// The control points of a lattice, as a number of rows and columns over a rectangle of UVs, and
/// what a Bézier surface of that size is evaluated with. One of degree n has n + 1 points along a
/// direction and the binomial coefficients of n.
struct LatticeGrid
{
    /// Row 34 is the last one of which all coefficients fit into 32 bits.
    static constexpr unsigned int MaxRes = 35;

    unsigned int resU = 0; ///< control points along u and v
    unsigned int resV = 0;
    osg::Vec2f min;
    osg::Vec2f max;
    /// [k][j] k over j, k! / (j! (k - j)!) in double and truncated: from row 24 on, where the
    /// factorials are rounded, some are 1 too low. The table never gets shorter.
    std::vector<std::vector<unsigned int>> binomials;

    /// Can there be a grid like this? From 2 to MaxRes points, and a rectangle that is one.
    static bool isPossible(unsigned int resU, unsigned int resV, const osg::Vec2f& min,
                           const osg::Vec2f& max);
    /// Takes over what isPossible has accepted.
    void setUp(unsigned int resU, unsigned int resV, const osg::Vec2f& min, const osg::Vec2f& max);
};
