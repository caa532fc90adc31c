#include "Benchmarks/Slide.h"

#include "SampleDocuments/Document.h"

#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <map>
#include <memory>
#include <unistd.h>

namespace Benchmarks
{

namespace
{

constexpr uint32_t TilePixels = 256;

/// A folder of this program's own, removed when it ends.
class CFolder
{
public:
    CFolder()
    {
        std::string name = (std::filesystem::temp_directory_path() / "zel-benchmarks-XXXXXX").string();
        Require(mkdtemp(name.data()) != nullptr, "making a temporary folder");
        _path = name;
    }
    ~CFolder()
    {
        std::error_code ignored;
        std::filesystem::remove_all(_path, ignored);
    }
    CFolder(const CFolder&) = delete;
    CFolder& operator=(const CFolder&) = delete;
    const std::filesystem::path& Path() const { return _path; }

private:
    std::filesystem::path _path;
};

template <typename T>
T NumberAt(const CFile& file, uint64_t offset)
{
    T number{};
    file.Read(&number, sizeof number, offset);
    return number;
}

} // namespace

const std::filesystem::path& Folder()
{
    static const CFolder folder;
    return folder.Path();
}

void Require(bool condition, const char* what)
{
    if (condition)
        return;
    std::fprintf(stderr, "Benchmarks: failed at %s\n", what);
    std::_Exit(1);
}

double SecondsOf(const std::function<void()>& work)
{
    const auto start = std::chrono::steady_clock::now();
    work();
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
}

CFile::CFile(const std::filesystem::path& name) : _file(open(name.c_str(), O_RDONLY | O_CLOEXEC))
{
    Require(_file >= 0, "opening a store");
}

CFile::~CFile()
{
    close(_file);
}

void CFile::Read(void* target, size_t size, uint64_t offset) const
{
    Require(pread(_file, target, size, static_cast<off_t>(offset)) == static_cast<ssize_t>(size), "pread");
}

const CSlide& CSlide::Of(int64_t numOfTiles)
{
    static std::map<int64_t, std::unique_ptr<const CSlide>> slides;
    std::unique_ptr<const CSlide>& slide = slides[numOfTiles];
    if (!slide)
        slide.reset(new CSlide(numOfTiles));
    return *slide;
}

CSlide::CSlide(int64_t numOfTiles)
{
    using namespace SampleDocuments;
    const auto columns = static_cast<uint32_t>(std::sqrt(static_cast<double>(numOfTiles)));
    const uint32_t rows = static_cast<uint32_t>(numOfTiles) / columns;
    _numOfTiles = columns * rows;
    const std::string stem = "slide" + std::to_string(numOfTiles);
    _fileName = Folder() / (stem + ".zel");
    Document()
        .With(Stack(1)
                  .Size(columns * TilePixels, rows * TilePixels)
                  .Tiles(TilePixels, TilePixels)
                  .Jpeg()
                  .Contents(Holes(TileSize)))
        .WriteTo(_fileName);
    _storeName = Folder() / ("_" + stem + "_") / "stack1" / "frame_t.kor";
    _list = CStoreList(CFile(_storeName));
    Require(_list.Offsets.size() == _numOfTiles, "counting the records of a store");
}

CStoreList::CStoreList(const CFile& store) : Begin(NumberAt<uint64_t>(store, 32))
{
    const uint32_t numOfRecords = NumberAt<uint32_t>(store, 40);
    const uint64_t sizeOfRecord = 4 + 4 * uint64_t{NumberAt<uint32_t>(store, Begin)} + 16;
    Size = sizeOfRecord * numOfRecords;
    std::vector<char> list(Size);
    store.Read(list.data(), Size, Begin);
    for (uint64_t end = sizeOfRecord; end <= Size; end += sizeOfRecord)
    {
        uint64_t offset = 0;
        std::memcpy(&offset, list.data() + end - 16, sizeof offset);
        Offsets.push_back(offset);
    }
}

} // namespace Benchmarks
