#include "formats/obj/PlainObj.h"

#include "document/NumberText.h"
#include "document/Transform.h"

#include <algorithm>

namespace uvtool
{
namespace
{

/// Writes geometries one after another; numbers of an OBJ count over the whole file.
class PlainWriter
{
public:
    explicit PlainWriter(const Document& document) : document_(document) {}

    std::string write()
    {
        for (const DocumentGeometry& geometry : document_.geometries) {
            addValues(geometry);
            addFaces(geometry);
            firstV_ += geometry.positions.values.size();
            firstVt_ += geometry.uvs[0].values.size();
            firstVn_ += geometry.normals.values.size();
        }
        return std::move(text_);
    }

private:
    void addName(const char* keyword, std::string name)
    {
        std::replace_if(
            name.begin(), name.end(), [](char c) { return c == '\n' || c == '\r'; }, ' ');
        text_ += keyword + name + '\n';
    }

    template <class Numbers>
    void addLine(const char* keyword, const Numbers& numbers)
    {
        text_ += keyword;
        for (const auto number : numbers) {
            text_ += ' ';
            appendNumber(text_, static_cast<float>(number));
        }
    }

    void addValues(const DocumentGeometry& geometry)
    {
        addName("o ", geometry.name);
        const std::vector<std::uint32_t> colors = colorOfPosition(geometry);
        for (std::size_t p = 0; p < geometry.positions.values.size(); ++p) {
            addLine("v", toScene(geometry.toWorld, geometry.positions.values[p]));
            if (colors[p] != absentIndex) {
                const Vec4f color = geometry.colors.values[colors[p]];
                addLine("", Vec3f{color[0], color[1], color[2]});
            }
            text_ += '\n';
        }
        for (const Vec2f& uv : geometry.uvs[0].values) {
            text_ += "vt ";
            appendExactNumber(text_, uv[0]);
            text_ += ' ';
            appendExactNumber(text_, uv[1]);
            text_ += '\n';
        }
        for (const Vec3f& normal : geometry.normals.values) {
            addLine("vn", normalToScene(geometry.toWorld, normal));
            text_ += '\n';
        }
    }

    static std::vector<std::uint32_t> colorOfPosition(const DocumentGeometry& geometry)
    {
        std::vector<std::uint32_t> colors(geometry.positions.values.size(), absentIndex);
        for (std::size_t c = 0; c < geometry.colors.ofCorner.size(); ++c)
            colors[geometry.positions.ofCorner[c]] = geometry.colors.ofCorner[c];
        return colors;
    }

    void addFaces(const DocumentGeometry& geometry)
    {
        std::int32_t material = -1;
        for (std::size_t p = 0; p < geometry.polygonCount(); ++p) {
            if (!geometry.materialOfPolygon.empty() && geometry.materialOfPolygon[p] != material) {
                material = geometry.materialOfPolygon[p];
                if (material >= 0)
                    addName("usemtl ",
                            document_.materials[static_cast<std::size_t>(material)].name);
            }
            text_ += 'f';
            for (std::uint32_t c = geometry.polygonOffsets[p]; c < geometry.polygonOffsets[p + 1];
                 ++c)
                addCorner(geometry, c);
            text_ += '\n';
        }
    }

    void addCorner(const DocumentGeometry& geometry, std::uint32_t corner)
    {
        text_ += ' ' + std::to_string(firstV_ + geometry.positions.ofCorner[corner]);
        const bool hasNormal = geometry.normals.has(corner);
        if (geometry.uvs[0].has(corner))
            text_ += '/' + std::to_string(firstVt_ + geometry.uvs[0].ofCorner[corner]);
        else if (hasNormal)
            text_ += '/';
        if (hasNormal)
            text_ += '/' + std::to_string(firstVn_ + geometry.normals.ofCorner[corner]);
    }

    const Document& document_;
    std::string text_;
    std::size_t firstV_ = 1;
    std::size_t firstVt_ = 1;
    std::size_t firstVn_ = 1;
};

} // namespace

std::string plainObj(const Document& document)
{
    return PlainWriter(document).write();
}

} // namespace uvtool
