#include "Benchmarks/Slide.h"

#include "SampleDocuments/Document.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fstream>
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
T NumberAt(std::ifstream& file, uint64_t offset)
{
    T number{};
    file.seekg(static_cast<std::streamoff>(offset));
    file.read(reinterpret_cast<char*>(&number), sizeof number);
    Require(file.good(), "reading a store's header");
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

double Median(std::vector<double> values)
{
    Require(!values.empty(), "taking a median");
    const auto middle = values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2);
    std::nth_element(values.begin(), middle, values.end());
    return *middle;
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
    const std::filesystem::path fileName = Folder() / (stem + ".zel");
    Document()
        .With(Stack(1)
                  .Size(columns * TilePixels, rows * TilePixels)
                  .Tiles(TilePixels, TilePixels)
                  .Jpeg()
                  .Contents(Holes(TileSize)))
        .WriteTo(fileName);
    _fileName = fileName.wstring();
    _storeName = Folder() / ("_" + stem + "_") / "stack1" / "frame_t.kor";
    ReadList();
}

/// Reads the list with none of the plug-in's code: what is measured beside it must not depend on it.
void CSlide::ReadList()
{
    std::ifstream file(_storeName, std::ios::binary);
    _offsetOfList = NumberAt<uint64_t>(file, 32);
    Require(NumberAt<uint32_t>(file, 40) == _numOfTiles, "counting the records of a store");
    const uint64_t sizeOfRecord = 4 + 4 * uint64_t{NumberAt<uint32_t>(file, _offsetOfList)} + 16;
    _sizeOfList = sizeOfRecord * _numOfTiles;
    std::vector<char> list(_sizeOfList);
    file.seekg(static_cast<std::streamoff>(_offsetOfList));
    file.read(list.data(), static_cast<std::streamsize>(list.size()));
    Require(file.good(), "reading the records of a store");
    for (uint64_t end = sizeOfRecord; end <= _sizeOfList; end += sizeOfRecord)
    {
        uint64_t offset = 0;
        std::memcpy(&offset, list.data() + end - 16, sizeof offset);
        _tileOffsets.push_back(offset);
    }
}

COpenSlide::COpenSlide(const CSlide& slide)
{
    Require(_AC_Open(slide.FileName().c_str(), AC_OM_READ, &_document) == AC_RESULT_SUCCESS, "_AC_Open");
    Require(_AC_GetGroup(_document, 0, &_group) == AC_RESULT_SUCCESS, "_AC_GetGroup");
}

COpenSlide::~COpenSlide()
{
    _AC_Close(_document);
}

AC_HIMAGE COpenSlide::Tile(uint32_t number) const
{
    AC_HAREA area = nullptr;
    AC_HIMAGE tile = nullptr;
    Require(_AC_GetArea(_group, 0, number, &area) == AC_RESULT_SUCCESS, "_AC_GetArea");
    Require(_AC_GetImage(area, L"0", nullptr, 0, &tile) == AC_RESULT_SUCCESS && tile, "_AC_GetImage");
    return tile;
}

void COpenSlide::ReadBody(AC_HIMAGE tile, std::vector<BYTE>& buffer) const
{
    CMN_RECT whole{};
    UINT64 size = 0;
    Require(_AC_GetImageBody(tile, &whole, buffer.data(), buffer.size(), &size) == AC_RESULT_SUCCESS &&
                size == TileSize,
            "_AC_GetImageBody");
}

} // namespace Benchmarks
