#pragma once

#include "OpenSG/GeoPropertyKind.h"

#include <cstdint>

// The kinds of geometry properties. All members are those of GeoPropertyKind, GeoPropertyRole and
// GeoProperty; a class here only binds a name, a role and the type of the stored elements.

namespace osg
{

/// x, y, z: the kind of positions that a usable mesh has.
class GeoPositions3f final : public GeoPropertyKind<GeoPositions3f, GeoPositions, Pnt3f>
{
public:
    static constexpr const char* ClassName = "GeoPositions3f";

private:
    friend ConcreteContainer<GeoPositions3f, GeoPositions>;
    GeoPositions3f() = default;
    GeoPositions3f(const GeoPositions3f&) = default;
};

/// Homogeneous positions; no operation on meshes takes them.
class GeoPositions4f final : public GeoPropertyKind<GeoPositions4f, GeoPositions, Pnt4f>
{
public:
    static constexpr const char* ClassName = "GeoPositions4f";

private:
    friend ConcreteContainer<GeoPositions4f, GeoPositions>;
    GeoPositions4f() = default;
    GeoPositions4f(const GeoPositions4f&) = default;
};

class GeoNormals3f final : public GeoPropertyKind<GeoNormals3f, GeoNormals, Vec3f>
{
public:
    static constexpr const char* ClassName = "GeoNormals3f";

private:
    friend ConcreteContainer<GeoNormals3f, GeoNormals>;
    GeoNormals3f() = default;
    GeoNormals3f(const GeoNormals3f&) = default;
};

class GeoColors3f final : public GeoPropertyKind<GeoColors3f, GeoColors, Color3f>
{
public:
    static constexpr const char* ClassName = "GeoColors3f";

private:
    friend ConcreteContainer<GeoColors3f, GeoColors>;
    GeoColors3f() = default;
    GeoColors3f(const GeoColors3f&) = default;
};

class GeoColors4f final : public GeoPropertyKind<GeoColors4f, GeoColors, Color4f>
{
public:
    static constexpr const char* ClassName = "GeoColors4f";

private:
    friend ConcreteContainer<GeoColors4f, GeoColors>;
    GeoColors4f() = default;
    GeoColors4f(const GeoColors4f&) = default;
};

class GeoTexCoords1f final : public GeoPropertyKind<GeoTexCoords1f, GeoTexCoords, Vec1f>
{
public:
    static constexpr const char* ClassName = "GeoTexCoords1f";

private:
    friend ConcreteContainer<GeoTexCoords1f, GeoTexCoords>;
    GeoTexCoords1f() = default;
    GeoTexCoords1f(const GeoTexCoords1f&) = default;
};

/// u, v: the kind of texture coordinates that can be edited.
class GeoTexCoords2f final : public GeoPropertyKind<GeoTexCoords2f, GeoTexCoords, Vec2f>
{
public:
    static constexpr const char* ClassName = "GeoTexCoords2f";

private:
    friend ConcreteContainer<GeoTexCoords2f, GeoTexCoords>;
    GeoTexCoords2f() = default;
    GeoTexCoords2f(const GeoTexCoords2f&) = default;
};

class GeoTexCoords3f final : public GeoPropertyKind<GeoTexCoords3f, GeoTexCoords, Vec3f>
{
public:
    static constexpr const char* ClassName = "GeoTexCoords3f";

private:
    friend ConcreteContainer<GeoTexCoords3f, GeoTexCoords>;
    GeoTexCoords3f() = default;
    GeoTexCoords3f(const GeoTexCoords3f&) = default;
};

class GeoTexCoords4f final : public GeoPropertyKind<GeoTexCoords4f, GeoTexCoords, Vec4f>
{
public:
    static constexpr const char* ClassName = "GeoTexCoords4f";

private:
    friend ConcreteContainer<GeoTexCoords4f, GeoTexCoords>;
    GeoTexCoords4f() = default;
    GeoTexCoords4f(const GeoTexCoords4f&) = default;
};

class GeoIndicesUI16 final : public GeoPropertyKind<GeoIndicesUI16, GeoIndices, std::uint16_t>
{
public:
    static constexpr const char* ClassName = "GeoIndicesUI16";

private:
    friend ConcreteContainer<GeoIndicesUI16, GeoIndices>;
    GeoIndicesUI16() = default;
    GeoIndicesUI16(const GeoIndicesUI16&) = default;
};

class GeoIndicesUI32 final : public GeoPropertyKind<GeoIndicesUI32, GeoIndices, std::uint32_t>
{
public:
    static constexpr const char* ClassName = "GeoIndicesUI32";

private:
    friend ConcreteContainer<GeoIndicesUI32, GeoIndices>;
    GeoIndicesUI32() = default;
    GeoIndicesUI32(const GeoIndicesUI32&) = default;
};

class GeoPTypesUI8 final : public GeoPropertyKind<GeoPTypesUI8, GeoPTypes, std::uint8_t>
{
public:
    static constexpr const char* ClassName = "GeoPTypesUI8";

private:
    friend ConcreteContainer<GeoPTypesUI8, GeoPTypes>;
    GeoPTypesUI8() = default;
    GeoPTypesUI8(const GeoPTypesUI8&) = default;
};

class GeoPLengthsUI32 final : public GeoPropertyKind<GeoPLengthsUI32, GeoPLengths, std::uint32_t>
{
public:
    static constexpr const char* ClassName = "GeoPLengthsUI32";

private:
    friend ConcreteContainer<GeoPLengthsUI32, GeoPLengths>;
    GeoPLengthsUI32() = default;
    GeoPLengthsUI32(const GeoPLengthsUI32&) = default;
};

using GeoPositions3fPtr = Ptr<GeoPositions3f>;
using GeoPositions4fPtr = Ptr<GeoPositions4f>;
using GeoNormals3fPtr = Ptr<GeoNormals3f>;
using GeoColors3fPtr = Ptr<GeoColors3f>;
using GeoColors4fPtr = Ptr<GeoColors4f>;
using GeoTexCoords1fPtr = Ptr<GeoTexCoords1f>;
using GeoTexCoords2fPtr = Ptr<GeoTexCoords2f>;
using GeoTexCoords3fPtr = Ptr<GeoTexCoords3f>;
using GeoTexCoords4fPtr = Ptr<GeoTexCoords4f>;
using GeoIndicesUI16Ptr = Ptr<GeoIndicesUI16>;
using GeoIndicesUI32Ptr = Ptr<GeoIndicesUI32>;
using GeoPTypesUI8Ptr = Ptr<GeoPTypesUI8>;
using GeoPLengthsUI32Ptr = Ptr<GeoPLengthsUI32>;

} // namespace osg
