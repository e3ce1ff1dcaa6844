#include "OpenSGExt/kyGeoUtils.h"

#include "OpenSG/GeoProperty.h"
#include "OpenSG/Geometry.h"

#include <algorithm>

namespace kyGeoUtils
{

namespace
{

struct ErrorText
{
    unsigned int bit;
    const char* text;
};

constexpr ErrorText errorTexts[] = {
    {NoPositions, "no vertex positions"},
    {NoIndices, "no indices"},
    {NotTriangles, "not a triangle mesh"},
    {IndexOutOfRange, "index out of range"},
    {MultipleIndices, "multiple index lists"},
    {InconsistentLengths, "inconsistent primitive lengths"},
};

bool hasOtherPrimitives(const osg::GeoPTypesPtr& types)
{
    if (!types)
        return false;
    const std::vector<unsigned int> codes = types->getValues();
    return std::any_of(codes.begin(), codes.end(),
                       [](unsigned int code) { return code != osg::GeoPrimitive::Triangles; });
}

bool areLengthsConsistent(const osg::Geometry& geometry, unsigned int indexCount)
{
    const osg::GeoPLengthsPtr lengths = geometry.getLengths();
    if (!lengths)
        return true;
    const osg::GeoPTypesPtr types = geometry.getTypes();
    if (types && types->getSize() != lengths->getSize())
        return false;
    std::uint64_t sum = 0;
    for (const unsigned int length : lengths->getValues()) {
        if (length % 3 != 0)
            return false;
        sum += length;
    }
    return sum == indexCount;
}

/// Errors of a geometry that has positions, and one index list.
unsigned int checkTriangles(const osg::Geometry& geometry, const osg::GeoIndicesPtr& indices,
                            unsigned int vertexCount, bool checkIndices)
{
    unsigned int errors = 0;
    if (indices->getSize() % 3 != 0)
        errors |= NotTriangles;
    if (!areLengthsConsistent(geometry, indices->getSize()))
        errors |= InconsistentLengths;
    if (checkIndices && indices->getEndOfIds() > vertexCount)
        errors |= IndexOutOfRange;
    return errors;
}

} // namespace

unsigned int checkGeometryCore(const osg::NodeCorePtr& core, bool checkIndices)
{
    const auto geometry = osg::dcast<osg::Geometry>(core);
    if (!geometry)
        return NoPositions | NoIndices;

    unsigned int errors = 0;
    const auto positions = osg::dcast<osg::GeoPositions3f>(geometry->getPositions());
    const osg::GeoIndicesPtr indices = geometry->getIndices();
    if (!positions)
        errors |= NoPositions;
    if (!indices)
        errors |= NoIndices;
    if (hasOtherPrimitives(geometry->getTypes()))
        errors |= NotTriangles;
    // With several numbers a corner, counts and ranges mean something else.
    if (geometry->getIndexMapping().size() > 1)
        errors |= MultipleIndices;
    else if (positions && indices)
        errors |= checkTriangles(*geometry, indices, positions->getSize(), checkIndices);
    return errors;
}

std::string getGeometryErrorString(unsigned int errors)
{
    std::string text;
    for (const ErrorText& error : errorTexts) {
        if ((errors & error.bit) == 0)
            continue;
        if (!text.empty())
            text += ", ";
        text += error.text;
    }
    return text;
}

} // namespace kyGeoUtils
