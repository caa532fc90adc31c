#pragma once

/// The address of an exported function in the shared object that the tests load, at the first call and at the first one
/// after UnloadPlugin. Throws if it has none of that name.
void* AddressInPlugin(const char* name);

/// Gives the shared object back; no call into it may be under way.
void UnloadPlugin();

/// Whether it is, or still is, part of the process.
bool IsPluginInMemory();
