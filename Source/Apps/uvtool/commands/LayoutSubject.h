#pragma once

#include "document/Document.h"
#include "document/SlotWriter.h"
#include "layout/DocumentLayout.h"
#include "mesh/JoinedGeometry.h"
#include "mesh/Survey.h"
#include "report/Report.h"

#include <cstddef>
#include <optional>
#include <span>
#include <vector>

namespace uvtool
{

/// What a layout is made for: a geometry of a document by itself, or several as one shell.
class LayoutSubject
{
public:
    /// document  has to outlive the subject
    LayoutSubject(Document& document, std::size_t number) : document_(document), number_(number) {}
    LayoutSubject(Document& document, std::span<const std::size_t> numbers, std::size_t slot)
        : document_(document), surfaces_(numbers.begin(), numbers.end()), slot_(slot),
          shell_(std::in_place, document, numbers, slot)
    {}

    /// As --geometry counts; 0 for a shell.
    std::size_t number() const { return number_; }
    bool isShell() const { return shell_.has_value(); }

    const DocumentGeometry& geometry() const
    {
        return shell_ ? shell_->whole() : document_.geometries[number_];
    }

    /// The triangle of its geometry that one of the file is.
    std::uint32_t triangleOf(const TriangleSource& source) const
    {
        return shell_ ? shell_->triangleOf(source) : source.triangle;
    }

    /// What there is to tell about it before anything is done.
    GeometryReport describe(const Survey& survey) const;

    /// Puts UVs of its geometry into the document; the number of polygons replaced.
    std::size_t write(const SlotValues& uvs, std::size_t slot);

    /// Adds what stands in the document to a layout, as DocumentLayout::add, its triangles under
    /// the numbers of their geometries in the file.
    void addTo(DocumentLayout& layout, std::size_t slot, const Survey& survey,
               const std::vector<char>& isLeftOut) const;

private:
    Document& document_;
    std::size_t number_ = 0;
    std::vector<std::size_t> surfaces_; ///< of a shell
    std::size_t slot_ = 0;
    std::optional<JoinedGeometry> shell_;
};

} // namespace uvtool
