#include "formats/obj/PlainObj.h"

#include "document/NumberText.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace uvtool
{
namespace
{

using Matrix = std::array<double, 16>;

Vec3d transformPoint(const Matrix& m, const Vec3d& p)
{
    Vec3d out{};
    for (std::size_t row = 0; row < 3; ++row)
        out[row] = m[row] * p[0] + m[4 + row] * p[1] + m[8 + row] * p[2] + m[12 + row];
    return out;
}

/// The cofactors of the linear part: they carry normals over, up to their length, even where the
/// matrix has no inverse. A mirroring turns them round, hence the sign.
Vec3d transformNormal(const Matrix& m, const Vec3f& normal)
{
    const auto cofactor = [&m](std::size_t row, std::size_t column) {
        const std::size_t r1 = (row + 1) % 3;
        const std::size_t r2 = (row + 2) % 3;
        const std::size_t c1 = 4 * ((column + 1) % 3);
        const std::size_t c2 = 4 * ((column + 2) % 3);
        return m[c1 + r1] * m[c2 + r2] - m[c2 + r1] * m[c1 + r2];
    };
    Vec3d out{};
    double determinant = 0;
    double squared = 0;
    for (std::size_t row = 0; row < 3; ++row) {
        determinant += m[row] * cofactor(row, 0);
        for (std::size_t column = 0; column < 3; ++column)
            out[row] += cofactor(row, column) * static_cast<double>(normal[column]);
        squared += out[row] * out[row];
    }
    const double scale = squared > 0 ? std::copysign(1 / std::sqrt(squared), determinant) : 0;
    for (double& value : out)
        value *= scale;
    return out;
}

/// Writes geometries one after another; numbers of an OBJ count over the whole file.
class PlainWriter
{
public:
    explicit PlainWriter(const Document& document) : _document(document) {}

    std::string write()
    {
        for (const DocumentGeometry& geometry : _document.geometries) {
            addValues(geometry);
            addFaces(geometry);
            _firstV += geometry.positions.values.size();
            _firstVt += geometry.uvs[0].values.size();
            _firstVn += geometry.normals.values.size();
        }
        return std::move(_text);
    }

private:
    void addName(const char* keyword, std::string name)
    {
        std::replace_if(
            name.begin(), name.end(), [](char c) { return c == '\n' || c == '\r'; }, ' ');
        _text += keyword + name + '\n';
    }

    template <class Numbers>
    void addLine(const char* keyword, const Numbers& numbers)
    {
        _text += keyword;
        for (const auto number : numbers) {
            _text += ' ';
            appendNumber(_text, static_cast<float>(number));
        }
    }

    void addValues(const DocumentGeometry& geometry)
    {
        addName("o ", geometry.name);
        const std::vector<std::uint32_t> colors = colorOfPosition(geometry);
        for (std::size_t p = 0; p < geometry.positions.values.size(); ++p) {
            addLine("v", transformPoint(geometry.toWorld, geometry.positions.values[p]));
            if (colors[p] != absentIndex) {
                const Vec4f color = geometry.colors.values[colors[p]];
                addLine("", Vec3f{color[0], color[1], color[2]});
            }
            _text += '\n';
        }
        for (const Vec2f& uv : geometry.uvs[0].values) {
            addLine("vt", uv);
            _text += '\n';
        }
        for (const Vec3f& normal : geometry.normals.values) {
            addLine("vn", transformNormal(geometry.toWorld, normal));
            _text += '\n';
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
                            _document.materials[static_cast<std::size_t>(material)].name);
            }
            _text += 'f';
            for (std::uint32_t c = geometry.polygonOffsets[p]; c < geometry.polygonOffsets[p + 1];
                 ++c)
                addCorner(geometry, c);
            _text += '\n';
        }
    }

    void addCorner(const DocumentGeometry& geometry, std::uint32_t corner)
    {
        _text += ' ' + std::to_string(_firstV + geometry.positions.ofCorner[corner]);
        const bool hasNormal = geometry.normals.has(corner);
        if (geometry.uvs[0].has(corner))
            _text += '/' + std::to_string(_firstVt + geometry.uvs[0].ofCorner[corner]);
        else if (hasNormal)
            _text += '/';
        if (hasNormal)
            _text += '/' + std::to_string(_firstVn + geometry.normals.ofCorner[corner]);
    }

    const Document& _document;
    std::string _text;
    std::size_t _firstV = 1;
    std::size_t _firstVt = 1;
    std::size_t _firstVn = 1;
};

} // namespace

std::string plainObj(const Document& document)
{
    return PlainWriter(document).write();
}

} // namespace uvtool
