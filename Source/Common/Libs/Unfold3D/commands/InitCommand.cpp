#include "Unfold3D/commands/Commands.h"

namespace unfold3d
{

/// "#UndoHistorySize int" is accepted and of no effect: a run keeps no history.
void runInit(Session& session, const Params& params, Answer&, RunControl&)
{
    params.integer("#UndoHistorySize int", 0);
    session = Session();
}

} // namespace unfold3d
