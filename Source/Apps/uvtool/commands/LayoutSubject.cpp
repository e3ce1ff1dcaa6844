#include "commands/LayoutSubject.h"

#include "mesh/CornerVertices.h"

namespace uvtool
{

GeometryReport LayoutSubject::describe(const Survey& survey) const
{
    GeometryReport report = uvtool::describe(geometry(), number_, survey);
    if (!isShell())
        return report;
    report.isShell = true;
    report.surfaces = surfaces_.size();
    report.vertices = 0;
    report.slots.clear();
    for (const std::size_t surface : surfaces_) {
        report.vertices += distinctCorners(document_.geometries[surface]).vertexCount;
        addSlots(document_.geometries[surface], report.slots);
    }
    return report;
}

std::size_t LayoutSubject::write(const SlotValues& uvs, std::size_t slot)
{
    if (!shell_)
        return writeSlot(document_.geometries[number_], slot, uvs);
    const std::size_t replaced = shell_->write(uvs, slot, document_);
    shell_.emplace(document_, surfaces_, slot_);
    return replaced;
}

void LayoutSubject::addTo(DocumentLayout& layout, std::size_t slot, const Survey& survey,
                          const std::vector<char>& isLeftOut) const
{
    const std::size_t first = layout.sourceOfTriangle.size();
    layout.add(geometry(), static_cast<std::uint32_t>(number_), slot, survey, isLeftOut);
    if (shell_)
        for (std::size_t t = first; t < layout.sourceOfTriangle.size(); ++t)
            layout.sourceOfTriangle[t] = shell_->sourceOf(layout.sourceOfTriangle[t].triangle);
}

} // namespace uvtool
