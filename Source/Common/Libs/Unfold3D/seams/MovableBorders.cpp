#include "Unfold3D/seams/MovableBorders.h"

#include "Unfold3D/seams/Patches.h"

#include <algorithm>

namespace unfold3d
{

namespace
{

std::size_t at(int index)
{
    return static_cast<std::size_t>(index);
}

/// A patch gives or gets no more than one of so many parts of its triangles at a time.
constexpr int keptParts = 4;

} // namespace

MovableBorders::MovableBorders(const SeamMesh& mesh, std::vector<char>& isSeam)
    : mesh_(mesh), isSeam_(isSeam), seamsAt_(mesh.positions.size(), 0),
      isDropped_(mesh.lengths.size(), 0), isTaken_(mesh.triangles.size(), 0)
{
    const Patches patches = findPatches(mesh, isSeam);
    patchOf_ = patches.ofTriangle;
    for (int p = 0; p < patches.count(); ++p)
        counts_.push_back(static_cast<int>(patches.triangles[p].size()));
    for (int e = 0; e < mesh.edgeCount(); ++e)
        if (isSeam[at(e)])
            countSeam(e, 1);
}

std::array<int, 2> MovableBorders::patchesOf(int edge) const
{
    const auto [left, right] = mesh_.trianglesOf(edge);
    return {patchOf_[at(left)], patchOf_[at(right)]};
}

void MovableBorders::countSeam(int edge, int by)
{
    for (const int v : mesh_.verticesOf(edge))
        seamsAt_[at(v)] += by;
}

void MovableBorders::move(std::span<const int> from, std::span<const int> to)
{
    mark(from, false);
    mark(to, true);
    for (const int e : from)
        isDropped_[at(e)] = 1;
    Moves moves;
    if (!movePockets(from, moves)) {
        for (auto moved = moves.rbegin(); moved != moves.rend(); ++moved)
            give(moved->first, moved->second);
        mark(to, false);
        mark(from, true);
    }
    for (const int e : from)
        isDropped_[at(e)] = 0;
}

bool MovableBorders::movePockets(std::span<const int> from, Moves& moves)
{
    return std::all_of(from.begin(), from.end(), [&](int e) {
        return isSeam_[at(e)] || patchesOf(e)[0] == patchesOf(e)[1] || movePocket(e, moves);
    });
}

void MovableBorders::mark(std::span<const int> edges, bool isSeam)
{
    for (const int e : edges) {
        countSeam(e, static_cast<int>(isSeam) - static_cast<int>(isSeam_[at(e)]));
        isSeam_[at(e)] = static_cast<char>(isSeam);
    }
}

void MovableBorders::give(int triangle, int patch)
{
    --counts_[at(patchOf_[at(triangle)])];
    ++counts_[at(patch)];
    patchOf_[at(triangle)] = patch;
}

/// Gives what lies between the old and the new way, beside an old edge, to the other patch.
bool MovableBorders::movePocket(int edge, Moves& moves)
{
    const auto sides = mesh_.trianglesOf(edge);
    const auto patches = patchesOf(edge);
    const std::size_t most =
        at(std::min(counts_[at(patches[0])], counts_[at(patches[1])]) / keptParts);
    constexpr std::size_t firstLimit = 8;
    constexpr std::size_t growth = 4;
    for (std::size_t limit = std::min(firstLimit, most); limit > 0;
         limit = limit < most ? std::min(growth * limit, most) : 0)
        for (const std::size_t side : {0U, 1U}) {
            const std::vector<int> pocket = pocketAt(sides[side], limit);
            for (const int t : pocket) {
                moves.emplace_back(t, patchOf_[at(t)]);
                give(t, patches[1 - side]);
            }
            if (!pocket.empty())
                return true;
        }
    return false;
}

/// The triangles around one, up to old and new seams; empty when they are too many.
std::vector<int> MovableBorders::pocketAt(int triangle, std::size_t most)
{
    std::vector<int> pocket{triangle};
    isTaken_[at(triangle)] = 1;
    for (std::size_t next = 0; next < pocket.size() && pocket.size() <= most; ++next)
        for (int h = 3 * pocket[next]; h < 3 * pocket[next] + 3; ++h) {
            if (endsPatch(mesh_, isSeam_, h) || isDropped_[at(mesh_.edgeOf[at(h)])])
                continue;
            const int t = mesh_.twin[at(h)] / 3;
            if (!std::exchange(isTaken_[at(t)], 1))
                pocket.push_back(t);
        }
    for (const int t : pocket)
        isTaken_[at(t)] = 0;
    if (pocket.size() > most)
        pocket.clear();
    return pocket;
}

} // namespace unfold3d
