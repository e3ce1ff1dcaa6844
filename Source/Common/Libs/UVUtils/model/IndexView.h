#pragma once

#include "OpenSG/GeoProperty.h"

#include <span>
#include <utility>
#include <vector>

/// The numbers of an index property as one packed list: the property's own memory where these are
/// 32 bits wide, else a copy. A null property reads as empty. A change of the property's size makes
/// the view stale.
class IndexView
{
public:
    explicit IndexView(const osg::GeoIndicesPtr& indices)
    {
        if (const auto wide = osg::dcast<osg::GeoIndicesUI32>(indices))
            ids_ = std::as_const(*wide).values();
        else if (indices)
            ids_ = copy_ = indices->getValues();
    }
    IndexView(const IndexView&) = delete;
    IndexView& operator=(const IndexView&) = delete;

    std::span<const unsigned int> ids() const { return ids_; }
    /// Those that make up whole triangles, so a multiple of 3.
    std::span<const unsigned int> triangles() const
    {
        return ids_.first(ids_.size() - ids_.size() % 3);
    }

private:
    std::vector<unsigned int> copy_;
    std::span<const unsigned int> ids_;
};
