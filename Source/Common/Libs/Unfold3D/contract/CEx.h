#pragma once

#include <stdexcept>

namespace NU3D
{

/// What the engine throws where a call can't be served at all. Read its text through what().
class CEx : public std::runtime_error
{
public:
    using std::runtime_error::runtime_error;
};

} // namespace NU3D
