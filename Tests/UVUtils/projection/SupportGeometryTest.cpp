#include "OpenSG/ChangeList.h"
#include "OpenSG/CoreAs.h"
#include "OpenSG/MathTestTools.h"
#include "OpenSG/TinyGeometry.h"
#include "OpenSG/Transform3D.h"
#include "OpenSGExt/NodeUtils.h"
#include "OpenSGUtils/kyMaterials.h"
#include "UVUtils/projection/kyUVCylindricalProjectionSettings.h"
#include "UVUtils/projection/kyUVCylindricalProjectionSupportGeometry.h"
#include "UVUtils/projection/kyUVPlanarProjectionSupportGeometry.h"
#include "UVUtils/projection/kyUVTriPlanarProjectionSupportGeometry.h"

#include <set>
#include <sstream>

using namespace osg;

namespace
{

using ContainerIds = std::set<unsigned>;

template <class Support>
ContainerIds initAndGetReported(Support& support)
{
    ChangeList changes;
    WinThreadBase::setCurrentChangeList(&changes);
    support.init(RefPtr<BlendChunk>(BlendChunk::create()));
    WinThreadBase::setCurrentChangeList(nullptr);
    ContainerIds ids;
    for (const ChangeList::Change& change : changes.getChanged())
        ids.insert(change.id);
    return ids;
}

SimpleMaterialPtr materialOf(const NodePtr& shape)
{
    return dcast<SimpleMaterial>(coreAs<Geometry>(shape)->getMaterial());
}

/// The type and the sizes of a shape, the ends of its lines, and its material.
void describeShape(const Geometry& shape, const SimpleMaterialPtr& material, std::ostream& text)
{
    const unsigned type = shape.getTypes()->getValue(0);
    text << " type " << type << ", " << shape.getPositions()->getSize() << " points, "
         << shape.getLengths()->getValue(0) << " corners";
    for (unsigned i = 0; type == GeoPrimitive::Lines && i < shape.getIndices()->getSize(); ++i) {
        const Pnt3f end = shape.getPositions()->getValue(shape.getIndices()->getValue(i));
        text << (i % 2 == 0 ? ", " : "-") << end.x() << ' ' << end.y() << ' ' << end.z();
    }
    text << ", " << kyMaterials::getName(material) << (material->getLit() ? " lit" : "");
    for (unsigned i = 0; i < 3; ++i)
        text << ' ' << material->getDiffuse()[i];
    text << ", transparency " << material->getTransparency();
    for (unsigned i = 0; i < material->getNChunks(); ++i)
        text << ", " << material->getChunk(i)->getType().getName() << material->getChunkSlot(i);
}

/// A line for each node with its name and its shape. All of them should be among the reported.
std::string describe(const NodePtr& node, const ContainerIds& reported, std::string indent = "\n")
{
    std::ostringstream text;
    const char* name = NodeUtils::getName(node);
    text << indent << (name ? name : "-");
    EXPECT_TRUE(reported.contains(node->getId()) && reported.contains(node->getCore()->getId()));
    if (const auto shape = coreAs<Geometry>(node)) {
        EXPECT_TRUE(reported.contains(materialOf(node)->getId()));
        describeShape(*shape, materialOf(node), text);
    }
    for (unsigned i = 0; i < node->getNChildren(); ++i)
        text << describe(node->getChild(i), reported, indent + "  ");
    return text.str();
}

TEST(PlanarSupport, BuildsItsTreeAndReportsWhatIsSet)
{
    kyUVPlanarProjectionSupportGeometry support;
    support.setLineColor(Color3f(0, 0, 1)); // kept for init
    support.setOpacity(0.5F);
    EXPECT_EQ(support.getOpacity(), 1);
    const ContainerIds reported = initAndGetReported(support);
    const RefPtr<Node> root(support.getProjectionTransformNode());
    EXPECT_EQ(describe(root, reported), R"(
Projection Transform
  Planar Transform
    - type 4, 4 points, 6 corners, kyTextureEditor::texmapmat 1 1 1, transparency 0.8, )"
                                        R"(TextureChunk-2, BlendChunk-2
    - type 1, 6 points, 10 corners, -1 -1 0-1 -1 0, 1 -1 0-1 1 0, 1 1 0--1 1 0, -1 1 0--1 -1 0, )"
                                        R"(0 0 0-0 0 -1e+07, kyTextureEditor::texframemat 0 0 1, )"
                                        R"(transparency 0, LineChunk-2, BlendChunk-2)");
    EXPECT_EQ(root->getToWorld(), Matrix::translation(Vec3f(0, 0, 1)));
    EXPECT_EQ(root->getToWorld(), support.getInitialProjectionMatrix());
    EXPECT_EQ(root->getTravMask(), ~0U);

    const SimpleMaterialPtr plane = materialOf(root->getChild(0)->getChild(0));
    const SimpleMaterialPtr frame = materialOf(root->getChild(0)->getChild(1));
    const auto texture = dcast<TextureChunk>(plane->getChunk(0));
    tiny::NoticeJournal journal;
    for (const FieldContainerPtr& watched :
         std::vector<FieldContainerPtr>{root, plane, frame, texture})
        journal.watch(watched);
    const RefPtr<Image> image(Image::create());
    kyUVPlanarProjectionSupportGeometry copy = support; // shares the nodes
    copy.setActive(false);
    copy.setOpacity(1);
    copy.setLineColor(Color3f(1, 0, 0));
    copy.setMapPlaneTexture(image);
    EXPECT_EQ(root->getTravMask(), 0U);
    EXPECT_EQ(plane->getTransparency(), 0);
    EXPECT_EQ(support.getOpacity(), 1);
    EXPECT_EQ(frame->getDiffuse(), Color3f(1, 0, 0));
    EXPECT_EQ(texture->getImage(), image.get());
    using Notice = tiny::NoticeJournal::Notice;
    EXPECT_EQ(journal.notices,
              (std::vector<Notice>{{root->getId(), Node::TravMaskFieldMask, 1},
                                   {plane->getId(), FieldMask::all(), 1},
                                   {frame->getId(), SimpleMaterial::DiffuseFieldMask, 1},
                                   {texture->getId(), TextureChunk::ImageFieldMask, 1}}));
}

TEST(TriPlanarSupport, BuildsItsTree)
{
    kyUVTriPlanarProjectionSupportGeometry support;
    const ContainerIds reported = initAndGetReported(support);
    const RefPtr<Node> root(support.getProjectionTransformNode());
    const std::string own = "kyUVEditor::TriplanarTextureProjection::";
    const std::string side =
        "\n  " + own + "PlaneGroup\n    - type 4, 4 points, 6 corners, " + own +
        "planeMaterial 1 1 1, transparency 0.8, BlendChunk-2\n    - type 1, 4 points, 8 corners, "
        "-1 -1 0-1 -1 0, 1 -1 0-1 1 0, 1 1 0--1 1 0, -1 1 0--1 -1 0, " +
        own + "FrameMat 0.953 0.525 0.184, transparency 0, LineChunk-2, BlendChunk-2";
    EXPECT_EQ(describe(root, reported), "\n" + own + "ProjectionTransform" + side + side + side);
    EXPECT_EQ(root->findChild(support.getXPlane()), 0);
    EXPECT_EQ(root->findChild(support.getYPlane()), 1);
    EXPECT_EQ(root->findChild(support.getZPlane()), 2);
}

TEST(CylindricalSupport, BuildsItsTreesAndBringsThemToSettings)
{
    kyUVCylindricalProjectionSupportGeometry support;
    const ContainerIds reported = initAndGetReported(support);
    const RefPtr<Node> root(support.getCylindricTransform3D());
    const RefPtr<Node> image(support.getCylindricTransform2D());
    const std::string material =
        "corners, kyTextureEditor::cylindrictexmapmat 1 1 1, transparency 0.8, BlendChunk-2";
    const std::string limit = "\n    -\n      - type 4, 4 points, 6 " + material;
    EXPECT_EQ(describe(root, reported),
              "\n-\n  -\n    - type 4, 130 points, 384 " + material + limit + limit);
    EXPECT_EQ(describe(image, reported), "\n-");
    EXPECT_EQ(root->getTravMask(), 0U) << "hidden";

    const auto expectAngleOfLimit = [&](unsigned plane, double degrees) {
        const Matrix swing = coreAs<Transform3D>(root->getChild(0)->getChild(plane))->getMatrix();
        const Quaternion turn = Quaternion::fromEulerDegrees(Vec3f(0, degrees, 0));
        EXPECT_TRUE(mathtest::isNear(swing.transformPoint(Pnt3f(-0.5F, 0.5F, 0)), Pnt3f(0, 0.5F, 0),
                                     1e-6F));
        EXPECT_TRUE(mathtest::isNear(swing.transformPoint(Pnt3f(0.5F, 0, 0)),
                                     Pnt3f(turn.rotate(Vec3f(0, 0, 1))), 1e-6F));
    };
    expectAngleOfLimit(1, 0);
    expectAngleOfLimit(2, 0);
    kyUVCylindricalProjectionSettings settings;
    settings.setProjectionCenter(Vec3f(1, 2, 3));
    settings.setProjectionRotation(Vec3f(90, 0, 90));
    settings.setProjectionScale(Vec3f(2, 5, 2));
    settings.setCylindricRotation2D(90);
    settings.setProjectionUAngle(100);
    support.applySettings(settings);
    expectAngleOfLimit(1, -50);
    expectAngleOfLimit(2, 50);
    const Matrix in3D = root->getToWorld();
    EXPECT_TRUE(mathtest::isNear(in3D.transformPoint(Pnt3f(0, 1, 0)), Pnt3f(1, 2, 8), 1e-5F));
    EXPECT_TRUE(mathtest::isNear(in3D.transformPoint(Pnt3f(1, 0, 0)), Pnt3f(1, 4, 3), 1e-5F));
    EXPECT_TRUE(mathtest::isNear(image->getToWorld().transformPoint(Pnt3f(1, 0.5F, 0)),
                                 Pnt3f(0.5F, 1, 0), 1e-6F));
}

} // namespace
