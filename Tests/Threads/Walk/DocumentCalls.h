#pragma once
#include "Brix/AccessorInterface.h"

#include <functional>
#include <string>
#include <vector>

namespace ThreadsOfTest
{

/// What a host has of an open document.
struct CHandles
{
    std::wstring FileName;
    AC_HFILE Document = nullptr;
    AC_HGROUP Group = nullptr;
    AC_HAREA Area = nullptr;
    AC_HIMAGE Image = nullptr;
    AC_HPROPERTY Set = nullptr;
};

/// The first group, area and image of a document that was opened just now, and nothing else of it.
CHandles FirstHandlesOf(const std::wstring& fileName, AC_HFILE document);

/// One exported function; what it answers, as text.
struct CDocumentCall
{
    const char* Name;
    std::function<std::string(const CHandles&)> Ask;
    /// False: what it answers depends on what was asked of the area before.
    bool IsSameForAll = true;
};

/// Every exported function that a document is asked by, or its file, and that may run beside others.
const std::vector<CDocumentCall>& DocumentCalls();

} // namespace ThreadsOfTest
