#pragma once
// What every target has: each one is a function that takes one input, by the interface of libFuzzer. With libFuzzer it
// becomes a fuzzer, with ReplayMain.cpp a plain program that runs kept inputs.

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <functional>
#include <span>
#include <string>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size);

namespace Fuzzing
{

using CInput = std::span<const uint8_t>;

/// True when the plug-in asked for the end of the process, by design, while the present input ran. Only under libFuzzer
/// does anything still run then: there the end is an exception, which the boundary turns into a result.
bool HasEndedByDesign();

/// Ends the process, which makes the input a finding, when a property does not hold.
void Require(bool property, const char* text);

/// Runs exported functions, none of which lets an exception out: one that arrives here is a finding. An end by design
/// goes on to RunInput.
void RunExported(const std::function<void()>& body);

/// Runs one input: what the code under test throws, as a failed assertion or any other exception that the boundary of
/// the interface turns into a result, and the end by design stop here. Always 0, as libFuzzer wants it.
int RunInput(void (*body)(CInput input), const uint8_t* data, size_t size);

/// A folder of this process for the files that a target needs, removed at its end. Where TMPDIR says, else in /tmp.
class CScratchFolder
{
public:
    CScratchFolder();
    ~CScratchFolder();
    CScratchFolder(const CScratchFolder&) = delete;
    CScratchFolder& operator=(const CScratchFolder&) = delete;

    std::filesystem::path File(const char* name) const { return _path / name; }
    const std::filesystem::path& Path() const { return _path; }

private:
    std::filesystem::path _path;
};

/// Writes a file anew. Throws std::runtime_error when that fails.
void WriteFile(const std::filesystem::path& file, CInput bytes);

/// The bytes of an input one by one, for targets that take numbers and texts out of it. Past the end there are zeros.
class CInputReader
{
public:
    explicit CInputReader(CInput input) : _rest(input) {}

    uint8_t Byte();
    uint32_t Number();
    /// So many bytes, or what is left.
    CInput Bytes(size_t size);
    CInput Rest() { return Bytes(_rest.size()); }

private:
    CInput _rest;
};

} // namespace Fuzzing
