#pragma once

#include <iostream>

namespace kyUnfold3D
{

/// Puts its parts as one line on standard output, ended and flushed, so that the lines stand in
/// the right place between those of the solver and the log when a run dies.
template <class... Parts>
void writeLine(const Parts&... parts)
{
    (std::cout << ... << parts) << std::endl;
}

} // namespace kyUnfold3D
