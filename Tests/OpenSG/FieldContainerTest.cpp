#include "OpenSG/BinaryChecksumHandler.h"
#include "OpenSG/ChangeList.h"
#include "OpenSG/ChangeNotice.h"
#include "OpenSG/FieldContainerFactory.h"
#include "OpenSG/Group.h"
#include "OpenSG/Node.h"
#include "OpenSG/SurfaceBase.h"
#include "OpenSG/Transform3D.h"
#include "TinyGeometry.h"

#include <gtest/gtest.h>

#include <set>
#include <string>

using namespace osg;

namespace
{

auto changedCallback(FieldContainer::ChangedCallback function)
{
    return std::make_shared<FieldContainer::ChangedCallback>(std::move(function));
}

auto destroyCallback(FieldContainer::DestroyCallback function)
{
    return std::make_shared<FieldContainer::DestroyCallback>(std::move(function));
}

TEST(FieldMask, BitsOfBothHalvesCombineAndCompare)
{
    const FieldMask mask = FieldMask::bit(3) | FieldMask::bit(100);
    EXPECT_EQ(mask, (FieldMask{8, std::uint64_t{1} << 36}));
    EXPECT_FALSE((mask & ~mask).any());
    EXPECT_FALSE(FieldMask::bit(128).any());
    for (unsigned n = 0; n < 128; ++n)
        EXPECT_TRUE((FieldMask::all() & FieldMask::bit(n)).any()) << n;
}

TEST(FieldContainer, FieldsHaveDistinctMasksAlongTheChain)
{
    for (const FieldContainerType* type :
         {&SurfaceBase::getClassType(), &Node::getClassType(), &GeoIndicesUI32::getClassType(),
          &Transform3D::getClassType()})
    {
        FieldMask seen;
        std::set<std::string> names;
        for (unsigned i = 1; i <= type->getNumFieldDescs(); ++i) {
            const FieldDescription& field = *type->getFieldDesc(i);
            SCOPED_TRACE(type->getName() + "." + field.name);
            EXPECT_TRUE(field.mask.any());
            EXPECT_FALSE((field.mask & seen).any());
            EXPECT_TRUE(names.insert(field.name).second);
            EXPECT_EQ(field.containers != nullptr, field.typeName.find("Ptr") != std::string::npos);
            seen |= field.mask;
        }
        EXPECT_EQ(type->getFieldDesc(0), nullptr);
        EXPECT_EQ(type->getFieldDesc(type->getNumFieldDescs() + 1), nullptr);
    }
}

TEST(FieldContainer, TheLastReferenceDestroysWithOneCallbackAndTheIdIsNeverUsedAgain)
{
    const auto* factory = FieldContainerFactory::the();
    const NodePtr node = Node::create();
    const RefPtr<Group> core(Group::create());
    node->setCore(core);
    const unsigned id = node->getId();
    EXPECT_EQ(factory->getContainer(id), node);
    std::vector<unsigned> destroyed;
    node->registerOnDestroyCallback(destroyCallback([&](unsigned gone) {
        destroyed.push_back(gone);
        EXPECT_EQ(factory->getContainer(gone), NullFC);
        EXPECT_EQ(node->getCore(), core.get()) << "the fields are still there";
        node->addRef(); // counting in a callback must not destroy twice
        node->subRef();
    }));
    node->addRef();
    node->addRef();
    node->subRef();
    EXPECT_TRUE(destroyed.empty());
    node->subRef();
    EXPECT_EQ(destroyed, std::vector{id});
    EXPECT_EQ(core->getRefCount(), 1);
    EXPECT_TRUE(core->getParents().empty());
    for (const unsigned none : {id, 0U, 0xFFFFFFFFU})
        EXPECT_EQ(factory->getContainer(none), NullFC);
    for (int i = 0; i < 100; ++i)
        EXPECT_GT(RefPtr<Group>(Group::create())->getId(), id);
}

TEST(ChangeNotice, EachRegistrationHearsOnceWithIdMaskAndOrigin)
{
    const RefPtr<Geometry> geometry(Geometry::create());
    tiny::NoticeJournal journal;
    journal.watch(geometry.get());
    journal.watch(geometry.get());
    notifyChanged(geometry.get(), GeometryBase::IndicesFieldMask);

    const tiny::NoticeJournal::Notice expected{geometry->getId(), GeometryBase::IndicesFieldMask,
                                               1};
    EXPECT_EQ(journal.notices, (std::vector{expected, expected}));
    notifyChanged(NullFC, FieldMask::all());
    geometry->registerChangedCallback(nullptr);
    geometry->registerChangedCallback(changedCallback({}));
    notifyChanged(geometry.get(), FieldMask::all());
    EXPECT_EQ(journal.notices.size(), 4U);
}

TEST(ChangeNotice, ACallbackMayRegisterOthersLetItselfGoAndDestroyTheContainer)
{
    RefPtr<Group> group(Group::create());
    int heard = 0;
    std::shared_ptr<FieldContainer::ChangedCallback> owned;
    owned = changedCallback([&](unsigned, FieldMask, unsigned) {
        owned = nullptr; // the registration keeps it
        ++heard;
        for (int i = 0; i < 50; ++i)
            group->registerChangedCallback(
                changedCallback([&](unsigned, FieldMask, unsigned) { ++heard; }));
    });
    group->registerChangedCallback(owned);
    notifyChanged(group.get(), FieldMask::all());
    EXPECT_EQ(heard, 1) << "new ones hear of the next change";
    group->registerChangedCallback(
        changedCallback([&](unsigned, FieldMask, unsigned) { group = NullFC; }));
    group->registerChangedCallback(
        changedCallback([&](unsigned, FieldMask, unsigned) { ++heard; }));
    notifyChanged(GroupPtr(group), FieldMask::all());
    EXPECT_EQ(heard, 1 + 1 + 50 + 1);
}

TEST(ChangeNotice, IgnoreChangeSilencesCallbacksButNotTheChangeList)
{
    const RefPtr<Group> group(Group::create());
    tiny::NoticeJournal journal;
    journal.watch(group.get());
    ChangeList list;
    EXPECT_EQ(WinThreadBase::getCurrentChangeList(), nullptr);
    WinThreadBase::setCurrentChangeList(&list);
    FieldContainerPtr::_ignore_change = true;
    notifyChanged(group.get(), FieldMask::bit(5));
    FieldContainerPtr::_ignore_change = false;
    WinThreadBase::setCurrentChangeList(nullptr);
    notifyChanged(group.get(), FieldMask::bit(6));

    ASSERT_EQ(list.getChanged().size(), 1U);
    EXPECT_EQ(list.getChanged()[0].id, group->getId());
    EXPECT_EQ(list.getChanged()[0].mask, FieldMask::bit(5));
    ASSERT_EQ(journal.notices.size(), 1U);
    EXPECT_EQ(journal.notices[0].mask, FieldMask::bit(6));
}

TEST(FieldContainerType, KnowsItsChainAndItsPrototype)
{
    const FieldContainerType& type = GeoTexCoords2f::getClassType();
    EXPECT_TRUE(type.isDerivedFrom(GeoTexCoords::getClassType()));
    EXPECT_TRUE(type.isDerivedFrom("GeoProperty"));
    EXPECT_FALSE(type.isDerivedFrom(GeoTexCoords3f::getClassType()));

    const RefPtr<GeoTexCoords2f> made(dcast<GeoTexCoords2f>(type.getPrototype()->shallowCopy()));
    ASSERT_TRUE(made);
    EXPECT_NE(FieldContainerPtr(made), type.getPrototype());
    EXPECT_EQ(&made->getType(), &type);
    EXPECT_EQ(GeoTexCoords::getClassType().createContainer(), NullFC);
    EXPECT_EQ(GeoTexCoords::getClassType().getPrototype(), NullFC);
}

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
