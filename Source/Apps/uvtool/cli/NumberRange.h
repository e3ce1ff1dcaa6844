#pragma once

#include <CLI/CLI.hpp>

#include <charconv>
#include <cmath>
#include <limits>
#include <sstream>
#include <string>
#include <type_traits>

namespace uvtool
{

/// Accepts a number from `least` to `most` and nothing else: no "nan", which compares with nothing,
/// no infinity, no unit behind it; for whole numbers no fraction. Without `most` there is no upper
/// bound.
template <class Number>
CLI::Validator numberFrom(Number least, Number most = std::numeric_limits<Number>::max())
{
    std::ostringstream range;
    range << least;
    if (most == std::numeric_limits<Number>::max())
        range << " up";
    else
        range << " to " << most;
    const std::string kind = std::is_integral_v<Number> ? "whole number" : "number";
    const auto refuse = [least, most, kind, text = range.str()](const std::string& word) {
        Number value{};
        const char* const end = word.data() + word.size();
        const auto read = std::from_chars(word.data(), end, value);
        const bool isNumber = read.ec == std::errc{} && read.ptr == end;
        if (isNumber && std::isfinite(static_cast<double>(value)) && value >= least &&
            value <= most)
            return std::string();
        return "\"" + word + "\" is no " + kind + " from " + text;
    };
    return CLI::Validator(refuse, range.str());
}

} // namespace uvtool
