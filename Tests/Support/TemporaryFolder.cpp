#include "Tests/Support/TemporaryFolder.h"

#include <cerrno>
#include <cstdlib>
#include <fstream>
#include <gtest/gtest.h>
#include <iterator>
#include <stdexcept>

namespace TestSupport
{

TemporaryFolder::TemporaryFolder()
{
    std::string name = testing::TempDir() + "zel-test-XXXXXX";
    if (!mkdtemp(name.data()))
        throw std::runtime_error("no temporary folder: " + name);
    _path = std::filesystem::path(name);
}

TemporaryFolder::~TemporaryFolder()
{
    const int errnoBefore = errno;
    std::error_code ignored;
    std::filesystem::remove_all(_path, ignored);
    errno = errnoBefore;
}

std::wstring TemporaryFolder::WideName(std::string_view name) const
{
    const std::u32string text = (_path / name).u32string();
    return {text.begin(), text.end()};
}

std::string TemporaryFolder::Write(std::string_view name, std::string_view bytes) const
{
    const std::filesystem::path path = _path / name;
    std::filesystem::create_directories(path.parent_path());
    std::ofstream file(path, std::ios::binary);
    file.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    if (!file.flush())
        throw std::runtime_error("cannot write " + path.string());
    return path.string();
}

std::string BytesOf(const std::string& name)
{
    std::ifstream file(name, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

size_t NumOfOpenFiles()
{
    // The listing itself holds one.
    const std::filesystem::directory_iterator files("/proc/self/fd");
    return static_cast<size_t>(std::distance(begin(files), end(files))) - 1;
}

} // namespace TestSupport
