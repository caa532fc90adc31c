#pragma once
#include <cstdint>
#include <string>

/// The work of GetTempPath for any folder in the place of the one for temporary files: makes it unless it exists, and
/// writes its name. 1 on success; 0 (after "Internal error") when `maxSize` wide characters cannot hold the name and
/// its zero, when the name is that of a file, or when the folder cannot be made.
uint32_t MakeAndNameFolder(const std::string& folder, uint32_t maxSize, wchar_t* wTempPath);

/// The longest name that GetTempFileName makes, without its zero: `result` must hold it.
constexpr size_t MaxLengthOfTempFileName = 999;

/// Makes a new, empty file `path`/`prefix`XXXXXX.tmp, with six characters that make it new, and writes its name. 1 on
/// success; 0 when the file cannot be made (errno tells why), or (after "Internal error") when the name would have
/// more than 999 bytes in UTF-8 or `unique` is not 0.
uint32_t GetTempFileName(const wchar_t* path, const wchar_t* prefix, uint32_t unique, wchar_t* result);
