#include "UVUtils/editing/SewVertexLess.h"

#include "UVUtils/model/FloatOrder.h"

#include <algorithm>
#include <array>
#include <limits>

namespace
{

/// For what was copied with a vertex, and so is the same but for rounding.
constexpr float exact = std::numeric_limits<float>::epsilon();
/// For UVs that are to be sewn only where they meet: more than a cut shifts the sides of a seam.
constexpr float matchingUVs = 1e-4F;
/// For slots in which tools keep what they have computed.
constexpr float computed = 1e-3F;
/// One less the cosine of about three degrees.
constexpr float sameDirection = 0.0014F;

/// Enough for any vertex beyond the end of a property.
constexpr std::array<float, 4> zeros{};

struct SlotTolerance
{
    unsigned int slot;
    float tolerance;
};

/// The slots to compare, in their order.
std::vector<SlotTolerance> slotsToCompare(unsigned int sewn, bool matchUVs)
{
    std::vector<SlotTolerance> slots;
    if (matchUVs)
        slots.push_back({sewn == 0 ? 0U : 1U, matchingUVs});
    slots.push_back({sewn == 0 ? 1U : 0U, exact});
    for (const unsigned int slot : {2U, 3U, 4U, 6U})
        slots.push_back({slot, exact});
    for (const unsigned int slot : {5U, 7U})
        slots.push_back({slot, computed});
    // The two sides of a seam differ in the slot that is sewn.
    if (!matchUVs)
        std::erase_if(slots, [sewn](const SlotTolerance& s) { return s.slot == sewn; });
    return slots;
}

osg::Vec3f directionOf(const float* values)
{
    return osg::Vec3f(values[0], values[1], values[2]).normalized();
}

bool isLexicographicallyLess(const float* a, const float* b, unsigned int count)
{
    return std::lexicographical_compare(a, a + count, b, b + count, [](float x, float y) {
        return orderedBits(x) < orderedBits(y);
    });
}

} // namespace

SewVertexLess::SewVertexLess(const osg::Geometry& geometry, kyUVTypes::UVSet set, bool matchUVs)
{
    addRow<osg::GeoPositions3f>(geometry.getPositions(), exact);
    addRow<osg::GeoNormals3f>(geometry.getNormals(), sameDirection, Direction);
    for (const osg::GeoColorsPtr& colors : {geometry.getColors(), geometry.getSecondaryColors()})
        addRow<osg::GeoColors3f, osg::GeoColors4f>(colors, exact);
    for (const auto& [slot, tolerance] : slotsToCompare(static_cast<unsigned int>(set), matchUVs))
        addRow<osg::GeoTexCoords2f, osg::GeoTexCoords3f, osg::GeoTexCoords4f>(
            geometry.getTexSlot(slot), tolerance);
}

/// Packed  the kinds that are read where they lie; any other one goes through its role's values
template <class... Packed, class Property>
void SewVertexLess::addRow(const Property& property, float tolerance, Comparison comparison)
{
    if (!property)
        return;
    Row row;
    row.vertexCount = property->getSize();
    row.tolerance = tolerance;
    row.comparison = comparison;
    const auto readPacked = [&row](const auto& kind) {
        if (!kind)
            return false;
        row.componentCount = std::remove_reference_t<decltype(*kind)>::Element::Size;
        row.values = row.vertexCount > 0 ? kind->getData()->getValues() : nullptr;
        return true;
    };
    if (!(readPacked(osg::dcast<Packed>(property)) || ...)) {
        for (const auto& value : property->getValues())
            row.copy.insert(row.copy.end(), value.getValues(), value.getValues() + value.Size);
        row.componentCount = std::remove_reference_t<decltype(*property)>::Value::Size;
        row.values = row.copy.data();
    }
    rows_.push_back(std::move(row)); // moving keeps the copy where it is
}

bool SewVertexLess::operator()(unsigned int a, unsigned int b) const
{
    const auto differing = std::find_if(rows_.begin(), rows_.end(),
                                        [&](const Row& row) { return !row.isEqual(a, b); });
    return differing != rows_.end() && differing->isLess(a, b);
}

const float* SewVertexLess::Row::getValues(unsigned int vertex) const
{
    return vertex < vertexCount ? values + std::size_t{vertex} * componentCount : zeros.data();
}

bool SewVertexLess::Row::isEqual(unsigned int a, unsigned int b) const
{
    const float* const ofA = getValues(a);
    const float* const ofB = getValues(b);
    if (comparison == Direction)
        return directionOf(ofA).dot(directionOf(ofB)) > 1.0F - tolerance;
    return std::equal(ofA, ofA + componentCount, ofB,
                      [this](float x, float y) { return isWithin(x, y, tolerance); });
}

bool SewVertexLess::Row::isLess(unsigned int a, unsigned int b) const
{
    if (comparison == Components)
        return isLexicographicallyLess(getValues(a), getValues(b), componentCount);
    return isLexicographicallyLess(directionOf(getValues(a)).getValues(),
                                   directionOf(getValues(b)).getValues(), componentCount);
}
