#pragma once
#include <cstdarg>
#include <cstddef>
#include <cstdio>

// Calls of the C library under their Win32 names and signatures. In a wide format %s means wide text. Numbers are
// written and read with a decimal point, whatever the locale. swprintf is the C library's own, whose signature is the
// same.

/// Marks a `count` that cuts what does not fit instead of failing.
constexpr size_t _TRUNCATE = static_cast<size_t>(-1);

/// Copy, append, and copy at most `count` characters. 0; EINVAL for a null pointer or a size of 0; ERANGE when the
/// text does not fit with its zero, and then the target is empty (with _TRUNCATE it is cut, which is no failure).
int wcscpy_s(wchar_t* target, size_t size, const wchar_t* source);
int wcscat_s(wchar_t* target, size_t size, const wchar_t* source);
int wcsncpy_s(wchar_t* target, size_t size, const wchar_t* source, size_t count);

/// The number at the start of a text, behind blanks; 0 when there is none. Beyond the range of the type, its nearest
/// number.
int _wtoi(const wchar_t* text);
double _wtof(const wchar_t* text);

/// Writes a number in a base from 2 to 36 and answers `result`, which must hold 33 characters and a zero. Negative
/// numbers have a sign in base 10 only. A wrong base gives an empty text.
char* itoa(int value, char* result, int base);

/// Makes ASCII letters small: 0; EINVAL when no zero ends the text within `size` characters.
int _wcslwr_s(wchar_t* text, size_t size);

/// Not 0 for a number that is neither infinite nor NaN.
int _finite(double value);

/// Print into a buffer of `size` characters, at most `count` of them. The number of characters without the zero; -1,
/// and a text that is cut (with _TRUNCATE) or empty, when they do not fit.
int vsnprintf_s(char* buffer, size_t size, size_t count, const char* format, std::va_list arguments);
int _vsnwprintf_s(wchar_t* buffer, size_t size, size_t count, const wchar_t* format, std::va_list arguments);
/// Prints into a buffer of `size` characters: the number of them without the zero; -1 and an empty text when they do
/// not fit.
int sprintf_s(char* buffer, size_t size, const char* format, ...);
/// Prints into a buffer of 1024 characters; what does not fit is cut.
int wsprintf(wchar_t* buffer, const wchar_t* format, ...);

/// Reads numbers from a text: how many, or -1 at its end. Formats for anything else (%s, %c, %[) are refused (-1):
/// their buffers' sizes, which stand among the arguments in Win32's signature, would be taken for buffers.
int swscanf_s(const wchar_t* text, const wchar_t* format, ...);
