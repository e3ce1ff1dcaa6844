#include "Unfold3D/commands/Commands.h"
#include "Unfold3D/commands/UnfoldReport.h"
#include "Unfold3D/layout/Placement.h"

#include <algorithm>
#include <atomic>
#include <utility>

#include <tbb/parallel_for.h>

namespace unfold3d
{

namespace
{

FlattenOptions readOptions(const Params& params)
{
    FlattenOptions options;
    options.iterations = params.integer("#Iterations int 1", 1);
    options.preventBorderCrossings = params.flag("#BorderIntersections bool", true);
    options.roomSpace = params.number("#RoomSpace double 000.1", 0.1);
    if (options.roomSpace < 0.0)
        throw CommandError("The room space must not be negative.");
    params.flag("#TriangleFlips bool", true); // no triangle is ever flipped
    return options;
}

/// [island] does the selection, by elements of this kind, touch it?
std::vector<char> touchedIslands(Session& session, const std::string& primType)
{
    if (primType == "Island")
        return session.isIslandSelected;
    std::vector<char> isTouched(static_cast<std::size_t>(session.islands.count()), 0);
    const auto touch = [&](int vertex) {
        const int island = session.islands.ofVertex[static_cast<std::size_t>(vertex)];
        if (island != Islands::noIsland)
            isTouched[static_cast<std::size_t>(island)] = 1;
    };
    if (primType == "Vertex") {
        for (int v = 0; v < session.mesh.vertexCount(); ++v)
            if (session.isVertexSelected[static_cast<std::size_t>(v)])
                touch(v);
    } else if (primType == "Edge") {
        for (std::size_t e = 0; e < session.isEdgeSelected.size(); ++e)
            if (session.isEdgeSelected[e])
                touch(session.edgeNumbers().vertices[e][0]);
    } else {
        throw CommandError("\"" + primType +
                           "\" can't be unfolded: use \"Vertex\", \"Edge\" or \"Island\".");
    }
    return isTouched;
}

std::vector<int> chooseIslands(Session& session, const Params& params)
{
    std::vector<char> isChosen =
        touchedIslands(session, params.text("#PrimType string Island", "Island"));
    const bool noneSelected = std::find(isChosen.begin(), isChosen.end(), 1) == isChosen.end();
    if (!params.flag("#ProcessSelection bool", false) ||
        (noneSelected && params.flag("#ProcessAllIfNoneSelected bool", false)))
        std::fill(isChosen.begin(), isChosen.end(), 1);

    std::vector<int> chosen;
    for (int island = 0; island < session.islands.count(); ++island)
        if (isChosen[static_cast<std::size_t>(island)] &&
            !session.islands.triangles[island].empty())
            chosen.push_back(island);
    return chosen;
}

/// The progress of many islands that are worked on at the same time, each counting by its size.
class SharedProgress
{
public:
    SharedProgress(RunControl& control, std::int64_t total) : control_(control), total_(total) {}
    void add(std::int64_t done)
    {
        const std::int64_t sum = done_.fetch_add(done) + done;
        control_.setProgress(static_cast<double>(sum) / static_cast<double>(total_));
    }

private:
    RunControl& control_;
    std::int64_t total_;
    std::atomic<std::int64_t> done_{0};
};

std::vector<IslandUnfold> unfoldAll(const Session& session, const std::vector<int>& chosen,
                                    const FlattenOptions& options, RunControl& control)
{
    // Units fine enough that every step of a large island moves the bar.
    constexpr std::int64_t unitsPerTriangle = 1'000'000;
    const auto sizeOf = [&](int island) {
        return unitsPerTriangle *
               static_cast<std::int64_t>(session.islands.triangles[island].size());
    };
    std::int64_t total = 1;
    std::vector<std::size_t> largestFirst;
    for (std::size_t i = 0; i < chosen.size(); ++i) {
        total += sizeOf(chosen[i]);
        largestFirst.push_back(i);
    }
    std::stable_sort(largestFirst.begin(), largestFirst.end(), [&](std::size_t a, std::size_t b) {
        return sizeOf(chosen[a]) > sizeOf(chosen[b]);
    });

    SharedProgress shared(control, total);
    std::vector<IslandUnfold> results(chosen.size());
    tbb::parallel_for(std::size_t{0}, chosen.size(), [&](std::size_t k) {
        const std::size_t i = largestFirst[k];
        control.checkpoint();
        std::int64_t told = 0;
        const auto tell = [&](double fraction) {
            const auto done =
                static_cast<std::int64_t>(fraction * static_cast<double>(sizeOf(chosen[i])));
            shared.add(std::max<std::int64_t>(done - told, 0));
            told = std::max(told, done);
        };
        results[i] = unfoldIsland(session, chosen[i], options, control, tell);
        tell(1.0);
    });
    return results;
}

/// Lays the islands where they belong: around where they were, or into rows when they were nowhere.
void place(const Session& session, std::vector<IslandUnfold>& results)
{
    std::vector<std::vector<Vec2>*> withoutPlace;
    for (IslandUnfold& result : results) {
        if (result.obstacle != Obstacle::None)
            continue;
        if (!result.hadLayout) {
            withoutPlace.push_back(&result.uv);
            continue;
        }
        std::vector<Vec2> old;
        old.reserve(result.vertices.size());
        for (const int v : result.vertices)
            old.push_back(session.uvs[static_cast<std::size_t>(v)]);
        moveMiddleTo(boxAround(old).centre(), static_cast<int>(result.triangles.size()), result.uv);
    }
    layInRows(withoutPlace);
}

void putIntoSession(Session& session, int island, const IslandUnfold& result)
{
    for (std::size_t i = 0; i < result.vertices.size(); ++i)
        session.uvs[static_cast<std::size_t>(result.vertices[i])] = result.uv[i];
    for (const int v : session.islands.vertices[island]) {
        const auto vertex = static_cast<std::size_t>(v);
        const auto anchor = static_cast<std::size_t>(session.islands.anchor[vertex]);
        session.uvs[vertex] = session.uvs[anchor];
        session.w[vertex] = 0.0;
    }
    session.isChanged[static_cast<std::size_t>(island)] = 1;
}

} // namespace

void runUnfold(Session& session, const Params& params, Answer& answer, RunControl& control)
{
    const FlattenOptions options = readOptions(params);
    const std::vector<int> chosen = chooseIslands(session, params);
    std::vector<IslandUnfold> results = unfoldAll(session, chosen, options, control);
    reportUnfold(session, chosen, results, answer);
    place(session, results);
    control.checkpoint();
    for (std::size_t i = 0; i < results.size(); ++i)
        if (results[i].obstacle == Obstacle::None)
            putIntoSession(session, chosen[i], results[i]);
}

} // namespace unfold3d
