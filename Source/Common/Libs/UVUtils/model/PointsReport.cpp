#include "OpenSG/GeoTmpIndexEditInterface.h"
#include "UVUtils/model/SortAndDropRepeats.h"
#include "UVUtils/model/TempIndexList.h"
#include "UVUtils/model/kyUVUtils.h"

#include <algorithm>
#include <limits>
#include <ostream>

namespace
{

/// A vertex property as the report shows it; vertex property n of a geometry is reportLines[n].
struct ReportLine
{
    const char* name;
    const char* separator;
    unsigned int componentLimit; ///< an opacity is left out
};

constexpr ReportLine reportLines[osg::Geometry::VertexPropertyCount] = {
    {"Positions", ", ", 3},      {"Normals", ", ", 3},    {"Colors", " ", 3},
    {"SecondaryColors", " ", 3}, {"TexCoords", ", ", 4},  {"TexCoords1", ", ", 4},
    {"TexCoords2", ", ", 4},     {"TexCoords3", ", ", 4}, {"TexCoords4", ", ", 4},
    {"TexCoords5", ", ", 4},     {"TexCoords6", ", ", 4}, {"TexCoords7", ", ", 4},
};

/// All kinds of vertex properties are packed floats.
void writeValue(std::ostream& stream, const osg::GeoProperty& property, unsigned int vertex,
                const ReportLine& line)
{
    const unsigned int components = property.getStride() / static_cast<unsigned int>(sizeof(float));
    const float* const value =
        static_cast<const float*>(property.getData()) + std::size_t{vertex} * components;
    for (unsigned int i = 0; i < std::min(components, line.componentLimit); ++i)
        stream << (i == 0 ? "" : line.separator) << value[i];
}

void reportVertex(std::ostream& stream, const osg::GeometryPtr& geometry, unsigned int vertex)
{
    for (unsigned int n = 0; n < osg::Geometry::VertexPropertyCount; ++n) {
        const osg::GeoPropertyPtr property = geometry->getVertexProperty(n);
        stream << "  " << reportLines[n].name << ": ";
        if (property && vertex < property->getSize())
            writeValue(stream, *property, vertex, reportLines[n]);
        else
            stream << "NULL";
        stream << '\n';
    }
}

std::vector<unsigned int> selectedVertices(const osg::GeometryPtr& geometry)
{
    const osg::GeoTmpIndexEditInterface list(geometry, kyUVTypes::FreeVertices);
    std::vector<unsigned int> ids(list.values().begin(), list.values().end());
    sortAndDropRepeats(ids);
    return ids;
}

} // namespace

void kyUVUtils::debugOutPntsInfo(const osg::GeometryPtr& geometry, const osg::NodePtr& node,
                                 std::ostream& stream)
{
    if (!isValidGeometry(geometry, node, true))
        return;
    const std::vector<unsigned int> ids = selectedVertices(geometry);
    if (ids.empty())
        return;
    stream << "Epsilon value is " << std::numeric_limits<float>::epsilon() << '\n'
           << "There are " << ids.size() << "vertices\n";
    unsigned int number = 0;
    const auto report = [&](const osg::GeometryPtr& owner, const std::vector<unsigned int>& local) {
        for (const unsigned int vertex : local) {
            stream << " info for vert " << number++ << '\n';
            reportVertex(stream, owner, vertex);
        }
    };
    if (!useCMesh(geometry)) {
        report(geometry, ids);
        return;
    }
    callFuncOnActiveBaseGeometry(node, ids.data(), static_cast<unsigned int>(ids.size()), false,
                                 [&](const osg::NodePtr&, const osg::GeometryPtr& surface,
                                     const std::vector<unsigned int>& local,
                                     const unsigned int&) { report(surface, local); });
}
