#include "picture/LayoutPicture.h"

#include "document/Extension.h"
#include "document/FileError.h"
#include "document/OutputFile.h"
#include "picture/CoverageRaster.h"
#include "picture/FramePainter.h"
#include "picture/GuiSession.h"
#include "picture/IslandPainter.h"
#include "picture/LinePainter.h"
#include "picture/PictureContent.h"
#include "picture/PictureFrame.h"
#include "picture/PictureStyle.h"
#include "picture/Tints.h"

#include <QBuffer>
#include <QByteArray>
#include <QImage>
#include <QPainter>
#include <QSvgGenerator>

#include <algorithm>
#include <mutex>
#include <span>
#include <string>
#include <string_view>
#include <utility>

namespace uvtool
{
namespace
{

/// Islands closer than this share of the picture's size count as neighbours for their tints.
constexpr double neighbourReach = 0.12;

/// What browsers take an inch for, so that a unit of an SVG is a pixel there.
constexpr int pixelsPerInch = 96;

/// Qt names one family; a viewer that doesn't have it should take one like it.
QByteArray withFontFamilies(QByteArray svg)
{
    const QByteArray family = QByteArray("font-family=\"") + pictureStyle::fontFamily;
    return svg.replace(family, family + ", Verdana, Helvetica, sans-serif");
}

/// Everything that is painted, decided before the first stroke.
struct Picture
{
    const UVLayout& layout;
    QString title;
    PictureContent content;
    PictureFrame frame;
    CoverageRaster raster;
    std::vector<Tint> tints;
    OverlapShare overlap;
    std::span<const std::array<std::array<float, 2>, 2>> lines;
};

/// The text with spaces for all that has no place in an SVG.
QString printable(const std::string& text)
{
    QString printable = QString::fromStdString(text);
    for (QChar& c : printable) {
        if (!c.isPrint() && !c.isSurrogate())
            c = QLatin1Char(' ');
    }
    return printable;
}

Picture compose(const UVLayout& layout, const PictureOptions& options)
{
    const int size = std::clamp(options.size, 200, 8192);
    PictureContent content = collectContent(layout);
    content.flipsAreNatural = options.flipsAreNatural;
    const PictureFrame frame = framePicture(content, options.boxes, size);
    const CoverageRaster raster(frame.raster(), layout, content.islandOfTriangle);
    const auto reach = static_cast<std::int32_t>(neighbourReach * size);
    const std::vector<Tint> tints = tintIslands(islandsBySize(content), raster.neighbours(reach));
    const double overlap =
        static_cast<double>(raster.excess()) / (frame.pixelsPerUnit * frame.pixelsPerUnit);
    return {
        layout,       printable(options.title), std::move(content), frame, raster, tints, {overlap},
        options.lines};
}

void paint(QPainter& painter, const Picture& picture, bool hasText)
{
    painter.setRenderHint(QPainter::Antialiasing);
    // An SVG names the font in every group, be there text or not.
    if (hasText)
        painter.setFont(pictureStyle::font(picture.frame.width / 60, false));
    paintBackground(painter, picture.frame);
    paintIslands(painter, picture.frame, picture.layout, picture.content, picture.tints);
    paintFlipped(painter, picture.frame, picture.layout, picture.content, picture.tints);
    paintOverlaps(painter, picture.frame, picture.raster);
    paintBoxes(painter, picture.frame);
    paintLines(painter, picture.frame, picture.lines);
    if (hasText)
        paintTexts(painter, picture.frame, picture.content, picture.title, picture.overlap);
}

QByteArray pngBytes(const Picture& picture, bool hasText)
{
    QImage image(picture.frame.width, picture.frame.height, QImage::Format_RGB32);
    image.fill(Qt::white);
    {
        QPainter painter(&image);
        paint(painter, picture, hasText);
    }
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    image.save(&buffer, "PNG");
    return bytes;
}

QByteArray svgBytes(const Picture& picture, bool hasText)
{
    QByteArray bytes;
    QBuffer buffer(&bytes);
    QSvgGenerator svg;
    svg.setOutputDevice(&buffer);
    svg.setResolution(pixelsPerInch);
    svg.setSize({picture.frame.width, picture.frame.height});
    svg.setViewBox(QRect(0, 0, picture.frame.width, picture.frame.height));
    svg.setTitle(picture.title.toHtmlEscaped());
    {
        QPainter painter(&svg);
        paint(painter, picture, hasText);
    }
    return withFontFamilies(bytes);
}

using Encoder = QByteArray (*)(const Picture&, bool hasText);

/// Null for an extension that is unknown.
Encoder encoderFor(const std::filesystem::path& file)
{
    const std::string extension = lowerExtension(file);
    if (extension == ".png")
        return pngBytes;
    return extension == ".svg" ? svgBytes : nullptr;
}

} // namespace

void drawLayout(const UVLayout& layout, const PictureOptions& options,
                const std::filesystem::path& file)
{
    const Encoder encode = encoderFor(file);
    if (encode == nullptr)
        throw FileError(FileError::Write, file, "a picture of an unknown kind; use .png or .svg");

    static std::mutex oneAtATime;
    const std::scoped_lock lock(oneAtATime);
    OutputFile output(file);
    const QByteArray bytes = encode(compose(layout, options), startGuiSession());
    output.write({bytes.constData(), static_cast<std::size_t>(bytes.size())});
    output.commit();
}

bool isPictureFormat(const std::filesystem::path& file)
{
    return encoderFor(file) != nullptr;
}

} // namespace uvtool
