#pragma once

#include "document/Document.h"
#include "mesh/SolverFrame.h"
#include "mesh/Survey.h"

#include <cstddef>
#include <cstdint>
#include <vector>

namespace uvtool
{

/// A geometry's share in the work of a command: the islands that get new UVs.
struct Part
{
    std::size_t geometry = 0; ///< of the document
    SolverMesh mesh;
    SolverFrame frame;              ///< of the positions in the scene
    std::vector<Vec3f> positions;   ///< [vertex of mesh] in that frame
    std::vector<Vec2f> uvs;         ///< [vertex of mesh]
    std::vector<std::int8_t> turns; ///< [triangle of mesh] how it has to turn: 1 or -1

    bool isEmpty() const { return mesh.triangleCount() == 0; }
};

/// The open islands of a survey as a part, without UVs.
Part makePart(const DocumentGeometry& geometry, std::size_t number, const Survey& survey);

/// Gives a part the UVs that its geometry holds in a slot; triangles have to turn as they do there.
void takeUVs(Part& part, const DocumentGeometry& geometry, std::size_t slot);

/// Takes the islands out of a part for which isLeftOut [island] isn't 0.
///
/// islands  of the part's mesh
void leaveOut(Part& part, const Islands& islands, const std::vector<char>& isLeftOut);

} // namespace uvtool
