#include "Unfold3D/seams/Patches.h"

#include "Unfold3D/base/DisjointSets.h"

#include <numbers>

namespace unfold3d
{

namespace
{

std::size_t at(int index)
{
    return static_cast<std::size_t>(index);
}

} // namespace

Patches findPatches(const SeamMesh& mesh, std::span<const char> isSeam)
{
    DisjointSets sets(mesh.triangleCount());
    for (int e = 0; e < mesh.edgeCount(); ++e)
        if (!isSeam[at(e)]) {
            const auto [left, right] = mesh.trianglesOf(e);
            sets.join(left, right);
        }
    Patches patches;
    patches.ofTriangle.resize(mesh.triangles.size());
    int count = 0;
    for (int t = 0; t < mesh.triangleCount(); ++t) {
        const int lowest = sets.find(t);
        patches.ofTriangle[at(t)] = lowest == t ? count++ : patches.ofTriangle[at(lowest)];
    }
    patches.triangles = groupByKey(patches.ofTriangle, count);
    patches.areas.assign(at(count), 0.0);
    for (int t = 0; t < mesh.triangleCount(); ++t)
        patches.areas[at(patches.ofTriangle[at(t)])] += mesh.areas[at(t)];
    return patches;
}

int nextOnBorder(const SeamMesh& mesh, std::span<const char> isSeam, int h)
{
    int next = nextHalfEdge(h);
    while (!endsPatch(mesh, isSeam, next))
        next = nextHalfEdge(mesh.twin[at(next)]);
    return next;
}

std::vector<BorderLoop> LoopFinder::loopsOf(std::span<const int> triangles)
{
    isSeen_.resize(mesh_.twin.size(), 0);
    std::vector<BorderLoop> loops;
    for (const int t : triangles)
        for (int first = 3 * t; first < 3 * t + 3; ++first) {
            if (isSeen_[at(first)] || !endsPatch(mesh_, isSeam_, first))
                continue;
            BorderLoop& loop = loops.emplace_back();
            int h = first;
            do {
                isSeen_[at(h)] = 1;
                loop.push_back(h);
                h = nextOnBorder(mesh_, isSeam_, h);
            } while (h != first);
        }
    for (const BorderLoop& loop : loops)
        for (const int h : loop)
            isSeen_[at(h)] = 0;
    return loops;
}

std::vector<int> eulerCharacteristics(const SeamMesh& mesh, std::span<const char> isSeam,
                                      const Patches& patches)
{
    // Around a border there are as many vertices as edges; with V inner vertices, B border edges
    // and F triangles, there are (3 F + B) / 2 edges in all.
    std::vector<char> isInner(mesh.positions.size(), 1);
    std::vector<int> patchOfVertex(mesh.positions.size(), -1);
    std::vector<int> doubled(at(patches.count()), 0);
    for (int h = 0; h < static_cast<int>(mesh.twin.size()); ++h) {
        const int patch = patches.ofTriangle[at(h / 3)];
        patchOfVertex[at(mesh.originOf(h))] = patch;
        if (h % 3 == 0)
            --doubled[at(patch)];
        if (endsPatch(mesh, isSeam, h)) {
            ++doubled[at(patch)];
            isInner[at(mesh.originOf(h))] = isInner[at(mesh.targetOf(h))] = 0;
        }
    }
    for (std::size_t v = 0; v < isInner.size(); ++v)
        if (isInner[v])
            doubled[at(patchOfVertex[v])] += 2;
    for (int& characteristic : doubled)
        characteristic /= 2;
    return doubled;
}

double turningOf(const SeamMesh& mesh, std::span<const char> isSeam, const BorderLoop& loop)
{
    double turning = 0.0;
    for (const int h : loop) {
        turning += std::numbers::pi;
        int next = nextHalfEdge(h);
        turning -= cornerAngle(mesh, next);
        while (!endsPatch(mesh, isSeam, next)) {
            next = nextHalfEdge(mesh.twin[at(next)]);
            turning -= cornerAngle(mesh, next);
        }
    }
    return turning;
}

} // namespace unfold3d
