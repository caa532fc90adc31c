#pragma once
#include "CommonImageAccess/MultiDimImage.h"
#include "ZelLoader/Images/ZelDimensionOrder.h"
#include "ZelLoader/Store/KorFrameTiles.h"
#include "ZelLoader/Store/TiffStoreTiles.h"

#include <cerrno>
#include <map>
#include <memory>
#include <string>
#include <tiffio.h>

namespace Zel
{

using namespace CIA;
using namespace CommonUtil;

class CKorFile;
class CZelImgDoc;

using CZelMetaDataForImgFrames = std::map<CFrameIdx, CZelMetaDataForImgFrame*>; ///< borrowed from the catalogue

/// The tiles of a directory: how many there are, and how far apart their positions.
struct CTileGrid
{
    uint32_t NumOfCols;
    uint32_t NumOfRows;
    uint32_t ColStep;
    uint32_t RowStep;
};

/// One stack of a document: a thin view over its node of the tag tree, which answers each question by reading tags when
/// it is asked. Its pixels lie in a tile store beside the document, or in TIFF directories of the document itself.
class CZelMultiDimImage : public CMultiDimImage
{
public:
    /// Both must outlive the image, which reads nothing yet.
    CZelMultiDimImage(CZelMetaDataForMultiDimImg& metaData, CZelImgDoc& parentImgDoc);

    CZelMetaDataForMultiDimImg& MetaData() { return _MetaData; }
    CZelImgDoc& ParentZelImgDoc() { return _ParentZelImgDoc; }
    uint32_t StackID() const { return ID(); }
    /// The order of the image's dimensions in frames and tile records; known once Dimensions() was asked for.
    CZelDimensionOrder& DimensionOrder() { return _DimensionOrder; }

    const wchar_t* Name() override;
    /// Always empty: this format has no description of an image.
    const wchar_t* Description() override { return L""; }
    /// With ENOEXEC when the image has no properties.
    std::wstring CreationTime() override;
    int32_t ImageStackType() override;
    double StageXPositionValue() override;
    const wchar_t* StageXPositionUnits() override;
    double StageYPositionValue() override;
    const wchar_t* StageYPositionUnits() override;
    const wchar_t* ExperimentName() override;
    const wchar_t* SampleName() override;
    const wchar_t* SampleDescription() override;
    bool LUTInfoShadowHighlight(uint32_t channelId, uint32_t channelDepth, int32_t& shadow,
                                int32_t& highlight) override;
    AC_Result GroupExposureTime(uint32_t channelId, std::string& value) override;
    bool ImgDispChannelProperty(const wchar_t* key, AC_VALUE_WITH_TYPE& value) override;
    bool ImgPlaneProperty(const wchar_t* key, std::string& value) override;
    bool ImageFrameProperties(const wchar_t* key, std::string& value) override;
    bool DbgDoesNotUseIFD0() override;
    bool HasMissingTilesConcept() override { return UsesKorFile(); }
    bool HasOneTileSize() override;
    void GetCroppedLevelImageSize(uint32_t levelIdx, std::array<int32_t, 4>& rect) override;
    void DbgValidateNullDeepZoomTile() override;
    uint32_t PixelWidthForLevel(uint32_t levelID) override;

    /// Clears errno. True when the pixels are read from a tile store that has been found.
    bool UsesKorFile()
    {
        errno = 0;
        return Is_UsesKorFile_Initialized ? _UsesKorFile : FindOutUsesKorFile();
    }
    /// True when the document says that there is a tile store and none was found.
    bool IsKorFileMissing();
    /// The tile store, opened at the first need and owned by the document. Null, with errno, when it cannot be opened.
    CKorFile* KorFile()
    {
        const bool usesKorFile = UsesKorFile();
        return usesKorFile && _KorFile ? _KorFile : OpenAndKeepKorFile(usesKorFile);
    }
    /// The tile store for what can only exist because it was opened; asserts that it was.
    CKorFile& OpenedKorFile() const
    {
        ZEL_ASSERT(_KorFile);
        return *_KorFile;
    }
    /// Which records of a binary store belong to which frame.
    const CKorTilesByFrame& KorTilesByFrame();
    /// Which planes of a TIFF store.
    const CTiffPlanesByFrame& TiffPlanesByFrame();

    /// The frame nodes by frame. Frames are numbered in the order of the dimension tags, the first one fastest.
    const CZelMetaDataForImgFrames& ZelMetaDataForImgFrames();
    /// The document as a TIFF, standing on the directory of the first frame node.
    TIFF* TiffFilePtrSetToIfdOf1stFrame();
    /// The directory, by number, on which the document as a TIFF is set; the same for any frame node.
    TIFF* TiffFilePtrSetToIfdOf(CZelMetaDataForImgFrame& frame);
    /// The grids of tiles of the document's directories that were met so far, by number: frames may share a directory,
    /// and going back and forth between two of them costs far more than a frame.
    std::map<uint32_t, CTileGrid>& TileGridsByDirectory() { return _TileGridsByDirectory; }
    /// How many different directories the frame nodes name, at least 1.
    uint64_t NumOfDirectoriesOfFrames();
    /// The frame whose directory has the next higher number; null for the last.
    CFrame* NextFrameOnDisk(uint32_t idxOfTiffIfd);
    /// The entries of the dimension tag that lists channels; null when the image has none.
    const std::vector<std::unique_ptr<CZelMetaDataForDimensionChannel>>* EntriesOfChannelDimension(uint32_t& itsNumber);

protected:
    bool Coords_init(CCoords& varToInit) override;
    bool PixelOrRealWorldWidth_init(double& varToInit) override;
    bool PixelOrRealWorldHeight_init(double& varToInit) override;
    bool DimensionHavingUnits_init(CDimensions& varToInit) override;
    std::unique_ptr<CFrame> Frame_init(const CFrameIdx& frameIdx) override;
    uint64_t MaxNumOfFrames() override;
    bool DeepZoomPyramidLevels_init(std::vector<std::unique_ptr<CDeepZoomPyramidLevel>>& varToInit) override;
    bool DeepZoomTilePixelWidth_init(uint32_t& varToInit, uint32_t levelID) override;
    bool DeepZoomTilePixelHeight_init(uint32_t& varToInit, uint32_t levelID) override;
    bool LeftCroppingOfLevel0TileMatrixInPixels_init(int32_t& varToInit) override;
    bool TopCroppingOfLevel0TileMatrixInPixels_init(int32_t& varToInit) override;
    bool Channels_init(CChannels& varToInit) override;
    bool VectorGraphicsImages_init(std::vector<CVectorGraphicsImage>& varToInit) override;
    bool ObjectiveLens_init(std::unique_ptr<CObjectiveLens>& varToInit) override;

private:
    CZelMetaDataForMultiDimImgProps* PropsOrComplain();
    uint32_t TileWidthInDocument();
    uint32_t TileHeightInDocument();
    uint32_t TileWidthInTiffStore(CKorFile& korFile, uint32_t directory);
    uint32_t TileHeightInTiffStore(CKorFile& korFile, uint32_t directory);
    CZelMetaDataForimgDevPropSet* DevicePropSet(bool& arePropsMissing);
    template <typename Position>
    double StagePositionValue(Position position);
    template <typename Position>
    const wchar_t* StagePositionUnits(Position position);
    template <typename Text>
    const wchar_t* DevicePropSetText(Text textOf);
    AC_Result GetExposureTimeforStack(std::string& strbuffValue);
    AC_Result GetExposureTimeForDimension(uint32_t channelId, std::string& value);
    AC_Result GetExposureTimeForFrames(std::string& strbuffValue);
    bool XyDimensions_init(CDimensions& varToInit);
    double PixelWidthOrHeight(bool isWidth);
    bool CroppingOfLevel0_init(int32_t& varToInit, uint32_t idx);

    bool FindOutUsesKorFile();
    bool UsesKorFile_init(bool& varToInit);
    CKorFile* OpenAndKeepKorFile(bool usesKorFile);
    std::wstring KorFolderPath();
    std::wstring KorFileName(const std::wstring& korFolder);
    std::wstring FindKorFile(const std::wstring& korFolder);
    bool FindTiffCandidate(const std::wstring& korFolder, const std::wstring& stem, std::wstring& path);
    std::unique_ptr<CKorFile> OpenKorFile();

    bool ZelMetaDataForImgFrames_init(CZelMetaDataForImgFrames& varToInit);
    void ZelMetaDataForImgFrames_init_recursive(CZelMetaDataForImgFrames& varToInit, size_t idxInImgDimMeanings,
                                                size_t& idxInImgFrames, CFrameIdx& frameIdx,
                                                bool framesAreAllchannelFrames);
    void AddFrameNode(CZelMetaDataForImgFrames& varToInit, size_t& idxInImgFrames, const CFrameIdx& frameIdx,
                      bool framesAreAllchannelFrames, bool advance);

    void AddChannels(CChannels& varToInit, const std::vector<std::unique_ptr<CZelMetaDataForDimensionChannel>>& entries,
                     uint32_t numOfChannelsAsPerNumOfPointsPerDim);
    bool CheckLutInfo_DimensionChannel2007Node(uint32_t channelId, double& dShadow, double& dHighlight);
    bool CheckLutInfo_DimensionChannel2005Node(double& dShadow, double& dHighlight);

    CZelMetaDataForMultiDimImg& _MetaData;
    CZelImgDoc& _ParentZelImgDoc;
    CZelDimensionOrder _DimensionOrder;
    CKorFile* _KorFile = nullptr;
    bool _UsesKorFile = false;
    bool Is_UsesKorFile_Initialized = false;
    bool _IsKorFileMissing = false;
    bool _IsOmeTiffKorFile = false;
    std::unique_ptr<CKorTilesByFrame> _KorTilesByFrame;
    std::unique_ptr<CTiffPlanesByFrame> _TiffPlanesByFrame;
    std::map<uint32_t, uint32_t> _TileWidthsByDirectory;  ///< of a TIFF store, or of the document (under 0)
    std::map<uint32_t, uint32_t> _TileHeightsByDirectory; ///< likewise
    std::map<uint32_t, CTileGrid> _TileGridsByDirectory;
    CLazy<uint64_t, 0> _NumOfDirectoriesOfFrames;
    CZelMetaDataForImgFrames _ZelMetaDataForImgFrames;
    std::map<uint32_t, CFrame*> FramesIndexedByTiffIfdIdx;
};

} // namespace Zel
