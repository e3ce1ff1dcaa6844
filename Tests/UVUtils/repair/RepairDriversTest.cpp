// The repair of whole scenes: the graph operation, and what kyUVUtils makes of it.

#include "OpenSG/FieldContainerFactory.h"
#include "OpenSG/GeoTmpIndexEditInterface.h"
#include "OpenSG/Group.h"
#include "OpenSG/Log.h"
#include "OpenSG/Traverse.h"
#include "OpenSGAnim/kyAnimManager.h"
#include "OpenSGExt/NodeUtils.h"
#include "OpenSGExt/kyShellUtils.h"
#include "UVUtils/Captures.h"
#include "UVUtils/editing/RandomNodes.h"
#include "UVUtils/model/TempIndexList.h"
#include "UVUtils/model/UVSlot.h"
#include "UVUtils/repair/OSGTopologyRepairGraphOp.h"
#include "UVUtils/repair/kyTopologyRepair.h"
#include "UndoUtils/kyUndoStack.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <map>
#include <tuple>

namespace
{

using NodeRef = osg::RefPtr<osg::Node>;

/// Indices, positions and UVs.
using Mesh = std::tuple<Ids, std::vector<osg::Pnt3f>, UVs>;

Mesh meshOf(const osg::GeometryPtr& geometry)
{
    return {geometry->getIndices()->getValues(), geometry->getPositions()->getValues(),
            uvSlot(geometry, slot)->getValues()};
}

/// Up to three surfaces, some of them hidden, of which the first may stand there twice.
NodeRef randomShellOfSoups()
{
    std::vector<osg::GeometryPtr> surfaces;
    for (int count = *rc::gen::inRange(0, 4); count > 0; --count)
        surfaces.push_back(randomSoup());
    if (!surfaces.empty() && *rc::gen::arbitrary<bool>())
        surfaces.push_back(surfaces[0]);
    NodeRef shell(shellOf(surfaces));
    for (unsigned i = 0; i < shell->getNChildren(); ++i)
        shell->getChild(i)->setTravMask(*rc::gen::inRange(0U, 4U));
    return shell;
}

/// Groups, shells and plain geometries in each other, the geometries with instances.
/// None of those is a surface of a shell: it might grow before the walk gets there.
NodeRef randomScene()
{
    NodeRef root(nodeOf(osg::Group::create()));
    std::vector<NodeRef> groups{root};
    std::vector<NodeRef> groupsAndShells{root};
    std::vector<osg::NodeCorePtr> cores;
    for (int count = *rc::gen::inRange(1, 12); count > 0; --count) {
        const int kind = *rc::gen::inRange(0, 6);
        if (kind == 4 || cores.empty())
            cores.emplace_back(randomSoup());
        const NodeRef node = kind < 2   ? NodeRef(nodeOf(osg::Group::create()))
                             : kind < 4 ? randomShellOfSoups()
                                        : NodeRef(nodeOf(*rc::gen::elementOf(cores)));
        (*rc::gen::elementOf(kind < 4 ? groupsAndShells : groups))->addChild(node);
        if (kind < 2)
            groups.push_back(node);
        if (kind < 4)
            groupsAndShells.push_back(node);
    }
    return root;
}

/// The vertices that a list of a shell names, by surface and place there.
std::vector<std::pair<unsigned, unsigned>> namedIn(const osg::NodePtr& shell)
{
    std::vector<std::pair<unsigned, unsigned>> named;
    const std::vector<ActiveSurface> surfaces = activeSurfaces(shell);
    for (const unsigned id :
         osg::GeoTmpIndexEditInterface(coreOf(shell), kyUVTypes::FreeVertices).values())
        for (const ActiveSurface& surface : surfaces)
            if (id >= surface.firstId && id - surface.firstId < surface.vertexCount)
                named.emplace_back(surface.childIndex, id - surface.firstId);
    return named;
}

/// What a walk over a scene finds, and what it has to make of that.
struct Scene
{
    std::map<unsigned, Mesh> before; ///< by id of the geometry
    std::map<unsigned, osg::RefPtr<osg::Geometry>> repaired;
    std::map<osg::NodePtr, std::vector<std::pair<unsigned, unsigned>>> namedInShell;
    unsigned vertices = 0, edges = 0;
    int commands = 0;

    explicit Scene(const osg::NodePtr& root)
    {
        osg::traverse(root, [this](const osg::NodePtr& node) {
            if (kyShellUtils::isShell(coreOf(node)))
                select(node);
            else if (coreOf(node))
                repair(coreOf(node));
            return osg::TraverseResult::Continue;
        });
    }

    void select(const osg::NodePtr& shell)
    {
        const unsigned end = vertexCountOf(activeSurfaces(shell));
        Ids ids;
        for (unsigned id = 0; id < end; ++id)
            ids.push_back(id * 5 % end);
        osg::GeoTmpIndexEditInterface(coreOf(shell), kyUVTypes::FreeVertices).assign(ids);
        namedInShell[shell] = namedIn(shell);
    }

    void repair(const osg::GeometryPtr& core)
    {
        if (before.try_emplace(core->getId(), meshOf(core)).second) {
            const auto& [ids, positions, uvs] = before[core->getId()];
            repaired[core->getId()] = osg::RefPtr<osg::Geometry>(geometryOf(positions, ids));
            repaired[core->getId()]->setTexSlot(slot, tiny::texCoords(uvs));
        }
        kyTopologyRepair topology(repaired[core->getId()], slot);
        for (const bool isVertices : {true, false}) {
            const unsigned found =
                isVertices ? topology.fixSingularVertices() : topology.fixSingularEdges();
            (isVertices ? vertices : edges) += found;
            commands += found > 0 ? 1 : 0;
        }
    }
};

RC_GTEST_PROP(RepairDrivers, RepairAnySceneGeometryByGeometryAndTakeItBack, (bool usesMesh))
{
    kyUndoStack& stack = kyUndoStack::get(0);
    stack.clear();
    const WithoutCompactMesh noMesh;
    kyUVUtils::setUseCompactMesh(usesMesh);
    const NodeRef root = randomScene();
    const Scene scene(root);
    osg::TopologyRepairGraphOp repair;
    repair.setUVSet(slot);
    repair.traverse(root);

    const auto stateOf = [](unsigned id) {
        return meshOf(
            osg::dcast<osg::Geometry>(osg::FieldContainerFactory::the()->getContainer(id)));
    };
    const auto isRepaired = [&] {
        return std::all_of(scene.repaired.begin(), scene.repaired.end(), [&](const auto& entry) {
            return stateOf(entry.first) == meshOf(entry.second);
        });
    };
    RC_ASSERT(isRepaired());
    RC_ASSERT(repair.getSingularVertices() == scene.vertices);
    RC_ASSERT(repair.getSingularEdges() == scene.edges);
    RC_ASSERT(stack.count() == scene.commands);
    for (const auto& [shell, named] : scene.namedInShell)
        RC_ASSERT(namedIn(shell) == named);

    while (stack.undo()) {
    }
    for (const auto& [id, mesh] : scene.before) // with a compact mesh nothing is undone
        RC_ASSERT(stateOf(id) == (usesMesh ? meshOf(scene.repaired.at(id)) : mesh));
    while (stack.redo()) {
    }
    RC_ASSERT(isRepaired());
    stack.clear();
}

/// Edges of three triangles each, far from each other; triangles without an area, all but the first
/// along an edge of two others; and bow-ties.
osg::GeometryPtr defects(unsigned edges, unsigned degenerate, unsigned bowTies)
{
    std::vector<osg::Pnt3f> positions;
    Ids ids;
    const auto add = [&](unsigned count, const Ids& corners) {
        for (; count > 0; --count) {
            for (const unsigned corner : corners)
                ids.push_back(static_cast<unsigned>(positions.size()) + corner);
            for (unsigned v = 0; v < 5; ++v)
                positions.emplace_back(static_cast<float>(v), static_cast<float>(v * v), 0.F);
        }
    };
    add(edges, {0, 1, 2, 1, 0, 3, 0, 1, 4});
    add(std::min(degenerate, 1U), {0, 1, 1});
    add(std::max(degenerate, 1U) - 1, {0, 1, 2, 1, 0, 3, 0, 1, 1});
    add(bowTies, {0, 1, 2, 0, 3, 4});
    const osg::GeometryPtr geometry = geometryOf(positions, ids);
    geometry->setTexSlot(slot, tiny::texCoords(UVs(positions.size())));
    return geometry;
}

TEST(RepairDrivers, TellWhatWasFixedAndWhyNothingWas)
{
    const struct Case
    {
        unsigned edges, degenerate, bowTies;
        std::string text; ///< empty: nothing to tell
    } cases[] = {
        {3, 1, 0, "(1 degenerate triangle, 3 non-manifold edges)"},
        {1, 2, 1, "(2 degenerate triangles, 1 non-manifold vertex, 1 non-manifold edge)"},
        {0, 0, 2, "(2 non-manifold vertices)"},
        {1, 0, 0, "(1 non-manifold edge)"},
        {0, 1, 0, "(1 degenerate triangle)"},
        {0, 0, 0, ""},
    };
    for (const Case& c : cases)
        for (const bool isAnimated : {false, true})
            for (const bool isBelow : {false, true}) {
                LogCapture log;
                const NodeRef node(nodeOf(defects(c.edges, c.degenerate, c.bowTies)));
                NodeRef top = node;
                if (isBelow) {
                    top = NodeRef(nodeOf(osg::Group::create()));
                    top->addChild(node);
                }
                NodeUtils::setName(top, "100%s");
                kyAnimManager::the()->setVertexAnimation(top, isAnimated);
                const bool hasErrors = !c.text.empty();
                EXPECT_EQ(kyUVUtils::hasTopologyError(top), !isBelow && hasErrors);
                const bool isRefused = isAnimated && !isBelow && hasErrors;
                const Mesh before = meshOf(coreOf(node));
                EXPECT_EQ(kyUVUtils::repairTopology(top, slot), !isRefused);
                EXPECT_EQ(meshOf(coreOf(node)) == before, isRefused || !hasErrors);
                EXPECT_EQ(kyUVUtils::hasTopologyError(node), isRefused);
                std::vector<std::string> lines;
                if (isRefused)
                    lines = {"error: Skipping node 100%s that has vertex animation and topology "
                             "errors."};
                else if (hasErrors)
                    lines = {"info: Fixed topology errors for node 100%s " + c.text};
                EXPECT_EQ(log.lines, lines);
            }
    kyUndoStack::get(0).clear();
    EXPECT_FALSE(kyUVUtils::repairTopology(osg::NullFC, slot));
    EXPECT_FALSE(kyUVUtils::hasTopologyError(osg::NullFC));
}

TEST(RepairDrivers, FindTheSelectedIslandsAnew)
{
    const NodeRef node(nodeOf(defects(0, 0, 1)));
    osg::GeoTmpIndexEditInterface(coreOf(node), kyUVTypes::IslandVertices).assign(Ids{1});
    kyUVUtils::repairTopology(node, slot);
    const osg::GeoTmpIndexEditInterface triangles(coreOf(node), kyUVTypes::IslandTriangles);
    EXPECT_EQ(Ids(triangles.values().begin(), triangles.values().end()), (Ids{0, 1, 2}))
        << "the other half of the bow-tie has an island of its own";
    kyUndoStack::get(0).clear();
}

TEST(RepairDrivers, OfANodeWithoutGeometrySayNoAndMakeOthersWithTheirStartValues)
{
    osg::TopologyRepairGraphOp op("mine");
    std::vector<std::string> lines;
    osg::setLogHandler([&](unsigned level, const std::string& module, const std::string& text) {
        lines.push_back(std::to_string(level) + module + ' ' + text);
    });
    EXPECT_FALSE(op.travNodeEnter(nodeOf(osg::Group::create())));
    osg::setLogHandler({});
    EXPECT_EQ(lines,
              (std::vector<std::string>{
                  "2OpenSG TopologyRepairGraphOp: travNodeEnter got a non-Geometry Node\n"}));
    EXPECT_EQ(op.getName() + op.create()->getName() + op.usage(), "mineTopologyRepair");
}

} // namespace
