#include "CommonImageAccess/TiffAccess.h"

#include "CommonImageAccess/TiffFile.h"
#include "CommonUtil/Log.h"

#include <array>
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
constexpr size_t MemoryForADirectory = 65536;

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

/// Makes a directory of the file the handle's; false when there is none, or it cannot be read.
bool GoToDirectory(TIFF* tif, uint32_t dir)
{
    CTiffFile& file = CTiffFile::Of(tif);
    std::optional<CDirectoryForLibtiff> directory = file.Chain().Directory(dir);
    return directory && file.GoToDirectory(tif, std::move(*directory));
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
    const bool isRead = handle && GoToDirectory(handle.get(), 0);
    ZEL_ASSERT(!opened.HasFailed());
    return isRead ? std::move(handle) : CTiffHandle();
}

uint32_t TIFFNumberOfDirectories(TIFF* tif)
{
    const CErrnoKeeper errnoKeeper;
    CTiffFile& file = CTiffFile::Of(tif);
    file.ForgetFailure();
    const uint32_t numOfDirectories = file.Chain().NumOfDirectories(MaxNumOfDirectories);
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
    _CurrentDirectory.reset(); // should what follows fail half-way
    if (!GoToDirectory(_TiffFilePtr.get(), dir) || file.HasFailed())
        return false;
    _CurrentDirectory = dir;
    return true;
}

} // namespace CIA
