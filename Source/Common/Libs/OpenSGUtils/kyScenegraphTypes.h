#pragma once

#include <cstdint>

/// Shared words of the scene graph's tools.
namespace kyScenegraphTypes
{

/// What a user may be kept from doing to a node. The numbers are stored in scenes.
enum Action : std::uint32_t
{
    EditTextureCoordinates = 27 ///< project, or change in any other way, its UVs
};

} // namespace kyScenegraphTypes
