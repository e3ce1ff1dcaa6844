#include "document/NumberText.h"

#include <array>
#include <charconv>
#include <cmath>
#include <cstdlib>
#include <limits>

namespace uvtool
{

bool readNumber(std::string_view word, double& number)
{
    if (!word.empty() && word.front() == '+')
        word.remove_prefix(1);
    const auto result = std::from_chars(word.data(), word.data() + word.size(), number);
    if (result.ptr != word.data() + word.size())
        return false;
    // from_chars has one answer for too large and too small; strtod tells them apart.
    if (result.ec == std::errc::result_out_of_range)
        number = std::strtod(std::string(word).c_str(), nullptr);
    else if (result.ec != std::errc{})
        return false;
    return std::abs(number) <= static_cast<double>(std::numeric_limits<float>::max());
}

namespace
{

template <class Number>
void append(std::string& text, Number number)
{
    std::array<char, 64> digits{};
    const auto result = std::to_chars(digits.data(), digits.data() + digits.size(), number);
    text.append(digits.data(), result.ptr);
}

} // namespace

void appendNumber(std::string& text, float number)
{
    append(text, number);
}

void appendExactNumber(std::string& text, float number)
{
    append(text, static_cast<double>(number));
}

} // namespace uvtool
