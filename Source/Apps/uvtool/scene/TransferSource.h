#pragma once

#include "document/Document.h"
#include "layout/UVBox.h"
#include "mesh/SolverFrame.h"
#include "scene/NearestTriangles.h"
#include "scene/TransferOperation.h"

#include <cstddef>
#include <map>
#include <memory>
#include <optional>
#include <utility>
#include <vector>

namespace uvtool
{

/// Geometries of the source that are one surface for what gets UVs from them.
class SourcePart
{
public:
    /// The document and its geometries stay where they are.
    SourcePart(const Document& document, const std::vector<std::size_t>& numbers,
               const SolverFrame& frame);

    const std::vector<std::size_t>& numbers() const { return numbers_; }
    /// Where each triangle of a target lies nearest, with UVs or without.
    NearestTriangles nearestTo(const SceneGeometry& target) const { return search_.of(target); }
    /// Whether a triangle, as nearestTo counts them, has UVs in a slot.
    bool isMapped(std::size_t triangle, std::size_t slot) const;
    /// Is what was found nowhere as far off as to be another surface?
    bool isNear(const NearestTriangles& nearest) const;

    /// What carries the UVs of a slot over; null without any. Made anew where it isn't the slot of
    /// the last time.
    TransferOperation* operationFor(std::size_t slot, kyTransferGeoProperties::SampleMethod method);

private:
    /// Every triangle, in the frame.
    SourcePart(const Document& document, const std::vector<std::size_t>& numbers,
               const SolverFrame& frame, const SceneGeometry& scene);

    const Document& document_;
    std::vector<std::size_t> numbers_;
    SolverFrame frame_;
    std::vector<TriangleSource> sourceOfTriangle_;
    NearestTriangleSearch search_;
    double size_; ///< diagonal of the box, in the frame
    std::optional<std::size_t> slot_;
    std::unique_ptr<TransferOperation> operation_; ///< of that slot
};

/// A file that UVs are carried over from.
class TransferSource
{
public:
    /// numbers  of the geometries to take, at least one
    TransferSource(Document document, std::vector<std::size_t> numbers);

    const Document& document() const { return document_; }
    const std::vector<std::size_t>& numbers() const { return numbers_; }
    std::size_t triangleCount() const;
    /// Diagonal of the box, in the scene.
    double size() const;
    /// Empty where nothing is mapped.
    UVBox boundsOf(std::size_t slot) const;

    /// The geometry that is called like one of another document, unless some have no name or one in
    /// common there or here.
    std::optional<std::size_t> namesakeOf(const Document& target, std::size_t number) const;

    /// All geometries, or one. Made when it is first asked for, in the frame of that time.
    SourcePart& whole(const SolverFrame& frame);
    SourcePart& single(std::size_t number, const SolverFrame& frame);

private:
    Document document_;
    std::vector<std::size_t> numbers_;
    std::map<std::vector<std::size_t>, SourcePart> parts_; ///< by the numbers of their geometries
};

} // namespace uvtool
