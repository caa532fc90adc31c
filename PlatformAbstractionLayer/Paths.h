#pragma once
#include <cstddef>
#include <cstdint>

// Operations on the text of a path, in its own buffer. Slashes and backslashes both separate.

/// The name behind the last separator: a place in `path`.
wchar_t* PathFindFileName(wchar_t* path);
/// Cuts the name's extension with its dot.
void PathRemoveExtension(wchar_t* path);
/// Cuts the name and the separator before it, but not that of the root: 1 when there was anything to cut, else 0.
int PathRemoveFileSpec(wchar_t* path);
/// Cuts one separator at the end, but not that of the root. The address of the last character that is left; null for a
/// null path.
wchar_t* PathRemoveBackslashW(wchar_t* path);
/// 1 for a path that begins with two backslashes.
int PathIsUNC(const wchar_t* path);

/// Writes the absolute form of a path, without "." and "..", as it counts from the current folder. The number of its
/// characters without the zero; the size that is needed, zero included, when that is more than `size`, and then nothing
/// is written; 0 for a null or empty path. `filePart`, unless null, takes the place of the name in the buffer.
uint32_t GetFullPathName(const wchar_t* path, uint32_t size, wchar_t* buffer, wchar_t** filePart);
/// The same into a buffer of `size` characters, as the address of the buffer; null when it does not fit.
wchar_t* _wfullpath(wchar_t* buffer, const wchar_t* path, size_t size);
