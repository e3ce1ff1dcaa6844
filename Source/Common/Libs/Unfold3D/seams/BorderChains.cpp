#include "Unfold3D/seams/BorderChains.h"

#include <algorithm>

namespace unfold3d
{

namespace
{

std::size_t at(int index)
{
    return static_cast<std::size_t>(index);
}

class ChainWalk
{
public:
    ChainWalk(const SeamMesh& mesh, std::span<const char> isSeam, std::span<const char> isWanted)
        : mesh_(mesh), isLeft_(isWanted.begin(), isWanted.end()), isEnd_(mesh.isOnBorder)
    {
        for (int v = 0; v < mesh.vertexCount(); ++v) {
            int seams = 0;
            for (const Spoke& spoke : mesh.spokes[v]) {
                seams += isSeam[at(spoke.edge)] ? 1 : 0;
                if (isSeam[at(spoke.edge)] && !isWanted[at(spoke.edge)])
                    isEnd_[at(v)] = 1;
            }
            if (seams != 2)
                isEnd_[at(v)] = 1;
        }
    }

    std::vector<BorderChain> run()
    {
        for (int v = 0; v < mesh_.vertexCount(); ++v)
            if (isEnd_[at(v)])
                for (const Spoke& spoke : mesh_.spokes[v])
                    if (isLeft_[at(spoke.edge)])
                        walk(v, spoke);
        for (int e = 0; e < mesh_.edgeCount(); ++e) // loops that have no end
            if (isLeft_[at(e)]) {
                const auto [from, to] = mesh_.verticesOf(e);
                walk(from, {e, to});
            }
        return std::move(chains_);
    }

private:
    void walk(int from, Spoke next)
    {
        BorderChain& chain = chains_.emplace_back();
        chain.vertices.push_back(from);
        for (bool goesOn = true; goesOn;) {
            isLeft_[at(next.edge)] = 0;
            chain.edges.push_back(next.edge);
            chain.vertices.push_back(next.vertex);
            const auto spokes = mesh_.spokes[next.vertex];
            const auto onward = std::find_if(spokes.begin(), spokes.end(), [&](const Spoke& spoke) {
                return isLeft_[at(spoke.edge)] != 0;
            });
            goesOn = !isEnd_[at(next.vertex)] && onward != spokes.end();
            if (goesOn)
                next = *onward;
        }
    }

    const SeamMesh& mesh_;
    std::vector<char> isLeft_; ///< [edge] wanted and in no chain yet
    std::vector<char> isEnd_;  ///< [vertex]
    std::vector<BorderChain> chains_;
};

} // namespace

std::vector<BorderChain> findBorderChains(const SeamMesh& mesh, std::span<const char> isSeam,
                                          std::span<const char> isWanted)
{
    return ChainWalk(mesh, isSeam, isWanted).run();
}

} // namespace unfold3d
