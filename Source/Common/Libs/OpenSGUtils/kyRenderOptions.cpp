#include "OpenSGUtils/kyRenderOptions.h"

kyRenderOptions* kyRenderOptions::getInstance()
{
    // Leaked on purpose, as all that outlives main.
    static auto* theOne = new kyRenderOptions;
    return theOne;
}
