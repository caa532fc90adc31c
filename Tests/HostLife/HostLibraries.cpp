#include "Tests/HostLife/HostLibraries.h"

#include <array>
#include <atomic>
#include <cstdarg>
#include <fstream>
#include <memory>
#include <string_view>
#include <tiffio.h>
#include <xercesc/dom/DOM.hpp>
#include <xercesc/framework/MemBufInputSource.hpp>
#include <xercesc/parsers/XercesDOMParser.hpp>
#include <xercesc/util/PlatformUtils.hpp>

namespace
{

std::atomic<int> numOfMessages = 0;

void CountMessage(const char*, const char*, va_list)
{
    ++numOfMessages;
}
void CountMessageOfFile(thandle_t, const char*, const char*, va_list)
{
    ++numOfMessages;
}
void ExtendTags(TIFF*) {}

struct CTiffCloser
{
    void operator()(TIFF* tiff) const { TIFFClose(tiff); }
};
using CTiff = std::unique_ptr<TIFF, CTiffCloser>;

constexpr std::array<unsigned char, 4> Row = {1, 2, 3, 4};

bool WritePicture(const std::string& name)
{
    const CTiff tiff(TIFFOpen(name.c_str(), "w"));
    std::array<unsigned char, 4> row = Row;
    return tiff && TIFFSetField(tiff.get(), TIFFTAG_IMAGEWIDTH, uint32_t{4}) == 1 &&
           TIFFSetField(tiff.get(), TIFFTAG_IMAGELENGTH, uint32_t{1}) == 1 &&
           TIFFSetField(tiff.get(), TIFFTAG_BITSPERSAMPLE, 8) == 1 &&
           TIFFSetField(tiff.get(), TIFFTAG_PHOTOMETRIC, PHOTOMETRIC_MINISBLACK) == 1 &&
           TIFFWriteScanline(tiff.get(), row.data(), 0, 0) == 1;
}

bool ReadPicture(const std::string& name)
{
    const CTiff tiff(TIFFOpen(name.c_str(), "r"));
    std::array<unsigned char, 4> row{};
    return tiff && TIFFReadScanline(tiff.get(), row.data(), 0, 0) == 1 && row == Row;
}

} // namespace

CHostTiff::CHostTiff()
{
    TIFFSetErrorHandler(CountMessage);
    TIFFSetWarningHandler(CountMessage);
    TIFFSetErrorHandlerExt(CountMessageOfFile);
    TIFFSetWarningHandlerExt(CountMessageOfFile);
    TIFFSetTagExtender(ExtendTags);
}

CHostTiff::~CHostTiff()
{
    TIFFSetErrorHandler(nullptr);
    TIFFSetWarningHandler(nullptr);
    TIFFSetErrorHandlerExt(nullptr);
    TIFFSetWarningHandlerExt(nullptr);
    TIFFSetTagExtender(nullptr);
}

bool CHostTiff::IsAsItWasSet() const
{
    return TIFFSetErrorHandler(CountMessage) == CountMessage && TIFFSetWarningHandler(CountMessage) == CountMessage &&
           TIFFSetErrorHandlerExt(CountMessageOfFile) == CountMessageOfFile &&
           TIFFSetWarningHandlerExt(CountMessageOfFile) == CountMessageOfFile &&
           TIFFSetTagExtender(ExtendTags) == ExtendTags;
}

int CHostTiff::NumOfMessages() const
{
    return numOfMessages;
}

bool CHostTiff::Works(const std::string& folder) const
{
    if (!WritePicture(folder + "/host.tif") || !ReadPicture(folder + "/host.tif"))
        return false;
    std::ofstream(folder + "/none.tif") << "this is no TIFF";
    const int before = numOfMessages;
    const CTiff none(TIFFOpen((folder + "/none.tif").c_str(), "r"));
    return !none && numOfMessages == before + 2; // each kind of handler is told
}

void HostXerces::Start()
{
    xercesc::XMLPlatformUtils::Initialize();
}

void HostXerces::End()
{
    xercesc::XMLPlatformUtils::Terminate();
}

bool HostXerces::IsStarted()
{
    return xercesc::XMLPlatformUtils::fgMemoryManager != nullptr;
}

bool HostXerces::Works()
{
    constexpr std::string_view Text = "<a><b/><b/></a>";
    xercesc::MemBufInputSource source(reinterpret_cast<const XMLByte*>(Text.data()), Text.size(), "text");
    xercesc::XercesDOMParser parser;
    parser.parse(source);
    return parser.getErrorCount() == 0 && parser.getDocument() &&
           parser.getDocument()->getDocumentElement()->getChildElementCount() == 2;
}
