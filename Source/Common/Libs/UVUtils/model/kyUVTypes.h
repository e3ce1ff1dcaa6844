#pragma once

#include <cstdint>

/// The small numbers that every operation of the library passes around. All are plain 32-bit
/// enumerations, and the number is what is stored and compared.
namespace kyUVTypes
{

/// A texture coordinate slot of a geometry: slot 0 is its `TexCoords` property, slot 1
/// `TexCoords1`, and so on to slot 7.
enum UVSet : std::int32_t
{
    UVSet0 = 0,
    UVSet1 = 1,
    UVSet2 = 2,
    UVSet3 = 3,
    UVSet4 = 4,
    UVSet5 = 5,
    UVSet6 = 6,
    UVSet7 = 7
};

/// What became of an operation of the solver, or of a world size operation.
enum ReturnCode : std::int32_t
{
    Success = 0,  ///< it ran, and its result was assigned
    Failure = 1,  ///< it failed; nothing was assigned; the message is logged, or the caller logs it
    Cancelled = 2 ///< the user stopped it; nothing was assigned and nothing is logged
};

/// The UV direction in which an edge is held straight.
enum EdgeConstraint : std::int32_t
{
    Horizontal = 0, ///< both ends at one v
    Vertical = 1    ///< both ends at one u
};

/// How the solver looks for seams.
enum SeamMode : std::int32_t
{
    Organic = 1,
    Manufactured = 2,
    Baking = 3
};

/// How the packer turns an island before it tries the allowed rotations. The numbers are the
/// solver's own.
enum PreRotateMode : std::int32_t
{
    PreRotate0 = 0,
    PreRotate1 = 1,
    PreRotate2 = 2,
    PreRotate3 = 3,
    PreRotate4 = 4,
    PreRotate5 = 5
};

/// How the packer scales the islands before it places them. The solver's numbers are 0, 1 and 3.
enum PreScaleMode : std::int32_t
{
    PreScale0 = 0,
    PreScale1 = 1,
    PreScale2 = 2
};

/// How the packer scales the whole layout at the end. The solver's numbers are 1, 2 and 3.
enum PostScaleMode : std::int32_t
{
    PostScale0 = 0,
    PostScale1 = 1,
    PostScale2 = 2
};

/// Which of several tiles an island goes to.
enum TileAssignMode : std::int32_t
{
    TileOfBoxCenter = 0, ///< the solver's word "BBoxCenter"
    TileDistribute = 1   ///< the solver's word "Distribute"
};

/// The kind of projection that a node has stored.
enum UVProjectionMode : std::int32_t
{
    NoProjection = 0, ///< also what is read when nothing is stored
    Planar = 1,
    Triplanar = 2,
    Cylindrical = 3
};

} // namespace kyUVTypes
