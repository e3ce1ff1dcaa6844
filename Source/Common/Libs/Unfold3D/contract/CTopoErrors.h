#pragma once

#include "Unfold3D/contract/CVal.h"

#include <string>
#include <vector>

namespace NU3D
{

/// One thing found in the topology of an imported mesh.
class CTopoError
{
public:
    explicit CTopoError(std::string message) : message_(std::move(message)) {}

    /// One line of text that a user understands.
    const std::string& Msg() const { return message_; }

private:
    std::string message_;
};

/// What was found in the topology of an imported mesh, a line each. It stands in a result under
/// "Warning.Topo3D", "Warning.TopoUV", "Error.Topo3D" or "Error.TopoUV".
class CTopoErrors : public CVal
{
public:
    explicit CTopoErrors(std::vector<CTopoError> errors);

    int ErrorsNB() const { return static_cast<int>(errors_.size()); }
    /// index  0 to ErrorsNB() - 1
    const CTopoError& GetError(int index) const;

private:
    std::vector<CTopoError> errors_;
};

} // namespace NU3D
