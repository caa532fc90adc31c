#pragma once
#include <map>
#include <string>

/// What of a process a library that it loads could change: the settings of C, of the operating system and of the
/// processor, each with a name. Two of them can be compared.
using CHostState = std::map<std::string, std::string>;

CHostState StateOfThisProcess();

/// What differs, as text; empty when nothing does.
std::string Difference(const CHostState& before, const CHostState& now);

/// How many functions this process, and none of its libraries, has asked to be called at its end. Those of a library
/// are called when it is unloaded.
int NumOfFunctionsAtExit();
