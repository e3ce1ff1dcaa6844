#include "OpenSG/ChangeList.h"
#include "OpenSG/CoreAs.h"
#include "OpenSG/MathTestTools.h"
#include "OpenSG/TinyGeometry.h"
#include "OpenSG/Transform3D.h"
#include "OpenSGExt/NodeUtils.h"
#include "OpenSGUtils/kyMaterials.h"
#include "OpenSGUtils/kyNodeUtils.h"
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

std::ostream& operator<<(std::ostream& text, const Tuple<float, 3>& t)
{
    return text << t[0] << ' ' << t[1] << ' ' << t[2];
}

/// What a shape is made of, its size, the ends of its lines, and its material.
void describeShape(const NodePtr& node, const Geometry& shape, std::ostream& text)
{
    const unsigned type = shape.getTypes()->getValue(0);
    Pnt3f min;
    Pnt3f max;
    text << (type == GeoPrimitive::Lines ? " lines, " : " triangles, ")
         << shape.getLengths()->getValue(0) << " corners, size "
         << kyNodeUtils::getProjectionBoundingBox({node}, Matrix(), min, max, false);
    for (unsigned i = 0; type == GeoPrimitive::Lines && i < shape.getIndices()->getSize(); ++i)
        text << (i % 2 == 0 ? ", from " : " to ")
             << shape.getPositions()->getValue(shape.getIndices()->getValue(i));
    const SimpleMaterialPtr material = materialOf(node);
    text << ", " << kyMaterials::getName(material) << (material->getLit() ? " lit " : " ")
         << material->getDiffuse();
    text << ", transparency " << material->getTransparency();
    for (unsigned i = 0; i < material->getNChunks(); ++i)
        text << ", " << material->getChunk(i)->getType().getName() << material->getChunkSlot(i);
}

/// A line for each node with its name and its shape. All of them should be among the reported.
std::string describe(const NodePtr& node, const ContainerIds& reported,
                     const std::string& indent = "\n")
{
    std::ostringstream text;
    const char* name = NodeUtils::getName(node);
    text << indent << (name ? name : "-");
    EXPECT_TRUE(reported.contains(node->getId()) && reported.contains(node->getCore()->getId()));
    if (const auto shape = coreAs<Geometry>(node)) {
        EXPECT_TRUE(reported.contains(materialOf(node)->getId()));
        describeShape(node, *shape, text);
    }
    for (unsigned i = 0; i < node->getNChildren(); ++i)
        text << describe(node->getChild(i), reported, indent + "  ");
    return text.str();
}

const std::string square =
    ", from -1 -1 0 to 1 -1 0, from 1 -1 0 to 1 1 0, from 1 1 0 to -1 1 0, from -1 1 0 to -1 -1 0";

TEST(PlanarSupport, BuildsItsTreeAndReportsWhatIsSet)
{
    kyUVPlanarProjectionSupportGeometry support;
    support.setLineColor(Color3f(0, 0, 1)); // kept for init
    support.setOpacity(0.5F);
    EXPECT_EQ(support.getOpacity(), 1);
    const ContainerIds reported = initAndGetReported(support);
    const RefPtr<Node> root(support.getProjectionTransformNode());
    EXPECT_EQ(describe(root, reported),
              "\nProjection Transform\n  Planar Transform\n"
              "    - triangles, 6 corners, size 2 2 0, kyTextureEditor::texmapmat 1 1 1, "
              "transparency 0.8, TextureChunk-2, BlendChunk-2\n"
              "    - lines, 10 corners, size 2 2 1e+07" +
                  square +
                  ", from 0 0 0 to 0 0 -1e+07, kyTextureEditor::texframemat 0 0 1, "
                  "transparency 0, LineChunk-2, BlendChunk-2");
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
        "\n  " + own + "PlaneGroup\n    - triangles, 6 corners, size 2 2 0, " + own +
        "planeMaterial 1 1 1, transparency 0.8, BlendChunk-2\n"
        "    - lines, 8 corners, size 2 2 0" +
        square + ", " + own +
        "FrameMat 0.953 0.525 0.184, transparency 0, LineChunk-2, BlendChunk-2";
    EXPECT_EQ(describe(root, reported), "\n" + own + "ProjectionTransform" + side + side + side);
    EXPECT_EQ(root->findChild(support.getXPlane()), 0);
    EXPECT_EQ(root->findChild(support.getYPlane()), 1);
    EXPECT_EQ(root->findChild(support.getZPlane()), 2);

    struct : kyUVTriPlanarProjectionSupportGeometry
    {
        void init(const BlendChunkPtr& blend)
        {
            node = RefPtr<Node>(createLine(createPlaneMaterial(blend)));
        }
        RefPtr<Node> node;
    } line;
    const ContainerIds lineReported = initAndGetReported(line);
    EXPECT_EQ(describe(line.node, lineReported),
              "\n" + own + "Line lines, 2 corners, size 0 0 500, from 0 0 0 to 0 0 500, " + own +
                  "planeMaterial 1 1 1, transparency 0.8, BlendChunk-2");
}

TEST(CylindricalSupport, BuildsItsTreesAndBringsThemToSettings)
{
    kyUVCylindricalProjectionSupportGeometry support;
    const ContainerIds reported = initAndGetReported(support);
    const RefPtr<Node> root(support.getCylindricTransform3D());
    const RefPtr<Node> image(support.getCylindricTransform2D());
    const std::string material =
        ", kyTextureEditor::cylindrictexmapmat 1 1 1, transparency 0.8, BlendChunk-2";
    const std::string limit = "\n    -\n      - triangles, 6 corners, size 1 1 0" + material;
    EXPECT_EQ(describe(root, reported),
              "\n-\n  -\n    - triangles, 384 corners, size 2 1 2" + material + limit + limit);
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
