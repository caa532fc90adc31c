#include "Tests/Support/Log.h"

#include <gtest/gtest.h>
#include <mutex>
#include <stdexcept>
#include <unistd.h>

namespace TestSupport
{

namespace
{

std::mutex LinesMutex;
std::vector<LogReaderOfTest::Line> LinesRead;

void Read(const CLogLine& line)
{
    const std::lock_guard lock(LinesMutex);
    LinesRead.push_back({line.IsError, line.Type, std::wstring(line.Text), std::string(line.File), line.Line});
}

} // namespace

PrintedLog::PrintedLog() : _wasPrinting(CommonUtil::EnablePrintfOntoScreen)
{
    testing::internal::CaptureStdout();
    CommonUtil::EnablePrintfOntoScreen = true;
}

PrintedLog::~PrintedLog()
{
    Text();
}

const std::string& PrintedLog::Text()
{
    if (_isCapturing)
    {
        _isCapturing = false;
        CommonUtil::EnablePrintfOntoScreen = _wasPrinting;
        _text = testing::internal::GetCapturedStdout();
    }
    return _text;
}

void PrintLogOntoStandardError()
{
    dup2(STDERR_FILENO, STDOUT_FILENO);
    CommonUtil::EnablePrintfOntoScreen = true;
}

LogReaderOfTest::LogReaderOfTest()
{
    if (HasLogReader())
        throw std::logic_error("another log reader is attached");
    const std::lock_guard lock(LinesMutex);
    LinesRead.clear();
    SetLogReader(Read);
}

LogReaderOfTest::~LogReaderOfTest()
{
    SetLogReader(nullptr);
}

std::vector<LogReaderOfTest::Line> LogReaderOfTest::Lines() const
{
    const std::lock_guard lock(LinesMutex);
    return LinesRead;
}

std::vector<std::wstring> LogReaderOfTest::Errors() const
{
    std::vector<std::wstring> errors;
    for (const Line& line : Lines())
        if (line.IsError)
            errors.push_back(line.Text);
    return errors;
}

} // namespace TestSupport
