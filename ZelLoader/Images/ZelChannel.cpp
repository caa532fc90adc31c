#include "ZelLoader/Images/ZelChannel.h"

#include "CommonImageAccess/TiffCompression.h"
#include "CommonUtil/Log.h"
#include "ZelLoader/Images/ZelFrame.h"
#include "ZelLoader/Images/ZelPixelFormat.h"
#include "ZelLoader/Store/KorFile.h"

#include <cerrno>
#include <unordered_set>

namespace Zel
{

namespace
{

PixelFrameCompressionType::E CompressionOfStore(KorCompressionFormat::E format)
{
    switch (format)
    {
    case KorCompressionFormat::RAWDATA:
        return PixelFrameCompressionType::None;
    case KorCompressionFormat::JPEG:
        return PixelFrameCompressionType::Jpeg;
    case KorCompressionFormat::J2K:
        return PixelFrameCompressionType::J2k;
    case KorCompressionFormat::JPEG_LOSSLESS:
        return PixelFrameCompressionType::Jpeg7;
    case KorCompressionFormat::PNG:
        return PixelFrameCompressionType::Png;
    case KorCompressionFormat::BMP:
        return PixelFrameCompressionType::Bmp;
    }
    oldAbortCommonUtil();
}

} // namespace

bool CZelChannel::ID_init(uint32_t& varToInit)
{
    varToInit = _ID;
    return true;
}

bool CZelChannel::Name_init(const wchar_t*& varToInit)
{
    ZEL_ASSERT(!varToInit);
    if (!_MetaData)
    {
        varToInit = L"Channel ID 0 (Single Channel)";
        return true;
    }
    const CArrayStartAndSize<wchar_t>* name = _MetaData->ImgDimChannelName();
    ZEL_ASSERT(name);
    name->CheckLen();
    varToInit = name->Arr;
    return true;
}

bool CZelChannel::PixelFormat_init(std::unique_ptr<CPixelFormat>& varToInit)
{
    ZEL_ASSERT(!varToInit);
    varToInit = std::make_unique<CZelPixelFormat>(*this);
    return true;
}

bool CZelChannel::CompressionType_init(PixelFrameCompressionType::E& varToInit)
{
    if (_ParentZelImage.UsesKorFile())
    {
        CKorFile* korFile = _ParentZelImage.KorFile();
        ZEL_ASSERT(korFile);
        varToInit = korFile->IsOmeType() ? GetPixelFrameCompressionTypeOfCurrentTiffIfd(korFile->TiffFilePtr())
                                         : CompressionOfStore(korFile->AdditionalHeader().CompressionFormat());
        return true;
    }
    if (_ParentZelImage.IsKorFileMissing())
        ThrowWithErrno(EREMOTE, "TODO: obtain pixel frame compression type from 'coarse data' in case of missing KOR");
    return CompressionTypeOfDirectories(varToInit);
}

/// One image has one compression, so every frame is looked at; frames that share a directory are looked at once.
bool CZelChannel::CompressionTypeOfDirectories(PixelFrameCompressionType::E& varToInit)
{
    varToInit = GetPixelFrameCompressionTypeOfCurrentTiffIfd(_ParentZelImage.TiffFilePtrSetToIfdOf1stFrame());
    std::unordered_set<uint32_t> directories;
    for (const auto& [idx, frame] : _ParentZelImage.Frames())
    {
        auto& zelFrame = static_cast<CZelFrame&>(*frame);
        if (directories.insert(zelFrame.TiffDirectory()).second)
            ZEL_ASSERT(GetPixelFrameCompressionTypeOfCurrentTiffIfd(zelFrame.TiffFilePtr()) == varToInit);
    }
    return true;
}

bool CZelChannel::CompressionQuality_init(uint32_t& varToInit)
{
    if (!_ParentZelImage.UsesKorFile())
    {
        ZEL_LOG("TODO");
        oldAbortCommonUtil();
    }
    CKorFile* korFile = _ParentZelImage.KorFile();
    ZEL_ASSERT(korFile);
    ZEL_ASSERT(korFile->AdditionalHeader().CompressionFormat() != KorCompressionFormat::RAWDATA);
    varToInit = korFile->AdditionalHeader().CompressionQuality;
    return true;
}

} // namespace Zel
