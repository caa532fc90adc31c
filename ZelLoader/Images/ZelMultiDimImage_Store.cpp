// Where a stack keeps its pixels, and how its tile store is found and opened.

#include "CommonImageAccess/Boundary.h"
#include "CommonUtil/FileList.h"
#include "CommonUtil/Log.h"
#include "CommonUtil/Text.h"
#include "ZelLoader/Images/ZelMultiDimImage.h"
#include "ZelLoader/Store/KorFile.h"
#include "ZelLoader/ZelImgDoc.h"

#include <cerrno>

namespace Zel
{

bool CZelMultiDimImage::FindOutUsesKorFile()
{
    bool usesKorFile = false;
    if (!UsesKorFile_init(usesKorFile))
    {
        ZEL_ASSERT(errno != 0);
        return false;
    }
    _UsesKorFile = usesKorFile;
    Is_UsesKorFile_Initialized = true;
    return _UsesKorFile;
}

bool CZelMultiDimImage::UsesKorFile_init(bool& varToInit)
{
    ZEL_ASSERT(!_MetaData.ImgFrames()->empty());
    varToInit = _MetaData.ImgFrames()->front()->KorFile() != nullptr;
    if (!varToInit)
        return true;
    _IsKorFileMissing = KorFileName(KorFolderPath()).empty();
    if (_IsKorFileMissing)
    {
        ZEL_LOG("CRITICAL WARNING: KOR FILE IS MISSING!!!!!!!!!!!!!!!");
        varToInit = false;
    }
    return true;
}

bool CZelMultiDimImage::IsKorFileMissing()
{
    UsesKorFile();
    return _IsKorFileMissing;
}

/// "folder/_slide_/stack3" for stack 3 of "folder/slide.zel".
std::wstring CZelMultiDimImage::KorFolderPath()
{
    const std::wstring& fileName = _ParentZelImgDoc.FileName();
    const size_t slash = fileName.rfind(L'/');
    ZEL_ASSERT(slash != std::wstring::npos);
    const std::wstring baseName = fileName.substr(slash + 1);
    const size_t dot = baseName.rfind(L'.');
    ZEL_ASSERT(dot != std::wstring::npos);
    return fileName.substr(0, slash) + L"/_" + baseName.substr(0, dot) + L"_/stack" + ToWide(ToString(StackID()));
}

std::wstring CZelMultiDimImage::KorFileName(const std::wstring& korFolder)
{
    std::wstring path = FindKorFile(korFolder);
    errno = 0; // looking for a candidate that is not there leaves a reason that is none
    return path;
}

std::wstring CZelMultiDimImage::FindKorFile(const std::wstring& korFolder)
{
    std::wstring path;
    if (FileExists(korFolder, L"frame_t_0.kor"))
    {
        _IsOmeTiffKorFile = false;
        path = korFolder + L"/frame_t_0.kor";
    }
    if (FileExists(korFolder, L"frame_t.kor"))
    {
        _IsOmeTiffKorFile = false;
        if (path.empty())
            return korFolder + L"/frame_t.kor";
        ZEL_LOG("Error! Found both candidates for kor filename!");
        return {};
    }
    // A TIFF store wins over "frame_t_0.kor" beside it.
    if (!FindTiffCandidate(korFolder, L"frame_t_0", path))
        FindTiffCandidate(korFolder, L"frame_t", path);
    return path;
}

bool CZelMultiDimImage::FindTiffCandidate(const std::wstring& korFolder, const std::wstring& stem, std::wstring& path)
{
    const bool hasTiff = FileExists(korFolder, stem + L".tiff");
    if (!hasTiff && !FileExists(korFolder, stem + L".tif"))
        return false;
    _IsOmeTiffKorFile = true;
    path = korFolder + L"/" + stem + (hasTiff ? L".tiff" : L".tif");
    return true;
}

std::unique_ptr<CKorFile> CZelMultiDimImage::OpenKorFile()
{
    const std::wstring fileName = KorFileName(KorFolderPath());
    if (fileName.empty())
    {
        ZEL_LOG("KOR File is not present for stack id = %d", static_cast<int>(StackID()));
        return nullptr;
    }
    auto korFile = std::make_unique<CKorFile>(fileName, _ParentZelImgDoc.StrictMode(), *this, _IsOmeTiffKorFile);
    if (errno == 0)
        return korFile;
    ZEL_LOG("Failed to open KOR file: reason: %d", static_cast<int>(CiaResultToAC_Result()));
    return nullptr;
}

CKorFile* CZelMultiDimImage::OpenAndKeepKorFile(bool usesKorFile)
{
    ZEL_ASSERT(usesKorFile);
    ZEL_ASSERT(!_ParentZelImgDoc.FileUnits().contains(StackID()));
    std::unique_ptr<CKorFile> korFile = OpenKorFile();
    if (!korFile)
    {
        ZEL_ASSERT(errno != 0);
        return nullptr;
    }
    CKorFile* opened = korFile.get();
    _ParentZelImgDoc.AddFileUnit(std::move(korFile));
    _KorFile = opened;
    return _KorFile;
}

bool CZelMultiDimImage::HasOneTileSize()
{
    return UsesKorFile() && _KorFile && !_KorFile->IsOmeType();
}

const CKorTilesByFrame& CZelMultiDimImage::KorTilesByFrame()
{
    if (!_KorTilesByFrame)
        _KorTilesByFrame = std::make_unique<CKorTilesByFrame>(OpenedKorFile(), Dimensions(), MaxNumOfFrames());
    return *_KorTilesByFrame;
}

const CTiffPlanesByFrame& CZelMultiDimImage::TiffPlanesByFrame()
{
    if (!_TiffPlanesByFrame)
        _TiffPlanesByFrame =
            std::make_unique<CTiffPlanesByFrame>(OpenedKorFile().TiffStoreLevels(), Dimensions(), MaxNumOfFrames());
    return *_TiffPlanesByFrame;
}

} // namespace Zel
