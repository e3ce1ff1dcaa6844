#include "Unfold3D/seams/DistanceBands.h"

#include "Unfold3D/base/DisjointSets.h"

#include <algorithm>
#include <cmath>

namespace unfold3d
{

namespace
{

/// Width of a band in mean edges of its part: enough to hang together around a limb.
constexpr double edgesPerBand = 1.7;
/// ... and no less than this share of the size.
constexpr double leastWidth = 1.0 / 120.0;
/// A band below this share of the area of its neighbours is a splinter of one of them.
constexpr double splinterShare = 0.3;

std::size_t at(int index)
{
    return static_cast<std::size_t>(index);
}

std::vector<double> bandWidths(const SeamMesh& mesh, const MeshParts& parts)
{
    std::vector<double> sums(at(parts.count()), 0.0);
    std::vector<int> counts(at(parts.count()), 0);
    for (int e = 0; e < mesh.edgeCount(); ++e) {
        sums[at(parts.ofEdge(mesh, e))] += mesh.lengths[at(e)];
        ++counts[at(parts.ofEdge(mesh, e))];
    }
    std::vector<double> widths;
    for (std::size_t part = 0; part < sums.size(); ++part)
        widths.push_back(std::max(edgesPerBand * sums[part] / std::max(counts[part], 1),
                                  leastWidth * parts.sizes[part]));
    return widths;
}

/// Distances over edges, in the units of path costs.
std::vector<PathCost> distancesFrom(const SeamMesh& mesh, std::span<const int> ends,
                                    const RunControl& control)
{
    std::vector<PathCost> lengths;
    lengths.reserve(mesh.lengths.size());
    for (const double l : mesh.lengths)
        lengths.push_back(toPathCost(l));
    // Paths end at borders, which here they shouldn't: no border is told to the search.
    SeamMesh borderless = mesh;
    std::fill(borderless.isOnBorder.begin(), borderless.isOnBorder.end(), 0);
    const std::vector<char> noWalls(lengths.size(), 0);
    CheapestPaths paths(borderless, lengths, noWalls);
    paths.search(ends, control);
    std::vector<PathCost> distances(mesh.positions.size(), 0);
    for (const int v : paths.reached())
        distances[at(v)] = paths.costTo(v);
    return distances;
}

/// Numbers what hangs together of the vertices of one slice.
std::vector<int> numberBands(const SeamMesh& mesh, const std::vector<int>& sliceOfVertex,
                             int& count)
{
    DisjointSets sets(mesh.vertexCount());
    for (int h = 0; h < 3 * mesh.triangleCount(); ++h)
        if (sliceOfVertex[at(mesh.originOf(h))] == sliceOfVertex[at(mesh.targetOf(h))])
            sets.join(mesh.originOf(h), mesh.targetOf(h));
    std::vector<int> bands(mesh.positions.size());
    count = 0;
    for (int v = 0; v < mesh.vertexCount(); ++v) {
        const int lowest = sets.find(v);
        bands[at(v)] = lowest == v ? count++ : bands[at(lowest)];
    }
    return bands;
}

void findNeighbours(const SeamMesh& mesh, DistanceBands& bands)
{
    bands.neighbours.resize(at(bands.count()));
    for (int h = 0; h < 3 * mesh.triangleCount(); ++h) {
        const int a = bands.bandOfVertex[at(mesh.originOf(h))];
        const int b = bands.bandOfVertex[at(mesh.targetOf(h))];
        if (a == b)
            continue;
        bands.neighbours[at(a)].push_back(b);
        bands.neighbours[at(b)].push_back(a);
    }
    for (std::vector<int>& list : bands.neighbours) {
        std::sort(list.begin(), list.end());
        list.erase(std::unique(list.begin(), list.end()), list.end());
    }
}

int sliceOf(const DistanceBands& bands, std::span<const int> sliceOfVertex, int band)
{
    return sliceOfVertex[at(bands.vertices[band].front())];
}

/// Long edges reach over a slice: bands that one between them joins aren't neighbours.
void dropShortcuts(std::span<const int> sliceOfVertex, DistanceBands& bands)
{
    const std::vector<std::vector<int>> all = bands.neighbours;
    const auto slice = [&](int band) { return sliceOf(bands, sliceOfVertex, band); };
    const auto isBetween = [&](int b, int a, int c) {
        return std::min(slice(a), slice(c)) < slice(b) && slice(b) < std::max(slice(a), slice(c)) &&
               std::binary_search(all[at(c)].begin(), all[at(c)].end(), b);
    };
    for (int a = 0; a < bands.count(); ++a)
        std::erase_if(bands.neighbours[at(a)], [&](int c) {
            return std::any_of(all[at(a)].begin(), all[at(a)].end(),
                               [&](int b) { return isBetween(b, a, c); });
        });
}

void measure(const SeamMesh& mesh, const MeshParts& parts, DistanceBands& bands)
{
    const std::vector<double> widths = bandWidths(mesh, parts);
    bands.girths.assign(at(bands.count()), 0.0);
    bands.meetsBorder.assign(at(bands.count()), 0);
    bands.widths.clear();
    for (int band = 0; band < bands.count(); ++band)
        bands.widths.push_back(widths[at(parts.ofVertex[at(bands.vertices[band].front())])]);
    for (int t = 0; t < mesh.triangleCount(); ++t)
        for (const int v : mesh.triangles[at(t)]) {
            const std::size_t band = at(bands.bandOfVertex[at(v)]);
            bands.girths[band] += mesh.areas[at(t)] / (3.0 * bands.widths[band]);
            if (mesh.isOnBorder[at(v)])
                bands.meetsBorder[band] = 1;
        }
}

void arrange(const SeamMesh& mesh, const MeshParts& parts, std::span<const int> sliceOfVertex,
             int count, DistanceBands& bands)
{
    bands.vertices = groupByKey(bands.bandOfVertex, count);
    bands.neighbours.clear();
    findNeighbours(mesh, bands);
    dropShortcuts(sliceOfVertex, bands);
    measure(mesh, parts, bands);
}

/// For each band the one that it goes to: itself, or for a splinter its largest neighbour. Slices
/// of coarse meshes are ragged: what hangs on by a corner only comes out as a band of its own.
std::vector<int> homesOfSplinters(const DistanceBands& bands)
{
    std::vector<int> homes;
    for (int band = 0; band < bands.count(); ++band) {
        std::vector<int> bySize = bands.neighbours[at(band)];
        std::stable_sort(bySize.begin(), bySize.end(),
                         [&](int a, int b) { return bands.girths[at(a)] > bands.girths[at(b)]; });
        // The first band of a limb is small beside the body too, but not beside the second.
        const bool isSplinter =
            !bySize.empty() &&
            bands.girths[at(band)] <
                splinterShare *
                    bands.girths[at(bySize[std::min<std::size_t>(1, bySize.size() - 1)])];
        homes.push_back(isSplinter ? bySize.front() : band);
    }
    return homes;
}

void joinSplinters(const SeamMesh& mesh, const MeshParts& parts, std::span<const int> sliceOfVertex,
                   DistanceBands& bands)
{
    const std::vector<int> homes = homesOfSplinters(bands);
    DisjointSets sets(bands.count());
    for (int band = 0; band < bands.count(); ++band)
        sets.join(band, homes[at(band)]);
    std::vector<int> numbers(homes.size());
    int count = 0;
    for (int band = 0; band < bands.count(); ++band) {
        const int lowest = sets.find(band);
        numbers[at(band)] = lowest == band ? count++ : numbers[at(lowest)];
    }
    for (int& band : bands.bandOfVertex)
        band = numbers[at(band)];
    arrange(mesh, parts, sliceOfVertex, count, bands);
}

/// Where fronts from two ends meet, a slice is thinner or thicker than others.
void evenOutMeetings(const std::vector<int>& sliceOfVertex, DistanceBands& bands)
{
    const auto slice = [&](int band) { return sliceOf(bands, sliceOfVertex, band); };
    for (int band = 0; band < bands.count(); ++band) {
        const std::vector<int>& neighbours = bands.neighbours[at(band)];
        if (neighbours.size() == 2 && slice(neighbours[0]) < slice(band) &&
            slice(neighbours[1]) < slice(band))
            bands.girths[at(band)] =
                0.5 * (bands.girths[at(neighbours[0])] + bands.girths[at(neighbours[1])]);
    }
}

} // namespace

DistanceBands findDistanceBands(const SeamMesh& mesh, const MeshParts& parts,
                                std::span<const int> ends, const RunControl& control)
{
    const std::vector<double> widths = bandWidths(mesh, parts);
    const std::vector<PathCost> distances = distancesFrom(mesh, ends, control);
    std::vector<int> sliceOfVertex;
    sliceOfVertex.reserve(distances.size());
    for (int v = 0; v < mesh.vertexCount(); ++v)
        sliceOfVertex.push_back(
            static_cast<int>(distances[at(v)] / toPathCost(widths[at(parts.ofVertex[at(v)])])));
    DistanceBands bands;
    int count = 0;
    bands.bandOfVertex = numberBands(mesh, sliceOfVertex, count);
    arrange(mesh, parts, sliceOfVertex, count, bands);
    joinSplinters(mesh, parts, sliceOfVertex, bands);
    evenOutMeetings(sliceOfVertex, bands);
    return bands;
}

} // namespace unfold3d
