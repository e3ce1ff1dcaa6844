#pragma once

#include "OpenSG/Vector.h"
#include "UVUtils/undo/kyUVContinousChangeBase.h"

#include <functional>
#include <vector>

/// A continuous change of the control points of the application's lattice, and of a number beside
/// them; adding the command makes the change. Every undo and redo, the first one too, tells
/// "UVChanged".
class kyUVLattiCtrlPntContinousChangeCommand
    : public kyUVContinousChangeBase<kyUVLattiCtrlPntContinousChangeCommand>
{
    Q_DECLARE_TR_FUNCTIONS(kyUVLattiCtrlPntContinousChangeCommand)

public:
    using Points = std::vector<osg::Vector<float, 2>>;
    using Getter = std::function<void(Points&, float&)>;
    using Setter = std::function<void(const Points&, float)>;

    /// getter         fills an empty array and a 0 with the live state
    /// setter         makes what it is given the live state; an empty function, here or there, ends
    ///                in std::bad_function_call
    /// points, value  the new state
    kyUVLattiCtrlPntContinousChangeCommand(const kyUndoString& string, Getter getter, Setter setter,
                                           const Points& points, float value, QUndoCommand* parent);
    ~kyUVLattiCtrlPntContinousChangeCommand() override;

    static int commandId();
    int id() const override;
    /// Have both the same number of points?
    bool isCompatible(const kyUVLattiCtrlPntContinousChangeCommand* other) const;

    void undo() override;
    void redo() override;

private:
    void toggle();

    Points savedPoints_;
    float savedValue_;
    Getter getter_;
    Setter setter_;
};
