// The repair of whole scenes: the graph operation, and what kyUVUtils makes of it.

#include "OpenSG/CoreAs.h"
#include "OpenSG/FieldContainerFactory.h"
#include "OpenSG/GeoTmpIndexEditInterface.h"
#include "OpenSG/Group.h"
#include "OpenSG/Log.h"
#include "OpenSGAnim/kyAnimManager.h"
#include "OpenSGExt/NodeUtils.h"
#include "OpenSGUtils/RemoveDegPolysGraphOp.h"
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

/// Indices, positions and UVs.
using Mesh = std::tuple<Ids, std::vector<osg::Pnt3f>, UVs>;

Mesh meshOf(const osg::GeometryPtr& geometry)
{
    return {geometry->getIndices()->getValues(), geometry->getPositions()->getValues(),
            uvSlot(geometry, slot)->getValues()};
}

/// Triangles of which some have no area: vertices lie on a curve, and some where another lies.
osg::GeometryPtr randomMess()
{
    osg::GeometryPtr geometry = randomSoup();
    const auto positions = geometry->getPositions();
    for (unsigned v = 0; v < positions->getSize(); ++v) {
        const auto x = static_cast<float>(*rc::gen::inRange(0, 5) == 0 ? 0 : v);
        positions->setValue(osg::Pnt3f(x, x * x, 0), v);
    }
    return geometry;
}

/// Up to three surfaces, of which the first may stand there twice.
osg::RefPtr<osg::Node> randomShellOfMesses()
{
    std::vector<osg::GeometryPtr> surfaces;
    for (int count = *rc::gen::inRange(0, 4); count > 0; --count)
        surfaces.push_back(randomMess());
    if (!surfaces.empty() && *rc::gen::arbitrary<bool>())
        surfaces.push_back(surfaces[0]);
    return osg::RefPtr<osg::Node>(shellOf(surfaces));
}

/// A group of plain geometries, shells and groups, hidden ones and instances among them.
osg::RefPtr<osg::Node> randomScene()
{
    osg::RefPtr<osg::Node> root(nodeOf(osg::Group::create()));
    std::vector<osg::RefPtr<osg::Node>> parents{root};
    std::vector<osg::NodeCorePtr> cores;
    for (int count = *rc::gen::inRange(1, 9); count > 0; --count) {
        const osg::NodePtr parent = *rc::gen::elementOf(parents);
        const unsigned kind = *rc::gen::inRange(0U, 6U);
        osg::RefPtr<osg::Node> node;
        if (kind == 0 && !cores.empty())
            node = osg::RefPtr<osg::Node>(nodeOf(*rc::gen::elementOf(cores)));
        else if (kind == 1)
            node = osg::RefPtr<osg::Node>(nodeOf(osg::Group::create()));
        else if (kind < 4)
            node = randomShellOfMesses();
        else
            node = osg::RefPtr<osg::Node>(nodeOf(cores.emplace_back(randomMess())));
        node->setTravMask(*rc::gen::inRange(0U, 4U));
        parent->addChild(node);
        parents.push_back(node);
    }
    return root;
}

/// A node and all below it, parents first.
void collect(const osg::NodePtr& node, std::vector<osg::NodePtr>& nodes)
{
    nodes.push_back(node);
    for (unsigned i = 0; i < node->getNChildren(); ++i)
        collect(node->getChild(i), nodes);
}

bool isShell(const osg::NodePtr& node)
{
    return coreOf(node) && !coreOf(node)->getIndices();
}

/// Is a surface one of another shell too, or a geometry outside? It may grow there, unseen.
bool hasInstancesElsewhere(const osg::NodePtr& shell)
{
    for (unsigned i = 0; i < shell->getNChildren(); ++i)
        for (const osg::NodePtr& node : shell->getChild(i)->getCore()->getParents())
            if (node->getParent() != shell)
                return true;
    return false;
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

/// What the operations have to do, geometry by geometry in the order of the walk.
struct Expected
{
    std::map<unsigned, osg::RefPtr<osg::Geometry>> geometryOfId; ///< repaired copies
    unsigned removed = 0, vertices = 0, edges = 0;
    int commands = 0;

    explicit Expected(const std::vector<osg::NodePtr>& nodes)
    {
        for (const osg::NodePtr& node : nodes)
            if (const osg::GeometryPtr core = coreOf(node); core && core->getIndices())
                remember(core);
        for (const osg::NodePtr& node : nodes)
            if (coreOf(node) && !isShell(node))
                repair(geometryOfId.at(coreOf(node)->getId()));
    }

    void remember(const osg::GeometryPtr& core)
    {
        if (geometryOfId.contains(core->getId()))
            return;
        const auto& [ids, positions, uvs] = meshOf(core);
        Ids kept;
        for (std::size_t i = 0; i < ids.size(); i += 3) {
            const osg::Vec3f a = positions[ids[i + 1]] - positions[ids[i]];
            const osg::Vec3f b = positions[ids[i + 2]] - positions[ids[i]];
            if (a.x() * b.y() == a.y() * b.x())
                ++removed;
            else
                kept.insert(kept.end(), &ids[i], &ids[i] + 3);
        }
        const osg::RefPtr<osg::Geometry> copy(geometryOf(positions, kept));
        copy->setTexSlot(slot, tiny::texCoords(uvs));
        geometryOfId[core->getId()] = copy;
    }

    void repair(const osg::GeometryPtr& geometry)
    {
        kyTopologyRepair topology(geometry, slot);
        const unsigned newVertices = topology.fixSingularVertices();
        const unsigned newEdges = topology.fixSingularEdges();
        vertices += newVertices;
        edges += newEdges;
        commands += (newVertices > 0 ? 1 : 0) + (newEdges > 0 ? 1 : 0);
    }
};

RC_GTEST_PROP(RepairDrivers, RepairAnySceneGeometryByGeometryAndTakeItBack, ())
{
    kyUndoStack& stack = kyUndoStack::get(0);
    stack.clear();
    const WithoutCompactMesh noMesh;
    const bool usesMesh = *rc::gen::arbitrary<bool>();
    kyUVUtils::setUseCompactMesh(usesMesh);
    const osg::RefPtr<osg::Node> scene = randomScene();
    std::vector<osg::NodePtr> nodes;
    collect(scene, nodes);
    std::map<unsigned, std::vector<std::pair<unsigned, unsigned>>> namedInShell;
    for (const osg::NodePtr& node : nodes) {
        if (!isShell(node) || hasInstancesElsewhere(node))
            continue;
        const unsigned end = vertexCountOf(activeSurfaces(node));
        Ids ids;
        for (unsigned id = 0; id < end; ++id)
            ids.push_back(id * 5 % end);
        osg::GeoTmpIndexEditInterface(coreOf(node), kyUVTypes::FreeVertices).assign(ids);
        namedInShell[node->getId()] = namedIn(node);
    }
    const Expected expected(nodes);

    const auto stateOf = [](unsigned id) {
        return meshOf(
            osg::dcast<osg::Geometry>(osg::FieldContainerFactory::the()->getContainer(id)));
    };
    osg::RemoveDegPolysGraphOp removal;
    removal.traverse(scene);
    std::map<unsigned, Mesh> before;
    for (const auto& [id, geometry] : expected.geometryOfId)
        before[id] = stateOf(id);
    osg::TopologyRepairGraphOp repair;
    repair.setUVSet(slot);
    repair.traverse(scene);

    const auto expectRepaired = [&] {
        for (const auto& [id, geometry] : expected.geometryOfId)
            RC_ASSERT(stateOf(id) == meshOf(geometry));
    };
    expectRepaired();
    RC_ASSERT(removal.getRemovedPolysCount() == expected.removed);
    RC_ASSERT(repair.getSingularVertices() == expected.vertices);
    RC_ASSERT(repair.getSingularEdges() == expected.edges);
    RC_ASSERT(stack.count() == expected.commands);
    for (const osg::NodePtr& node : nodes)
        if (namedInShell.contains(node->getId()))
            RC_ASSERT(namedIn(node) == namedInShell[node->getId()]);

    while (stack.undo()) {
    }
    for (const auto& [id, mesh] : before)
        RC_ASSERT(stateOf(id) ==
                  (usesMesh ? meshOf(expected.geometryOfId.at(id)) : mesh)); // which stops an undo
    while (stack.redo()) {
    }
    expectRepaired();
    stack.clear();
}

/// Edges of three triangles each, far from each other, and triangles without an area.
osg::GeometryPtr defects(unsigned edges, unsigned degenerate, unsigned bowTies)
{
    std::vector<osg::Pnt3f> positions;
    Ids ids;
    const auto add = [&](const Ids& corners) {
        const auto first = static_cast<unsigned>(positions.size());
        for (unsigned v = 0; v < 5; ++v)
            positions.emplace_back(static_cast<float>(v), static_cast<float>(v * v), 0.F);
        for (const unsigned corner : corners)
            ids.push_back(first + corner);
    };
    for (unsigned i = 0; i < edges; ++i)
        add({0, 1, 2, 1, 0, 3, 0, 1, 4});
    for (unsigned i = 0; i < degenerate; ++i)
        add({0, 1, 1});
    for (unsigned i = 0; i < bowTies; ++i)
        add({0, 1, 2, 0, 3, 4});
    const osg::GeometryPtr geometry = geometryOf(positions, ids);
    geometry->setTexSlot(slot, tiny::texCoords(UVs(positions.size())));
    return geometry;
}

TEST(RepairDrivers, TellWhatWasFixedAndWhyNothingWas)
{
    const struct Case
    {
        unsigned edges, degenerate, bowTies;
        const char* text; ///< null: nothing to tell
        const char* description = nullptr;
    } cases[] = {
        {3, 1, 0, "(1 degenerate triangle, 3 non-manifold edges)"},
        {1, 2, 1, "(2 degenerate triangles, 1 non-manifold vertex, 1 non-manifold edge)"},
        {0, 0, 2, "(2 non-manifold vertices)"},
        {0, 0, 0, nullptr},
    };
    for (const Case& c : cases)
        for (const bool isAnimated : {false, true})
            for (const bool isBelow : {false, true}) {
                LogCapture log;
                kyUndoStack::get(0).clear();
                const osg::RefPtr<osg::Node> node(
                    nodeOf(defects(c.edges, c.degenerate, c.bowTies)));
                osg::RefPtr<osg::Node> top = node;
                if (isBelow) {
                    top = osg::RefPtr<osg::Node>(nodeOf(osg::Group::create()));
                    top->addChild(node);
                }
                NodeUtils::setName(top, "100%s");
                kyAnimManager::the()->setVertexAnimation(top, isAnimated);
                EXPECT_EQ(kyUVUtils::hasTopologyError(top), !isBelow && c.text);
                const bool isRefused = isAnimated && !isBelow && c.text;
                const Mesh before = meshOf(coreOf(node));
                EXPECT_EQ(kyUVUtils::repairTopology(top, slot), !isRefused);
                EXPECT_EQ(meshOf(coreOf(node)) == before, isRefused || !c.text);
                EXPECT_EQ(kyUVUtils::hasTopologyError(node), isRefused);
                std::vector<std::string> lines;
                if (isRefused)
                    lines = {"error: Skipping node 100%s that has vertex animation and topology "
                             "errors."};
                else if (c.text)
                    lines = {std::string("info: Fixed topology errors for node 100%s ") + c.text};
                EXPECT_EQ(log.lines, lines);
                EXPECT_EQ(kyUndoStack::get(0).count(),
                          isRefused ? 0 : (c.bowTies > 0 ? 1 : 0) + (c.edges > 0 ? 1 : 0));
            }
    kyUndoStack::get(0).clear();
    EXPECT_FALSE(kyUVUtils::repairTopology(osg::NullFC, slot));
    EXPECT_FALSE(kyUVUtils::hasTopologyError(osg::NullFC));
}

TEST(RepairDrivers, FindTheSelectedIslandsAnew)
{
    const osg::RefPtr<osg::Node> node(nodeOf(defects(0, 1, 1)));
    osg::GeoTmpIndexEditInterface(coreOf(node), kyUVTypes::IslandVertices).assign(Ids{6});
    kyUVUtils::repairTopology(node, slot);
    const osg::GeoTmpIndexEditInterface triangles(coreOf(node), kyUVTypes::IslandTriangles);
    EXPECT_EQ(Ids(triangles.values().begin(), triangles.values().end()), (Ids{5, 6, 7}))
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
