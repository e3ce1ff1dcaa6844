#include "OpenSG/BinaryChecksumHandler.h"
#include "OpenSG/Group.h"
#include "OpenSG/Node.h"
#include "TinyGeometry.h"

#include <gtest/gtest.h>

#include <set>
#include <string>

using namespace osg;

namespace
{

std::uint64_t checksumOf(const FieldContainerPtr& container)
{
    BinaryChecksumHandler handler;
    handler.write(container);
    return handler.getValue();
}

template <class Kind>
std::uint64_t checksumOfIds(const tiny::Ids& ids)
{
    const RefPtr<Kind> property(Kind::create());
    property->setValues(ids);
    return checksumOf(property);
}

TEST(BinaryChecksum, IsThePublishedHashOfTheBytesHoweverTheyAreCut)
{
    // Test values of the 64-bit xxHash with seed 0.
    const struct
    {
        std::string text;
        std::uint64_t value;
    } cases[] = {{"a", 0xd24ec4f1a98c6e5bU},
                 {"abc", 0x44bc2cf5ad770999U},
                 {"Nobody inspects the spammish repetition", 0xfbcea83c8a378bf1U}};
    EXPECT_EQ(BinaryChecksumHandler().getValue(), 0U);
    for (const auto& c : cases)
        for (std::size_t first = 0; first <= c.text.size(); ++first) {
            BinaryChecksumHandler handler;
            handler.write(c.text.data(), first);
            handler.write(nullptr, 0);
            handler.write(c.text.data() + first, c.text.size() - first);
            EXPECT_EQ(handler.getValue(), c.value) << c.text << " cut at " << first;
        }
}

TEST(BinaryChecksum, EqualPropertiesAgreeAndOthersDiffer)
{
    const std::set<std::uint64_t> values{
        checksumOfIds<GeoIndicesUI32>({}),        checksumOfIds<GeoIndicesUI16>({}),
        checksumOfIds<GeoIndicesUI32>({0}),       checksumOfIds<GeoIndicesUI32>({0, 0}),
        checksumOfIds<GeoIndicesUI32>({0, 1, 2}), checksumOfIds<GeoIndicesUI32>({0, 2, 1}),
        checksumOfIds<GeoIndicesUI16>({0, 1, 2}), checksumOf(NullFC)};
    EXPECT_EQ(values.size(), 8U) << "class, size and order all count";
    EXPECT_EQ(checksumOf(NullFC), 0U);

    const RefPtr<GeoIndicesUI16> ids(GeoIndicesUI16::create());
    ids->setValues(tiny::Ids{5, 6});
    const RefPtr<GeoIndicesUI16> clone(ids->clone());
    EXPECT_EQ(checksumOf(ids), checksumOf(clone));
}

TEST(BinaryChecksum, FollowsContainersInFieldsButNotTheWayUp)
{
    const RefPtr<Geometry> geometry = tiny::quad();
    const std::uint64_t before = checksumOf(geometry);
    const RefPtr<Node> node(Node::create());
    node->setCore(geometry);
    EXPECT_EQ(checksumOf(geometry), before) << "its nodes are no part of it";
    EXPECT_EQ(checksumOf(tiny::quad()), before);
    geometry->getPositions()->setValue(Pnt3f(0, 0, 1), 3);
    EXPECT_NE(checksumOf(geometry), before);

    const std::uint64_t childless = checksumOf(node);
    node->addChild(Node::create());
    EXPECT_NE(checksumOf(node), childless);
}

} // namespace
