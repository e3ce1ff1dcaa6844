#include "Unfold3D/commands/IslandReport.h"

#include <algorithm>
#include <map>

namespace unfold3d
{

namespace
{

struct ObstacleWords
{
    Obstacle obstacle;
    const char* ofOne;  ///< "Island 3 ..."
    const char* remedy; ///< a sentence
};

constexpr ObstacleWords obstacleWords[] = {
    {Obstacle::Closed, "is closed", "Cut a seam into each closed part that opens it."},
    {Obstacle::Handle, "has a handle",
     "Cut seams around and along each handle, so that it opens to a strip."},
    {Obstacle::OneSided, "has one side only, like a band with a half twist",
     "Cut a seam across the band."},
    {Obstacle::CrowdedEdge, "has an edge with more than two triangles",
     "Cut the mesh along such edges first."},
    {Obstacle::TouchesItself,
     "touches itself in single vertices, in a way that has no room in the plane",
     "Give the parts vertices of their own there."},
};

std::string islands(std::size_t count)
{
    return std::to_string(count) + (count == 1 ? " island" : " islands");
}

/// "1 island is closed", "3 islands can't be unfolded: each is closed".
std::string sentence(std::size_t count, const ObstacleWords& words)
{
    if (count == 1)
        return "1 island " + std::string(words.ofOne) + " and keeps its UVs. " + words.remedy;
    return islands(count) + " keep their UVs, since each " + words.ofOne + ". " + words.remedy;
}

std::string islandName(const Session& session, int island)
{
    return "Island " + std::to_string(island) + " (at vertex " +
           std::to_string(session.islands.vertices[island].front()) + ")";
}

/// "4, 7, 9", or the first ones and the last of many.
std::string vertexNames(const IslandLayout& layout, std::span<const int> place)
{
    constexpr std::size_t mostNames = 8;
    std::string text;
    for (std::size_t i = 0; i < place.size(); ++i) {
        if (place.size() > mostNames && i == mostNames - 1) {
            text += "... ";
            i = place.size() - 1;
        }
        text += std::to_string(layout.vertices[static_cast<std::size_t>(place[i])]);
        text += i + 1 < place.size() ? ", " : "";
    }
    return text;
}

/// Where the warnings of islands hold, a line for each place.
void namePlaces(const Session& session, std::span<const int> chosen,
                std::span<const IslandLayout> results, TopologyLines& lines)
{
    for (std::size_t i = 0; i < results.size(); ++i)
        for (const LayoutWarning& warning : results[i].warnings)
            for (const std::vector<int>& place : warning.places)
                lines.add(islandName(session, chosen[i]) + ", vertices " +
                          vertexNames(results[i], place) + ": " + warning.text);
}

std::vector<std::string> nameObstacles(const Session& session, std::span<const int> chosen,
                                       std::span<const IslandLayout> results, TopologyLines& lines)
{
    std::vector<std::string> sentences;
    for (const ObstacleWords& words : obstacleWords) {
        std::size_t count = 0;
        for (std::size_t i = 0; i < results.size(); ++i) {
            if (results[i].obstacle != words.obstacle)
                continue;
            ++count;
            lines.add(islandName(session, chosen[i]) + " " + words.ofOne + ".");
        }
        if (count > 0)
            sentences.push_back(sentence(count, words));
    }
    return sentences;
}

/// Lines with how often each text occurs, the frequent ones first.
std::string tally(const std::map<std::string, std::size_t>& counts)
{
    std::vector<std::pair<std::string, std::size_t>> sorted(counts.begin(), counts.end());
    std::stable_sort(sorted.begin(), sorted.end(),
                     [](const auto& a, const auto& b) { return a.second > b.second; });
    std::string text;
    for (const auto& [what, count] : sorted) {
        if (!text.empty())
            text += '\n';
        text += islands(count);
        text += ": ";
        text += what;
    }
    return text;
}

void reportMethods(std::span<const IslandLayout> results, Answer& answer)
{
    std::map<std::string, std::size_t> methods;
    std::map<std::string, std::size_t> warnings;
    for (const IslandLayout& result : results) {
        if (result.obstacle != Obstacle::None)
            continue;
        ++methods[result.method];
        for (const LayoutWarning& warning : result.warnings)
            ++warnings[warning.text];
    }
    answer.set("#Report.Methods string", NU3D::CRef(tally(methods), NU3D::VALPROP_VALUE));
    if (!warnings.empty())
        answer.warn(tally(warnings));
}

} // namespace

void reportIslands(const Session& session, std::span<const int> chosen,
                   std::span<const IslandLayout> results, const CommandVerb& verb, Answer& answer)
{
    if (results.empty()) {
        answer.warn("There is nothing to " + verb.infinitive +
                    ": no island with triangles is selected.");
        return;
    }
    TopologyLines lines;
    const std::vector<std::string> obstacles = nameObstacles(session, chosen, results, lines);
    namePlaces(session, chosen, results, lines);
    answer.setTopology("Warning.TopoUV", lines);
    const bool noneServed = std::none_of(results.begin(), results.end(), [](const auto& result) {
        return result.obstacle == Obstacle::None;
    });
    if (noneServed) {
        std::string text = "Nothing could be " + verb.participle + ".";
        for (const std::string& obstacle : obstacles)
            text += " " + obstacle;
        throw CommandError(text);
    }
    for (const std::string& obstacle : obstacles)
        answer.warn(obstacle);
    reportMethods(results, answer);
}

} // namespace unfold3d
