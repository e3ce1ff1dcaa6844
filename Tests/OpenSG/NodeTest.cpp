#include "OpenSG/Node.h"
#include "OpenSG/FieldContainerFactory.h"
#include "OpenSG/Group.h"
#include "OpenSG/Traverse.h"

#include <gtest/gtest.h>

using namespace osg;

namespace
{

TEST(Node, ChildrenKeepTheirOrderAndHangInOnePlace)
{
    const RefPtr<Node> parent(Node::create());
    const RefPtr<Node> second(Node::create());
    const RefPtr<Node> a(Node::create());
    const NodePtr b = Node::create(); // held by its parent only
    parent->addChild(a);
    parent->addChild(b);
    ASSERT_EQ(parent->getNChildren(), 2U);
    EXPECT_EQ(parent->getChild(1), b);
    EXPECT_EQ(parent->getChild(2), NullFC);
    EXPECT_LT(parent->findChild(NullFC), 0);
    EXPECT_EQ(a->getRefCount(), 2);

    parent->subChild(a);
    parent->subChild(a);
    EXPECT_EQ(a->getParent(), NullFC);
    EXPECT_EQ(a->getRefCount(), 1);
    second->addChild(b);
    EXPECT_EQ(parent->getNChildren(), 0U);
    EXPECT_EQ(b->getParent(), second.get());
    EXPECT_EQ(b->getRefCount(), 1);

    second->addChild(a);
    second->addChild(b);
    EXPECT_EQ(second->findChild(b), 1) << "to the end, and once";
    EXPECT_EQ(second->getNChildren(), 2U);
}

TEST(Node, ARingIsRefused)
{
    const RefPtr<Node> top(Node::create());
    const NodePtr middle = Node::create();
    const NodePtr bottom = Node::create();
    top->addChild(middle);
    middle->addChild(bottom);
    bottom->addChild(top);
    middle->addChild(middle);
    bottom->addChild(middle);
    top->addChild(NullFC);
    EXPECT_EQ(bottom->getNChildren(), 0U);
    EXPECT_EQ(middle->getNChildren(), 1U);
    EXPECT_EQ(top->getParent(), NullFC);
}

TEST(Node, ACoreKnowsItsNodesInTheOrderInWhichTheyTookIt)
{
    const RefPtr<Group> core(Group::create());
    RefPtr<Node> a(Node::create());
    const RefPtr<Node> b(Node::create());
    b->setCore(core);
    a->setCore(core);
    a->setCore(core);
    EXPECT_EQ(core->getParents(), (std::vector<NodePtr>{b, a}));
    EXPECT_EQ(core->getRefCount(), 3);
    a = NullFC;
    EXPECT_EQ(core->getParents(), (std::vector<NodePtr>{b}));
    b->setCore(NullFC);
    EXPECT_TRUE(core->getParents().empty());
    EXPECT_EQ(core->getRefCount(), 1);
}

TEST(Node, ATreeOfAnyDepthGoesWithItsRootButNotWhatOthersHold)
{
    const std::size_t before = FieldContainerFactory::the()->getContainerCount();
    RefPtr<Node> kept(Node::create());
    {
        const RefPtr<Node> root(Node::create());
        NodePtr bottom = root;
        for (int depth = 0; depth < 100000; ++depth) {
            const NodePtr child = Node::create();
            bottom->addChild(child);
            bottom = child;
        }
        bottom->setCore(Group::create());
        root->getChild(0)->addChild(kept);
    }
    EXPECT_EQ(kept->getParent(), NullFC);
    EXPECT_EQ(FieldContainerFactory::the()->getContainerCount(), before + 1);
    kept = NullFC;
    EXPECT_EQ(FieldContainerFactory::the()->getContainerCount(), before);
}

TEST(Node, ATreeGoesFromTheTopDownInTheOrderOfTheChildren)
{
    std::vector<unsigned> order;
    const auto note = std::make_shared<FieldContainer::DestroyCallback>(
        [&order](unsigned id) { order.push_back(id); });
    std::vector<unsigned> ids;
    const auto child = [&](const NodePtr& parent) {
        const NodePtr node = Node::create();
        node->registerOnDestroyCallback(note);
        ids.push_back(node->getId());
        if (parent)
            parent->addChild(node);
        return node;
    };
    RefPtr<Node> root(child(NullFC));
    const NodePtr first = child(root);
    child(first);
    RefPtr<Node> other(Node::create());
    child(child(root))
        ->registerOnDestroyCallback(std::make_shared<FieldContainer::DestroyCallback>(
            [&](unsigned) { other = NullFC; })); // another tree goes in between
    other->addChild(Node::create());
    root = NullFC;
    EXPECT_EQ(order, ids);
    EXPECT_FALSE(other);
}

TEST(Node, ACopySharesTheCoreAndStandsAlone)
{
    const RefPtr<Node> root(Node::create());
    const NodePtr node = Node::create();
    root->addChild(node);
    node->addChild(Node::create());
    node->setCore(Group::create());
    const RefPtr<Node> copy(node->clone());
    EXPECT_EQ(copy->getCore(), node->getCore());
    EXPECT_EQ(node->getCore()->getParents().size(), 2U);
    EXPECT_EQ(copy->getNChildren(), 0U);
    EXPECT_EQ(copy->getParent(), NullFC);
}

TEST(Traverse, GoesDepthFirstWhereOneSkipsTheChildrenAndTwoEndsTheWalk)
{
    // 0 -+- 1 -+- 2
    //    |     +- 3
    //    +- 4
    RefPtr<Node> nodes[5];
    for (auto& node : nodes)
        node = RefPtr<Node>(Node::create());
    nodes[0]->addChild(nodes[1]);
    nodes[1]->addChild(nodes[2]);
    nodes[1]->addChild(nodes[3]);
    nodes[0]->addChild(nodes[4]);

    unsigned result = 99;
    const auto visit = [&](unsigned answerAtNode1) {
        std::vector<int> order;
        result = traverse(nodes[0], [&](NodePtr& node) {
            const auto* found = std::find(std::begin(nodes), std::end(nodes), node);
            order.push_back(static_cast<int>(found - std::begin(nodes)));
            return order.back() == 1 ? answerAtNode1 : 0U;
        });
        return order;
    };
    EXPECT_EQ(visit(0), (std::vector{0, 1, 2, 3, 4}));
    EXPECT_EQ(visit(1), (std::vector{0, 1, 4}));
    EXPECT_EQ(result, 0U);
    EXPECT_EQ(visit(2), (std::vector{0, 1}));
    EXPECT_EQ(result, 2U);

    std::vector<const void*> wayBack;
    const auto leave = [&](NodePtr& node) {
        wayBack.push_back(&*node);
        return node == nodes[1].get() ? 2U : 0U;
    };
    const auto skipNode4 = [&](NodePtr& node) { return node == nodes[4].get() ? 1U : 0U; };
    EXPECT_EQ(traverse(nodes[0], skipNode4, leave), 2U) << "on the way back it ends there too";
    EXPECT_EQ(wayBack, (std::vector<const void*>{&*nodes[2], &*nodes[3], &*nodes[1]}));
    wayBack.clear();
    traverse(nodes[4], skipNode4, leave);
    EXPECT_EQ(wayBack.size(), 1U) << "one whose children are passed over is left as well";

    int visits = 0;
    traverse(nodes[0], [&](NodePtr& node) {
        ++visits;
        if (node == nodes[1].get()) { // a visitor may change what is below
            node->subChild(nodes[2]);
            nodes[2] = NullFC;
            node->addChild(Node::create());
        }
        return 0U;
    });
    EXPECT_EQ(visits, 5);
    EXPECT_EQ(traverse(NullFC, [](NodePtr&) { return 2U; }), 0U);
}

} // namespace
