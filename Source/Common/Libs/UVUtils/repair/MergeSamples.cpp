// Which of the UVs that the corners of a vertex have are one, and what becomes of the others.

#include "UVUtils/model/FloatOrder.h"
#include "UVUtils/repair/TransferTarget.h"
#include "UVUtils/repair/TransferredUVs.h"
#include "UVUtils/repair/kyTransferGeoProperties.h"

#include <algorithm>
#include <cmath>
#include <tuple>

namespace
{

using SampledUV = kyTransferGeoProperties::SampledUV;

/// Squared UV distances below it are none.
constexpr float closeSquare = 0.000001F;

/// In double, for a vertex of many corners; and so the mean of equal UVs is what they are.
class MeanUV
{
public:
    void add(const osg::Vec2f& uv)
    {
        sum_ += osg::Vector<double, 2>(uv);
        ++count_;
    }
    osg::Vec2f value() const { return osg::Vec2f(sum_ * (1 / count_)); }

private:
    osg::Vector<double, 2> sum_;
    double count_ = 0;
};

bool isFinite(const osg::Vec2f& uv)
{
    return std::isfinite(uv.x()) && std::isfinite(uv.y());
}

/// A total order, in which no UV is equal to that of another corner.
bool isBefore(const SampledUV& a, const SampledUV& b)
{
    const auto key = [](const SampledUV& sample) {
        return std::tuple(orderedBits(sample.uv.x()), orderedBits(sample.uv.y()),
                          sample.corners.front());
    };
    return key(a) < key(b);
}

/// Takes the samples that are close to one of them out of those that are still there.
///
/// samples  sorted; those without corners are done
/// first    the lowest that is not
SampledUV takeCloseSamples(tbb::concurrent_vector<SampledUV>& samples, std::size_t first)
{
    const osg::Vec2f uv = samples[first].uv;
    MeanUV mean;
    mean.add(uv);
    SampledUV merged{uv, std::move(samples[first].corners)};
    samples[first].corners.clear();
    // What is no number is close to nothing, itself included.
    for (std::size_t i = first + 1; isFinite(uv) && i < samples.size(); ++i) {
        const osg::Vec2f difference = samples[i].uv - uv;
        if (!(difference.x() * difference.x() < closeSquare))
            break; // they go on with a higher u
        if (samples[i].corners.empty() || !(difference.squareLength() < closeSquare))
            continue;
        mean.add(samples[i].uv);
        merged.corners.insert(merged.corners.end(), samples[i].corners.begin(),
                              samples[i].corners.end());
        samples[i].corners.clear();
    }
    if (isFinite(uv))
        merged.uv = mean.value();
    return merged;
}

bool haveOneUV(std::span<const unsigned int> corners, std::span<const osg::Vec2f> uvOfCorner)
{
    const osg::Vec2f& uv = uvOfCorner[corners.front()];
    return isFinite(uv) && std::all_of(corners.begin(), corners.end(), [&](unsigned int corner) {
               return uvOfCorner[corner] == uv;
           });
}

} // namespace

void kyTransferGeoProperties::mergeCloseSamples(tbb::concurrent_vector<SampledUV>& samples) const
{
    if (samples.size() < 2)
        return;
    std::sort(samples.begin(), samples.end(), isBefore);
    tbb::concurrent_vector<SampledUV> merged;
    for (std::size_t i = 0; i < samples.size(); ++i)
        if (!samples[i].corners.empty())
            merged.push_back(takeCloseSamples(samples, i));
    samples.swap(merged);
}

TransferredUVs kyTransferGeoProperties::mergeSamples(const TransferTarget& target,
                                                     std::span<const osg::Vec2f> uvOfCorner) const
{
    TransferredUVs result(target.positions.size());
    for (unsigned int vertex = 0; vertex < target.positions.size(); ++vertex) {
        const std::span<const unsigned int> corners = target.cornersOfVertex[vertex];
        if (corners.empty())
            continue;
        if (haveOneUV(corners, uvOfCorner)) { // as nearly all do
            result.setUV(vertex, uvOfCorner[corners.front()]);
            continue;
        }
        tbb::concurrent_vector<SampledUV> samples;
        for (const unsigned int corner : corners)
            samples.push_back({uvOfCorner[corner], {corner}});
        mergeCloseSamples(samples);
        result.setUV(vertex, samples.front().uv);
        for (std::size_t i = 1; i < samples.size(); ++i)
            result.addVertex(vertex, samples[i].uv, std::move(samples[i].corners));
    }
    return result;
}
