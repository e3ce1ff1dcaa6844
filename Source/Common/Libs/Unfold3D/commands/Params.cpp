#include "Unfold3D/commands/Params.h"

#include <cmath>

namespace unfold3d
{

namespace
{

[[noreturn]] void refuse(const std::string& key, const char* expected)
{
    throw CommandError("The value under \"" + key + "\" is not " + expected + ".");
}

} // namespace

bool Params::has(const std::string& key) const
{
    return table_ && table_->Exists(key);
}

const NU3D::CVal* Params::valueUnder(const std::string& key) const
{
    return table_ ? table_->GetRef(key).get() : nullptr;
}

bool Params::flag(const std::string& key, bool fallback) const
{
    if (!has(key))
        return fallback;
    const NU3D::CVal* value = valueUnder(key);
    if (!value)
        return true;
    if (const bool* flag = value->as<bool>())
        return *flag;
    refuse(key, "true or false");
}

int Params::integer(const std::string& key, int fallback) const
{
    const NU3D::CVal* value = valueUnder(key);
    if (!value)
        return fallback;
    if (const int* number = value->as<int>())
        return *number;
    refuse(key, "a whole number");
}

double Params::number(const std::string& key, double fallback) const
{
    const NU3D::CVal* value = valueUnder(key);
    if (!value)
        return fallback;
    double result = 0.0;
    if (const double* asDouble = value->as<double>())
        result = *asDouble;
    else if (const float* asFloat = value->as<float>())
        result = static_cast<double>(*asFloat);
    else if (const int* asInt = value->as<int>())
        result = *asInt;
    else
        refuse(key, "a number");
    if (!std::isfinite(result))
        refuse(key, "a finite number");
    return result;
}

std::string Params::text(const std::string& key, const std::string& fallback) const
{
    const NU3D::CVal* value = valueUnder(key);
    if (!value)
        return fallback;
    if (const std::string* text = value->as<std::string>())
        return *text;
    refuse(key, "a text");
}

std::vector<int> Params::ints(const std::string& key) const
{
    const NU3D::CVal* value = valueUnder(key);
    if (!value)
        return {};
    if (const auto* list = value->as<std::vector<int>>())
        return *list;
    refuse(key, "a list of whole numbers");
}

std::vector<double> Params::doubles(const std::string& key) const
{
    const NU3D::CVal* value = valueUnder(key);
    if (!value)
        return {};
    if (const auto* list = value->as<std::vector<double>>())
        return *list;
    refuse(key, "a list of numbers");
}

NU3D::CBox2D Params::box(const std::string& key, const NU3D::CBox2D& fallback) const
{
    const NU3D::CVal* value = valueUnder(key);
    if (!value)
        return fallback;
    if (const auto* box = value->as<NU3D::CBox2D>())
        return *box;
    refuse(key, "a box");
}

} // namespace unfold3d
