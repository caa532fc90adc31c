#pragma once
#include "PlatformAbstractionLayer/PrivateProfileText.h"

#include <functional>
#include <string>
#include <string_view>

/// A line of a section, without blanks around name and value. Holds for the time of a call only.
struct CPrivateProfileLine
{
    std::wstring_view Name; ///< the whole line when it is no pair
    std::wstring_view Value;
    bool IsPair = false;
};

/// Puts the names of all sections into a multi-string without its last zero. PAL_RESULT_SUCCESS, or PAL_RESULT_FAILURE
/// (after a log line) for a section line that is broken. Asserts that no name is empty.
int ScanSectionNames(const CPrivateProfileText& text, std::wstring& names);

/// Takes a line; false when no more are wanted.
using PrivateProfileLineTaker = std::function<bool(const CPrivateProfileLine&)>;

/// Hands out the lines of the first section of that name that are neither empty nor comments. PAL_RESULT_FAILURE when
/// there is no such section, and (after a log line) when a section line before it is broken. Asserts that no bracket
/// opens within a name.
int ScanSection(const CPrivateProfileText& text, std::wstring_view secName, const PrivateProfileLineTaker& takeLine);
