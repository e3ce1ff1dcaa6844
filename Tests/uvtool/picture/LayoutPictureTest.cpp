#include "uvtool/LayoutBuilders.h"
#include "uvtool/TempFolder.h"

#include "document/FileError.h"
#include "picture/LayoutPicture.h"
#include "picture/PictureContent.h"
#include "picture/PictureFrame.h"
#include "picture/PictureStyle.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QImage>
#include <QXmlStreamReader>

#include <clocale>
#include <limits>

namespace
{

using namespace uvtool;
using test::TestLayout;
using testing::HasSubstr;

/// A PNG of a layout, and where its UVs lie in it.
class DrawnPicture
{
public:
    explicit DrawnPicture(const UVLayout& layout, const PictureOptions& options = {{}, {}, 800})
        : frame_(framePicture(collectContent(layout), options.boxes, options.size))
    {
        const TempFolder folder;
        drawLayout(layout, options, folder / "layout.png");
        image_ = QImage(QString::fromStdString((folder / "layout.png").string()), "PNG");
    }

    const QImage& image() const { return image_; }
    QColor at(double u, double v) const
    {
        return image_.pixelColor(static_cast<int>(frame_.x(u)), static_cast<int>(frame_.y(v)));
    }

private:
    PictureFrame frame_;
    QImage image_;
};

std::string svgOf(const UVLayout& layout, const PictureOptions& options = {})
{
    const TempFolder folder;
    drawLayout(layout, options, folder / "layout.svg");
    return bytesOf(folder / "layout.svg");
}

/// All text of an SVG, one piece a line. Fails when the SVG is not well formed.
std::string textsIn(const std::string& svg)
{
    QXmlStreamReader reader(QByteArray::fromStdString(svg));
    std::string texts;
    while (!reader.atEnd()) {
        if (reader.readNext() == QXmlStreamReader::StartElement && reader.name() == "text")
            texts += reader.readElementText().trimmed().toStdString() + '\n';
    }
    EXPECT_FALSE(reader.hasError()) << reader.errorString().toStdString();
    return texts;
}

TEST(LayoutPicture, ShowsIslandUnitSquareAndPage)
{
    TestLayout layout;
    layout.addRectangle(0, {0.25F, 0.25F}, {0.75F, 0.75F});
    const DrawnPicture picture(layout);
    ASSERT_FALSE(picture.image().isNull());
    EXPECT_EQ(std::max(picture.image().width(), picture.image().height()), 800);

    EXPECT_EQ(picture.at(0.15, 0.15), pictureStyle::box);
    EXPECT_EQ(picture.image().pixelColor(2, 2), pictureStyle::page);
    EXPECT_LT(picture.at(0.0, 0.55).lightness(), 150) << "no unit square";
    const QColor island = picture.at(0.45, 0.55);
    EXPECT_EQ(picture.at(0.35, 0.65), island);
    EXPECT_GT(island.saturation(), 60);
    EXPECT_LT(picture.at(0.25, 0.55).lightness(), island.lightness() - 50) << "no outline";
}

TEST(LayoutPicture, MarksFlipsAndOverlaps)
{
    TestLayout layout = test::gridLayout(4, {0, 0}, 0.5F);
    std::swap(layout.corners[0], layout.corners[1]);
    layout.addRectangle(1, {0.6F, 0.1F}, {0.8F, 0.3F});
    layout.addRectangle(2, {0.7F, 0.2F}, {0.9F, 0.4F});
    const DrawnPicture picture(layout);
    EXPECT_EQ(picture.at(0.08, 0.03), pictureStyle::flipped);
    EXPECT_LT(picture.at(0.73, 0.26).lightness(), picture.at(0.87, 0.33).lightness() - 10);

    PictureOptions natural;
    natural.flipsAreNatural = true;
    const DrawnPicture darker(layout, natural);
    EXPECT_LT(darker.at(0.08, 0.03).lightness(), darker.at(0.205, 0.155).lightness() - 10);
    EXPECT_NE(darker.at(0.08, 0.03).hue(), pictureStyle::flipped.hue());

    const std::string texts = textsIn(svgOf(layout));
    EXPECT_THAT(texts, HasSubstr("1 flipped triangle\n"));
    EXPECT_THAT(texts, HasSubstr("of the area overlaps\n"));
    EXPECT_THAT(textsIn(svgOf(test::gridLayout(3))), testing::Not(HasSubstr("overlaps")));
}

TEST(LayoutPicture, NamesEfficiencyAndCounts)
{
    struct Case
    {
        const char* name;
        TestLayout layout;
        std::vector<UVBox> boxes;
        const char* share;
        const char* of;
    };
    TestLayout half;
    half.addRectangle(0, {0, 0}, {1, 0.5F});
    TestLayout twice = half;
    twice.addRectangle(1, {0, 0}, {1, 0.5F});
    TestLayout tiles = half;
    tiles.addRectangle(1, {1, 1}, {2, 2});
    TestLayout leaning;
    leaning.addRectangle(0, {-0.05F, 0}, {0.45F, 1});
    TestLayout large;
    large.addRectangle(0, {-100, -100}, {300, 300});
    const UVBox wide{{0, 0}, {2, 0.5F}};
    const Case cases[] = {
        {"half", half, {}, "50.0 %", "of the unit square"},
        {"covered twice counts once", twice, {}, "50.0 %", "of the unit square"},
        {"a given box", half, {wide}, "50.0 %", "of the box"},
        {"two tiles", tiles, {}, "75.0 %", "of 2 tiles"},
        {"leaning over a side", leaning, {}, "50.0 %", "of the unit square"},
        {"units of its own", large, {}, "100.0 %", "of its bounding box"},
        {"nothing", {}, {}, "0.0 %", "no UVs"},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        const std::string texts = textsIn(svgOf(c.layout, {"the title", c.boxes, 1000}));
        EXPECT_THAT(texts, HasSubstr("the title\n"));
        EXPECT_THAT(texts, HasSubstr(std::string(c.share) + '\n'));
        EXPECT_THAT(texts, HasSubstr(std::string(c.of) + '\n'));
    }
    EXPECT_THAT(textsIn(svgOf(half)), HasSubstr("1 island  ·  2 triangles\n"));
}

TEST(LayoutPicture, SurvivesAnyLayout)
{
    constexpr float nan = std::numeric_limits<float>::quiet_NaN();
    constexpr float infinity = std::numeric_limits<float>::infinity();
    constexpr float largest = std::numeric_limits<float>::max();
    const auto rectangle = [](test::Point lo, test::Point hi, std::int32_t island = 0) {
        TestLayout layout;
        layout.addRectangle(island, lo, hi);
        return layout;
    };
    TestLayout broken = rectangle({0, 0}, {nan, 1});
    broken.addRectangle(1, {0, 0}, {infinity, 1});
    broken.addRectangle(2, {0.2F, 0.2F}, {0.4F, 0.4F});
    const TestLayout layouts[] = {broken,
                                  rectangle({-largest, -largest}, {largest, largest}),
                                  rectangle({1e6F, 1e6F}, {1e6F, 1e6F}),
                                  rectangle({1e-38F, 0}, {3e-38F, 1e-38F}, 5),
                                  rectangle({3, 0}, {3, 100}),
                                  rectangle({0, 0}, {1, 1}, -1), // left out
                                  TestLayout{}};
    for (const TestLayout& layout : layouts) {
        for (const int size : {-1, 200, 700}) {
            EXPECT_FALSE(DrawnPicture(layout, {{}, {}, size}).image().isNull());
            const std::string svg = svgOf(layout, {"<&\"\xff", {}, size});
            textsIn(svg);
            EXPECT_THAT(svg, testing::Not(testing::ContainsRegex("[\" ,]-?(nan|inf)")));
        }
    }
    EXPECT_THAT(textsIn(svgOf(broken)), HasSubstr("4 triangles without finite UVs left out"));
}

TEST(LayoutPicture, IsTheSameEveryTimeAndLeavesTheLocaleAlone)
{
    const std::string before = std::setlocale(LC_ALL, nullptr);
    const TestLayout layout = test::gridLayout(5);
    EXPECT_EQ(svgOf(layout), svgOf(layout));
    EXPECT_EQ(DrawnPicture(layout).image(), DrawnPicture(layout).image());
    EXPECT_EQ(std::setlocale(LC_ALL, nullptr), before);
}

TEST(LayoutPicture, RefusesWhatItCannotWrite)
{
    const TempFolder folder;
    const TestLayout layout = test::gridLayout(1);
    EXPECT_TRUE(isPictureFormat("a.PNG"));
    EXPECT_TRUE(isPictureFormat("a.svg"));
    for (const char* const name : {"picture.gif", "picture", "no/such/folder.png"}) {
        try {
            drawLayout(layout, {}, folder / name);
            ADD_FAILURE() << name;
        } catch (const FileError& error) {
            EXPECT_EQ(error.kind(), FileError::Write);
        }
        EXPECT_FALSE(std::filesystem::exists(folder / name));
    }
    EXPECT_TRUE(std::filesystem::is_empty(folder.path()));
}

} // namespace
