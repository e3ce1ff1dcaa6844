#pragma once

#include "report/Report.h"
#include "solver/LibraryScope.h"

#include "UVUtils/model/kyUVTypes.h"

namespace uvtool
{

/// How a call of the library ended, and what it had to say.
struct SolverAnswer
{
    Outcome outcome = Success;
    LibraryLog log;

    /// The errors as one line; what to say where there are none.
    std::string error() const
    {
        std::string text;
        for (const std::string& line : log.errors)
            text += (text.empty() ? "" : "; ") + line;
        return text.empty() ? "the solver gave no reason" : text;
    }
};

/// Has the library do something: call() returns a kyUVTypes::ReturnCode.
template <class Call>
SolverAnswer askLibrary(Console& console, const Call& call)
{
    SolverAnswer answer;
    const LibraryScope scope(console, answer.log);
    switch (call()) {
    case kyUVTypes::Success:
        answer.outcome = Success;
        break;
    case kyUVTypes::Cancelled:
        answer.outcome = Cancelled;
        break;
    default:
        answer.outcome = Failure;
    }
    // A time-out is logged, but what the solver makes of the stop may still look like a success.
    if (answer.outcome == Success && !answer.log.errors.empty())
        answer.outcome = Failure;
    return answer;
}

} // namespace uvtool
