#pragma once
#include "CommonUtil/Log.h"
#include "PlatformAbstractionLayer/LogHook.h"

#include <string>
#include <vector>

namespace TestSupport
{

/// Turns the printing of log lines on and keeps standard output back, from its construction until `Text()` is asked
/// for or its end. One at a time.
class PrintedLog
{
public:
    PrintedLog();
    ~PrintedLog();
    PrintedLog(const PrintedLog&) = delete;
    PrintedLog& operator=(const PrintedLog&) = delete;

    /// All that was printed so far; ends the capture.
    const std::string& Text();
    /// True when `message` was printed somewhere in a line.
    bool Has(const std::string& message) { return Text().find(message) != std::string::npos; }

private:
    bool _isCapturing = true;
    bool _wasPrinting;
    std::string _text;
};

/// Turns the printing of log lines on and lets it go to standard error, which is where a death test looks.
void PrintLogOntoStandardError();

/// What `function` prints by way of the log.
template <typename Function>
std::string LogOf(Function&& function)
{
    PrintedLog log;
    function();
    return log.Text();
}

/// Reads every line that reaches the platform's log hook, of all threads, from its construction to its end. One at a
/// time.
class LogReaderOfTest
{
public:
    struct Line
    {
        bool IsError;
        tagPAL_LogError Type;
        std::wstring Text;
        std::string File;
        int Number;
    };

    LogReaderOfTest();
    ~LogReaderOfTest();
    LogReaderOfTest(const LogReaderOfTest&) = delete;
    LogReaderOfTest& operator=(const LogReaderOfTest&) = delete;

    std::vector<Line> Lines() const;
    /// The texts of the errors alone, in their order.
    std::vector<std::wstring> Errors() const;
};

} // namespace TestSupport
