#include "OpenSG/Attachment.h"
#include "OpenSG/ConcreteContainer.h"
#include "OpenSG/Group.h"
#include "OpenSG/Node.h"
#include "TinyGeometry.h"

#include <gtest/gtest.h>

using namespace osg;

namespace
{

/// A kind of attachment. One that is derived from another kind takes the other's place.
template <class Base, int number>
class Kind : public ConcreteContainer<Kind<Base, number>, Base>
{
public:
    static FieldContainerType& getClassType()
    {
        static auto& type = *new FieldContainerType(
            "Kind" + std::to_string(number), &Base::getClassType(), &Kind::createContainer, {},
            std::is_same_v<Base, Attachment> ? FieldContainerType::OwnGroup
                                             : FieldContainerType::GroupOfParent);
        return type;
    }

protected:
    friend ConcreteContainer<Kind, Base>;
    Kind() = default;
    Kind(const Kind&) = default;
};

using Note = Kind<Attachment, 0>;
using RedNote = Kind<Note, 1>;
using Flag = Kind<Attachment, 2>;
using Parents = std::vector<Ptr<AttachmentContainer>>;

TEST(Attachment, IsFoundByGroupAndBindingAndGivesWayToOneOfItsGroup)
{
    const RefPtr<Group> core(Group::create());
    const RefPtr<Note> note(Note::create());
    const auto red = RedNote::create();
    const auto other = Note::create();
    const auto flag = Flag::create();
    core->addAttachment(note.get());
    core->addAttachment(other, 7);
    core->addAttachment(flag);
    EXPECT_EQ(core->findAttachment(Note::getClassType()), note.get());
    EXPECT_EQ(core->findAttachment(RedNote::getClassType()), note.get()) << "the same group";
    EXPECT_EQ(core->findAttachment(Note::getClassType(), 7), other);
    EXPECT_EQ(core->findAttachment(Flag::getClassType()), flag);
    EXPECT_EQ(core->findAttachment(Flag::getClassType(), 7), NullFC);

    core->addAttachment(red);
    EXPECT_EQ(core->findAttachment(Note::getClassType()), red);
    EXPECT_TRUE(note->getParents().empty());
    EXPECT_EQ(note->getRefCount(), 1);
    core->addAttachment(red); // once more changes nothing
    core->addAttachment(NullFC);
    EXPECT_EQ(red->getParents(), (Parents{core.get()}));
    EXPECT_EQ(red->getRefCount(), 1);

    core->subAttachment(note.get()); // that one does not hang here
    core->subAttachment(red, 1);
    EXPECT_EQ(core->findAttachment(Note::getClassType()), red);
    core->subAttachment(red);
    EXPECT_EQ(core->findAttachment(Note::getClassType()), NullFC);
}

TEST(Attachment, CanHangOnSeveralAndForgetsThemAsTheyGo)
{
    const RefPtr<Note> note(Note::create());
    RefPtr<Node> node(Node::create());
    const RefPtr<Group> core(Group::create());
    node->addAttachment(note.get());
    core->addAttachment(note.get());
    core->addAttachment(note.get(), 3);
    EXPECT_EQ(note->getParents(), (Parents{node.get(), core.get(), core.get()}));
    core->subAttachment(note.get(), 3);
    node = NullFC;
    EXPECT_EQ(note->getParents(), (Parents{core.get()}));

    const RefPtr<Group> copy(core->clone());
    EXPECT_EQ(copy->findAttachment(Note::getClassType()), note.get());
    EXPECT_EQ(note->getRefCount(), 3);
    EXPECT_EQ(note->getParents(), (Parents{core.get(), copy.get()}));
    EXPECT_TRUE(RefPtr<Note>(note->clone())->getParents().empty());
}

TEST(Attachment, ADestroyCallbackFindsTheNewOneInPlaceAndMayTakeItAway)
{
    const RefPtr<Node> node(Node::create());
    const auto note = Note::create();
    const auto next = Note::create();
    bool called = false;
    note->registerOnDestroyCallback(
        std::make_shared<FieldContainer::DestroyCallback>([&](unsigned) {
            called = true;
            EXPECT_EQ(node->findAttachment(Note::getClassType()), next);
            EXPECT_EQ(next->getParents().size(), 1U);
            node->subAttachment(next);
        }));
    node->addAttachment(note);
    node->addAttachment(next);
    EXPECT_TRUE(called);
    EXPECT_EQ(node->findAttachment(Note::getClassType()), NullFC);
}

} // namespace
