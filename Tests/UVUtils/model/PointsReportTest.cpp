#include "OpenSG/GeoTmpIndexEditInterface.h"
#include "UVUtils/Captures.h"
#include "UVUtils/Meshes.h"
#include "UVUtils/model/TempIndexList.h"

#include <gtest/gtest.h>

#include <sstream>

namespace
{

std::string reportOn(const osg::NodePtr& node, const Ids& selected)
{
    const osg::GeometryPtr core = coreOf(node);
    osg::GeoTmpIndexEditInterface(core, kyUVTypes::FreeVertices).assign(selected);
    std::ostringstream stream;
    kyUVUtils::debugOutPntsInfo(core, node, stream);
    return stream.str();
}

TEST(PointsReport, ListsSelectedVerticesOfEachSurfaceOnceWithAllTheirProperties)
{
    LogCapture log;
    const osg::RefPtr<osg::Node> shell(shellOf({quad(), quad()}));
    const osg::GeometryPtr geometry = surfaceOf(shell, 1);
    geometry->setNormals(osg::GeoNormals3f::create());
    geometry->getNormals()->setValues(std::vector<osg::Vec3f>(4, osg::Vec3f(0, 0, 1)));
    geometry->setColors(osg::GeoColors4f::create());
    geometry->getColors()->setValues(std::vector<osg::Color4f>(4, osg::Color4f(.5F, .25F, 0, 1)));
    geometry->setTexSlot(0, tiny::texCoords(UVs(4, osg::Vec2f(.125F, 2))));
    geometry->setTexSlot(7, osg::GeoTexCoords3f::create());
    geometry->getTexSlot(7)->setValues(UVs(4, osg::Vec2f(3, 4)));
    const std::string emptySlots =
        "  TexCoords1: NULL\n  TexCoords2: NULL\n  TexCoords3: NULL\n  TexCoords4: NULL\n"
        "  TexCoords5: NULL\n  TexCoords6: NULL\n";
    EXPECT_EQ(reportOn(shell, {6, 1, 6}),
              "Epsilon value is 1.19209e-07\nThere are 2vertices\n info for vert 0\n"
              "  Positions: 1, 0, 0\n  Normals: NULL\n  Colors: NULL\n  SecondaryColors: NULL\n"
              "  TexCoords: NULL\n" +
                  emptySlots +
                  "  TexCoords7: NULL\n info for vert 1\n  Positions: 1, 1, 0\n"
                  "  Normals: 0, 0, 1\n  Colors: 0.5 0.25 0\n  SecondaryColors: NULL\n"
                  "  TexCoords: 0.125, 2\n" +
                  emptySlots + "  TexCoords7: 3, 4, 0\n");
    EXPECT_EQ(reportOn(shell, {}), "");
    const osg::RefPtr<osg::Node> plain(nodeOf(quad()));
    EXPECT_NE(reportOn(plain, {2}).find(" vert 0\n  Positions: 1, 1, 0\n"), std::string::npos);
    EXPECT_EQ(log.lines.size(), 0U);
    EXPECT_EQ(reportOn(osg::RefPtr<osg::Node>(nodeOf(brokenQuad())), {0}), "");
    EXPECT_EQ(log.lines.size(), 1U);
}

} // namespace
