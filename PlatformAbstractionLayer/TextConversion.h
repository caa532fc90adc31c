#pragma once
#include <cstdint>

// The Win32-shaped calls between UTF-8 and wide text. The converters that work on strings are in
// CommonUtil/PlatformCalls.h.

constexpr uint32_t CP_ACP = 0;
constexpr uint32_t CP_UTF8 = 65001;

/// Converts UTF-8 to wide text, and wide text to UTF-8. A source size of -1 means up to and with its zero. The result
/// is the number of characters (bytes) written, or needed when `resultSize` is 0; 0 when the buffer is too small (then
/// nothing is written), when an argument makes no sense, or for a code page other than CP_ACP and CP_UTF8, which are
/// both UTF-8 here. The flags and the default character have no effect.
int MultiByteToWideChar(uint32_t codePage, uint32_t flags, const char* text, int textSize, wchar_t* result,
                        int resultSize);
int WideCharToMultiByte(uint32_t codePage, uint32_t flags, const wchar_t* text, int textSize, char* result,
                        int resultSize, const char* defaultChar, int* usedDefaultChar);
