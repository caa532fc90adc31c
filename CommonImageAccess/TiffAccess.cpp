#include "CommonImageAccess/TiffAccess.h"

#include "CommonUtil/Log.h"

#include <algorithm>
#include <array>
#include <cstdarg>
#include <cstdio>
#include <utility>

namespace CIA
{

using namespace CommonUtil;

namespace
{

constexpr size_t MaxMessageSize = 1000;
constexpr uint32_t MaxNumOfDirectories = 65536;

int LogMessage(TIFF*, void*, const char* module, const char* format, std::va_list arguments)
{
    const CErrnoKeeper errnoKeeper;
    std::array<char, MaxMessageSize> message{};
    std::vsnprintf(message.data(), message.size(), format, arguments);
    ZEL_LOG("%s: %s", module ? module : "TIFF", message.data());
    return 1; // handled: libtiff's process-wide handlers, which may be the host's, are left out
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
    const std::unique_ptr<TIFFOpenOptions, COptionsDeleter> options(TIFFOpenOptionsAlloc());
    ZEL_ASSERT(options);
    TIFFOpenOptionsSetErrorHandlerExtR(options.get(), LogMessage, nullptr);
    TIFFOpenOptionsSetWarningHandlerExtR(options.get(), LogMessage, nullptr);
    return CTiffHandle(TIFFOpenExt(Utf16ToUtf8(name).c_str(), mode, options.get()));
}

uint32_t TIFFNumberOfDirectories(TIFF* tif)
{
    const CErrnoKeeper errnoKeeper;
    const auto numOfDirectories = static_cast<uint32_t>(::TIFFNumberOfDirectories(tif));
    ZEL_ASSERT(numOfDirectories > 0 && numOfDirectories < MaxNumOfDirectories);
    return numOfDirectories;
}

tmsize_t TIFFReadRawTile(TIFF* tif, uint32_t tile, void* buffer, tmsize_t size)
{
    const CErrnoKeeper errnoKeeper;
    return ::TIFFReadRawTile(tif, tile, buffer, size);
}

tmsize_t TIFFReadRawStrip(TIFF* tif, uint32_t strip, void* buffer, tmsize_t size)
{
    const CErrnoKeeper errnoKeeper;
    return ::TIFFReadRawStrip(tif, strip, buffer, size);
}

TIFF* CTiffImageDoc::TiffFilePtr()
{
    if (!_TiffFilePtr)
    {
        // Not mapped into memory: a file that shrinks under a map ends the host's process.
        CTiffHandle handle = TIFFOpenW(_FileName, "rm");
        if (handle)
        {
            _OffsetsOfDirectories = {TIFFCurrentDirOffset(handle.get())};
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
    TIFF* tif = TiffFilePtr();
    if (!tif || dir >= MaxNumOfDirectories)
        return false;
    if (_CurrentDirectory == dir)
        return true;
    // Unknown from here on, should what follows fail half-way.
    const std::optional<uint32_t> current = std::exchange(_CurrentDirectory, std::nullopt);
    uint32_t reached = std::min(dir, static_cast<uint32_t>(_OffsetsOfDirectories.size() - 1));
    if (current && *current + 1 == dir) // one after the other is how frames are read
        reached = *current;
    else if (TIFFSetSubDirectory(tif, _OffsetsOfDirectories[reached]) != 1)
        return false;
    while (reached < dir)
        if (!ReadNextDirectory(++reached))
            return false;
    _CurrentDirectory = dir;
    return true;
}

bool CTiffImageDoc::ReadNextDirectory(uint32_t dir)
{
    if (TIFFReadDirectory(_TiffFilePtr.get()) != 1)
        return false;
    if (dir == _OffsetsOfDirectories.size())
        _OffsetsOfDirectories.push_back(TIFFCurrentDirOffset(_TiffFilePtr.get()));
    return true;
}

} // namespace CIA
