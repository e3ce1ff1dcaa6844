#pragma once

#include "document/Document.h"
#include "document/SlotWriter.h"
#include "layout/DocumentLayout.h"

#include <cstddef>
#include <span>
#include <vector>

namespace uvtool
{

/// Several geometries of a document as one, the surfaces of a shell: polygons and triangles of one
/// follow those of the one before.
///
/// It has what a layout is made from: positions, in the scene, and the UVs of a slot. Positions
/// are welded: those that lie within 1.2e-7 of each other, where the whole is scaled to a box of a
/// size from 1 to 2, are one position here. That is the distance at which the library takes
/// vertices of surfaces for one.
class JoinedGeometry
{
public:
    /// numbers  of the geometries, ascending
    JoinedGeometry(const Document& document, std::span<const std::size_t> numbers,
                   std::size_t slot);

    const DocumentGeometry& whole() const { return whole_; }
    TriangleSource sourceOf(std::uint32_t triangle) const;
    /// The triangle of the whole that a triangle of one of the geometries is.
    std::uint32_t triangleOf(const TriangleSource& source) const;

    /// Puts new UVs of the whole into the slot of the geometries that it was made of, which have to
    /// be as they were then; the number of polygons replaced, as writeSlot.
    std::size_t write(const SlotValues& uvs, std::size_t slot, Document& document) const;

private:
    void addPolygons(const DocumentGeometry& geometry);
    void addUVs(const DocumentGeometry& geometry, std::size_t slot);
    void addPositions(const Document& document);
    SlotValues shareOf(std::size_t surface, const SlotValues& uvs) const;

    std::vector<std::size_t> numbers_;        ///< [surface] of the document
    std::vector<std::size_t> firstTriangles_; ///< [surface], and the count of all at the end
    DocumentGeometry whole_;
};

} // namespace uvtool
