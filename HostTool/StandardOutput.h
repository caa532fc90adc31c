#pragma once

#include <ostream>
#include <string>

namespace HostTool
{

/// Opens what the caller of the program has closed of its three standard streams, in a way that fails: otherwise the
/// first file that is opened would be taken for one of them, and get what is printed.
void KeepStandardStreamsApart();

/// Standard output is an output file's from now on; what is said about the work goes to standard error.
void TakeStandardOutput();

/// Nothing more is said about the work.
void SayNothing();

/// Where that is said.
std::ostream& WhereItIsSaid();

/// Says what was done, in a line for people. It goes to standard output unless that is an output's.
void Say(const std::string& line);

/// Prints a text in one piece, so that programs that append to one file at the same time do not mix within it. Throws
/// CHostError.
void PrintWhole(const std::string& text);

/// Throws CHostError if anything that was printed so far could not be written.
void RequireAllPrinted();

} // namespace HostTool
