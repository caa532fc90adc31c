#include "CommonUtil/Log.h"

#include "CommonUtil/ClassicLocale.h"
#include "CommonUtil/ErrnoKeeper.h"
#include "CommonUtil/Text.h"

#include <array>
#include <cstdarg>
#include <cstdio>
#include <cwchar>

namespace CommonUtil
{

bool EnablePrintfOntoScreen = false;
bool Log4CxxIsLoggingToStdout = false;
bool IsCommonUtilV2 = false;

namespace
{

constexpr size_t LogBufferSize = 10000;

struct FormattedText
{
    std::wstring text;
    bool outputWasTruncated = false;
};

FormattedText FormatWide(const wchar_t* format, std::va_list arguments)
{
    std::wstring holder;
    std::wstring buffer(LogBufferSize, L'\0');
    const int length = std::vswprintf(buffer.data(), buffer.size(), PAL_fmt_return_scstr(format, holder), arguments);
    // vswprintf tells too long a text only by -1, and has by then filled what fits.
    buffer.resize(std::wcslen(buffer.c_str()));
    return {std::move(buffer), length < 0};
}

FormattedText FormatNarrow(const wchar_t* format, std::va_list arguments)
{
    std::string buffer(LogBufferSize, '\0');
    const std::string narrowFormat = Utf16ToUtf8(format);
    const int length = std::vsnprintf(buffer.data(), buffer.size(), narrowFormat.c_str(), arguments);
    buffer.resize(std::char_traits<char>::length(buffer.c_str()));
    return {Utf8ToUtf16(buffer), length < 0 || static_cast<size_t>(length) >= LogBufferSize};
}

std::wstring Prefix(const char* funcName, int lineNumber)
{
    std::array<wchar_t, LogBufferSize> buffer{};
    std::wstring holder;
    const wchar_t* format = PAL_fmt_return_scstr(L"%sL%d:%s: ", holder);
    const std::wstring function = Utf8ToUtf16(funcName);
    std::swprintf(buffer.data(), buffer.size(), format, L"", lineNumber, function.c_str());
    return buffer.data();
}

void Print(const std::wstring& prefix, const FormattedText& message)
{
    std::string line = Utf16ToUtf8(prefix + message.text);
    if (message.outputWasTruncated)
        line += "(OUTPUT WAS TRUNCATED)";
    line += '\n';
    // One write a line, so that lines of several threads do not mix.
    std::fwrite(line.data(), 1, line.size(), stdout);
    std::fflush(stdout);
}

void PutLine(bool isFromPW, const char* fileName, const char* funcName, const wchar_t* wformatString, int lineNumber,
             std::va_list arguments)
{
    const CClassicLocale classicLocale; // numbers in the log read the same under every host
    const std::wstring prefix = Prefix(funcName, lineNumber);
    const FormattedText message =
        isFromPW ? FormatWide(wformatString, arguments) : FormatNarrow(wformatString, arguments);
    if (EnablePrintfOntoScreen && !Log4CxxIsLoggingToStdout)
        Print(prefix, message);
    PAL_PutLogInfo(message.text.c_str(), fileName, lineNumber);
}

} // namespace

bool IsLogRead()
{
    return (EnablePrintfOntoScreen && !Log4CxxIsLoggingToStdout) || HasLogReader();
}

void pw_flf(bool isFromPW, const char* fileName, const char* funcName, const wchar_t* wformatString, int lineNumber,
            ...)
{
    if (!IsLogRead())
        return;
    const CErrnoKeeper errnoKeeper;
    std::va_list arguments;
    va_start(arguments, lineNumber);
    try
    {
        PutLine(isFromPW, fileName, funcName, wformatString, lineNumber, arguments);
    }
    catch (...)
    {
        // What is logged here may be a failure on its way out, which no failure of the log may take the place of.
    }
    va_end(arguments);
}

bool returnErrV2(bool value, const char* file, int line)
{
    ZEL_LOG("Returning error from %s, line %d...", FileNameWithoutPath(std::string(file)).c_str(), line);
    return value;
}

void StopOnUnexpectedErrorsV2() {}

} // namespace CommonUtil
