#pragma once

#include <functional>
#include <string>

namespace HostTool
{

/// Runs `work` in a child process and answers its exit code. A document may hold data at which the plug-in ends the
/// process by design: that ends the child, and the user gets one line about `document` in place of a core dump.
int RunGuarded(const std::string& document, const std::function<int()>& work);

} // namespace HostTool
