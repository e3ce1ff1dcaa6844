#include "scene/TransferSource.h"

#include "document/Box3.h"

#include <algorithm>
#include <cmath>
#include <string>
#include <string_view>

namespace uvtool
{
namespace
{

double diagonalOf(const Document& document, const std::vector<std::size_t>& numbers)
{
    Box3<double> box;
    for (const std::size_t number : numbers)
        for (const Vec3d& position : scenePositions(document.geometries[number]))
            box.add(position);
    return box.diagonal();
}

/// All triangles, with UVs or without.
SceneGeometry makeWholeScene(const Document& document, const std::vector<std::size_t>& numbers,
                             const SolverFrame& frame)
{
    return makeScene(
        document, numbers, 0, numbers.size() > 1,
        [&document](std::size_t number) { return cornersByPosition(document.geometries[number]); },
        frame);
}

/// The only one of that name among some geometries.
std::optional<std::size_t> onlyOneNamed(std::string_view name, const Document& document,
                                        const std::vector<std::size_t>& numbers)
{
    const auto hasName = [&](std::size_t number) {
        return document.geometries[number].name == name;
    };
    const auto first = std::find_if(numbers.begin(), numbers.end(), hasName);
    if (first == numbers.end() || std::find_if(first + 1, numbers.end(), hasName) != numbers.end())
        return std::nullopt;
    return *first;
}

std::vector<std::size_t> allNumbersOf(const Document& document)
{
    std::vector<std::size_t> numbers(document.geometries.size());
    for (std::size_t i = 0; i < numbers.size(); ++i)
        numbers[i] = i;
    return numbers;
}

} // namespace

SourcePart::SourcePart(const Document& document, const std::vector<std::size_t>& numbers,
                       const SolverFrame& frame)
    : SourcePart(document, numbers, frame, makeWholeScene(document, numbers, frame))
{}

SourcePart::SourcePart(const Document& document, const std::vector<std::size_t>& numbers,
                       const SolverFrame& frame, const SceneGeometry& scene)
    : document_(document), numbers_(numbers), frame_(frame),
      sourceOfTriangle_(scene.sourceOfTriangle), search_(scene),
      size_(std::ldexp(diagonalOf(document, numbers_), frame.exponent()))
{}

bool SourcePart::isMapped(std::size_t triangle, std::size_t slot) const
{
    const auto [number, own] = sourceOfTriangle_[triangle];
    return document_.geometries[number].isMapped(own, slot);
}

bool SourcePart::isNear(const NearestTriangles& nearest) const
{
    return nearest.distance <= farAsShareOfSize * size_;
}

TransferOperation* SourcePart::operationFor(std::size_t slot,
                                            kyTransferGeoProperties::SampleMethod method)
{
    if (slot_ == slot)
        return operation_.get();
    slot_ = slot;
    operation_.reset();
    const bool isAnyMapped =
        std::any_of(sourceOfTriangle_.begin(), sourceOfTriangle_.end(), [&](const auto& triangle) {
            return document_.geometries[triangle.geometry].isMapped(triangle.triangle, slot);
        });
    if (isAnyMapped)
        operation_ = std::make_unique<TransferOperation>(
            makeTransferSource(document_, numbers_, slot, frame_), slot, method);
    return operation_.get();
}

TransferSource::TransferSource(Document document, std::vector<std::size_t> numbers)
    : document_(std::move(document)), numbers_(std::move(numbers))
{}

std::size_t TransferSource::triangleCount() const
{
    std::size_t count = 0;
    for (const std::size_t number : numbers_)
        count += document_.geometries[number].triangleCount();
    return count;
}

double TransferSource::size() const
{
    return diagonalOf(document_, numbers_);
}

UVBox TransferSource::boundsOf(std::size_t slot) const
{
    UVBox bounds;
    for (const std::size_t number : numbers_) {
        const DocumentGeometry& geometry = document_.geometries[number];
        for (const std::uint32_t corner : geometry.triangles)
            if (geometry.uvs[slot].has(corner))
                bounds.add(geometry.uvs[slot].at(corner));
    }
    return bounds;
}

std::optional<std::size_t> TransferSource::namesakeOf(const Document& target,
                                                      std::size_t number) const
{
    const std::string& name = target.geometries[number].name;
    if (name.empty() || !onlyOneNamed(name, target, allNumbersOf(target)))
        return std::nullopt;
    const std::optional<std::size_t> namesake = onlyOneNamed(name, document_, numbers_);
    if (!namesake || document_.geometries[*namesake].triangleCount() == 0)
        return std::nullopt;
    return namesake;
}

SourcePart& TransferSource::whole(const SolverFrame& frame)
{
    return parts_.try_emplace(numbers_, document_, numbers_, frame).first->second;
}

SourcePart& TransferSource::single(std::size_t number, const SolverFrame& frame)
{
    const std::vector<std::size_t> numbers{number};
    return parts_.try_emplace(numbers, document_, numbers, frame).first->second;
}

} // namespace uvtool
