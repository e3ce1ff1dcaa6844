#pragma once

#include "OpenSG/Geometry.h"

#include <map>

/// The geometries that have edges held straight, or have had some, and the state in which the
/// lists that show these edges were last filled.
///
/// A geometry enters when a notice goes out on a UVConstraintAttachment that hangs on it, and
/// leaves when it is destroyed. It stays when its last constraint is gone: the lists that still
/// show it have to be emptied once. Notices that FieldContainerPtr::_ignore_change holds back are
/// not heard.
class UVConstraintsTracker
{
public:
    /// The stamps (osg::GeoTmpIndexEditInterface::getStamp) of the two lists of a geometry when
    /// they were last filled. Who fills them writes these; a change of the constraints of a
    /// direction sets its stamp to Outdated.
    struct Stamp
    {
        static constexpr unsigned Outdated = 0xFFFFFFFFU; ///< no list ever has this one

        unsigned u = Outdated;
        unsigned v = Outdated;
    };
    /// By container id of the geometry.
    using Entries = std::map<unsigned, Stamp>;

    /// The one tracker. It is never destroyed, since geometries may outlive main.
    static UVConstraintsTracker* the();

    [[nodiscard]] bool empty() const { return _entries.empty(); }
    /// The entries, by ascending id; stamps may be written through the range. An edit of
    /// constraints may add entries, and the end of a geometry takes its entry away.
    Entries::iterator geomBegin() { return _entries.begin(); }
    Entries::iterator geomEnd() { return _entries.end(); }

    /// Enters a geometry, and notes that its constraints of a direction have changed.
    void noteChange(const osg::GeometryPtr& geometry, bool changedU, bool changedV);

private:
    UVConstraintsTracker() = default;

    Entries _entries;
};
