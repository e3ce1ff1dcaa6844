#pragma once

#include "UVUtils/model/kyUVTypes.h"
#include "Unfold3D/Unfold3D.h"

namespace kyUnfold3D
{

/// What a run makes of the result of a command. Logs the result's warning and error, each with its
/// lines on the topology. An error is `Failure`; otherwise a run that the user asked to stop is
/// `Cancelled`, whatever the command was.
kyUVTypes::ReturnCode checkResult(const NU3D::CRef& result);

} // namespace kyUnfold3D
