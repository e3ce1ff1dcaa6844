#pragma once

#include "Utils/kyLog.h"

#include <iostream>
#include <sstream>
#include <string>
#include <vector>

/// What is logged while it lives, a text a line: "error: ...", and "errorNR: ..." for a line that
/// is for the record only.
class LogCapture
{
public:
    LogCapture()
    {
        kyLog::setSink([this](const kyLog::Line& line) {
            static const char* const nameOfLevel[] = {"error", "warning", "info"};
            lines.push_back(std::string(nameOfLevel[line.level]) +
                            (line.forRecordOnly ? "NR: " : ": ") + line.text);
        });
    }
    ~LogCapture() { kyLog::setSink(nullptr); }
    LogCapture(const LogCapture&) = delete;
    LogCapture& operator=(const LogCapture&) = delete;

    std::vector<std::string> lines;
};

/// What goes to std::cout while it lives.
class OutputCapture
{
public:
    OutputCapture() : before_(std::cout.rdbuf(text_.rdbuf())) {}
    ~OutputCapture() { std::cout.rdbuf(before_); }
    OutputCapture(const OutputCapture&) = delete;
    OutputCapture& operator=(const OutputCapture&) = delete;

    /// What was written since the last call.
    std::string take()
    {
        std::string text = text_.str();
        text_.str({});
        return text;
    }

private:
    std::ostringstream text_;
    std::streambuf* before_;
};
