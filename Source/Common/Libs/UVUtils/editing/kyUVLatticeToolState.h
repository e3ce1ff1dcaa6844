#pragma once

#include "OpenSG/Vector.h"

#include <map>
#include <vector>

/// What an application keeps of its lattice tool to come back to it: the grid, what the user did to
/// it, and the UVs that it started from. The library makes and destroys it; filling and reading it
/// is the application's.
///
/// Owns the meta data in metaDataOfNode, so it can't be copied: an application takes what it needs
/// over with kyUVUtils::setMetaDataofLatticeDeformer, which copies.
struct kyUVLatticeToolState
{
    kyUVLatticeToolState() = default;
    /// Frees the meta data, each by kyUVUtils::destroyLatticeMetaData.
    ~kyUVLatticeToolState();
    kyUVLatticeToolState(const kyUVLatticeToolState&) = delete;
    kyUVLatticeToolState& operator=(const kyUVLatticeToolState&) = delete;

    osg::Vec2f min; ///< the rectangle
    osg::Vec2f max;
    unsigned int resU = 0; ///< control points along u and v
    unsigned int resV = 0;
    float amount = 0;
    std::vector<osg::Vec2f> controlPoints;    ///< [resU * resV] row by row, u fastest
    std::vector<unsigned int> selectedPoints; ///< places in controlPoints

    /// Of each deformer, by the container id of its node, from
    /// kyUVUtils::getMetaDataofLatticeDeformer.
    std::map<unsigned int, void*> metaDataOfNode;
};
