#pragma once

#include "OpenSG/Vector.h"
#include "UVUtils/undo/kyUVContinousChangeBase.h"

#include <functional>

/// A continuous change of the application's pivot and of a flag beside it; adding the command makes
/// the change. It tells no message.
class kyUVPivotContinousChangeCommand
    : public kyUVContinousChangeBase<kyUVPivotContinousChangeCommand>
{
    Q_DECLARE_TR_FUNCTIONS(kyUVPivotContinousChangeCommand)

public:
    using Pivot = osg::Vector<float, 2>;
    using PivotFunction = std::function<Pivot(const Pivot&)>;
    using FlagFunction = std::function<bool(bool)>;

    /// groupKey         commands of one key are compatible
    /// pivotFn, flagFn  take the value to set and return the one that it replaces; an empty one
    ///                  ends in std::bad_function_call
    /// pivot, flag      the new values
    kyUVPivotContinousChangeCommand(const kyUndoString& string, int groupKey, PivotFunction pivotFn,
                                    const Pivot& pivot, FlagFunction flagFn, bool flag,
                                    QUndoCommand* parent);
    ~kyUVPivotContinousChangeCommand() override;

    static int commandId();
    int id() const override;
    bool isCompatible(const kyUVPivotContinousChangeCommand* other) const;

    void undo() override;
    void redo() override;

private:
    void toggle();

    int groupKey_;
    Pivot savedPivot_;
    bool savedFlag_;
    PivotFunction pivotFn_;
    FlagFunction flagFn_;
};
