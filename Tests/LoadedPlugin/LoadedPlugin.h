#pragma once

/// The address of an exported function in the shared object that the tests load. Throws if it has none of that name.
void* AddressInPlugin(const char* name);
