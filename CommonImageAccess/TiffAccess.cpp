#include "CommonImageAccess/TiffAccess.h"

#include "CommonImageAccess/TiffFile.h"
#include "CommonUtil/Log.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cstdarg>
#include <cstdio>
#include <cstring>
#include <new>
#include <utility>

namespace CIA
{

using namespace CommonUtil;

namespace
{

constexpr size_t MaxMessageSize = 1000;
constexpr uint32_t MaxNumOfDirectories = 65536;
constexpr uint64_t MaxNumOfEntries = 65535; ///< of a directory, also where its format has room for more
constexpr uint64_t SizeOfEntry = 12;
constexpr uint64_t SizeOfEntryInBigTiff = 20;
constexpr size_t MemoryForADirectory = 65536;
/// libtiff needs the square of the number of tags that it does not know. No directory of a picture comes near.
constexpr uint64_t MaxNumOfEntriesRead = 1000;
/// Directories may share their values, so that what is read of all of them can be more than the file.
constexpr uint64_t MaxShareOfValues = 64;

/// Throws std::bad_alloc where memory has run out. libtiff does not survive that everywhere, as when it keeps a tag
/// that it does not know; so the little that a directory takes is asked for before it is called.
void AssertThatMemoryIsLeft()
{
    ::operator delete(::operator new(MemoryForADirectory));
}

int LogMessage(TIFF*, void*, const char* module, const char* format, std::va_list arguments)
{
    const CErrnoKeeper errnoKeeper;
    std::array<char, MaxMessageSize> message{};
    std::vsnprintf(message.data(), message.size(), format, arguments);
    ZEL_LOG("%s: %s", module ? module : "TIFF", message.data());
    return 1; // handled: libtiff's process-wide handlers, which may be the host's, are left out
}

/// The number at an offset of the file, in the file's byte order.
template <typename Number>
std::optional<Number> NumberAt(TIFF* tif, uint64_t offset)
{
    std::array<unsigned char, sizeof(Number)> bytes{};
    if (TIFFGetSeekProc(tif)(TIFFClientdata(tif), offset, SEEK_SET) != offset ||
        TIFFGetReadProc(tif)(TIFFClientdata(tif), bytes.data(), bytes.size()) != static_cast<tmsize_t>(bytes.size()))
        return {};
    if (TIFFIsByteSwapped(tif))
        std::ranges::reverse(bytes);
    return std::bit_cast<Number>(bytes);
}

/// How many entries the directory at an offset has; nothing where none can be.
std::optional<uint64_t> NumOfEntries(TIFF* tif, uint64_t offset)
{
    const std::optional<uint64_t> number =
        TIFFIsBigTIFF(tif) ? NumberAt<uint64_t>(tif, offset) : std::optional<uint64_t>(NumberAt<uint16_t>(tif, offset));
    return number && *number <= MaxNumOfEntries ? number : std::nullopt;
}

uint64_t SizeOfEntries(TIFF* tif, uint64_t numOfEntries)
{
    return numOfEntries * (TIFFIsBigTIFF(tif) ? SizeOfEntryInBigTiff : SizeOfEntry);
}

/// Where the directory behind the one at `offset` lies; 0 when there is none. That one is not read: it may be one that
/// libtiff cannot read, and is no obstacle to those behind it.
uint64_t OffsetOfNextDirectory(TIFF* tif, uint64_t offset)
{
    const std::optional<uint64_t> numOfEntries = NumOfEntries(tif, offset);
    if (!numOfEntries)
        return 0;
    const uint64_t behind = offset + SizeOfEntries(tif, *numOfEntries);
    return TIFFIsBigTIFF(tif) ? NumberAt<uint64_t>(tif, behind + sizeof(uint64_t)).value_or(0)
                              : NumberAt<uint32_t>(tif, behind + sizeof(uint16_t)).value_or(0);
}

tmsize_t ReadRaw(tmsize_t (*read)(TIFF*, uint32_t, void*, tmsize_t), TIFF* tif, uint32_t number, void* buffer,
                 tmsize_t size)
{
    const CErrnoKeeper errnoKeeper;
    CTiffFile& file = CTiffFile::Of(tif);
    file.ForgetFailure();
    const tmsize_t numOfBytesRead = read(tif, number, buffer, size);
    ZEL_ASSERT(!file.HasFailed());
    return numOfBytesRead;
}

struct COptionsDeleter
{
    void operator()(TIFFOpenOptions* options) const { TIFFOpenOptionsFree(options); }
};

} // namespace

void CTiffCloser::operator()(TIFF* tif) const
{
    const CErrnoKeeper errnoKeeper;
    ::TIFFClose(tif);
}

CTiffHandle TIFFOpenW(const std::wstring& name, const char* mode)
{
    const CErrnoKeeper errnoKeeper;
    AssertThatMemoryIsLeft();
    const std::unique_ptr<TIFFOpenOptions, COptionsDeleter> options(TIFFOpenOptionsAlloc());
    ZEL_ASSERT(options);
    TIFFOpenOptionsSetErrorHandlerExtR(options.get(), LogMessage, nullptr);
    TIFFOpenOptionsSetWarningHandlerExtR(options.get(), LogMessage, nullptr);
    const std::string utf8Name = Utf16ToUtf8(name);
    auto file = std::make_unique<CTiffFile>(name);
    if (!file->IsOpen())
    {
        ZEL_LOG("TIFFOpen: %s: %s", utf8Name.c_str(), std::strerror(errno));
        return {};
    }
    const CTiffFile& opened = *file;
    CTiffHandle handle(CTiffFile::OpenAsTiff(file, utf8Name, mode, options.get()));
    ZEL_ASSERT(!opened.HasFailed());
    return handle;
}

uint32_t TIFFNumberOfDirectories(TIFF* tif)
{
    const CErrnoKeeper errnoKeeper;
    CTiffFile& file = CTiffFile::Of(tif);
    file.ForgetFailure();
    const auto numOfDirectories = static_cast<uint32_t>(::TIFFNumberOfDirectories(tif));
    ZEL_ASSERT(!file.HasFailed());
    ZEL_ASSERT(numOfDirectories > 0 && numOfDirectories < MaxNumOfDirectories);
    return numOfDirectories;
}

tmsize_t TIFFReadRawTile(TIFF* tif, uint32_t tile, void* buffer, tmsize_t size)
{
    return ReadRaw(::TIFFReadRawTile, tif, tile, buffer, size);
}

tmsize_t TIFFReadRawStrip(TIFF* tif, uint32_t strip, void* buffer, tmsize_t size)
{
    return ReadRaw(::TIFFReadRawStrip, tif, strip, buffer, size);
}

TIFF* CTiffImageDoc::TiffFilePtr()
{
    if (_TiffFilePtr && CTiffFile::Of(_TiffFilePtr.get()).HasFailed())
        _TiffFilePtr.reset(); // it may stand on half a directory
    if (!_TiffFilePtr)
    {
        // Not mapped into memory: a file that shrinks under a map ends the host's process.
        CTiffHandle handle = TIFFOpenW(_FileName, "rm");
        if (handle)
        {
            _OffsetsOfDirectories = {TIFFCurrentDirOffset(handle.get())};
            _Cost = {};
            _CurrentDirectory = 0;
            _TiffFilePtr = std::move(handle);
        }
    }
    return _TiffFilePtr.get();
}

TIFF* CTiffImageDoc::SetDirectory(uint32_t dir)
{
    ZEL_ASSERT(TrySetDirectory(dir));
    return _TiffFilePtr.get();
}

bool CTiffImageDoc::TrySetDirectory(uint32_t dir)
{
    const CErrnoKeeper errnoKeeper;
    if (!TiffFilePtr() || dir >= MaxNumOfDirectories)
        return false;
    if (_CurrentDirectory == dir)
        return true;
    AssertThatMemoryIsLeft();
    CTiffFile& file = CTiffFile::Of(_TiffFilePtr.get());
    file.ForgetFailure();
    return GoToDirectory(dir) && !file.HasFailed();
}

bool CTiffImageDoc::GoToDirectory(uint32_t dir)
{
    // Unknown from here on, should what follows fail half-way.
    const std::optional<uint32_t> current = std::exchange(_CurrentDirectory, std::nullopt);
    TIFF* tif = _TiffFilePtr.get();
    const bool isFirstTime = !_Cost.DirectoriesMet.contains(dir);
    if (!FindDirectory(dir) || (isFirstTime && !IsWorthReading(dir)))
        return false;
    _Cost.DirectoriesMet.insert(dir);
    const bool isNext = current && *current + 1 == dir; // one after the other is how frames are read
    const uint64_t numOfBytesBefore = CTiffFile::Of(tif).NumOfBytesRead();
    const int isRead = isNext ? TIFFReadDirectory(tif) : TIFFSetSubDirectory(tif, _OffsetsOfDirectories[dir]);
    if (isFirstTime)
        _Cost.NumOfBytesRead += CTiffFile::Of(tif).NumOfBytesRead() - numOfBytesBefore;
    if (isRead != 1)
        return false;
    _CurrentDirectory = dir;
    return true;
}

bool CTiffImageDoc::FindDirectory(uint32_t dir)
{
    while (dir >= _OffsetsOfDirectories.size())
    {
        const uint64_t next = OffsetOfNextDirectory(_TiffFilePtr.get(), _OffsetsOfDirectories.back());
        if (next == 0 || !AddDirectory(next))
            return false;
    }
    return true;
}

bool CTiffImageDoc::IsWorthReading(uint32_t dir)
{
    TIFF* tif = _TiffFilePtr.get();
    const uint64_t numOfEntries = NumOfEntries(tif, _OffsetsOfDirectories[dir]).value_or(0); // then libtiff complains
    if (numOfEntries > MaxNumOfEntriesRead)
    {
        ZEL_LOG("TIFF directory %u has too many entries!", dir);
        return false;
    }
    if (dir == 0) // read when the file was opened
        return true;
    const uint64_t fileSize = CTiffFile::Of(tif).Size();
    const uint64_t sizeOfEntries = _Cost.SizeOfEntries + SizeOfEntries(tif, numOfEntries);
    if (sizeOfEntries > fileSize || _Cost.NumOfBytesRead / MaxShareOfValues > fileSize)
    {
        ZEL_LOG("TIFF directory %u: the directories lie in each other!", dir);
        return false;
    }
    _Cost.SizeOfEntries = sizeOfEntries;
    return true;
}

bool CTiffImageDoc::AddDirectory(uint64_t offset)
{
    // Only a step back can close a circle, and few files have one: the search costs nothing.
    const auto& offsets = _OffsetsOfDirectories;
    if (offset <= offsets.back() && std::ranges::find(offsets, offset) != offsets.end())
        return false;
    _OffsetsOfDirectories.push_back(offset);
    return true;
}

} // namespace CIA
