// The solver's operations on nodes, against the recording solver; cancelling against the engine.

#include "OpenSG/ChangeNotice.h"
#include "OpenSG/GeoTmpIndexEditInterface.h"
#include "OpenSGExt/NodeUtils.h"
#include "OpenSGUtils/UVConstraintData.h"
#include "UVUtils/SolverFixture.h"
#include "UVUtils/compactmesh/CompactMeshScope.h"
#include "UVUtils/compactmesh/CompactShellMesh.h"
#include "UVUtils/editing/RandomNodes.h"
#include "UVUtils/model/EdgeLists.h"
#include "UVUtils/model/TempIndexList.h"
#include "UndoUtils/kyUndoStack.h"
#include "Utils/kyStackedProgress.h"

#include <gmock/gmock.h>
#include <rapidcheck/gtest.h>

#include <algorithm>
#include <functional>
#include <limits>
#include <optional>
#include <set>

using namespace kyUnfold3D;
using kyUVTypes::Cancelled;
using kyUVTypes::Failure;
using kyUVTypes::ReturnCode;
using kyUVTypes::Success;
using Mode = kyUVUtils::ESelectMode;

namespace
{

void select(const osg::NodePtr& node, kyUVTypes::TempIndexList list, const Ids& vertices)
{
    osg::GeoTmpIndexEditInterface(coreOf(node), list).assign(vertices);
}

UVs uvsOf(const osg::NodePtr& node)
{
    UVs uvs;
    kyUVUtils::getUVValues(coreOf(node), node, slot, uvs);
    return uvs;
}

ReturnCode unfoldAll(const osg::NodePtr& node)
{
    return kyUVUtils::unfoldGeometryUnfold3D(coreOf(node), node, slot, {}, {});
}
ReturnCode unfoldIslands(const osg::NodePtr& node)
{
    return kyUVUtils::unfoldIslandsUnfold3D(coreOf(node), node, slot, {});
}
template <int mode>
ReturnCode pack(const osg::NodePtr& node)
{
    return kyUVUtils::packUVsUnfold3D(coreOf(node), node, slot, {}, Mode(mode));
}
template <int mode>
ReturnCode optimize(const osg::NodePtr& node)
{
    return kyUVUtils::optimizeUVsUnfold3D(coreOf(node), node, slot, {}, Mode(mode));
}
ReturnCode findSeams(const osg::NodePtr& node)
{
    FlatEdgeList edges;
    return kyUVUtils::seamUVsUnfold3D(coreOf(node), node, slot, {}, edges);
}
ReturnCode create(const osg::NodePtr& node)
{
    kyUVUtils::createUVs(coreOf(node), slot, node, kyUVUtils::IslandsAABBProjection);
    return Failure; // it has no other answer than what it logs
}
using Operation = ReturnCode (*)(const osg::NodePtr&);

class SolverFacade : public testing::TestWithParam<bool>
{
protected:
    SolverFacade()
    {
        if (!GetParam())
            withoutMesh.emplace();
        NodeUtils::setName(node, "a%sb");
        select(node, kyUVTypes::IslandVertices, {4, 5});
        select(node, kyUVTypes::FreeVertices, {6});
        resetSolver();
    }
    void resetSolver()
    {
        solver.reset();
        solver.islandOfVertex = {0, 0, 0, 0, 1, 1, 1, 1};
    }
    void fillSlot(unsigned int size = 8)
    {
        UVs uvs(size, Vec2f(0.5F, 0.25F));
        coreOf(node)->setTexSlot(slot, tiny::texCoords(uvs));
        osg::notifyChanged(coreOf(node), osg::Geometry::TexCoordsFieldMask);
    }
    /// What was logged since the last call, without the times that were taken.
    Texts logged()
    {
        Texts lines = std::exchange(log.lines, {});
        std::erase_if(lines, [](const std::string& line) {
            return testing::Matches(testing::MatchesRegex(
                "warningNR: kyScopedTimer [0-9]+.[0-9][0-9][0-9]000 s - Unfold3D( Islands)? end"))(
                line);
        });
        return lines;
    }

    std::optional<WithoutCompactMesh> withoutMesh;
    RecordingSolver solver;
    LogCapture log;
    OutputCapture output;
    osg::RefPtr<osg::Node> node{nodeOf(quadsApart(2))};
};

INSTANTIATE_TEST_SUITE_P(CompactMesh, SolverFacade, testing::Bool());

TEST_P(SolverFacade, SendsItsCommandsAndEndsAsTheRunEnds)
{
    fillSlot();
    kyUVUtils::setConstrainedEdges(coreOf(node), node, {{0, 1}}, kyUVTypes::Horizontal);
    kyUVUtils::setConstrainedEdges(coreOf(node), node, {{1, 2}}, kyUVTypes::Vertical);
    struct Case
    {
        Operation run;
        const char* commands;
        const char* failure;
    };
    const char* const relax =
        "Init Import Select Constrain Select Constrain Select Optimize Export";
    const Case cases[] = {
        {unfoldAll, "Init Import Select Constrain Select Constrain Select Unfold Pack Export",
         "Unfolding UVs failed for"},
        {unfoldIslands, "Init Import Select Constrain Select Constrain Select Unfold Export",
         "Unfold Islands: Failed for"},
        {pack<0>, "Init Import Pack Export", "Packing UVs failed for"},
        {pack<1>, "Init Import Export Select Pack Export", "Packing UVs failed for"},
        {optimize<0>, relax, "Optimizing UVs failed for"},
        {optimize<1>, relax, "Optimizing UVs failed for"},
        {optimize<2>, relax, "Optimizing UVs failed for"},
        {findSeams, "Init Import Select", "Seaming UVs failed for"},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.commands);
        const UVs before = uvsOf(node);
        std::istringstream words(c.commands);
        const Texts commands{std::istream_iterator<std::string>(words), {}};
        for (const std::string& command : std::set(commands.begin(), commands.end())) {
            solver.during(command, [](const auto&) { kyStackedProgress::requestCancel(); });
            EXPECT_EQ(c.run(node), Cancelled);
            resetSolver();
        }
        EXPECT_EQ(logged(), Texts());
        solver.fail(commands.back());
        EXPECT_EQ(c.run(node), Failure);
        EXPECT_EQ(logged(), (Texts{"error: Unfold3D error: no",
                                   "error: " + std::string(c.failure) + " node a%sb."}));
        EXPECT_EQ(uvsOf(node), before) << "neither cancel nor failure change anything";
        resetSolver();
        EXPECT_EQ(c.run(node), Success);
        EXPECT_EQ(solver.commands(), commands);
        EXPECT_EQ(logged(), Texts());
        resetSolver();
    }
}

TEST_P(SolverFacade, RefusesWhatItCannotWorkOn)
{
    const auto noLists = [&] { osg::GeoTmpIndexEditInterface::setNullforAll(coreOf(node)); };
    const auto noSlot = [&] { coreOf(node)->setTexSlot(slot, osg::NullFC); };
    const auto shortSlot = [&] { fillSlot(7); };
    const auto broken = [&] { coreOf(node)->getIndices()->setValue(99, 0); };
    const auto asItIs = [] {};
    struct Case
    {
        std::function<void()> prepare;
        Operation run;
        Texts lines;
        bool isWithMesh = true;
    };
    const Case cases[] = {
        {noLists, unfoldIslands, {}},
        {noLists, pack<1>, {}},
        {noLists, optimize<1>, {}},
        {noLists, optimize<2>, {}},
        {noSlot, pack<0>, {}},
        {noSlot, optimize<0>, {}},
        {noSlot, create, {"error: Creating UVs failed for node a%sb."}},
        {noSlot, unfoldIslands, {"error: Unfold Islands: Assigning UVs to geo failed."}, false},
        {shortSlot,
         pack<0>,
         {"error: Cannot pack UVs for node a%sb, because not all vertices have UVs."},
         false},
        {shortSlot,
         optimize<0>,
         {"error: Cannot optimize UVs for node a%sb, because not all vertices have UVs."},
         false},
        {asItIs, pack<2>, {"infoNR: PackUVs unsupported select mode 2"}},
        {asItIs, pack<-1>, {"infoNR: PackUVs unsupported select mode -1"}},
        {asItIs, optimize<3>, {"infoNR: OptimizeUVs unsupported select mode 3"}},
        {broken, create, {}},
        {broken, unfoldAll, {"error: UV Editor: Error on geometry 'a%sb': index out of range"}},
    };
    for (const Case& c : cases) {
        if (GetParam() && !c.isWithMesh)
            continue;
        SCOPED_TRACE(&c - cases);
        fillSlot();
        select(node, kyUVTypes::IslandVertices, {4, 5});
        c.prepare();
        EXPECT_EQ(c.run(node), Failure);
        EXPECT_EQ(logged(), c.lines);
    }
}

TEST_P(SolverFacade, AWholeUnfoldMakesTheSlotOnlyWhenItGoesThrough)
{
    const std::vector<std::uint16_t> mapping{osg::Geometry::MapTexCoords};
    coreOf(node)->getIndexMapping() = mapping; // names a slot that isn't there yet
    for (const bool isLetThrough : {false, true}) {
        if (!isLetThrough)
            solver.during("Unfold", [](const auto&) { kyStackedProgress::requestCancel(); });
        EXPECT_EQ(unfoldAll(node), isLetThrough ? Success : Cancelled);
        EXPECT_EQ(kyUVUtils::hasUVSet(node, slot), isLetThrough);
        EXPECT_EQ(coreOf(node)->getIndexMapping(), mapping);
        EXPECT_THAT(output.take(), testing::StartsWith("Unfolding node a%sb.\n"));
        solver.reset();
    }
    EXPECT_EQ(uvsOf(node)[6], Vec2f(3, 1)) << "from the 3D shape";
}

TEST_P(SolverFacade, FirstUVsDropTheThinnestAxisOfEachIsland)
{
    // A sheet in x-z, one in y-z, one as wide as high in x-y, a line along z without x; then a
    // vertex of no triangle.
    const float no = std::numeric_limits<float>::quiet_NaN();
    const float rows[13][5] = {
        // x, y, z; u, v
        {0, 5, 0, 0, 0},  {3, 5, 0, 3, 0},  {3, 5, 2, 3, 2}, {7, 0, 0, 0, 0}, {7, 4, 0, 4, 0},
        {7, 4, 1, 4, 1},  {0, 0, 9, 0, 0},  {1, 0, 9, 1, 0}, {1, 1, 9, 1, 1}, {no, 6, 0, 0, 6},
        {no, 6, 1, 1, 6}, {no, 6, 2, 2, 6}, {8, 8, 8, 0, 0}};
    std::vector<osg::Pnt3f> positions;
    UVs expected;
    for (const auto& row : rows) {
        positions.emplace_back(row[0], row[1], row[2]);
        expected.emplace_back(row[3], row[4]);
    }
    const osg::GeometryPtr geometry = geometryOf(positions, {0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11});
    geometry->setTexSlot(slot, tiny::texCoords(UVs(13)));
    const osg::RefPtr<osg::Node> sheets(nodeOf(geometry));
    create(sheets);
    EXPECT_EQ(uvsOf(sheets), expected);
    kyUVUtils::createUVs(geometry, slot, sheets, kyUVUtils::ECreateUVMethod(1));
    EXPECT_EQ(logged(), (Texts{"error: Creating UVs failed for node <noname>."}));
}

/// The vertex of the work geometry that each vertex of a node is.
Ids workIds(const osg::NodePtr& node)
{
    Ids ids = kyUVUtils::getAllVertices(coreOf(node), node);
    const CompactMeshScope scope(coreOf(node), node, slot);
    return scope.getMesh() ? scope.getMesh()->getVertFToC() : ids;
}

RC_GTEST_PROP(SolverFacadeIds, SelectedVerticesAreTranslatedAndAloneWritten, ())
{
    RecordingSolver solver;
    const OutputCapture output;
    const LogCapture log;
    const osg::RefPtr<osg::Node> node = randomNode();
    RC_PRE(!trianglesOf(node).empty());
    const Ids ids = workIds(node);
    const auto count = static_cast<unsigned int>(ids.size());
    const Ids selected = *rc::gen::nonEmpty(rc::gen::container<Ids>(rc::gen::inRange(0U, count)));
    const auto which = *rc::gen::inRange<std::size_t>(0, 4);
    select(node, which == 3 ? kyUVTypes::FreeVertices : kyUVTypes::IslandVertices, selected);
    std::set<unsigned int> work;
    for (const unsigned int id : selected)
        work.insert(ids[id]);
    const std::vector<double> answer(3 * std::set(ids.begin(), ids.end()).size(), 7.0);
    solver.on("Export", [&](const auto&) {
        return RecordingSolver::holding("#Data.CoordsUVW doubles", answer);
    });
    UVs expected = uvsOf(node);
    const bool hasSlot = kyUVUtils::hasUVSet(node, slot);
    const Operation operation =
        std::array<Operation, 4>{unfoldIslands, pack<1>, optimize<1>, optimize<2>}[which];
    const ReturnCode code = operation(node);
    RC_ASSERT(code == (hasSlot || which == 0 ? Success : Failure));
    for (std::size_t i = 0; i < expected.size() && code == Success; ++i)
        if (work.contains(ids[i]))
            expected[i] = Vec2f(7, 7);
    RC_ASSERT(uvsOf(node) == expected);
}

RC_GTEST_PROP(SolverFacadeIds, SeamsComeBackInTheIdsOfTheNode, ())
{
    RecordingSolver solver;
    const OutputCapture output;
    const LogCapture log;
    const osg::RefPtr<osg::Node> node = randomNode();
    const Ids triangles = trianglesOf(node);
    RC_PRE(!triangles.empty());
    const Ids ids = workIds(node);
    std::set<Edge> expected;
    std::vector<int> answer; // all edges
    for (std::size_t i = 0; i < triangles.size(); ++i) {
        expected.emplace(ids[triangles[i]], ids[triangles[i % 3 == 2 ? i - 2 : i + 1]]);
        answer.insert(answer.end(), {static_cast<int>(i / 3), static_cast<int>(i % 3)});
    }
    solver.on("Select",
              [&](const auto&) { return RecordingSolver::holding("#EdgeSelection Ints", answer); });
    FlatEdgeList seams;
    RC_ASSERT(kyUVUtils::seamUVsUnfold3D(coreOf(node), node, slot, {}, seams) == Success);
    std::set<Edge> found;
    for (const Edge& edge : edgesOf(seams))
        found.emplace(ids.at(edge.first), ids.at(edge.second));
    RC_ASSERT(found == expected);

    seams = {3'000'000'000, 0, 5}; // no edges of the mesh, so nothing is left of them
    solver.fail("Select");
    RC_ASSERT(kyUVUtils::seamUVsUnfold3D(coreOf(node), node, slot, {}, seams) == Failure);
    RC_ASSERT(seams.empty());
}

/// All that a run could leave behind on a node, property by property, and the undo history.
std::string tracesOn(const osg::NodePtr& node)
{
    std::ostringstream text;
    text << kyUndoStack::get(0).count() << std::hexfloat;
    const auto write = [&](const auto& values) {
        text << '\n';
        for (const auto& value : values)
            text << value << ' ';
    };
    for (const osg::GeometryPtr& geometry : geometriesOf(node)) {
        for (unsigned int set = 0; set < 8; ++set) {
            text << '\n' << geometry->getTexSlot(set).get();
            for (const Vec2f& uv : kyUVUtils::getUVValuesLocal(geometry, kyUVTypes::UVSet(set)))
                text << ' ' << uv[0] << ' ' << uv[1];
        }
        text << '\n' << geometry->getIndices().get();
        write(geometry->getIndices() ? geometry->getIndices()->getValues() : Ids());
        write(geometry->getIndexMapping());
        for (const UVConstraintData& data : getUVConstraints(geometry)) {
            write(data.edgesU);
            write(data.edgesV);
        }
        for (unsigned int number = 1; number <= 10; ++number) {
            const osg::GeoTmpIndexEditInterface list(geometry, number);
            text << list.isNull();
            write(list.values());
        }
    }
    return text.str();
}

/// Asks to stop when it is told for the `moment`th time that something goes on.
class CancelAt
{
public:
    explicit CancelAt(int moment)
    {
        kyStackedProgress::setObserver([this, moment](const kyStackedProgress& progress) {
            if (progress.running() && told_++ == moment)
                kyStackedProgress::requestCancel();
            hasAsked = told_ > moment;
        });
    }
    ~CancelAt() { kyStackedProgress::setObserver(nullptr); }
    CancelAt(const CancelAt&) = delete;
    CancelAt& operator=(const CancelAt&) = delete;

    bool hasAsked = false;

private:
    int told_ = 0;
};

RC_GTEST_PROP(SolverFacadeCancel, AtAnyMomentLeavesNoTrace, ())
{
    const OutputCapture output;
    const LogCapture log;
    std::optional<WithoutCompactMesh> withoutMesh;
    if (*rc::gen::arbitrary<bool>())
        withoutMesh.emplace();
    const osg::RefPtr<osg::Node> node = randomNode();
    const Ids triangles = trianglesOf(node);
    RC_PRE(!triangles.empty());
    if (*rc::gen::inRange(0, 3) == 0) { // a slot that does not fit
        coreOf(node)->setTexSlot(slot, tiny::texCoords(UVs(3)));
        osg::notifyChanged(coreOf(node), osg::FieldMask::all());
    }
    select(node, kyUVTypes::IslandVertices, triangles);
    select(node, kyUVTypes::FreeVertices, {triangles[0], triangles[1]});
    kyUVUtils::setConstrainedEdges(coreOf(node), node, {{triangles[0], triangles[1]}},
                                   kyUVTypes::Horizontal);
    const std::string before = tracesOn(node);
    const UVs uvs = uvsOf(node);
    const Operation operations[] = {unfoldAll,   unfoldIslands, pack<0>,     pack<1>,
                                    optimize<0>, optimize<1>,   optimize<2>, findSeams};
    const Operation operation = operations[*rc::gen::inRange<std::size_t>(0, 8)];
    const CancelAt cancel(*rc::gen::inRange(0, 30));
    const ReturnCode code = operation(node);
    RC_ASSERT(!cancel.hasAsked || code != Success);
    RC_ASSERT(code == Success || (tracesOn(node) == before && uvsOf(node) == uvs));
}

} // namespace
