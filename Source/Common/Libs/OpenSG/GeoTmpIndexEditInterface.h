#pragma once

#include "OpenSG/GeometryBase.h"
#include "OpenSG/TmpIndexList.h"

#include <span>
#include <vector>

namespace osg
{

/// A view of one of the numbered index lists that a geometry keeps for display and selection.
///
/// It holds nothing itself: two views of one list see one state, at once. A list is null or has
/// content, and empty content is not null. Its primitive type stands beside the content and
/// survives make, clear and setNull; it is 0 until set. Nothing here sends a notice of the
/// geometry. A view does not keep its geometry alive and must not outlive it.
///
/// On a null geometry a list reads as null and writes do nothing.
class GeoTmpIndexEditInterface
{
public:
    GeoTmpIndexEditInterface(const GeometryPtr& geometry, unsigned list);

    [[nodiscard]] bool isNull() const;
    /// Makes the list empty and not null.
    void make();
    void setNull();

    // On a null list the writes from here to addValue do nothing.

    void clear();
    /// New entries are 0.
    void resize(unsigned size);
    /// Does nothing beyond the end.
    void setValue(unsigned value, unsigned i);
    void addValue(unsigned value);

    /// The whole content in one step; makes a null list. The ids may be the list's own.
    void assign(std::span<const unsigned> ids);

    /// Null for a null list. Any write makes the pointer stale.
    [[nodiscard]] const unsigned* getData() const;
    [[nodiscard]] unsigned getSize() const;
    /// The content as a span, empty for a null list. Any write makes it stale.
    [[nodiscard]] std::span<const unsigned> values() const;

    [[nodiscard]] unsigned getType() const;
    void setType(unsigned type);

    /// Tells the display that an edit is complete. The content is visible without it.
    void commit();

    /// A number that changes with the content: after any write but setType it is one that no list
    /// of this process had before. 0 for a list that was never written.
    [[nodiscard]] unsigned getStamp() const;

    /// The numbers of the lists that are not null, ascending.
    [[nodiscard]] static std::vector<unsigned> listsWithContent(const GeometryPtr& geometry);
    /// Makes every list of the geometry null. The types stay.
    static void setNullforAll(const GeometryPtr& geometry);

private:
    [[nodiscard]] bool hasContent() const { return _list && !_list->isNull; }

    TmpIndexList* _list = nullptr; ///< null for a null geometry
};

} // namespace osg
