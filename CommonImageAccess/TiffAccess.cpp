#include "CommonImageAccess/TiffAccess.h"

#include "CommonUtil/Log.h"

#include <array>
#include <cstdarg>
#include <cstdio>

namespace CIA
{

using namespace CommonUtil;

namespace
{

constexpr size_t MaxMessageSize = 1000;

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

void TIFFSetDirectory(TIFF* tif, uint16_t dir)
{
    const CErrnoKeeper errnoKeeper;
    ZEL_ASSERT(::TIFFSetDirectory(tif, dir) == 1);
}

uint16_t TIFFNumberOfDirectories(TIFF* tif)
{
    const CErrnoKeeper errnoKeeper;
    const auto numOfDirectories = static_cast<uint32_t>(::TIFFNumberOfDirectories(tif));
    ZEL_ASSERT(numOfDirectories > 0 && numOfDirectories <= 0xFFFF);
    return static_cast<uint16_t>(numOfDirectories);
}

TIFF* CTiffImageDoc::TiffFilePtr()
{
    if (!_TiffFilePtr)
        _TiffFilePtr = TIFFOpenW(_FileName, "r");
    return _TiffFilePtr.get();
}

} // namespace CIA
