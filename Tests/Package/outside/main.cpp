// A program of somebody else: it knows the installed package only. It builds a bent sheet in the
// scene graph, asks the facade about it, unfolds and packs it, and measures what came back. Returns
// the number of checks that failed.

#include <OpenSG/ChangeNotice.h>
#include <OpenSG/Geometry.h>
#include <OpenSG/Node.h>
#include <OpenSG/RefPtr.h>
#include <OpenSG/TriangleIterator.h>
#include <OpenSGExt/NodeUtils.h>
#include <OpenSGUtils/kyOpenSGUtils.h>
#include <UVUtils/model/kyUVUtils.h>
#include <UVUtils/solver/kyUnfold3D.h>
#include <UndoUtils/kyUndoCommand.h>
#include <UndoUtils/kyUndoStack.h>
#include <Utils/kyLog.h>

#include <algorithm>
#include <cmath>
#include <iostream>
#include <limits>
#include <string>
#include <utility>
#include <vector>

namespace
{

int failures = 0;

void check(bool holds, const std::string& claim)
{
    std::cout << (holds ? "ok      " : "FAILED  ") << claim << '\n';
    failures += holds ? 0 : 1;
}

constexpr unsigned Columns = 9;
constexpr unsigned Rows = 7;
constexpr unsigned TubeSize = Rows * Columns;
constexpr float Radius = 2.0F;
constexpr float Length = 3.0F;

void addQuarterTube(osg::GeoPositions& positions, osg::GeoIndices& indices)
{
    const unsigned first = positions.getSize();
    for (unsigned row = 0; row < Rows; ++row)
        for (unsigned column = 0; column < Columns; ++column) {
            const float angle = 1.5707963F * static_cast<float>(column) / (Columns - 1);
            positions.addValue(osg::Pnt3f(Radius * std::cos(angle), Radius * std::sin(angle),
                                          Length * static_cast<float>(row) / (Rows - 1)));
        }
    for (unsigned row = 0; row + 1 < Rows; ++row)
        for (unsigned column = 0; column + 1 < Columns; ++column) {
            const unsigned corner = first + row * Columns + column;
            for (const unsigned id : {corner, corner + 1, corner + Columns + 1, corner,
                                      corner + Columns + 1, corner + Columns})
                indices.addValue(id);
        }
}

/// Quarters of a tube, which flatten without any distortion, each a piece of its own.
osg::GeometryPtr quarterTubes(unsigned count)
{
    const auto positions = osg::GeoPositions3f::create();
    const auto indices = osg::GeoIndicesUI32::create();
    for (unsigned i = 0; i < count; ++i)
        addQuarterTube(*positions, *indices);
    const auto geometry = osg::Geometry::create();
    geometry->setPositions(positions);
    geometry->setIndices(indices);
    return geometry;
}

osg::RefPtr<osg::Node> tubesNode(unsigned count)
{
    osg::RefPtr<osg::Node> node(osg::Node::create());
    node->setCore(quarterTubes(count));
    NodeUtils::setName(node, "tube");
    return node;
}

osg::RefPtr<osg::Node> shellNode(unsigned surfaces)
{
    osg::RefPtr<osg::Node> node(osg::Node::create());
    const auto shell = osg::Geometry::create();
    shell->setGeometryType(osg::Geometry::ShellType);
    node->setCore(shell);
    for (unsigned i = 0; i < surfaces; ++i) {
        const auto surface = osg::Node::create();
        surface->setCore(quarterTubes(1));
        node->addChild(surface);
    }
    return node;
}

osg::GeometryPtr geometryOf(const osg::RefPtr<osg::Node>& node)
{
    return osg::dcast<osg::Geometry>(node->getCore());
}

void checkFacade()
{
    std::vector<std::string> messages;
    kyOpenSGUtils::setCallHandler([&messages](const char* name, int) {
        messages.emplace_back(name);
        return 0;
    });
    kyUVUtils::setSelectMode(kyUVUtils::SelectIslands);
    kyOpenSGUtils::setCallHandler(nullptr);
    check(kyUVUtils::getSelectMode() == kyUVUtils::SelectIslands, "a choice is kept");
    check(messages == std::vector<std::string>{"VESelectionChanged", "UVSelectionModeChanged"},
          "the application hears of it");

    const auto tube = tubesNode(1);
    check(kyUVUtils::isValidGeometry(geometryOf(tube), tube, true), "the tube is valid");
    geometryOf(tube)->getIndices()->setValue(TubeSize, 0);
    std::vector<std::string> lines;
    kyLog::setSink([&lines](const kyLog::Line& line) { lines.push_back(line.text); });
    check(!kyUVUtils::isValidGeometry(geometryOf(tube), tube, true), "a stray index is not");
    kyLog::setSink(nullptr);
    check(lines.size() == 1 && lines[0].find("'tube'") != std::string::npos,
          "which is logged with the name of the node");

    const auto shell = shellNode(2);
    const std::vector<unsigned int> ids{1, TubeSize + 5};
    std::vector<std::vector<unsigned int>> dealt;
    kyUVUtils::callFuncOnActiveBaseGeometry(
        shell, ids.data(), 2, false,
        [&dealt](const osg::NodePtr&, const osg::GeometryPtr&,
                 const std::vector<unsigned int>& local,
                 const unsigned int&) { dealt.push_back(local); });
    check(dealt == std::vector<std::vector<unsigned int>>{{1}, {5}},
          "ids are dealt out to the surfaces of a shell");
}

/// A command of the program's own on the stack that it shares with the library.
void checkUndo()
{
    class Toggle : public kyUndoCommand
    {
    public:
        explicit Toggle(bool& flag) : kyUndoCommand({"Toggle", "outside"}), flag_(flag) {}
        void redo() override { flag_ = !flag_; }
        void undo() override { flag_ = !flag_; }

    private:
        bool& flag_;
    };
    bool flag = false;
    kyUndoStack& stack = kyUndoStack::get(0);
    stack.add(new Toggle(flag));
    check(flag && stack.steps().front().text == "Toggle", "a command is run and listed");
    check(stack.undo() && !flag, "and undone");
    stack.clear();
}

using Uvs = std::vector<osg::Vec2f>;

/// The smallest and the largest of the factors by which edges grow from space to uv. The smallest
/// is below 0 if a triangle is turned over.
std::pair<double, double> stretchRange(const osg::GeometryPtr& geometry, const Uvs& uvs)
{
    double least = std::numeric_limits<double>::infinity();
    double most = 0;
    for (auto t = geometry->beginTriangles(); t != geometry->endTriangles(); ++t) {
        osg::Vec2f sides[3];
        for (unsigned k = 0; k < 3; ++k) {
            const unsigned next = (k + 1) % 3;
            sides[k] = uvs[t.getPositionIndex(next)] - uvs[t.getPositionIndex(k)];
            const float inSpace = (t.getPosition(next) - t.getPosition(k)).length();
            const auto factor = static_cast<double>(sides[k].length() / inSpace);
            least = std::min(least, factor);
            most = std::max(most, factor);
        }
        if (!(sides[0].x() * sides[1].y() - sides[0].y() * sides[1].x() > 0))
            least = -1;
    }
    return {least, most};
}

void checkUnfold(const osg::GeometryPtr& tubes, Uvs& uvs)
{
    const auto outcome =
        kyUnfold3D::unfold(tubes, kyUVTypes::UVSet0, uvs, kyUnfold3D::Positions3D,
                           kyUnfold3D::UnfoldSettings(), nullptr, FlatEdgeList(), FlatEdgeList());
    check(outcome == kyUVTypes::Success, "the tubes can be unfolded");
    check(uvs.size() == tubes->getPositions()->getSize(), "every vertex has its uv");
    if (failures > 0)
        return;
    const auto [least, most] = stretchRange(tubes, uvs);
    check(least > 0.99 && most < 1.01, "they lie flat in the size that they have: " +
                                           std::to_string(least) + " to " + std::to_string(most));
}

/// Whether a straight line along one of a tube's sides parts the two tubes, which lie flat as
/// rectangles.
bool arePartedBySide(const Uvs& uvs)
{
    for (const unsigned first : {0U, TubeSize})
        for (const unsigned along : {Columns - 1, TubeSize - Columns}) {
            const osg::Vec2f direction = uvs[first + along] - uvs[first];
            float least[2] = {1e30F, 1e30F};
            float most[2] = {-1e30F, -1e30F};
            for (unsigned i = 0; i < 2 * TubeSize; ++i) {
                least[i / TubeSize] = std::min(least[i / TubeSize], direction.dot(uvs[i]));
                most[i / TubeSize] = std::max(most[i / TubeSize], direction.dot(uvs[i]));
            }
            if (most[0] < least[1] || most[1] < least[0])
                return true;
        }
    return false;
}

/// Packs what `uvs` holds, laid over each other.
void checkPack(const osg::GeometryPtr& tubes, Uvs uvs)
{
    std::copy_n(uvs.begin(), TubeSize, uvs.begin() + TubeSize);
    const auto slot = osg::GeoTexCoords2f::create();
    slot->setValues(uvs);
    tubes->setTexSlot(0, slot);
    osg::notifyChanged(slot, tubes, osg::GeometryBase::TexCoordsFieldMask);

    kyUnfold3D::PackSettings settings;
    settings.setBox(0, 0.5, 0, 1);
    settings.setIslandPadding(0.01);
    const auto outcome = kyUnfold3D::pack(tubes, kyUVTypes::UVSet0, uvs, settings);
    check(outcome == kyUVTypes::Success, "the tubes can be packed");
    if (uvs.size() != std::size_t{2} * TubeSize)
        return check(false, "every vertex keeps its uv");
    const bool inBox = std::all_of(uvs.begin(), uvs.end(), [](const osg::Vec2f& uv) {
        return uv.x() >= 0 && uv.x() <= 0.5F && uv.y() >= 0 && uv.y() <= 1;
    });
    check(inBox, "they lie in the box");
    check(arePartedBySide(uvs), "they lie apart");
    const auto [least, most] = stretchRange(tubes, uvs);
    check(least > 0.1 && most < least * 1.02,
          "they have one scale: " + std::to_string(least) + " to " + std::to_string(most));
}

} // namespace

int main()
{
    checkFacade();
    checkUndo();
    const auto node = tubesNode(2);
    Uvs uvs;
    checkUnfold(geometryOf(node), uvs);
    if (failures == 0)
        checkPack(geometryOf(node), uvs);
    return failures;
}
