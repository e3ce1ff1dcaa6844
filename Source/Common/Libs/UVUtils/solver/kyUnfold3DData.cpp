#include "UVUtils/solver/kyUnfold3DData.h"

#include "UVUtils/model/UVSlot.h"
#include "UVUtils/solver/WriteLine.h"
#include "Utils/kyLog.h"

#include <algorithm>
#include <array>
#include <span>

using kyUnfold3D::writeLine;

namespace
{

// UVs this near to zero were never mapped.
constexpr float zeroUV = 0.000001F;

// How many polygons beyond the indices a lengths entry is taken at its word for.
constexpr unsigned int mostMissingPolygons = 1'000'000;

using UVs = std::span<const osg::Vector<float, 2>>;

void setArray(std::vector<int>& out, const osg::GeoIndices& indices)
{
    const std::vector<unsigned int> ids = indices.getValues();
    out.assign(ids.begin(), ids.end());
}

void setArray(std::vector<int>& out, std::size_t count, int value)
{
    out.assign(count, value);
}

void setArray(std::vector<double>& out, std::span<const osg::Point<float, 3>> positions)
{
    out.resize(3 * positions.size());
    double* next = out.data();
    for (const osg::Point<float, 3>& position : positions)
        for (unsigned int axis = 0; axis < 3; ++axis)
            *next++ = position[axis];
}

void setArray(std::vector<double>& out, UVs uvs)
{
    out.assign(3 * uvs.size(), 0.0);
    double* next = out.data();
    for (const osg::Vector<float, 2>& uv : uvs) {
        next[0] = uv[0];
        next[1] = uv[1];
        next += 3;
    }
}

bool areAllZero(UVs uvs)
{
    const auto isZero = [](float x) { return x >= -zeroUV && x <= zeroUV; };
    const bool allZero = std::all_of(uvs.begin(), uvs.end(), [&](const osg::Vector<float, 2>& uv) {
        return isZero(uv[0]) && isZero(uv[1]);
    });
    if (allZero)
        writeLine("no tex coords or all zero");
    return allZero;
}

/// True when the geometry has one index list afterwards.
bool makeSingleIndexed(osg::Geometry& geometry)
{
    const std::size_t mappings = geometry.getIndexMapping().size();
    if (mappings >= 2)
        writeLine("osg geo: index mapping ", mappings, "  - making single indexed ");
    geometry.makeSingleIndexed();
    return geometry.getIndexMapping().size() <= 1;
}

template <class Property>
void writeSize(const char* label, const Property& property)
{
    if (property != osg::NullFC)
        writeLine(label, property->getSize());
}

void writeLengths(const osg::GeoPLengths& lengths)
{
    std::cout << "osg_lengths content: ";
    for (unsigned int i = 0; i < lengths.getSize(); ++i)
        std::cout << lengths.getValue(i) << ' ';
    writeLine();
}

/// The edges of a triangle in the order in which they are numbered: the solver counts from the
/// edge that closes the triangle.
std::array<Edge, 3> edgesOfTriangle(const int* corners)
{
    const auto a = static_cast<unsigned int>(corners[0]);
    const auto b = static_cast<unsigned int>(corners[1]);
    const auto c = static_cast<unsigned int>(corners[2]);
    return {Edge(c, a), Edge(a, b), Edge(b, c)};
}

} // namespace

kyUnfold3DData::kyUnfold3DData(const osg::GeometryPtr& geometry, kyUVTypes::UVSet uvSet,
                               kyUnfold3D::UVWInputMode inputMode,
                               const std::vector<osg::Vector<float, 2>>& uvs)
    : inputMode_(inputMode), uvSet_(uvSet)
{
    extractData(geometry, uvs);
}

bool kyUnfold3DData::isValid() const
{
    return !coordsXYZ_.empty() && coordsXYZ_.size() == coordsUVW_.size();
}

bool kyUnfold3DData::extractData(const osg::GeometryPtr& geometry,
                                 const std::vector<osg::Vector<float, 2>>& uvs)
{
    if (geometry == osg::NullFC || !makeSingleIndexed(*geometry))
        return false;

    const osg::GeoIndicesPtr indices = geometry->getIndices();
    const auto positions = osg::dcast<osg::GeoPositions3f>(geometry->getPositions());
    const auto texCoords = uvSlot(geometry, uvSet_);
    writeLine("geo:");
    writeSize("osg_positions ", positions);
    writeSize("osg_indices ", indices);
    writeSize("osg_lengths ", geometry->getLengths());
    writeSize("osg_types ", geometry->getTypes());
    writeSize("osg_texCoord ", texCoords);

    if (indices == osg::NullFC || indices->getSize() == 0)
        return false;
    if (positions == osg::NullFC || positions->getSize() == 0)
        return false;
    if (!extractPolygons(*geometry, *indices))
        return false;

    setArray(poly3DIDs_, *indices);
    polyUVWIDs_ = poly3DIDs_;
    setArray(coordsXYZ_, positions->values());
    numVertices_ = static_cast<int>(positions->getSize());

    extractUVWs(positions->values(), texCoords ? texCoords->values() : UVs(), uvs);
    numUVs_ = static_cast<int>(coordsUVW_.size() / 3);
    return true;
}

bool kyUnfold3DData::extractPolygons(osg::Geometry& geometry, const osg::GeoIndices& indices)
{
    const osg::GeoPLengthsPtr lengths = geometry.getLengths();
    const osg::GeoPTypesPtr types = geometry.getTypes();
    const unsigned int indexCount = indices.getSize();
    if (lengths != osg::NullFC) {
        if (lengths->getSize() == 0)
            return false;
        writeLengths(*lengths);
        if (types == osg::NullFC || types->getSize() == 0 ||
            types->getValue(0) != osg::GeoPrimitive::Triangles)
        {
            writeLine("osg geo: unsupported primitive type");
            return false;
        }
        // A length beyond the indices is an error that the solver finds. It need not see all of the
        // polygons that are not there: billions of them would not fit into memory.
        const unsigned int polygons =
            std::min(lengths->getValue(0) / 3, indexCount / 3 + mostMissingPolygons);
        setArray(polySizes_, polygons, 3);
        return true;
    }

    if (types != osg::NullFC)
        return false;
    writeLine("CompactShellMesh");
    if (indexCount % 3 != 0) {
        writeLine("no triangles? ", indexCount / 3.0);
        return false;
    }
    setArray(polySizes_, indexCount / 3, 3);
    writeLine("triangles: ", indexCount / 3);
    return true;
}

void kyUnfold3DData::extractUVWs(std::span<const osg::Point<float, 3>> positions,
                                 std::span<const osg::Vector<float, 2>> texCoords,
                                 std::span<const osg::Vector<float, 2>> uvs)
{
    if (inputMode_ == kyUnfold3D::InputUVs && uvs.size() == positions.size()) {
        writeLine("copy input uvs to coordsUVW");
        setArray(coordsUVW_, uvs);
        return;
    }
    writeLine("use geo data for input uvs");
    if (inputMode_ == kyUnfold3D::GeometryTexCoords && !texCoords.empty() && !areAllZero(texCoords))
    {
        writeLine("assigning texcoord0 to UVW");
        setArray(coordsUVW_, texCoords);
    } else {
        writeLine("assigning 3d pos to UVW");
        setArray(coordsUVW_, positions);
    }
}

void kyUnfold3DData::buildEdges()
{
    numberOfEdge_.reserve(poly3DIDs_.size() / 2 + 1);
    for (std::size_t corner = 0; corner + 3 <= poly3DIDs_.size(); corner += 3) {
        for (const Edge& edge : edgesOfTriangle(&poly3DIDs_[corner])) {
            const auto number = static_cast<int>(edges_.size());
            if (numberOfEdge_.try_emplace(edge, number).second)
                edges_.push_back(edge);
        }
    }
}

std::vector<int> kyUnfold3DData::getEdgeIds(const FlatEdgeList& vertexPairs)
{
    if (vertexPairs.size() % 2 != 0) {
        kyLog::error("getEdgeIds uneven number of vertex ids");
        return {};
    }
    if (vertexPairs.empty())
        return {};
    if (edges_.empty())
        buildEdges();

    std::vector<int> edgeIds;
    edgeIds.reserve(vertexPairs.size() / 2);
    for (std::size_t i = 0; i < vertexPairs.size(); i += 2) {
        const auto found = numberOfEdge_.find(Edge(vertexPairs[i], vertexPairs[i + 1]));
        if (found != numberOfEdge_.end())
            edgeIds.push_back(found->second);
        else
            kyLog::error("No edge id found for vertices %i %i", static_cast<int>(vertexPairs[i]),
                         static_cast<int>(vertexPairs[i + 1]));
    }
    return edgeIds;
}

FlatEdgeList kyUnfold3DData::getEdgesVertIds(const std::vector<int>& polygonEdges) const
{
    if (polygonEdges.size() % 2 != 0) {
        kyLog::error("getEdgesVertIds uneven number of vertex ids");
        return {};
    }
    const auto polygonCount = static_cast<long long>(poly3DIDs_.size() / 3);
    FlatEdgeList vertexPairs;
    vertexPairs.reserve(polygonEdges.size());
    for (std::size_t i = 0; i < polygonEdges.size(); i += 2) {
        const int polygon = polygonEdges[i];
        const int edge = polygonEdges[i + 1];
        if (polygon < 0 || polygon >= polygonCount || edge < 0 || edge > 2)
            continue;
        const int* const corners = &poly3DIDs_[std::size_t{3} * static_cast<std::size_t>(polygon)];
        vertexPairs.push_back(static_cast<unsigned int>(corners[edge]));
        vertexPairs.push_back(static_cast<unsigned int>(corners[(edge + 1) % 3]));
    }
    return vertexPairs;
}
