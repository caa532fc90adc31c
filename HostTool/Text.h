#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace HostTool
{

/// The plug-in's wide text as UTF-8. A surrogate pair, which files hold as two units, is joined; what is no character
/// (a lone surrogate, a number too large) becomes U+FFFD.
std::string ToUtf8(std::wstring_view wide);

/// UTF-8 as the plug-in takes it, whatever the locale. Throws CHostError for bytes that are no UTF-8.
std::wstring ToWide(std::string_view utf8);

/// A field as tables with commas have it: in quotes if it holds anything that separates.
std::string CsvField(const std::string& text);

/// A text of a document as it may go to a terminal: control characters, which could move the cursor or worse, become
/// '?'.
std::string Printable(std::string utf8);

/// A number as people write it, in the same way in every locale.
std::string TextOf(double number);

/// "1 tile", "2 tiles"
std::string TextOfCount(uint64_t count, const std::string& thing);

} // namespace HostTool
