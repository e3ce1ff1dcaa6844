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
