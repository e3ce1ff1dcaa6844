#pragma once

#include "UVUtils/projection/kyUVBaseProjectionSettings.h"

/// The parameters of a planar projection: those of the base, all of them.
class kyUVPlanarProjectionSettings : public kyUVBaseProjectionSettings
{};
