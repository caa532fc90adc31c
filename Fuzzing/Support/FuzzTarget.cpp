#include "Fuzzing/Support/FuzzTarget.h"

#include "Fuzzing/Support/EndByDesign.h"

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <exception>
#include <memory>
#include <stdexcept>
#include <unistd.h>

namespace Fuzzing
{

void Require(bool property, const char* text)
{
    if (property)
        return;
    std::fprintf(stderr, "Property does not hold: %s\n", text);
    std::abort();
}

void RunExported(const std::function<void()>& body)
{
    try
    {
        body();
    }
    catch (const CEndByDesign&)
    {
        throw;
    }
    catch (...)
    {
        Require(false, "no exception leaves an exported function");
    }
}

int RunInput(void (*body)(CInput input), const uint8_t* data, size_t size)
{
    ForgetEndByDesign();
    errno = 0;
    try
    {
        body({data, size});
    }
    catch (const char*)
    {
    }
    catch (const CEndByDesign&)
    {
    }
    catch (const std::exception&)
    {
    }
    return 0;
}

CScratchFolder::CScratchFolder()
{
    std::string pattern = (std::filesystem::temp_directory_path() / "zel-fuzz-XXXXXX").string();
    if (!mkdtemp(pattern.data()))
        throw std::runtime_error("cannot make a folder for temporary files");
    _path = pattern;
}

CScratchFolder::~CScratchFolder()
{
    std::error_code ignored;
    std::filesystem::remove_all(_path, ignored);
}

void WriteFile(const std::filesystem::path& file, CInput bytes)
{
    const std::unique_ptr<std::FILE, int (*)(std::FILE*)> stream(std::fopen(file.c_str(), "wb"), &std::fclose);
    if (!stream || std::fwrite(bytes.data(), 1, bytes.size(), stream.get()) != bytes.size())
        throw std::runtime_error("cannot write " + file.string());
}

uint8_t CInputReader::Byte()
{
    const CInput byte = Bytes(1);
    return byte.empty() ? uint8_t{0} : byte.front();
}

uint32_t CInputReader::Number()
{
    uint32_t number = 0;
    for (int shift = 0; shift < 32; shift += 8)
        number |= uint32_t{Byte()} << shift;
    return number;
}

CInput CInputReader::Bytes(size_t size)
{
    const CInput bytes = _rest.first(std::min(size, _rest.size()));
    _rest = _rest.subspan(bytes.size());
    return bytes;
}

} // namespace Fuzzing
