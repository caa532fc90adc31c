#pragma once
#include <cstdio>
#include <string>

/// Opens a file by UTF-8 name and mode as fopen does, with two differences that no reader notices: a program that the
/// host starts does not inherit it, and a pipe that is only to be read is refused (ENOENT) instead of waited for.
std::FILE* OpenStream(const std::string& name, std::string mode);
