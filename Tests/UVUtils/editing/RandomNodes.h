#pragma once

#include "UVUtils/RandomShells.h"

#include <rapidcheck.h>

/// The slot that random nodes have their UVs in.
inline constexpr kyUVTypes::UVSet slot = kyUVTypes::UVSet0;

/// A shell, or a plain geometry.
inline osg::RefPtr<osg::Node> randomNode()
{
    const auto seed = *rc::gen::arbitrary<std::uint32_t>();
    return seed % 3 == 0 ? randomPlain(seed, slot) : randomShell(seed, slot);
}

/// Any triangles at all over a handful of vertices.
inline osg::GeometryPtr randomSoup()
{
    const auto vertexCount = *rc::gen::inRange(1U, 9U);
    Ids triangles = *rc::gen::container<Ids>(rc::gen::inRange(0U, vertexCount));
    triangles.resize(triangles.size() / 3 * 3);
    std::vector<osg::Pnt3f> positions;
    UVs uvs;
    for (unsigned v = 0; v < vertexCount; ++v) {
        positions.emplace_back(static_cast<float>(v), 0.F, 0.F);
        uvs.emplace_back(static_cast<float>(*rc::gen::inRange(-8, 8)) / 8,
                         0.125F * static_cast<float>(v));
    }
    const osg::GeometryPtr geometry = geometryOf(positions, triangles);
    geometry->setTexSlot(slot, tiny::texCoords(uvs));
    return geometry;
}
