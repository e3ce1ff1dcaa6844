#include "OpenSG/DeepCloneTree.h"

#include "OpenSG/BinaryChecksumHandler.h"
#include "OpenSG/FieldContainerFactory.h"
#include "OpenSG/GeoTmpIndexEditInterface.h"
#include "OpenSG/SimpleMaterial.h"
#include "OpenSG/SurfaceBase.h"
#include "OpenSG/TextureChunk.h"
#include "OpenSG/Transform3D.h"
#include "OpenSGExt/NodeUtils.h"
#include "OpenSGExt/UVConstraintAttachment.h"
#include "TinyGeometry.h"

#include <gtest/gtest.h>

using namespace osg;

namespace
{

/// A moved node over two that share a surface and an attachment, with each kind of field.
RefPtr<Node> sampleTree()
{
    const auto material = SimpleMaterial::create();
    material->addChunk(TextureChunk::create());
    const auto surface = SurfaceBase::create();
    surface->setPositions(tiny::quad()->getPositions());
    surface->setIndices(tiny::indices({0, 1, 2, 0, 2, 3}));
    surface->setTexSlot(5, tiny::texCoords({Vec2f(1, 2)}));
    surface->setTexSlot(7, surface->getTexSlot(5));
    surface->setMaterial(material);
    surface->setSide(SurfaceBase::SideB);
    const auto constraints = UVConstraintAttachment::create();
    constraints->createEdgesField(1)->addValue(3);
    surface->addAttachment(constraints);
    surface->addAttachment(constraints, 4);
    GeoTmpIndexEditInterface(surface, 6).make();

    RefPtr<Node> root(Node::create());
    root->setCore(Transform3D::create());
    for (const char* name : {"first", "second"}) {
        const NodePtr child = Node::create();
        child->setCore(surface);
        NodeUtils::setName(child, name);
        root->addChild(child);
    }
    root->getChild(1)->setTravMask(3);
    return root;
}

std::uint64_t checksum(const FieldContainerPtr& container)
{
    BinaryChecksumHandler handler;
    handler.write(container);
    return handler.getValue();
}

std::size_t livingCount()
{
    return FieldContainerFactory::the()->getContainerCount();
}

TEST(DeepCloneTree, HasTheSameInContainersOfItsOwnButForSharedTypes)
{
    const std::size_t atStart = livingCount();
    RefPtr<Node> root = sampleTree();
    const auto surface = dcast<SurfaceBase>(root->getChild(0)->getCore());
    const std::size_t before = livingCount();

    RefPtr<Node> clone(deepCloneTree(root, "Material ,Transform3D,, Node"));
    ASSERT_EQ(clone->getRefCount(), 1);
    EXPECT_EQ(clone->getParent(), NullFC);
    EXPECT_EQ(livingCount(), before + 11)
        << "3 nodes, 2 names, 1 surface of 3 properties, and 1 "
           "attachment of 1 list: what is held twice is there once";
    EXPECT_EQ(clone->getCore(), root->getCore());
    EXPECT_EQ(clone->getCore()->getRefCount(), 2);
    EXPECT_EQ(surface->getMaterial()->getRefCount(), 2);
    EXPECT_EQ(surface->getParents().size(), 2U);
    const auto copy = dcast<SurfaceBase>(clone->getChild(0)->getCore());
    EXPECT_EQ(copy->getParents(), (std::vector{clone->getChild(0), clone->getChild(1)}));
    EXPECT_TRUE(GeoTmpIndexEditInterface(copy, 6).isNull());
    const std::uint64_t sum = checksum(clone);
    EXPECT_EQ(sum, checksum(root));

    surface->getPositions()->setValue(Pnt3f(9, 9, 9), 0);
    surface->getTexSlot(5)->clear();
    dcast<UVConstraintAttachment>(surface->findAttachment(UVConstraintAttachment::_type))
        ->getEdgesV()
        ->addValue(5);
    NodeUtils::setName(root->getChild(0), "other");
    root->subChild(root->getChild(1));
    EXPECT_EQ(checksum(clone), sum);
    root = NullFC;
    EXPECT_EQ(checksum(clone), sum) << "what was shared lives on";
    clone = NullFC;
    EXPECT_EQ(livingCount(), atStart);
}

TEST(DeepCloneTree, TakesATreeOfAnyDepthAndNoTree)
{
    EXPECT_EQ(deepCloneTree(NullFC), NullFC);
    const RefPtr<Node> root(Node::create());
    NodePtr bottom = root;
    for (int depth = 0; depth < 100000; ++depth) {
        bottom->addChild(Node::create());
        bottom = bottom->getChild(0);
    }
    const std::size_t before = livingCount();
    const RefPtr<Node> clone(deepCloneTree(root));
    EXPECT_EQ(livingCount(), before + 100001);
}

} // namespace
