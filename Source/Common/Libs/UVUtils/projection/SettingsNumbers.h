#pragma once

#include <optional>
#include <string>

// Numbers in stored settings. A scene goes from one machine to another, so they are written and
// read in the way of the C locale, whatever the locale of the process or the thread.

/// Six significant digits, in the shorter of the two notations of printf's %g. Other than there, a
/// half goes away from zero, and zero and NaN have no sign.
std::string textOfNumber(double value);

/// The number at the start of a text, as std::atof reads it: white space may come before it, any
/// text after it, and it may be hexadecimal, infinite or a NaN. 0 where no number is; infinite
/// where it is too large, and the nearest number, or 0, where it is too small.
double numberOfText(const std::string& text);

/// The same, for texts that must be numbers. Throws std::invalid_argument ("invalid stod argument")
/// where no number is, and std::out_of_range ("stod argument out of range") for one that is too
/// large, or too small to keep its digits.
double requiredNumberOfText(const std::string& text);

/// The decimal integer at the start of a text, after white space; nothing where there is none and
/// where it is out of range.
std::optional<int> integerOfText(const std::string& text);
