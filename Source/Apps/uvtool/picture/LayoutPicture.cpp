#include "picture/LayoutPicture.h"

#include "document/FileError.h"
#include "document/OutputFile.h"
#include "picture/CoverageRaster.h"
#include "picture/FramePainter.h"
#include "picture/GuiSession.h"
#include "picture/IslandPainter.h"
#include "picture/PictureContent.h"
#include "picture/PictureFrame.h"
#include "picture/Tints.h"

#include <QBuffer>
#include <QByteArray>
#include <QImage>
#include <QPainter>
#include <QSvgGenerator>

#include <algorithm>
#include <cctype>
#include <mutex>
#include <string>
#include <string_view>

namespace uvtool
{
namespace
{

/// Islands closer than this share of the picture's size count as neighbours for their tints.
constexpr double neighbourReach = 0.02;

/// Everything that is painted, decided before the first stroke.
struct Picture
{
    const UVLayout& layout;
    const PictureOptions& options;
    PictureContent content;
    PictureFrame frame;
    std::vector<Tint> tints;
    std::vector<CellRun> overlaps;
    OverlapShare overlap;
};

Picture compose(const UVLayout& layout, const PictureOptions& options)
{
    const int size = std::clamp(options.size, 200, 8192);
    Picture picture{layout, options, collectContent(layout), {}, {}, {}, {}};
    picture.frame = framePicture(picture.content, options.boxes, size);

    const CoverageRaster raster(picture.frame.raster(), layout, picture.content.islandOfTriangle);
    const auto reach = static_cast<std::int32_t>(neighbourReach * size);
    picture.tints = tintIslands(islandsBySize(picture.content), raster.neighbours(reach));
    picture.overlaps = raster.overlaps();
    picture.overlap.area = static_cast<double>(raster.excess()) /
                           (picture.frame.pixelsPerUnit * picture.frame.pixelsPerUnit);
    return picture;
}

void paint(QPainter& painter, const Picture& picture, bool hasText)
{
    painter.setRenderHint(QPainter::Antialiasing);
    paintBackground(painter, picture.frame);
    paintIslands(painter, picture.frame, picture.layout, picture.content, picture.tints);
    paintOverlaps(painter, picture.frame, picture.overlaps);
    paintFlipped(painter, picture.frame, picture.layout, picture.content);
    paintBoxes(painter, picture.frame);
    if (hasText)
        paintTexts(painter, picture.frame, picture.content, picture.options.title, picture.overlap);
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
    svg.setSize({picture.frame.width, picture.frame.height});
    svg.setViewBox(QRect(0, 0, picture.frame.width, picture.frame.height));
    svg.setTitle(QString::fromStdString(picture.options.title));
    {
        QPainter painter(&svg);
        paint(painter, picture, hasText);
    }
    return bytes;
}

using Encoder = QByteArray (*)(const Picture&, bool hasText);

/// Null for an extension that is unknown.
Encoder encoderFor(const std::filesystem::path& file)
{
    std::string extension = file.extension().string();
    std::transform(extension.begin(), extension.end(), extension.begin(),
                   [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
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
