#pragma once

#include <cstdint>
#include <ostream>
#include <string>
#include <string_view>

namespace uvtool
{

/// How much goes to standard error. Errors always do.
enum Verbosity : std::int32_t
{
    Quiet,   ///< errors only
    Normal,  ///< warnings and a summary as well
    Verbose, ///< also what the library says
};

/// Where the tool talks: reports and asked-for text go to `out`, all else to `err`, one line a
/// message. On a terminal a line with the progress stays below the messages.
class Console
{
public:
    Console(std::ostream& outStream, std::ostream& errStream, bool errIsTerminal)
        : out_(outStream), err_(errStream), isTerminal_(errIsTerminal)
    {}

    void setVerbosity(Verbosity verbosity) { verbosity_ = verbosity; }
    bool isVerbose() const { return verbosity_ == Verbose; }
    bool showsProgress() const { return isTerminal_ && verbosity_ == Normal; }

    std::ostream& out() { return out_; }
    /// For text that isn't made of messages.
    std::ostream& err() { return err_; }

    void error(std::string_view text);
    void warning(std::string_view text);
    void note(std::string_view text);   ///< not when quiet
    void detail(std::string_view text); ///< when verbose only

    /// Replaces the line at the bottom; empty removes it. Without a terminal nothing happens.
    void setStatusLine(const std::string& text);

private:
    void line(const char* prefix, std::string_view text);

    std::ostream& out_;
    std::ostream& err_;
    bool isTerminal_;
    Verbosity verbosity_ = Normal;
    std::string statusLine_;
};

} // namespace uvtool
