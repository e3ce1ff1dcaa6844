#pragma once

#include "UVUtils/Meshes.h"
#include "UVUtils/model/kyUVTypes.h"

#include <cstdint>
#include <random>

/// What a random shell may have in it besides surfaces that fit.
struct ShellTraits
{
    bool nearlyEqual = true; ///< positions and UVs off by about the weld tolerance
    bool extraSheets = true; ///< third sheets on an edge, doubled sheets, point contacts
    bool outsiders = true;   ///< hidden and faulty surfaces, children that are no geometry
    bool degenerate = true;  ///< triangles that name a vertex twice, vertices that none names
    bool badNumbers = false; ///< NaNs and infinities
};

/// Whole numbers and chances, the same on every machine.
class Random
{
public:
    explicit Random(std::uint32_t seed) : engine_(seed) {}

    unsigned below(unsigned count) { return static_cast<unsigned>(engine_() % count); }
    unsigned between(unsigned low, unsigned high) { return low + below(high - low + 1); }
    bool oneIn(unsigned count) { return below(count) == 0; }

private:
    std::mt19937 engine_;
};

/// A shell made by cutting a surface of a few dozen triangles, flat, bent or closed to a ring,
/// into surfaces along random lines, with random UV seams. Surfaces have normals, indices of 16
/// or 32 bits, UVs in `slot` (or none there), and UVs of their own in the next slot.
osg::RefPtr<osg::Node> randomShell(std::uint32_t seed, kyUVTypes::UVSet slot = kyUVTypes::UVSet0,
                                   const ShellTraits& traits = {});

/// The whole surface as one plain geometry instead.
osg::RefPtr<osg::Node> randomPlain(std::uint32_t seed, kyUVTypes::UVSet slot = kyUVTypes::UVSet0,
                                   const ShellTraits& traits = {});

/// A shell that is regular all over: no edge, wherever it lies, is one of more than two triangles,
/// none has no area, and no two vertices nearly meet. Of three triangles at an edge, a build would
/// weld the two that are left when one is lifted.
osg::RefPtr<osg::Node> randomManifoldShell(std::uint32_t seed);
