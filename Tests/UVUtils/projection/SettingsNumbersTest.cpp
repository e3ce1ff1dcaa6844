#include "UVUtils/projection/SettingsNumbers.h"
#include "Utils/TempFolder.h"

#include <gtest/gtest.h>

#include <bit>
#include <clocale>
#include <cstdint>
#include <functional>
#include <vector>

namespace
{

using Strings = std::vector<std::string>;

/// A number exactly, or what is thrown in its place.
std::string outcomeOf(const std::function<double()>& read)
{
    try {
        return std::to_string(std::bit_cast<std::uint64_t>(read()));
    } catch (const std::invalid_argument& error) {
        return std::string("invalid argument: ") + error.what();
    } catch (const std::out_of_range& error) {
        return std::string("out of range: ") + error.what();
    }
}

Strings readingsOf(const std::string& text)
{
    return {outcomeOf([&] { return numberOfText(text); }),
            outcomeOf([&] { return requiredNumberOfText(text); }),
            outcomeOf([&] { return integerOfText(text).value_or(-77); })};
}

/// The same by the standard functions, whose locale is that of the process.
Strings standardReadingsOf(const std::string& text)
{
    std::string number = outcomeOf([&] { return std::stod(text); });
    if (number == "invalid argument: stod")
        number = "invalid argument: invalid stod argument";
    if (number == "out of range: stod")
        number = "out of range: stod argument out of range";
    const std::string integer = outcomeOf([&] { return std::stoi(text); });
    return {outcomeOf([&] { return std::atof(text.c_str()); }), number,
            integer.find("stoi") == std::string::npos ? integer : outcomeOf([] { return -77; })};
}

/// The C library has a decimal comma then, by a locale that is compiled into the folder. False
/// where there is no compiler.
bool useDecimalComma(const TempFolder& folder)
{
    folder.write("source", "LC_NUMERIC\ndecimal_point \",\"\nthousands_sep \"\"\ngrouping -1\n"
                           "END LC_NUMERIC\n");
    const std::string path = folder.path().string();
    // Its status tells of the categories that are left out.
    static_cast<void>(std::system(
        ("localedef -c --no-archive -i " + path + "/source " + path + "/comma >/dev/null 2>&1")
            .c_str()));
    setenv("LOCPATH", path.c_str(), 1);
    return std::setlocale(LC_NUMERIC, "comma") != nullptr;
}

TEST(SettingsNumbers, AreInEveryLocaleAsTheStandardFunctionsReadThemInTheirs)
{
    const Strings texts = {"1.5",  "1,5", "12abc",      " \t12.75",   "0x1.8p3",     "nan",
                           "-inf", "",    "1e999",      "-1e999",     "4.9e-324",    "1e-999",
                           "-",    "--1", "2147483647", "2147483648", "-2147483649", "-0.0",
                           "1e",   "+3",  "1e39",       "1e19"};
    std::vector<Strings> expected;
    for (const std::string& text : texts) {
        expected.push_back(standardReadingsOf(text));
        EXPECT_EQ(readingsOf(text), expected.back()) << '"' << text << '"';
    }
    const TempFolder folder;
    if (!useDecimalComma(folder))
        GTEST_SKIP() << "no other locale to try";
    EXPECT_EQ(std::atof("1,5"), 1.5);
    for (std::size_t i = 0; i < texts.size(); ++i)
        EXPECT_EQ(readingsOf(texts[i]), expected[i]) << '"' << texts[i] << '"';
    Strings written;
    for (const double value : {1234565.0, -0.00001, double(123456.7F), 0.5, 3.0, -0.0})
        written.push_back(textOfNumber(value));
    EXPECT_EQ(written, (Strings{"1.23457e+06", "-1e-05", "123457", "0.5", "3", "0"}));
    std::setlocale(LC_NUMERIC, "C");
}

} // namespace
