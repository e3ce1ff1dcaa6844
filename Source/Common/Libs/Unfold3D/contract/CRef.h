#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

namespace NU3D
{

class CVal;

/// How a value is held. Every value of this contract is held by value.
enum VALPROPS : std::int32_t
{
    VALPROP_VALUE = 2
};

/// What an empty value is made as.
enum VALTYPES : std::int32_t
{
    VALTYPE_TABLE = 1
};

/// A rectangle of the UV plane: lower and upper bound of the first axis, then of the second.
struct CBox2D
{
    double minU = 0.0;
    double maxU = 1.0;
    double minV = 0.0;
    double maxV = 1.0;

    CBox2D() = default;
    CBox2D(double lowerU, double upperU, double lowerV, double upperV)
        : minU(lowerU), maxU(upperU), minV(lowerV), maxV(upperV)
    {}

    friend bool operator==(const CBox2D&, const CBox2D&) = default;
};

/// A counted handle of a value. Copies share the value.
///
/// The type that is put in is the type that is kept: a `float` stays a `float`, whatever the type
/// word of the key under which it is entered says.
class CRef
{
public:
    CRef() = default; ///< refers to nothing
    CRef(VALTYPES type, VALPROPS props);
    CRef(bool value, VALPROPS props);
    CRef(int value, VALPROPS props);
    CRef(float value, VALPROPS props);
    CRef(double value, VALPROPS props);
    CRef(const char* value, VALPROPS props);
    CRef(const std::string& value, VALPROPS props);
    CRef(std::vector<int> value, VALPROPS props);
    CRef(std::vector<double> value, VALPROPS props);
    CRef(const CBox2D& value, VALPROPS props);
    explicit CRef(std::shared_ptr<CVal> value);

    explicit operator bool() const { return value_ != nullptr; }
    CVal* operator->() const { return value_.get(); }
    CVal& operator*() const { return *value_; }
    CVal* get() const { return value_.get(); }

private:
    std::shared_ptr<CVal> value_;
};

} // namespace NU3D
