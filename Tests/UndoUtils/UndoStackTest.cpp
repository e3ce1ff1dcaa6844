#include "UndoUtils/kyUndoCommand.h"
#include "UndoUtils/kyUndoStack.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <string>
#include <vector>

namespace
{

/// Sets a number; changes of one key in quick succession become one.
class SetNumber : public kyUndoCommand
{
public:
    SetNumber(int& number, int after, int key = 0)
        : kyUndoCommand({"Set", "Numbers"}), number_(number), before_(number), after_(after),
          key_(key)
    {}
    void redo() override { number_ = after_; }
    void undo() override { number_ = before_; }
    bool mergeWith(const QUndoCommand* other) override
    {
        if (!canMergeWith(other))
            return false;
        const auto& later = static_cast<const SetNumber&>(*other);
        if (later.key_ != key_)
            return false;
        after_ = later.after_;
        takeTimeFrom(later);
        return true;
    }

private:
    int& number_;
    int before_, after_;
    int key_;
};

/// Writes down what is done with it; merges with nothing.
class Noted : public kyUndoCommand
{
public:
    Noted(std::string& journal, char name)
        : kyUndoCommand({"Noted", ""}), journal_(journal), name_(name)
    {}
    ~Noted() override { journal_ += std::string("~") + name_ + ' '; }
    void redo() override { journal_ += std::string("+") + name_ + ' '; }
    void undo() override { journal_ += std::string("-") + name_ + ' '; }

private:
    std::string& journal_;
    char name_;
};

class UndoStack : public testing::Test
{
protected:
    UndoStack()
    {
        kyUndoCommand::setClock([this] { return time; });
    }
    ~UndoStack() override { kyUndoCommand::setClock(nullptr); }

    std::string taken()
    {
        std::string text;
        text.swap(journal);
        return text;
    }

    double time = 0;
    std::string journal;
    kyUndoStack stack;
};

TEST_F(UndoStack, RunsWhatIsAddedOnceAndStepsInOneGo)
{
    auto* a = new Noted(journal, 'a');
    EXPECT_EQ(stack.add(a), a);
    stack.beginMultiCommand("Outer", "Editor", false);
    stack.add(new Noted(journal, 'b'));
    stack.beginMultiCommand("Inner", "", false);
    auto* c = new Noted(journal, 'c');
    stack.add(c);
    EXPECT_FALSE(stack.undo() || stack.redo()) << "a step is open";
    stack.endMultiCommand();
    stack.add(new Noted(journal, 'd'));
    EXPECT_EQ(stack.count(), 1);
    stack.endMultiCommand();
    stack.endMultiCommand(); // one too many
    EXPECT_EQ(taken(), "+a +b +c +d ");
    EXPECT_EQ(static_cast<kyMultiCommand*>(c->parent())->parent(), stack.command(1));

    stack.undo();
    EXPECT_EQ(taken(), "-d -c -b ");
    stack.undo();
    stack.redo();
    stack.redo();
    EXPECT_FALSE(stack.redo());
    EXPECT_EQ(taken(), "-a +a +b +c +d ");

    stack.undo();
    const auto steps = stack.steps();
    ASSERT_EQ(steps.size(), 2U);
    EXPECT_TRUE(steps[0].text == "Noted" && steps[0].isDone);
    EXPECT_TRUE(steps[1].text == "Outer" && steps[1].description == "Editor" && !steps[1].isDone);
    EXPECT_EQ(stack.command(1)->makeMessage(), "Outer (Editor)");
    EXPECT_EQ(stack.command(2), nullptr);
    taken();
    EXPECT_EQ(stack.add(nullptr), nullptr);
    EXPECT_EQ(stack.count(), 2);
    stack.beginMultiCommand("Empty", "", true);
    EXPECT_EQ(taken(), "~b ~c ~d ") << "undone steps go";
    stack.endMultiCommand();
    EXPECT_EQ(stack.count(), 2) << "an empty step is one";
    stack.clear();
    EXPECT_EQ(stack.count() + stack.index(), 0);
}

TEST_F(UndoStack, KeepsNothingOfWhatACommandDoesWhileItRuns)
{
    class Meddler : public kyUndoCommand
    {
    public:
        Meddler(kyUndoStack& stack, std::string& journal)
            : kyUndoCommand({"Meddler", ""}), stack_(stack), journal_(journal)
        {}
        void redo() override { meddle(); }
        void undo() override { meddle(); }

    private:
        void meddle()
        {
            stack_.add(new Noted(journal_, 'n'));
            stack_.beginMultiCommand("", "", false);
            stack_.endMultiCommand();
            EXPECT_FALSE(stack_.undo() || stack_.redo());
            stack_.clear();
        }
        kyUndoStack& stack_;
        std::string& journal_;
    };
    stack.add(new Meddler(stack, journal));
    EXPECT_TRUE(stack.undo());
    EXPECT_TRUE(stack.redo());
    EXPECT_EQ(journal, "+n ~n +n ~n +n ~n ");
    EXPECT_EQ(stack.count(), 1);
}

TEST_F(UndoStack, MergesStepsPairByPairOrNotAtAll)
{
    int x = 0;
    int y = 0;
    const auto addStep = [&](const char* text, bool merge,
                             const std::vector<kyUndoCommandBase*>& commands) {
        stack.beginMultiCommand(text, "", merge);
        for (kyUndoCommandBase* command : commands)
            stack.add(command);
        stack.endMultiCommand();
        return stack.count();
    };
    EXPECT_EQ(addStep("Move", true, {new SetNumber(x, 1, 1), new SetNumber(y, 1, 2)}), 1);
    EXPECT_EQ(addStep("Move", true, {new SetNumber(x, 2, 1), new SetNumber(y, 2, 2)}), 1);
    EXPECT_EQ(addStep("Move", true, {new SetNumber(x, 3, 1)}), 2) << "another number of commands";
    EXPECT_EQ(addStep("Turn", true, {new SetNumber(x, 4, 1)}), 3) << "another text";
    EXPECT_EQ(addStep("Turn", false, {new SetNumber(x, 5, 1)}), 4) << "not enabled";
    time += 1;
    EXPECT_EQ(addStep("Turn", true, {new SetNumber(x, 6, 1)}), 5) << "too late";
    while (stack.index() > 1)
        stack.undo();
    EXPECT_EQ(x * 10 + y, 22);
    stack.undo();
    EXPECT_EQ(x * 10 + y, 0);
    stack.redo();
    EXPECT_EQ(x * 10 + y, 22);

    // The first pair merges, the second then refuses: both steps stay, and both ways still lead
    // where they led.
    EXPECT_EQ(addStep("Split", true, {new SetNumber(x, 3, 1), new SetNumber(y, 3, 2)}), 2);
    EXPECT_EQ(addStep("Split", true, {new SetNumber(x, 4, 1), new SetNumber(y, 4, 3)}), 3);
    stack.undo();
    stack.undo();
    EXPECT_EQ(x * 10 + y, 22);
    stack.redo();
    stack.redo();
    EXPECT_EQ(x * 10 + y, 44);
}

/// What a stack should do to a number: its value after each step.
struct Model
{
    std::vector<int> values{0};
    std::size_t done = 0;
    int lastKey = -1; ///< of the command that the next may merge into, -1 for none
    double lastTime = 0;

    int value() const { return values[done]; }
    void push(int value)
    {
        values.resize(++done);
        values.push_back(value);
    }
};

RC_GTEST_FIXTURE_PROP(UndoStack, LeadsToEveryStateInBothDirections, ())
{
    enum Action
    {
        Add,
        Undo,
        Redo,
        Step,
        Wait,
        ActionCount
    };
    Model model;
    int number = 0;
    int next = 0;
    const auto run = [&](int action, int key) {
        if (action == Wait) {
            time += 0.3;
        } else if (action == Add) {
            const auto* kept = stack.add(new SetNumber(number, ++next, key));
            RC_ASSERT(kept == stack.command(stack.index() - 1)); // not the one that was taken in
            if (key == model.lastKey && time - model.lastTime <= 0.5)
                model.values[model.done] = next;
            else
                model.push(next);
            model.lastKey = key;
            model.lastTime = time;
        } else if (action == Step) {
            stack.beginMultiCommand("Step", "", false);
            for (int i = 0; i < key; ++i)
                stack.add(new SetNumber(number, ++next, i));
            stack.endMultiCommand();
            model.push(number);
            model.lastKey = -1;
        } else {
            const bool canMove =
                action == Undo ? model.done > 0 : model.done + 1 < model.values.size();
            RC_ASSERT((action == Undo ? stack.undo() : stack.redo()) == canMove);
            model.done = canMove ? (action == Undo ? model.done - 1 : model.done + 1) : model.done;
            model.lastKey = canMove ? -1 : model.lastKey;
        }
    };
    for (int i = 0; i < 60; ++i) {
        run(*rc::gen::inRange<int>(Add, ActionCount), *rc::gen::inRange(0, 3));
        RC_ASSERT(number == model.value());
        RC_ASSERT(stack.index() == static_cast<int>(model.done));
        RC_ASSERT(stack.count() + 1 == static_cast<int>(model.values.size()));
    }
}

} // namespace
