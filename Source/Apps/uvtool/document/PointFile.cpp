#include "document/PointFile.h"

#include "document/FileError.h"
#include "document/NumberText.h"
#include "document/OutputFile.h"
#include "document/TextLines.h"

namespace uvtool
{
namespace
{

/// Empty where the line holds two numbers and nothing else; else what is wrong.
std::string readPoint(std::string_view line, Vec2f& point)
{
    for (float& coordinate : point) {
        const std::string_view word = takeTextWord(line);
        double number = 0.0;
        if (word.empty())
            return "a point is two numbers, \"u v\"";
        if (!readNumber(word, number))
            return quoted(word) + " is no number";
        coordinate = static_cast<float>(number);
    }
    const std::string_view rest = takeTextWord(line);
    return rest.empty() ? "" : "there is " + quoted(rest) + " behind the point";
}

} // namespace

std::vector<Vec2f> readPointFile(const std::filesystem::path& path, std::size_t count)
{
    const auto refuse = [&path](const std::string& why) {
        throw FileError(FileError::Read, path, why);
    };
    const std::string bytes = readListFile(path);
    std::vector<Vec2f> points;
    std::size_t number = 0;
    for (std::string_view text = bytes; !text.empty();) {
        ++number;
        const std::string_view line = takeTextLine(text);
        if (std::string_view words = line; takeTextWord(words).empty())
            continue;
        const std::string fault = readPoint(line, points.emplace_back());
        if (!fault.empty())
            refuse("line " + std::to_string(number) + ": " + fault);
    }
    if (points.size() != count)
        refuse("it holds " + std::to_string(points.size()) + " points, the grid has " +
               std::to_string(count));
    return points;
}

std::string textOfPoints(std::span<const Vec2f> points)
{
    std::string text;
    for (const Vec2f& point : points) {
        appendNumber(text, point[0]);
        text += ' ';
        appendNumber(text, point[1]);
        text += '\n';
    }
    return text;
}

} // namespace uvtool
