#pragma once

#include "OpenSG/Geometry.h"
#include "UVUtils/model/kyUVTypes.h"

#include <vector>

/// The order that decides which vertices of a geometry are one place for a sew: those of which
/// neither is less. Positions count, then normals, colours and the texture slots but the one that
/// is sewn; with `matchUVs` that one too. The first property in which two vertices differ orders
/// them, by its components one after the other.
///
/// Numbers are compared with tolerance, so that this is no strict weak order as soon as a vertex
/// stands between two that are equal to it and not to each other: what a sorted container finds
/// depends then on what it holds already. NaNs are equal to each other and come after infinity.
///
/// Reads the properties as they are when it is made; their sizes must not change after that. A
/// vertex beyond the end of a property reads as zero there.
class SewVertexLess
{
public:
    SewVertexLess(const osg::Geometry& geometry, kyUVTypes::UVSet set, bool matchUVs);

    SewVertexLess(const SewVertexLess&) = delete;
    SewVertexLess& operator=(const SewVertexLess&) = delete;

    bool operator()(unsigned int a, unsigned int b) const;

private:
    enum Comparison
    {
        Components, ///< equal when each component is within the tolerance
        Direction   ///< equal when the angle in between is small
    };

    /// A property to compare, as floats.
    struct Row
    {
        const float* getValues(unsigned int vertex) const;
        bool isEqual(unsigned int a, unsigned int b) const;
        bool isLess(unsigned int a, unsigned int b) const;

        std::vector<float> copy; ///< of a property that is not read where it lies
        const float* values = nullptr;
        unsigned int vertexCount = 0;
        unsigned int componentCount = 0;
        float tolerance = 0;
        Comparison comparison = Components;
    };

    template <class... Packed, class Property>
    void addRow(const Property& property, float tolerance, Comparison comparison = Components);

    std::vector<Row> rows_; ///< of properties that the geometry has
};
