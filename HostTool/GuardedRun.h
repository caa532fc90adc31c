#pragma once

#include "HostTool/HostError.h"

#include <functional>
#include <string>

namespace HostTool
{

/// How a child process ended.
struct CChildEnd
{
    int ExitCode = 0;
    int Signal = 0; ///< by which it ended without an exit code; 0 if it has one

    bool IsEarly() const { return Signal != 0; }
};

/// Runs `work` in a child process, which ends with its exit code, and takes away what it left half-written. What `work`
/// throws goes on, in the child only. A signal by which users and pipes end programs ends this process, too.
/// Throws CHostError if there can't be a child.
CChildEnd RunInChild(const std::function<int()>& work);

/// What is to be said of a document whose reading ended early: that the machine ended it, or what the document holds.
CHostError EarlyEnd(const std::string& document, const CChildEnd& end);

/// Runs `work` in a child process and answers its exit code. A document may hold data at which the plug-in ends the
/// process by design: that ends the child, and the user gets one line about `document` in place of a core dump.
int RunGuarded(const std::string& document, const std::function<int()>& work);

} // namespace HostTool
