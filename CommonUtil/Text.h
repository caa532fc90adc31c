#pragma once
#include <cstdint>
#include <string>
#include <vector>

namespace CommonUtil
{

/// What follows the last slash or backslash, or the whole text.
std::string FileNameWithoutPath(std::string text);
std::wstring FileNameWithoutPath(std::wstring text);

/// `text` with every `from` replaced by `to`, left to right. Asserts that `from` is not empty.
std::string Replace(const std::string& text, const std::string& from, const std::string& to);
std::wstring Replace(const std::wstring& text, const std::wstring& from, const std::wstring& to);

/// What stands before, or behind, the first `separator`; the whole text when it does not occur.
std::string LeftOf(const std::string& text, const std::string& separator);
std::string RightOf(const std::string& text, const std::string& separator);
bool Contains(const std::string& text, const std::string& part);
/// The pieces between the separators: always one more than there are separators. Asserts a separator that is not empty.
std::vector<std::string> Split(const std::string& text, const std::string& separator);

bool StartsWith(const std::string& text, const std::string& start);
bool StartsWith(const std::wstring& text, const std::wstring& start);
bool EndsWith(const std::string& text, const std::string& end);
bool EndsWith(const std::wstring& text, const std::wstring& end);

/// True for a run of decimal digits with an optional minus sign before it.
bool IsInt(const std::string& text);
/// True for a run of decimal digits; 0 counts.
bool IsPositiveInteger(const std::string& text);

/// Decimal text, the same in every locale; a double in the default notation of 6 significant digits.
std::string ToString(int value);
std::string ToString(unsigned value);
std::string ToString(long value);
std::string ToString(unsigned long value);
std::string ToString(long long value);
std::string ToString(double value);
/// Asserts that `i` has at most `numOfDigits` characters.
std::string ToStringWith0Padding(int i, int numOfDigits);

/// Widens UTF-8 text; narrows wide text to UTF-8.
std::wstring ToWide(const std::string& narrow);
std::string A(const std::wstring& wide);

/// True when both texts are the same; two null pointers are, a null and a text are not.
bool Equals(const wchar_t* left, const wchar_t* right);

} // namespace CommonUtil
