#pragma once

#include "OpenSG/AttachmentContainer.h"
#include "OpenSG/ConcreteContainer.h"

namespace osg
{

/// How a geometry looks. This base says nothing about it; several geometries can share one.
class Material : public ConcreteContainer<Material, AttachmentContainer>
{
public:
    static constexpr unsigned NextFieldNumber = AttachmentContainer::NextFieldNumber;

    static FieldContainerType& getClassType();

protected:
    friend ConcreteContainer<Material, AttachmentContainer>;

    Material() = default;
    Material(const Material&) = default;
    ~Material() override = default;
};

using MaterialPtr = Ptr<Material>;

} // namespace osg
