#pragma once

#include <functional>

/// Messages by name from the libraries to the application.
namespace kyOpenSGUtils
{

/// Hands a message to the application at once, on this thread. Gives the application's answer, 0
/// where nobody listens.
int call(const char* name, int value);

using CallHandler = std::function<int(const char* name, int value)>;

/// Where messages go from here on; null for nowhere, as at the start.
void setCallHandler(CallHandler handler);

} // namespace kyOpenSGUtils
