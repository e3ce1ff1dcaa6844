#pragma once

#include "UVUtils/undo/kyUVContinousChangeBase.h"

#include <functional>

/// A continuous change of a number of iterations that the application keeps; adding the command
/// makes the change. It tells no message.
class kyUVMaxIterationContinousChangeCommand
    : public kyUVContinousChangeBase<kyUVMaxIterationContinousChangeCommand>
{
    Q_DECLARE_TR_FUNCTIONS(kyUVMaxIterationContinousChangeCommand)

public:
    using Getter = std::function<int()>;
    using Setter = std::function<void(int)>;

    /// value           the new one
    /// getter, setter  of the live value; an empty one ends in std::bad_function_call
    kyUVMaxIterationContinousChangeCommand(const kyUndoString& string, int value, Getter getter,
                                           Setter setter, QUndoCommand* parent);
    ~kyUVMaxIterationContinousChangeCommand() override;

    static int commandId();
    int id() const override;
    /// Always.
    bool isCompatible(const kyUVMaxIterationContinousChangeCommand* other) const;

    void undo() override;
    void redo() override;

private:
    void toggle();

    int savedIterations_;
    Getter getter_;
    Setter setter_;
};
