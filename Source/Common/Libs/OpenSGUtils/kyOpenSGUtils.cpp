#include "OpenSGUtils/kyOpenSGUtils.h"

#include <utility>

namespace kyOpenSGUtils
{

namespace
{

// Leaked on purpose, as all that outlives main.
CallHandler& currentHandler()
{
    static auto* handler = new CallHandler;
    return *handler;
}

} // namespace

int call(const char* name, int value)
{
    // A copy, since a handler may put another one in its place.
    const CallHandler handler = currentHandler();
    return handler ? handler(name, value) : 0;
}

void setCallHandler(CallHandler handler)
{
    currentHandler() = std::move(handler);
}

} // namespace kyOpenSGUtils
