#pragma once
#include <cstdint>
#include <string>

/// The work of GetTempPath for any folder in the place of the one for temporary files: makes it unless it exists, and
/// writes its name. 1 on success; 0 (after "Internal error") when `maxSize` wide characters cannot hold the name and
/// its zero, when the name is that of a file, or when the folder cannot be made.
uint32_t MakeAndNameFolder(const std::string& folder, uint32_t maxSize, wchar_t* wTempPath);
