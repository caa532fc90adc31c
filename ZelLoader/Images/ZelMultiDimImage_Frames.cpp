// The frames of a stack.

#include "CommonUtil/Log.h"
#include "ZelLoader/Images/ZelFrame.h"
#include "ZelLoader/Images/ZelMultiDimImage.h"
#include "ZelLoader/Store/KorFile.h"

#include <algorithm>
#include <cerrno>
#include <limits>
#include <tuple>
#include <unordered_set>

namespace Zel
{

const CZelMetaDataForImgFrames& CZelMultiDimImage::ZelMetaDataForImgFrames()
{
    if (_ZelMetaDataForImgFrames.empty())
    {
        CZelMetaDataForImgFrames nodes;
        if (ZelMetaDataForImgFrames_init(nodes))
            _ZelMetaDataForImgFrames = std::move(nodes);
    }
    return _ZelMetaDataForImgFrames;
}

bool CZelMultiDimImage::ZelMetaDataForImgFrames_init(CZelMetaDataForImgFrames& varToInit)
{
    ZEL_ASSERT(varToInit.empty());
    const auto& frames = *_MetaData.ImgFrames();
    if (frames.empty())
        return true;
    const CNumOfPointsPerDim& counts = _DimensionOrder.NumOfPointsPerDimWithoutDummyEles();
    const bool framesAreAllchannelFrames = _DimensionOrder.ProductOfCounts() != frames.size();
    if (framesAreAllchannelFrames)
    {
        ZEL_ASSERT(counts.contains(DimensionType::DimensionType_C));
        uint64_t numOfFramesOfAChannel = 1;
        for (const auto& [type, count] : counts)
            if (type != DimensionType::DimensionType_C)
                numOfFramesOfAChannel = CutProduct(numOfFramesOfAChannel, count);
        ZEL_ASSERT(numOfFramesOfAChannel == frames.size());
    }
    const auto& dims = _DimensionOrder.ExistenceAndIdxOfZelZtlcDims();
    if (dims.empty())
    {
        ZEL_ASSERT(frames.size() == 1);
        varToInit.emplace(CFrameIdx(), frames.front().get());
        return true;
    }
    if (framesAreAllchannelFrames && dims.back() != DimensionType::DimensionType_C)
        oldAbortCommonUtil();
    size_t idxInImgFrames = 0;
    CFrameIdx frameIdx;
    ZelMetaDataForImgFrames_init_recursive(varToInit, dims.size() - 1, idxInImgFrames, frameIdx,
                                           framesAreAllchannelFrames);
    return true;
}

void CZelMultiDimImage::ZelMetaDataForImgFrames_init_recursive(CZelMetaDataForImgFrames& varToInit,
                                                               size_t idxInImgDimMeanings, size_t& idxInImgFrames,
                                                               CFrameIdx& frameIdx, bool framesAreAllchannelFrames)
{
    const DimensionType::E dType = _DimensionOrder.ExistenceAndIdxOfZelZtlcDims()[idxInImgDimMeanings];
    const auto dimension = Dimensions().find(dType);
    ZEL_ASSERT(dimension != Dimensions().end());
    const uint32_t numOfPoints = dimension->second->NumOfPoints();
    for (uint32_t coordIdx = 0; coordIdx < numOfPoints; ++coordIdx)
    {
        frameIdx.SetSubIdx(dType, coordIdx);
        if (idxInImgDimMeanings > 0)
            ZelMetaDataForImgFrames_init_recursive(varToInit, idxInImgDimMeanings - 1, idxInImgFrames, frameIdx,
                                                   framesAreAllchannelFrames);
        else
            AddFrameNode(varToInit, idxInImgFrames, frameIdx, framesAreAllchannelFrames,
                         !(framesAreAllchannelFrames && dType == DimensionType::DimensionType_C));
    }
}

void CZelMultiDimImage::AddFrameNode(CZelMetaDataForImgFrames& varToInit, size_t& idxInImgFrames,
                                     const CFrameIdx& frameIdx, bool framesAreAllchannelFrames, bool advance)
{
    const auto& frames = *_MetaData.ImgFrames();
    if (idxInImgFrames >= frames.size())
    {
        // Where channels share the frames, each channel walks the whole list again.
        ZEL_ASSERT(idxInImgFrames == frames.size() && framesAreAllchannelFrames);
        idxInImgFrames = 0;
    }
    ZEL_ASSERT(varToInit.emplace(frameIdx, frames[idxInImgFrames].get()).second);
    if (advance)
        ++idxInImgFrames;
}

std::unique_ptr<CFrame> CZelMultiDimImage::Frame_init(const CFrameIdx& frameIdx)
{
    const auto node = ZelMetaDataForImgFrames().find(frameIdx);
    ZEL_ASSERT(node != ZelMetaDataForImgFrames().end());
    auto frame = std::make_unique<CZelFrame>(*this, frameIdx, *node->second);
    if (UsesKorFile())
        return frame;
    if (_IsKorFileMissing)
        ThrowWithErrno(EREMOTE, "TODO: Get frames from coarse data...");
    ZEL_ASSERT(node->second->FrameTiffIfd());
    node->second->FrameTiffIfd()->IdxOfTiffIfd(); // asserts that the frame says which directory is its own
    return frame;
}

/// A frame has a node of its own, or shares one and holds a tile at least.
uint64_t CZelMultiDimImage::MaxNumOfFrames()
{
    if (!UsesKorFile())
        return _IsKorFileMissing ? std::numeric_limits<uint64_t>::max() : _MetaData.ImgFrames()->size();
    CKorFile* korFile = KorFile();
    return korFile ? korFile->MaxNumOfFramesWithTiles() + _MetaData.ImgFrames()->size() : 0;
}

uint64_t CZelMultiDimImage::NumOfDirectoriesOfFrames()
{
    const auto count = [this](uint64_t& number)
    {
        std::unordered_set<uint32_t> directories;
        for (const auto& frame : *_MetaData.ImgFrames())
            if (CZelMetaDataForFrameTiffIfd* ifd = frame->FrameTiffIfd(); ifd && ifd->DbgNode()->IsSecondTagPresent())
                directories.insert(ifd->IdxOfTiffIfd());
        number = std::max<uint64_t>(directories.size(), 1);
        return true;
    };
    return _NumOfDirectoriesOfFrames.Get(count);
}

CFrame* CZelMultiDimImage::NextFrameOnDisk(uint32_t idxOfTiffIfd)
{
    if (FramesIndexedByTiffIfdIdx.empty())
    {
        // Frames are made in the nest of Z, T, lambda and channel, and of those that share a directory the last counts.
        std::vector<CFrame*> frames;
        for (const auto& [idx, frame] : Frames())
            frames.push_back(frame.get());
        std::ranges::sort(frames, {},
                          [](const CFrame* frame)
                          {
                              const CFrameIdx& idx = frame->FrameIdx();
                              return std::tuple(idx.Z, idx.T, idx.L, idx.C);
                          });
        std::map<uint32_t, CFrame*> framesByIfd;
        for (CFrame* frame : frames)
            framesByIfd[static_cast<CZelFrame*>(frame)->TiffDirectory()] = frame;
        FramesIndexedByTiffIfdIdx = std::move(framesByIfd);
    }
    ZEL_ASSERT(FramesIndexedByTiffIfdIdx.contains(idxOfTiffIfd));
    const auto next = FramesIndexedByTiffIfdIdx.upper_bound(idxOfTiffIfd);
    return next == FramesIndexedByTiffIfdIdx.end() ? nullptr : next->second;
}

} // namespace Zel
