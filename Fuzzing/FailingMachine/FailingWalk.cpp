#include "Fuzzing/FailingMachine/FailingWalk.h"

#include <cerrno>
#include <filesystem>
#include <optional>
#include <stdexcept>
#include <utility>

namespace Fuzzing
{

namespace
{

void EnterFunction()
{
    Allocations().EnterFunction();
    FileCalls().EnterFunction();
}

void LeaveFunction(AC_Result)
{
    Allocations().LeaveFunction();
    FileCalls().LeaveFunction();
}

/// Lets a call of the machine fail, from its construction to its end.
class CBrokenMachine
{
public:
    CBrokenMachine(uint64_t number, const CMachineFailure& failure)
    {
        if (failure.File == FileFailure::Nothing)
            Allocations().LetFail(number, failure.Span);
        else
            FileCalls().LetFail(number, failure.Span);
        FileCalls().Failure = failure.File;
    }
    ~CBrokenMachine() { Mend(); }
    CBrokenMachine(const CBrokenMachine&) = delete;
    CBrokenMachine& operator=(const CBrokenMachine&) = delete;

    static void Mend()
    {
        Allocations().StartCounting();
        FileCalls().StartCounting();
        FileCalls().Failure = FileFailure::Nothing;
    }
};

/// Limits with hooks that tell the machine what runs.
CWalkLimits LimitsOfCalls()
{
    CWalkLimits limits;
    limits.BeforeCall = EnterFunction;
    limits.AfterCall = LeaveFunction;
    return limits;
}

/// A document that was opened by hand, beside the walks.
class COpenDocument
{
public:
    explicit COpenDocument(const std::wstring& name)
    {
        EnterFunction();
        errno = 0;
        _result = _AC_Open(name.c_str(), AC_OM_READ, &_document);
        LeaveFunction(_result);
    }
    ~COpenDocument()
    {
        if (_document)
            _AC_Close(_document);
    }
    COpenDocument(const COpenDocument&) = delete;
    COpenDocument& operator=(const COpenDocument&) = delete;

    AC_HFILE Get() const { return _document; }
    AC_Result Result() const { return _result; }

private:
    AC_HFILE _document = nullptr;
    AC_Result _result = AC_RESULT_FAILURE;
};

/// Compares what is told with what was told undisturbed, up to the first difference: from there on one leads to
/// another. That first one must be the result of a function that says that it has failed.
class CComparison
{
public:
    explicit CComparison(const std::vector<std::string>& lines) : _lines(lines) {}

    CWalkLimits Limits()
    {
        CWalkLimits limits = LimitsOfCalls();
        limits.AfterCall = [this](AC_Result result)
        {
            LeaveFunction(result);
            _isResultNext = true;
            _hasFailed = result != AC_RESULT_SUCCESS;
        };
        limits.Tell = [this](const std::string& line) { Compare(line); };
        return limits;
    }
    const std::string& Finding() const { return _finding; }

private:
    void Compare(const std::string& line)
    {
        const bool isFailure = std::exchange(_isResultNext, false) && _hasFailed;
        if (_hasDiffered || (_next < _lines.size() && _lines[_next++] == line))
            return;
        _hasDiffered = true;
        if (!isFailure)
            _finding = "tells '" + line + "' and not '" + (_next > 0 ? _lines[_next - 1] : "") + "'";
    }

    const std::vector<std::string>& _lines;
    size_t _next = 0;
    bool _isResultNext = false;
    bool _hasFailed = false;
    bool _hasDiffered = false;
    std::string _finding;
};

std::string WhatIsLeftBehind(int64_t blocksBefore, size_t filesBefore, size_t filesNow)
{
    if (filesNow != filesBefore)
        return "leaves " + std::to_string(static_cast<int64_t>(filesNow - filesBefore)) + " files open";
    if (NumOfLiveBlocks() != blocksBefore)
        return "leaves " + std::to_string(NumOfLiveBlocks() - blocksBefore) + " blocks of memory";
    return {};
}

size_t NumOfOpenFiles()
{
    const std::filesystem::directory_iterator files("/proc/self/fd");
    return static_cast<size_t>(std::distance(begin(files), end(files)));
}

/// Asks for everything that a document which is open, and its name, can tell. The answers are those of the document.
CWalkAnswers Walk(const COpenDocument& document, const std::wstring& name, const CWalkLimits& limits)
{
    const CWalkAnswers answers = WalkOpenDocument(document.Get(), limits);
    WalkFilesOf(name, limits);
    return answers;
}

} // namespace

CFailingWalk::CFailingWalk(std::wstring document) : _document(std::move(document))
{
    COpenDocument opened(_document);
    if (!opened.Get())
        throw std::runtime_error("the document cannot be opened");
    CWalkLimits limits;
    limits.Tell = [this](const std::string& line) { _lines.push_back(line); };
    Walk(opened, _document, limits);
    _answers = WalkOpenDocument(opened.Get());
    if (WalkOpenDocument(opened.Get()) != _answers)
        throw std::runtime_error("the document does not answer the same each time");
}

uint64_t CFailingWalk::NumOfCalls(FileFailure::E file) const
{
    constexpr uint64_t NoCall = 0;
    const CBrokenMachine machine(NoCall, {file, FailureSpan::OneCall});
    const COpenDocument opened(_document);
    Walk(opened, _document, LimitsOfCalls());
    return file == FileFailure::Nothing ? Allocations().NumOfCalls() : FileCalls().NumOfCalls();
}

std::string CFailingWalk::RunOnce(uint64_t number, const CMachineFailure& failure) const
{
    CBrokenMachine machine(number, failure);
    std::optional<COpenDocument> opened(std::in_place, _document);
    CComparison comparison(_lines);
    if (opened->Get())
        Walk(*opened, _document, comparison.Limits());
    else if (opened->Result() == AC_RESULT_SUCCESS)
        return "is opened without a handle";
    machine.Mend();
    if (!comparison.Finding().empty())
        return comparison.Finding();
    if (!opened->Get())
        opened.emplace(_document);
    if (!opened->Get())
        return "cannot be opened any more";
    // What the next image is depends on the one before: one walk starts where the disturbed one went astray.
    for (int walk = 0; walk < 2; ++walk)
        if (WalkOpenDocument(opened->Get()) == _answers)
            return "";
    return "answers differently ever after";
}

std::string CFailingWalk::Run(uint64_t number, const CMachineFailure& failure) const
{
    constexpr int NumOfRounds = 3; // what is kept on purpose is kept once
    for (int round = 1;; ++round)
    {
        const size_t filesBefore = NumOfOpenFiles();
        const int64_t blocksBefore = NumOfLiveBlocks();
        std::string finding = RunGuarded(number, failure);
        if (!finding.empty())
            return finding;
        finding = WhatIsLeftBehind(blocksBefore, filesBefore, NumOfOpenFiles());
        if (finding.empty() || round == NumOfRounds)
            return finding;
    }
}

std::string CFailingWalk::RunGuarded(uint64_t number, const CMachineFailure& failure) const
{
    try
    {
        return RunOnce(number, failure);
    }
    catch (...)
    {
        LeaveFunction(AC_RESULT_FAILURE);
        return "an exception leaves a function";
    }
}

} // namespace Fuzzing
