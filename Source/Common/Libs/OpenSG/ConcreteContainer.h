#pragma once

#include "OpenSG/FieldContainer.h"

namespace osg
{

/// Base of a class of which containers can be made: supplies create, getType and shallowCopy over
/// the class's own getClassType and its constructors, to which it must be a friend.
template <class Derived, class Base>
class ConcreteContainer : public Base
{
public:
    /// A new, empty container with count 0.
    static Ptr<Derived> create() { return Ptr<Derived>(new Derived); }

    [[nodiscard]] const FieldContainerType& getType() const override
    {
        return Derived::getClassType();
    }
    [[nodiscard]] FieldContainerPtr shallowCopy() const override { return copy(); }
    /// shallowCopy with the type that it has.
    [[nodiscard]] Ptr<Derived> clone() const { return copy(); }

protected:
    ConcreteContainer() = default;
    ConcreteContainer(const ConcreteContainer&) = default;
    ~ConcreteContainer() override = default;

    /// For the type of the class.
    static FieldContainerPtr createContainer() { return create(); }

private:
    [[nodiscard]] Ptr<Derived> copy() const
    {
        return Ptr<Derived>(new Derived(static_cast<const Derived&>(*this)));
    }
};

} // namespace osg
