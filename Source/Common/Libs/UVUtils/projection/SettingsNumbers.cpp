#include "UVUtils/projection/SettingsNumbers.h"

#include <QString>

#include <cerrno>
#include <clocale>
#include <cstdlib>
#include <limits>
#include <stdexcept>

namespace
{

locale_t cLocale()
{
    static const locale_t locale = newlocale(LC_ALL_MASK, "C", nullptr);
    return locale;
}

template <class Number>
struct Parsed
{
    Number number = 0;
    bool found = false;
    bool inRange = false;
};

/// Runs one of the strto functions, which tell through errno that a number is out of range. What
/// stood there before comes back.
template <class Convert>
auto parse(const std::string& text, Convert convert)
{
    const int before = errno;
    errno = 0;
    char* end = nullptr;
    const auto number = convert(text.c_str(), &end);
    const Parsed<decltype(convert(nullptr, nullptr))> parsed{number, end != text.c_str(),
                                                             errno != ERANGE};
    errno = before;
    return parsed;
}

Parsed<double> parseDouble(const std::string& text)
{
    return parse(text,
                 [](const char* begin, char** end) { return strtod_l(begin, end, cLocale()); });
}

} // namespace

std::string textOfNumber(double value)
{
    return QString::number(value, 'g', 6).toStdString();
}

double numberOfText(const std::string& text)
{
    return parseDouble(text).number;
}

double requiredNumberOfText(const std::string& text)
{
    const Parsed<double> parsed = parseDouble(text);
    if (!parsed.found)
        throw std::invalid_argument("invalid stod argument");
    if (!parsed.inRange)
        throw std::out_of_range("stod argument out of range");
    return parsed.number;
}

std::optional<int> integerOfText(const std::string& text)
{
    const auto parsed = parse(
        text, [](const char* begin, char** end) { return strtol_l(begin, end, 10, cLocale()); });
    if (!parsed.found || !parsed.inRange || parsed.number < std::numeric_limits<int>::min() ||
        parsed.number > std::numeric_limits<int>::max())
        return std::nullopt;
    return static_cast<int>(parsed.number);
}
