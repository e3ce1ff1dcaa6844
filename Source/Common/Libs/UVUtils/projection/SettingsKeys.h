#pragma once

#include "UVUtils/model/kyUVTypes.h"

/// The keys under which settings stand on a node, without the prefix of the slot. Those of a single
/// projection are told where it reads and writes them.
namespace SettingsKeys
{

struct Vec2Keys
{
    const char* x;
    const char* y;
};
struct Vec3Keys
{
    const char* x;
    const char* y;
    const char* z;
};

inline constexpr const char* Method = "TMProjectionMethod";
inline constexpr const char* KeepAspectRatio = "TMKeepAspectRatio";
inline constexpr const char* AspectRatio = "TMAspectRatio";
inline constexpr Vec2Keys TextureSize{"TMSizeX", "TMSizeY"};
inline constexpr Vec2Keys TextureScale{"TMScaleX", "TMScaleY"};
inline constexpr Vec2Keys TextureOffset{"TMOffsetX", "TMOffsetY"};
/// No longer written; stands without a prefix for all slots.
inline constexpr const char* LegacyScaleBehavior = "TMScaleBehaviour";

/// What comes before each key of a slot: slot 1, the one of light maps, has keys of its own.
inline const char* prefixOf(kyUVTypes::UVSet uvSet)
{
    return uvSet == kyUVTypes::UVSet1 ? "LM_" : "";
}

} // namespace SettingsKeys
