#include "UndoUtils/kyUndoStack.h"

#include <cstddef>
#include <map>
#include <utility>

namespace
{

/// A flag that is set while this lives.
class Raised
{
public:
    explicit Raised(bool& flag) : flag_(flag) { flag_ = true; }
    ~Raised() { flag_ = false; }
    Raised(const Raised&) = delete;
    Raised& operator=(const Raised&) = delete;

private:
    bool& flag_;
};

} // namespace

kyUndoStack& kyUndoStack::get(unsigned int number)
{
    static auto& stacks = *new std::map<unsigned int, kyUndoStack>;
    return stacks[number];
}

kyUndoCommandBase* kyUndoStack::add(kyUndoCommandBase* command)
{
    std::unique_ptr<kyUndoCommandBase> added(command);
    if (!added)
        return nullptr;
    if (isRunning_) {
        added->redo();
        return nullptr;
    }
    {
        const Raised running(isRunning_);
        added->redo();
    }
    keep(added);
    return lastCommand();
}

void kyUndoStack::beginMultiCommand(const QString& text, const QString& description, bool merge)
{
    if (isRunning_)
        return;
    dropUndone();
    auto opened =
        std::make_unique<kyMultiCommand>(kyUndoString(text.toUtf8().constData(), description));
    opened->setMergeEnabled(merge);
    open_.push_back(std::move(opened));
}

void kyUndoStack::endMultiCommand()
{
    if (isRunning_ || open_.empty())
        return;
    std::unique_ptr<kyUndoCommandBase> closed = std::move(open_.back());
    open_.pop_back();
    keep(closed);
}

bool kyUndoStack::undo()
{
    if (isRunning_ || isStepOpen() || done_ == 0)
        return false;
    const Raised running(isRunning_);
    mayMerge_ = false;
    steps_[static_cast<std::size_t>(done_ - 1)]->undo();
    --done_;
    return true;
}

bool kyUndoStack::redo()
{
    if (isRunning_ || isStepOpen() || done_ == count())
        return false;
    const Raised running(isRunning_);
    mayMerge_ = false;
    steps_[static_cast<std::size_t>(done_)]->redo();
    ++done_;
    return true;
}

const kyUndoCommandBase* kyUndoStack::command(int i) const
{
    return i >= 0 && i < count() ? steps_[static_cast<std::size_t>(i)].get() : nullptr;
}

std::vector<kyUndoStack::Step> kyUndoStack::steps() const
{
    std::vector<Step> steps;
    steps.reserve(steps_.size());
    for (const auto& step : steps_)
        steps.push_back(
            {step->text(), step->getDescription(), static_cast<int>(steps.size()) < done_});
    return steps;
}

void kyUndoStack::clear()
{
    if (isRunning_)
        return;
    open_.clear();
    steps_.clear();
    done_ = 0;
    mayMerge_ = false;
}

/// Puts a command that has run where it belongs: into the command before it, or behind that.
void kyUndoStack::keep(std::unique_ptr<kyUndoCommandBase>& command)
{
    dropUndone();
    kyUndoCommandBase* before = lastCommand();
    if (before && (isStepOpen() || mayMerge_) && before->mergeWith(command.get()))
        return;
    if (isStepOpen()) {
        open_.back()->append(std::move(command));
        return;
    }
    steps_.push_back(std::move(command));
    done_ = count();
    mayMerge_ = true;
}

/// The last one in the open step, or of the steps that are done.
kyUndoCommandBase* kyUndoStack::lastCommand() const
{
    if (isStepOpen())
        return open_.back()->size() > 0 ? open_.back()->at(open_.back()->size() - 1) : nullptr;
    return done_ > 0 ? steps_[static_cast<std::size_t>(done_ - 1)].get() : nullptr;
}

void kyUndoStack::dropUndone()
{
    steps_.resize(static_cast<std::size_t>(done_));
}
