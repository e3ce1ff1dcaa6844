#include "picture/SurfacePicture.h"

#include "uvtool/TempFolder.h"

#include <QImage>

#include <gtest/gtest.h>

namespace uvtool
{
namespace
{

/// A square wall that faces the first viewer, of two triangles, and a smaller wall behind it. The
/// front wall's second triangle can be cut off in the layout.
SurfaceMesh twoWalls(bool isCut)
{
    SurfaceMesh mesh;
    // Around the directions to the right and up of the first view.
    const auto add = [&](double size, double depth) {
        const auto first = static_cast<std::uint32_t>(mesh.points.size());
        const Vec3d right{1.0, 0.0, -0.8};
        const Vec3d up{-0.4, 1.64, -0.5};
        const Vec3d away{-0.8, -0.5, -1.0};
        for (const auto& [x, y] : {std::pair{-1.0, -1.0}, {1.0, -1.0}, {1.0, 1.0}, {-1.0, 1.0}}) {
            Vec3d point{};
            for (std::size_t i = 0; i < 3; ++i)
                point[i] = size * (x * right[i] / 1.28 + y * up[i] / 1.76) + depth * away[i];
            mesh.points.push_back(point);
        }
        for (const std::uint32_t corner : {0U, 1U, 2U, 0U, 2U, 3U})
            mesh.triangles.push_back(first + corner);
    };
    add(1.0, 0.0);
    add(0.5, 0.3);
    const float aside = isCut ? 2.0F : 0.0F;
    mesh.uvs = {{0, 0}, {1, 0}, {1, 1}, {aside, 0}, {1 + aside, 1}, {aside, 1},
                {0, 0}, {0, 0}, {0, 0}, {0, 0},     {0, 0},         {0, 0}};
    mesh.island = {0, isCut ? 1 : 0, -1, -1};
    return mesh;
}

QImage picture(const SurfaceMesh& mesh)
{
    const TempFolder folder;
    const auto file = folder.path() / "view.png";
    drawSurface(mesh, file);
    return QImage(QString::fromStdString(file.string()));
}

/// The least grey around the middle of the left view, where the diagonal of the front wall is.
int darkestInTheMiddle(const QImage& image)
{
    int darkest = 255;
    for (int dy = -4; dy <= 4; ++dy)
        for (int dx = -4; dx <= 4; ++dx)
            darkest = std::min(darkest,
                               qGray(image.pixel(image.width() / 4 + dx, image.height() / 2 + dy)));
    return darkest;
}

/// Changes between light and dark along the middle of the left view, but for the rims.
int checkerChanges(const QImage& image)
{
    int changes = 0;
    const int row = image.height() * 2 / 5;
    for (int x = image.width() / 8; x < image.width() * 3 / 8; ++x)
        changes += std::abs(qGray(image.pixel(x, row)) - qGray(image.pixel(x + 1, row))) > 12;
    return changes;
}

TEST(SurfacePicture, ShowsACheckerAndTheSeamsThatCanBeSeen)
{
    const QImage whole = picture(twoWalls(false));
    const QImage cut = picture(twoWalls(true));
    ASSERT_EQ(whole.width(), 2 * whole.height());
    // Half of the wall's width, of which the diagonal of both walls holds 48 squares.
    EXPECT_GE(checkerChanges(whole), 10);
    EXPECT_LE(checkerChanges(whole), 40);
    EXPECT_GT(darkestInTheMiddle(whole), 60);
    EXPECT_LT(darkestInTheMiddle(cut), 45);
    // The hidden wall has no layout; from behind it is grey.
    const QRgb behind = whole.pixel(whole.width() * 3 / 4, whole.height() / 2);
    EXPECT_EQ(qRed(behind), qGreen(behind));
    EXPECT_EQ(qRed(behind), qBlue(behind));
}

TEST(SurfacePicture, SurvivesWhatHasNoSurface)
{
    EXPECT_FALSE(picture({}).isNull());
    SurfaceMesh point;
    point.points = {{1, 2, 3}};
    point.triangles = {0, 0, 0};
    point.uvs.resize(3);
    point.island = {0};
    EXPECT_FALSE(picture(point).isNull());
}

} // namespace
} // namespace uvtool
