#pragma once
#include "Fuzzing/FailingMachine/Allocations.h"
#include "Fuzzing/FailingMachine/FileCalls.h"
#include "Fuzzing/Walk/FullWalk.h"

#include <string>
#include <vector>

namespace Fuzzing
{

/// What fails, and for how long. `File` is Nothing where it is an allocation.
struct CMachineFailure
{
    FileFailure::E File = FileFailure::Nothing;
    FailureSpan::E Span = FailureSpan::OneCall;
};

/// A document whose answers are known, asked for everything while the machine fails.
class CFailingWalk
{
public:
    /// Learns its answers. Throws std::runtime_error when the document cannot be opened.
    explicit CFailingWalk(std::wstring document);

    /// How many calls are made, of the sort that can fail in that way, where none fails.
    uint64_t NumOfCalls(FileFailure::E file) const;

    /// Opens the document and asks for everything while the call of that number fails; asks for everything once more
    /// when the machine is well again, of a document opened anew if need be. Empty when all is well, else what is not:
    /// - an exception left an exported function;
    /// - a function that was let down neither failed nor answered as ever;
    /// - afterwards something is answered that differs from the undisturbed answers;
    /// - memory or an open file is left behind.
    std::string Run(uint64_t number, const CMachineFailure& failure) const;

private:
    /// One disturbed walk and an undisturbed one behind it.
    std::string RunOnce(uint64_t number, const CMachineFailure& failure) const;
    /// The same; an exception is a finding.
    std::string RunGuarded(uint64_t number, const CMachineFailure& failure) const;

    std::wstring _document;
    std::vector<std::string> _lines; ///< all that the first walk is told
    CWalkAnswers _answers;           ///< of each further walk
};

} // namespace Fuzzing
