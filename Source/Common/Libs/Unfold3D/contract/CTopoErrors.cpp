#include "Unfold3D/contract/CTopoErrors.h"

namespace NU3D
{

CTopoErrors::CTopoErrors(std::vector<CTopoError> errors) : CVal(Table{}), errors_(std::move(errors))
{}

const CTopoError& CTopoErrors::GetError(int index) const
{
    return errors_.at(static_cast<std::size_t>(index));
}

} // namespace NU3D
