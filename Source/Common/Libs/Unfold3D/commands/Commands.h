#pragma once

#include "Unfold3D/base/RunControl.h"
#include "Unfold3D/commands/Answer.h"
#include "Unfold3D/commands/Params.h"
#include "Unfold3D/commands/Session.h"

namespace unfold3d
{

/// A command: reads its parameters and the session, changes the session as its last step, and fills
/// the answer. It runs on a thread of its own. CommandError ends it with an error, Stopped without
/// one. Each command has a file of its own; Docs/Engine.md tells their keys.
using Command = void(Session& session, const Params& params, Answer& answer, RunControl& control);

Command runInit;
Command runImport;
Command runSelect;
Command runConstrain;
Command runUnfold;
Command runOptimize;
Command runPack;
Command runExport;

} // namespace unfold3d
