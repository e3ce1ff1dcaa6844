#pragma once

#include "document/Document.h"
#include "mesh/SolverFrame.h"
#include "scene/SceneGeometry.h"

#include "UVUtils/repair/kyTransferGeoProperties.h"

#include <cstddef>
#include <cstdint>
#include <functional>
#include <span>
#include <vector>

namespace uvtool
{

/// What lies farther off a surface than this share of its size can't have been meant to be on it.
inline constexpr double farAsShareOfSize = 0.02;

/// The frame in which geometries of two documents, which have one scene, are compared. It is as
/// large as the distances ask for below which the library takes points for one.
SolverFrame transferFrame(const Document& source, std::span<const std::size_t> sourceNumbers,
                          const Document& target, std::span<const std::size_t> targetNumbers);

/// What a surface is read from: the triangles of some geometries that have UVs in a slot, several
/// of them as the surfaces of one shell.
SceneGeometry makeTransferSource(const Document& document, std::span<const std::size_t> numbers,
                                 std::size_t slot, const SolverFrame& frame);

/// What gets UVs: a vertex for each place, with a normal.
SceneGeometry makeTransferTarget(const Document& document, std::span<const std::size_t> numbers,
                                 std::size_t slot, bool isShell, const SolverFrame& frame);

/// Has the library carry the UVs of a slot over from a source to one target after the other.
class TransferOperation
{
public:
    /// A CommandError of status Failed where the library refuses the source.
    TransferOperation(const SceneGeometry& source, std::size_t slot,
                      kyTransferGeoProperties::SampleMethod method);

    /// Writes the slot of the target's surfaces; vertices on seams are split. False, with the
    /// library's own words in its log, where a surface can't be written.
    ///
    /// progress  gets parts of 1
    bool writeTo(const SceneGeometry& target, const std::function<void(float)>& progress);

private:
    osg::RefPtr<osg::Node> source_;
    kyUVTypes::UVSet slot_;
    kyTransferGeoProperties transfer_;
};

} // namespace uvtool
