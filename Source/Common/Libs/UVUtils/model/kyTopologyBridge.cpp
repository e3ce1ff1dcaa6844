#include "UVUtils/model/kyTopologyBridge.h"

#include <cassert>
#include <numeric>
#include <utility>

namespace
{

/// 0, 1, 2, ... but for values[k] at places[k].
void fillShuffle(std::vector<unsigned int>& shuffle, unsigned long long size,
                 const std::vector<unsigned int>& places, const std::vector<unsigned int>& values)
{
    shuffle.resize(size);
    std::iota(shuffle.begin(), shuffle.end(), 0U);
    for (std::size_t k = 0; k < places.size(); ++k)
        shuffle[places[k]] = values[k];
}

} // namespace

void kyTopologyData::clear()
{
    shuffle.clear();
    childShuffles.clear();
    indices = osg::NullFC;
    childIndices.clear();
    childUVConstraints.clear();
    faceMapping.clear();
}

void kyTopologyData::patchResize(unsigned int n)
{
    childShuffles.resize(n);
    childIndices.resize(n);
    childUVConstraints.resize(n);
}

void kyTopologyBridgeImpl::clear()
{
    next.clear();
    prev.clear();
}

void kyTopologyBridgeImpl::patchResize(unsigned int n)
{
    next.patchResize(n);
    prev.patchResize(n);
}

kyTopologyBridge::kyTopologyBridge() : impl_(std::make_unique<kyTopologyBridgeImpl>()) {}

kyTopologyBridge::~kyTopologyBridge() = default;

kyTopologyBridge::kyTopologyBridge(const kyTopologyBridge& other)
    : impl_(std::make_unique<kyTopologyBridgeImpl>(*other.impl_))
{}

kyTopologyBridge& kyTopologyBridge::operator=(const kyTopologyBridge& other)
{
    *impl_ = *other.impl_;
    return *this;
}

TopologyOpOutData::TopologyOpOutData(kyTopologyBridgeImpl* body)
    : nextShuffle(&body->next.shuffle), prevShuffle(&body->prev.shuffle),
      prevIndices(&body->prev.indices), nextIndices(&body->next.indices),
      prevUVConstraints(&body->prev.uvConstraints), nextUVConstraints(&body->next.uvConstraints),
      prevFaceMapping(&body->prev.faceMapping), nextFaceMapping(&body->next.faceMapping)
{}

TopologyOpOutData::TopologyOpOutData(kyTopologyBridgeImpl* body, unsigned int child)
    : nextShuffle(&body->next.childShuffles[child]), prevShuffle(&body->prev.childShuffles[child]),
      prevIndices(&body->prev.childIndices[child]), nextIndices(&body->next.childIndices[child]),
      prevUVConstraints(&body->prev.childUVConstraints[child]),
      nextUVConstraints(&body->next.childUVConstraints[child]),
      prevFaceMapping(&body->prev.faceMapping), nextFaceMapping(&body->next.faceMapping)
{}

void TopologyOpOutData::storeShuffle(const std::vector<unsigned int>& sources,
                                     const std::vector<unsigned int>& targets,
                                     unsigned long long oldCount, unsigned long long newCount)
{
    assert(sources.size() == targets.size() && "each target has one source");
    fillShuffle(*nextShuffle, newCount, targets, sources);
    fillShuffle(*prevShuffle, oldCount, sources, targets);
}

void TopologyOpOutData::storeBefore(const osg::GeoIndicesPtr& indices,
                                    std::vector<UVConstraintData> constraints)
{
    *prevIndices = indices->clone();
    *prevUVConstraints = std::move(constraints);
}

void TopologyOpOutData::storeAfter(const osg::GeoIndicesPtr& indices,
                                   std::vector<UVConstraintData> constraints)
{
    *nextIndices = indices->clone();
    *nextUVConstraints = std::move(constraints);
}

std::unique_ptr<TopologyOpOutData> topLevelOf(kyTopologyBridge* bridge)
{
    return bridge ? std::make_unique<TopologyOpOutData>(bridge->getImpl()) : nullptr;
}
