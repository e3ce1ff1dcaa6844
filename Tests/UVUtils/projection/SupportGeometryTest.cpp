#include "OpenSG/ChangeList.h"
#include "OpenSG/MathTestTools.h"
#include "OpenSG/TinyGeometry.h"
#include "OpenSG/Transform3D.h"
#include "OpenSGExt/NodeUtils.h"
#include "OpenSGUtils/kyMaterials.h"
#include "UVUtils/projection/kyUVCylindricalProjectionSettings.h"
#include "UVUtils/projection/kyUVCylindricalProjectionSupportGeometry.h"
#include "UVUtils/projection/kyUVPlanarProjectionSupportGeometry.h"
#include "UVUtils/projection/kyUVTriPlanarProjectionSupportGeometry.h"

#include <cmath>
#include <set>
#include <sstream>

using namespace osg;

namespace
{

/// A support geometry after init, and what the application holds of it.
template <class Support>
struct Shown
{
    explicit Shown(Support given = {}) : support(given)
    {
        WinThreadBase::setCurrentChangeList(&changes);
        support.init(blend);
        WinThreadBase::setCurrentChangeList(nullptr);
        if constexpr (requires { support.getProjectionTransformNode(); })
            root = support.getProjectionTransformNode();
        else {
            root = support.getCylindricTransform3D();
            other = support.getCylindricTransform2D();
        }
    }

    Support support;
    ChangeList changes; ///< of init
    RefPtr<BlendChunk> blend{BlendChunk::create()};
    RefPtr<Node> root;
    RefPtr<Node> other;
};

SimpleMaterialPtr materialOf(const NodePtr& shape)
{
    return dcast<SimpleMaterial>(dcast<Geometry>(shape->getCore())->getMaterial());
}

/// A line for each node: its name, then of a shape its sizes and its material.
void describe(const NodePtr& node, const std::string& indent, std::ostream& text)
{
    const char* name = NodeUtils::getName(node);
    text << indent << (name ? name : "-");
    if (const auto shape = dcast<Geometry>(node->getCore())) {
        const SimpleMaterialPtr material = materialOf(node);
        text << " type " << shape->getTypes()->getValue(0) << ", "
             << shape->getPositions()->getSize() << " points, " << shape->getLengths()->getValue(0)
             << " corners, " << kyMaterials::getName(material)
             << (material->getLit() ? " lit" : "");
        for (unsigned i = 0; i < 3; ++i)
            text << ' ' << material->getDiffuse()[i];
        text << ", transparency " << material->getTransparency();
        for (unsigned i = 0; i < material->getNChunks(); ++i)
            text << ", " << material->getChunk(i)->getType().getName() << material->getChunkSlot(i);
    }
    text << '\n';
    for (unsigned i = 0; i < node->getNChildren(); ++i)
        describe(node->getChild(i), indent + "  ", text);
}

std::string describe(const RefPtr<Node>& root)
{
    std::ostringstream text;
    describe(root, "", text);
    return text.str();
}

TEST(SupportGeometry, BuildsItsTree)
{
    kyUVPlanarProjectionSupportGeometry blue;
    blue.setLineColor(Color3f(0, 0, 1)); // kept for init
    blue.setOpacity(0.5F);
    EXPECT_EQ(blue.getOpacity(), 1);
    const Shown planar(blue);
    EXPECT_EQ(describe(planar.root),
              "Projection Transform\n"
              "  Planar Transform\n"
              "    - type 4, 4 points, 6 corners, kyTextureEditor::texmapmat 1 1 1, "
              "transparency 0.8, TextureChunk-2, BlendChunk-2\n"
              "    - type 1, 6 points, 10 corners, kyTextureEditor::texframemat 0 0 1, "
              "transparency 0, LineChunk-2, BlendChunk-2\n");
    const auto frame = dcast<Geometry>(planar.root->getChild(0)->getChild(1)->getCore());
    EXPECT_EQ(frame->getIndices()->getValues(), (tiny::Ids{0, 1, 1, 2, 2, 3, 3, 0, 4, 5}));
    EXPECT_EQ(frame->getPositions()->getValues(),
              (std::vector<Pnt3f>{Pnt3f(-1, -1, 0), Pnt3f(1, -1, 0), Pnt3f(1, 1, 0),
                                  Pnt3f(-1, 1, 0), Pnt3f(0, 0, 0), Pnt3f(0, 0, -10000000)}));
    EXPECT_EQ(planar.root->getToWorld(), Matrix::translation(Vec3f(0, 0, 1)));
    EXPECT_EQ(planar.root->getToWorld(), planar.support.getInitialProjectionMatrix());

    const std::string own = "kyUVEditor::TriplanarTextureProjection::";
    const std::string side = "  " + own + "PlaneGroup\n    - type 4, 4 points, 6 corners, " + own +
                             "planeMaterial 1 1 1, transparency 0.8, BlendChunk-2\n"
                             "    - type 1, 4 points, 8 corners, " +
                             own +
                             "FrameMat 0.953 0.525 0.184, transparency 0, LineChunk-2, "
                             "BlendChunk-2\n";
    const Shown<kyUVTriPlanarProjectionSupportGeometry> box;
    EXPECT_EQ(describe(box.root), own + "ProjectionTransform\n" + side + side + side);
    EXPECT_EQ(box.root->findChild(box.support.getXPlane()), 0);
    EXPECT_EQ(box.root->findChild(box.support.getYPlane()), 1);
    EXPECT_EQ(box.root->findChild(box.support.getZPlane()), 2);

    const std::string material =
        "kyTextureEditor::cylindrictexmapmat 1 1 1, transparency 0.8, BlendChunk-2\n";
    const std::string limit = "    -\n      - type 4, 4 points, 6 corners, " + material;
    const Shown<kyUVCylindricalProjectionSupportGeometry> cylinder;
    EXPECT_EQ(describe(cylinder.root),
              "-\n  -\n    - type 4, 130 points, 384 corners, " + material + limit + limit);
    EXPECT_EQ(describe(cylinder.other), "-\n");
    EXPECT_EQ(cylinder.root->getTravMask(), 0U) << "hidden";
    EXPECT_EQ(planar.root->getTravMask() & box.root->getTravMask(), ~0U);
}

TEST(SupportGeometry, ReportsAllThatItMakesAndSets)
{
    Shown<kyUVPlanarProjectionSupportGeometry> shown;
    const NodePtr map = shown.support.getPlanarTransformNode();
    const SimpleMaterialPtr plane = materialOf(map->getChild(0));
    const SimpleMaterialPtr frame = materialOf(map->getChild(1));
    const auto texture = dcast<TextureChunk>(plane->getChunk(0));
    std::set<unsigned> made;
    for (const ChangeList::Change& change : shown.changes.getChanged())
        made.insert(change.id);
    for (const NodePtr& node : {shown.root.get(), map, map->getChild(0), map->getChild(1)})
        EXPECT_TRUE(made.count(node->getId()) && made.count(node->getCore()->getId()));
    EXPECT_TRUE(made.count(plane->getId()) && made.count(frame->getId()));

    tiny::NoticeJournal journal;
    for (const FieldContainerPtr& watched :
         std::vector<FieldContainerPtr>{shown.root, plane, frame, texture})
        journal.watch(watched);
    const RefPtr<Image> image(Image::create());
    kyUVPlanarProjectionSupportGeometry copy = shown.support; // shares the nodes
    copy.setActive(false);
    copy.setOpacity(1);
    EXPECT_EQ(plane->getTransparency(), 0);
    EXPECT_EQ(shown.support.getOpacity(), 1);
    EXPECT_EQ(shown.root->getTravMask(), 0U);
    copy.setLineColor(Color3f(1, 0, 0));
    EXPECT_EQ(frame->getDiffuse(), Color3f(1, 0, 0));
    copy.setMapPlaneTexture(image);
    EXPECT_EQ(texture->getImage(), image.get());
    using Notice = tiny::NoticeJournal::Notice;
    EXPECT_EQ(journal.notices,
              (std::vector<Notice>{{shown.root->getId(), Node::TravMaskFieldMask, 1},
                                   {plane->getId(), FieldMask::all(), 1},
                                   {frame->getId(), SimpleMaterial::DiffuseFieldMask, 1},
                                   {texture->getId(), TextureChunk::ImageFieldMask, 1}}));
}

TEST(CylindricalSupport, SwingsItsLimitPlanesToTheEdgesOfTheImage)
{
    Shown<kyUVCylindricalProjectionSupportGeometry> shown;
    const auto expectAt = [&](unsigned plane, double degrees) {
        const double angle = degrees * 3.14159265358979 / 180;
        const auto core = dcast<Transform3D>(shown.root->getChild(0)->getChild(plane)->getCore());
        EXPECT_TRUE(mathtest::isNear(core->getMatrix().transformPoint(Pnt3f(-0.5F, 0.5F, 0)),
                                     Pnt3f(0, 0.5F, 0), 1e-6F));
        EXPECT_TRUE(mathtest::isNear(core->getMatrix().transformPoint(Pnt3f(0.5F, -0.5F, 0)),
                                     Pnt3f(std::sin(angle), -0.5F, std::cos(angle)), 1e-6F));
    };
    expectAt(1, 0);
    expectAt(2, 0);
    for (const double angle : {0.0, 90.0, 180.0, 360.0, -50.0}) {
        shown.support.setProjectionUAngle(angle);
        expectAt(1, -angle / 2);
        expectAt(2, angle / 2);
    }
}

TEST(CylindricalSupport, BringsItsTransformsToSettings)
{
    Shown<kyUVCylindricalProjectionSupportGeometry> shown;
    kyUVCylindricalProjectionSettings settings;
    settings.setProjectionCenter(Vec3f(1, 2, 3));
    settings.setProjectionRotation(Vec3f(90, 0, 90));
    settings.setProjectionScale(Vec3f(2, 5, 2));
    settings.setCylindricRotation2D(90);
    shown.support.applySettings(settings);
    const Matrix in3D = shown.root->getToWorld();
    EXPECT_TRUE(mathtest::isNear(in3D.transformPoint(Pnt3f(0, 1, 0)), Pnt3f(1, 2, 8), 1e-5F));
    EXPECT_TRUE(mathtest::isNear(in3D.transformPoint(Pnt3f(1, 0, 0)), Pnt3f(1, 4, 3), 1e-5F));
    const Matrix in2D = shown.other->getToWorld();
    EXPECT_TRUE(mathtest::isNear(in2D.transformPoint(Pnt3f(1, 0.5F, 0)), Pnt3f(0.5F, 1, 0), 1e-6F));
    const auto left = dcast<Transform3D>(shown.root->getChild(0)->getChild(1)->getCore());
    EXPECT_TRUE(mathtest::isNear(Matrix::rotation(left->getRotationAsQuaternion()),
                                 Matrix::scaling(Vec3f(-1, 1, -1)), 1e-6F))
        << "half of 180 degrees, and the quarter that brings the plane to +z";
}

} // namespace
