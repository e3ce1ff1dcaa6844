#pragma once

#include "OpenSG/NodeCore.h"

namespace osg
{

/// A core that moves what is below its nodes: the base of all transforms.
class TransformBase : public NodeCore
{
public:
    static constexpr unsigned MatrixFieldNumber = NodeCore::NextFieldNumber;
    static constexpr unsigned NextFieldNumber = MatrixFieldNumber + 1;
    static constexpr FieldMask MatrixFieldMask = FieldMask::bit(MatrixFieldNumber);

    static FieldContainerType& getClassType();

    /// From the space below the node to that above it.
    [[nodiscard]] const TransformationMatrix<float>& getMatrix() const { return _matrix; }
    /// From here on getMatrix returns exactly this matrix. Sends no notice.
    virtual void setMatrix(const TransformationMatrix<float>& matrix) { _matrix = matrix; }

    void accumulateMatrix(TransformationMatrix<float>& toWorld) const override;

protected:
    TransformBase() = default;
    TransformBase(const TransformBase&) = default;
    ~TransformBase() override = default;

private:
    TransformationMatrix<float> _matrix;
};

using TransformBasePtr = Ptr<TransformBase>;

} // namespace osg
