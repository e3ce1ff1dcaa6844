// A program of somebody else: it knows the installed package only. It builds a bent sheet in the
// scene graph, asks the facade about it, unfolds it, and looks at what came back. Returns the
// number of checks that failed.

#include <OpenSG/Geometry.h>
#include <OpenSG/Node.h>
#include <OpenSG/RefPtr.h>
#include <OpenSG/TriangleIterator.h>
#include <OpenSGExt/NodeUtils.h>
#include <OpenSGUtils/kyOpenSGUtils.h>
#include <UVUtils/model/kyUVUtils.h>
#include <UVUtils/solver/kyUnfold3D.h>
#include <Utils/kyLog.h>

#include <algorithm>
#include <cmath>
#include <iostream>
#include <limits>
#include <string>
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
constexpr float Radius = 2.0F;
constexpr float Length = 3.0F;

/// A quarter of a tube, which flattens without any distortion.
osg::GeometryPtr quarterTube()
{
    const auto positions = osg::GeoPositions3f::create();
    for (unsigned row = 0; row < Rows; ++row)
        for (unsigned column = 0; column < Columns; ++column) {
            const float angle = 1.5707963F * static_cast<float>(column) / (Columns - 1);
            positions->addValue(osg::Pnt3f(Radius * std::cos(angle), Radius * std::sin(angle),
                                           Length * static_cast<float>(row) / (Rows - 1)));
        }
    const auto indices = osg::GeoIndicesUI32::create();
    for (unsigned row = 0; row + 1 < Rows; ++row)
        for (unsigned column = 0; column + 1 < Columns; ++column) {
            const unsigned corner = row * Columns + column;
            for (const unsigned id : {corner, corner + 1, corner + Columns + 1, corner,
                                      corner + Columns + 1, corner + Columns})
                indices->addValue(id);
        }
    const auto geometry = osg::Geometry::create();
    geometry->setPositions(positions);
    geometry->setIndices(indices);
    return geometry;
}

/// A node with the tube, or a shell of several tubes.
osg::RefPtr<osg::Node> tubeNode()
{
    osg::RefPtr<osg::Node> node(osg::Node::create());
    node->setCore(quarterTube());
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
        surface->setCore(quarterTube());
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

    const auto tube = tubeNode();
    check(kyUVUtils::isValidGeometry(geometryOf(tube), tube, true), "the tube is valid");
    geometryOf(tube)->getIndices()->setValue(Rows * Columns, 0);
    std::vector<std::string> lines;
    kyLog::setSink([&lines](const kyLog::Line& line) { lines.push_back(line.text); });
    check(!kyUVUtils::isValidGeometry(geometryOf(tube), tube, true), "a stray index is not");
    kyLog::setSink(nullptr);
    check(lines.size() == 1 && lines[0].find("'tube'") != std::string::npos,
          "which is logged with the name of the node");

    const auto shell = shellNode(2);
    const std::vector<unsigned int> ids{1, Rows * Columns + 5};
    std::vector<std::vector<unsigned int>> dealt;
    kyUVUtils::callFuncOnActiveBaseGeometry(
        shell, ids.data(), 2, false,
        [&dealt](const osg::NodePtr&, const osg::GeometryPtr&,
                 const std::vector<unsigned int>& local,
                 const unsigned int&) { dealt.push_back(local); });
    check(dealt == std::vector<std::vector<unsigned int>>{{1}, {5}},
          "ids are dealt out to the surfaces of a shell");
}

/// The largest factor by which an edge is longer or shorter in uv than in space; infinite if a
/// triangle is turned over.
double worstStretch(const osg::GeometryPtr& geometry, const std::vector<osg::Vec2f>& uvs)
{
    double worst = 1;
    for (auto t = geometry->beginTriangles(); t != geometry->endTriangles(); ++t) {
        osg::Vec2f sides[3];
        for (unsigned k = 0; k < 3; ++k) {
            const unsigned next = (k + 1) % 3;
            sides[k] = uvs[t.getPositionIndex(next)] - uvs[t.getPositionIndex(k)];
            const float inSpace = (t.getPosition(next) - t.getPosition(k)).length();
            const double ratio = static_cast<double>(sides[k].length() / inSpace);
            worst = std::max({worst, ratio, 1 / ratio});
        }
        if (!(sides[0].x() * sides[1].y() - sides[0].y() * sides[1].x() > 0))
            return std::numeric_limits<double>::infinity();
    }
    return worst;
}

void checkUnfold()
{
    const auto node = tubeNode();
    const osg::GeometryPtr tube = geometryOf(node);
    std::vector<osg::Vec2f> uvs;
    const auto outcome =
        kyUnfold3D::unfold(tube, kyUVTypes::UVSet0, uvs, kyUnfold3D::Positions3D,
                           kyUnfold3D::UnfoldSettings(), nullptr, FlatEdgeList(), FlatEdgeList());
    check(outcome == kyUVTypes::Success, "the tube can be unfolded");
    check(uvs.size() == Rows * Columns, "every vertex has its uv");
    if (uvs.size() != Rows * Columns)
        return;
    const double stretch = worstStretch(tube, uvs);
    check(stretch < 1.01, "the tube lies flat as it is: stretch " + std::to_string(stretch));
}

} // namespace

int main()
{
    checkFacade();
    checkUnfold();
    return failures;
}
