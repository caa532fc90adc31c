#pragma once
#include "Fuzzing/FailingMachine/CountedCalls.h"

namespace Fuzzing
{

/// What can go wrong with a call on a file.
struct FileFailure
{
    enum E
    {
        Nothing,
        Broken,   ///< the call fails with EIO, whichever it is
        CutOff,   ///< a read finds the end of the file
        Short,    ///< a read brings half of what was asked for, which is no failure
        NoHandle, ///< an open fails with EMFILE
        NoAccess, ///< an open fails with EACCES
    };
};

/// Calls on files, of the plug-in and the libraries under it, of the sort that `Failure` can befall.
class CFileCalls : public CCountedCalls
{
public:
    FileFailure::E Failure = FileFailure::Nothing;
};

CFileCalls& FileCalls();

} // namespace Fuzzing
