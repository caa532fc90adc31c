#pragma once
#include <cstdint>
#include <string>

/// The full UTF-8 file name of a loaded module, as PAL_LoadLibrary and PAL_GetCurrentModule hand it out; of the program
/// for null. Empty when it cannot be found out.
std::string PathOfModule(void* module);

/// The folder of the module that this code lives in, without a slash at its end.
std::wstring DirOfCurrentModule();

/// Writes the full file name of the program, whatever the module: the number of characters without the zero; 0 when
/// the buffer is too small, and then it is left alone.
uint32_t GetModuleFileNameW(void* module, wchar_t* buffer, uint32_t size);
