#pragma once

#include <string>
#include <string_view>

namespace uvtool
{

/// Reads a decimal number that fills the whole word. False when it doesn't, or when the number is
/// not finite or beyond single precision; one too small to hold reads as zero.
bool readNumber(std::string_view word, double& number);

/// Appends the shortest decimal text that reads back as the same float.
void appendNumber(std::string& text, float number);

/// Appends a decimal text that reads back as the same number in single and in double precision.
/// Longer; for numbers whose last bits matter to readers of either kind.
void appendExactNumber(std::string& text, float number);

} // namespace uvtool
