#include "picture/SurfacePicture.h"

#include "document/Extension.h"
#include "document/FileError.h"
#include "document/OutputFile.h"
#include "document/Vec3Math.h"
#include "mesh/EdgeGroups.h"
#include "picture/DepthRaster.h"
#include "picture/SurfaceCamera.h"
#include "picture/SurfaceShading.h"

#include <QBuffer>
#include <QByteArray>
#include <QImage>

#include <algorithm>
#include <cmath>

namespace uvtool
{
namespace
{

constexpr std::int32_t viewSize = 900;    ///< pixels along a view
constexpr std::int32_t cellsPerPixel = 2; ///< each way; pixels are means
constexpr double squaresAlongDiagonal = 48;
constexpr double seamLift = 2.5; ///< towards the viewer, in cells
constexpr Rgb page{0.945, 0.953, 0.965};

/// What a cell shows instead of the surface.
enum Line : std::uint8_t
{
    NoLine,
    Seam,
    Mark
};
constexpr std::array<double, 3> lineRadius{0.0, 1.6, 3.2}; ///< in cells
constexpr std::array<Rgb, 3> lineColours{Rgb{}, Rgb{0.08, 0.10, 0.14}, Rgb{0.91, 0.17, 0.05}};

/// Directions to the viewers.
constexpr std::array<Vec3d, 2> viewers{Vec3d{0.8, 0.5, 1.0}, Vec3d{-0.8, 0.35, -1.0}};

/// One view of a mesh, in cells.
class View
{
public:
    View(const SurfaceMesh& mesh, const SurfaceShading& shading, const Vec3d& viewer)
        : shading_(shading), camera_(viewer, mesh.points, viewSize * cellsPerPixel),
          light_(lightFor(viewer)), raster_(viewSize * cellsPerPixel)
    {
        for (const Vec3d& point : mesh.points)
            seen_.push_back(camera_.project(point));
        for (std::uint32_t t = 0; t < mesh.triangleCount(); ++t) {
            const std::uint32_t* const corner = mesh.triangles.data() + 3 * std::size_t{t};
            raster_.draw(t, {seen_[corner[0]], seen_[corner[1]], seen_[corner[2]]});
        }
        lines_.resize(static_cast<std::size_t>(raster_.size()) *
                      static_cast<std::size_t>(raster_.size()));
    }

    /// Draws a line where the surface doesn't hide it, over what was drawn before.
    void drawLine(std::uint32_t from, std::uint32_t to, Line line)
    {
        const Vec3d way = difference(seen_[to], seen_[from]);
        const auto steps = static_cast<int>(std::ceil(std::hypot(way[0], way[1])));
        for (int i = 0; i <= steps; ++i) {
            const double part = steps > 0 ? static_cast<double>(i) / steps : 0.0;
            Vec3d point = seen_[from];
            for (std::size_t k = 0; k < 3; ++k)
                point[k] += part * way[k];
            stamp(point, line);
        }
    }

    Rgb pixel(std::int32_t row, std::int32_t column) const
    {
        Rgb sum{};
        for (std::int32_t i = 0; i < cellsPerPixel; ++i)
            for (std::int32_t j = 0; j < cellsPerPixel; ++j) {
                const Rgb part = cell(row * cellsPerPixel + i, column * cellsPerPixel + j);
                for (std::size_t k = 0; k < 3; ++k)
                    sum[k] += part[k] / (cellsPerPixel * cellsPerPixel);
            }
        return sum;
    }

private:
    /// Over the viewer's left shoulder.
    static Vec3d lightFor(const Vec3d& viewer)
    {
        const Vec3d ahead = normalised(viewer);
        const Vec3d right = normalised(cross({0.0, 1.0, 0.0}, ahead));
        const Vec3d up = cross(ahead, right);
        Vec3d light{};
        for (std::size_t k = 0; k < 3; ++k)
            light[k] = ahead[k] - 0.35 * right[k] + 0.45 * up[k];
        return normalised(light);
    }

    /// Marks the cells around a point that are no nearer than it.
    void stamp(const Vec3d& point, Line line)
    {
        const double radius = lineRadius[line];
        const auto low = [&](double x) {
            return static_cast<std::int32_t>(std::max(0.0, std::floor(x - radius)));
        };
        const auto high = [&](double x) {
            return std::min(raster_.size(), static_cast<std::int32_t>(std::ceil(x + radius)));
        };
        for (std::int32_t row = low(point[1]); row < high(point[1]); ++row)
            for (std::int32_t column = low(point[0]); column < high(point[0]); ++column) {
                const bool isNear =
                    std::hypot(column + 0.5 - point[0], row + 0.5 - point[1]) <= radius;
                if (isNear && raster_.depth(row, column) <= point[2] + seamLift)
                    lines_[index(row, column)] = line;
            }
    }

    Rgb cell(std::int32_t row, std::int32_t column) const
    {
        if (const Line line = lines_[index(row, column)]; line != NoLine)
            return lineColours[line];
        const DepthRaster::Hit& hit = raster_.hit(row, column);
        return hit.triangle == DepthRaster::nothing ? page : shading_.colour(hit, light_);
    }

    std::size_t index(std::int32_t row, std::int32_t column) const
    {
        return static_cast<std::size_t>(row) * static_cast<std::size_t>(raster_.size()) +
               static_cast<std::size_t>(column);
    }

    const SurfaceShading& shading_;
    SurfaceCamera camera_;
    Vec3d light_;
    std::vector<Vec3d> seen_; ///< [point]
    DepthRaster raster_;
    std::vector<Line> lines_; ///< [cell]
};

QRgb toPixel(const Rgb& colour)
{
    const auto byte = [](double channel) {
        return static_cast<int>(std::lround(255.0 * std::clamp(channel, 0.0, 1.0)));
    };
    return qRgb(byte(colour[0]), byte(colour[1]), byte(colour[2]));
}

QImage render(const SurfaceMesh& mesh, const MarkedSides& marked)
{
    const SurfaceShading shading(mesh, squaresAlongDiagonal);
    const std::vector<std::uint32_t> seams = seamsOf(mesh);
    QImage image(viewSize * static_cast<int>(viewers.size()), viewSize, QImage::Format_RGB32);
    int left = 0;
    for (const Vec3d& viewer : viewers) {
        View view(mesh, shading, viewer);
        for (std::size_t i = 0; i < seams.size(); i += 2)
            view.drawLine(seams[i], seams[i + 1], Seam);
        marked.forEachIn(mesh.source, [&](std::uint32_t side) {
            view.drawLine(mesh.triangles[side], mesh.triangles[endCorner(side)], Mark);
        });
        for (std::int32_t row = 0; row < viewSize; ++row)
            for (std::int32_t column = 0; column < viewSize; ++column)
                image.setPixel(left + column, row, toPixel(view.pixel(row, column)));
        left += viewSize;
    }
    return image;
}

} // namespace

void drawSurface(const SurfaceMesh& mesh, const std::filesystem::path& file,
                 const MarkedSides& marked)
{
    if (!isSurfacePictureFormat(file))
        throw FileError(FileError::Write, file, "a picture of an unknown kind; use .png");
    OutputFile output(file);
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    render(mesh, marked).save(&buffer, "PNG");
    output.write({bytes.constData(), static_cast<std::size_t>(bytes.size())});
    output.commit();
}

bool isSurfacePictureFormat(const std::filesystem::path& file)
{
    return lowerExtension(file) == ".png";
}

} // namespace uvtool
