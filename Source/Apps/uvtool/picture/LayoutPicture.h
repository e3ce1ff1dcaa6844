#pragma once

#include "layout/UVBox.h"
#include "layout/UVLayout.h"

#include <array>
#include <filesystem>
#include <string>
#include <vector>

namespace uvtool
{

/// How a picture of a UV layout is made.
struct PictureOptions
{
    std::string title; ///< UTF-8, in the top left corner; may be empty

    /// Where the layout should lie: the box of the packing, or one for each tile. They are outlined
    /// and the packing efficiency is a share of their area. Empty: the tiles (unit squares at whole
    /// numbers) that islands use, one that reaches into a tile by less than a tenth not counted; or
    /// the bounding box of the layout where these are more than 64.
    std::vector<UVBox> boxes;

    int size = 1600; ///< longer side of the picture, in pixels; taken to the range 200 to 8192

    /// Triangles that turn over are no faults: an image that is thrown onto a body falls on its
    /// back as well. They are a darker tint of their island then, not red.
    bool flipsAreNatural = false;

    std::vector<std::array<std::array<float, 2>, 2>> lines{}; ///< to point out, from end to end
};

/// Draws a layout into a PNG or an SVG; the format goes by the extension of `file`.
///
/// Islands have distinct tints, neighbours ones that differ clearly, and an outline; triangle edges
/// appear where they are far enough apart to be seen. Triangles that turn against their island are
/// red, what is covered twice is hatched, both down to about a pixel: the picture shows where to
/// look, checkLayout() says for certain. Triangles with a NaN or an infinity are left out and
/// counted. Around it stand the unit square, a grid with its coordinates, the number of islands and
/// triangles, and the packing efficiency: the area that is covered, counted once.
///
/// A layout without triangles gives the empty unit square. The same layout gives the same picture.
/// About linear in triangles and pixels.
///
/// Needs no display. Text needs a QGuiApplication: where there is no application at all, one for
/// the "offscreen" platform is made and stays; where there is a bare QCoreApplication the picture
/// has no text. Calls from several threads wait for each other.
///
/// A FileError of kind Write when the extension is another one or the file cannot be written; a
/// file that stood there before still stands then.
void drawLayout(const UVLayout& layout, const PictureOptions& options,
                const std::filesystem::path& file);

/// True when drawLayout knows the extension of `file`.
bool isPictureFormat(const std::filesystem::path& file);

} // namespace uvtool
