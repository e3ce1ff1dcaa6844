// A program of somebody else: it knows the installed package only. It builds a bent sheet in the
// scene graph, asks the facade about it, unfolds and packs it, and measures what came back. Returns
// the number of checks that failed.

#include <OpenSG/ChangeNotice.h>
#include <OpenSG/Geometry.h>
#include <OpenSG/Node.h>
#include <OpenSG/RefPtr.h>
#include <OpenSG/TriangleIterator.h>
#include <OpenSGExt/NodeUtils.h>
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

/// A quarter of a tube, which flattens without any distortion.
osg::GeometryPtr quarterTube()
{
    constexpr unsigned columns = 9;
    constexpr unsigned rows = 7;
    const auto positions = osg::GeoPositions3f::create();
    const auto indices = osg::GeoIndicesUI32::create();
    for (unsigned i = 0; i < rows * columns; ++i) {
        const float angle = 1.5707963F * static_cast<float>(i % columns) / (columns - 1);
        positions->addValue(osg::Pnt3f(2 * std::cos(angle), 2 * std::sin(angle),
                                       0.5F * static_cast<float>(i / columns)));
    }
    for (unsigned row = 0; row + 1 < rows; ++row)
        for (unsigned column = 0; column + 1 < columns; ++column)
            for (const unsigned step : {0U, 1U, columns + 1, 0U, columns + 1, columns})
                indices->addValue(row * columns + column + step);
    const auto geometry = osg::Geometry::create();
    geometry->setPositions(positions);
    geometry->setIndices(indices);
    return geometry;
}

void checkFacade(const osg::GeometryPtr& tube, const osg::NodePtr& node)
{
    check(kyUVUtils::isValidGeometry(tube, node, true), "the tube is valid");
    tube->getIndices()->setValue(1000, 0);
    std::vector<std::string> lines;
    kyLog::setSink([&lines](const kyLog::Line& line) { lines.push_back(line.text); });
    check(!kyUVUtils::isValidGeometry(tube, node, true), "a stray index is not");
    kyLog::setSink(nullptr);
    check(lines.size() == 1 && lines[0].find("'tube'") != std::string::npos,
          "which is logged with the name of the node");
    tube->getIndices()->setValue(0, 0);
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

void checkSolver(const osg::GeometryPtr& tube)
{
    Uvs uvs;
    const auto unfolded =
        kyUnfold3D::unfold(tube, kyUVTypes::UVSet0, uvs, kyUnfold3D::Positions3D,
                           kyUnfold3D::UnfoldSettings(), nullptr, FlatEdgeList(), FlatEdgeList());
    check(unfolded == kyUVTypes::Success, "the tube can be unfolded");
    check(uvs.size() == tube->getPositions()->getSize(), "every vertex has its uv");
    if (failures > 0)
        return;
    const auto [least, most] = stretchRange(tube, uvs);
    check(least > 0.99 && most < 1.01, "it lies flat in the size that it has");

    const auto slot = osg::GeoTexCoords2f::create();
    slot->setValues(uvs);
    tube->setTexSlot(0, slot);
    osg::notifyChanged(slot, tube, osg::GeometryBase::TexCoordsFieldMask);
    kyUnfold3D::PackSettings settings;
    settings.setBox(0, 0.5, 0, 1);
    const auto packed = kyUnfold3D::pack(tube, kyUVTypes::UVSet0, uvs, settings);
    check(packed == kyUVTypes::Success, "the tube can be packed");
    const bool inBox = std::all_of(uvs.begin(), uvs.end(), [](const osg::Vec2f& uv) {
        return uv.x() >= 0 && uv.x() <= 0.5F && uv.y() >= 0 && uv.y() <= 1;
    });
    check(inBox && uvs.size() == slot->getSize(), "it lies in the box");
    const auto [small, large] = stretchRange(tube, uvs);
    check(small > 0.1 && large < small * 1.02, "it has one scale");
}

} // namespace

int main()
{
    const osg::RefPtr<osg::Node> node(osg::Node::create());
    const osg::GeometryPtr tube = quarterTube();
    node->setCore(tube);
    NodeUtils::setName(node, "tube");
    checkFacade(tube, node);
    checkUndo();
    checkSolver(tube);
    return failures;
}
