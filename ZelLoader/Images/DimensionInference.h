#pragma once
#include "ZelLoader/Images/ZelDimension.h"
#include "ZelLoader/Images/ZelDimensionOrder.h"

#include <map>
#include <string>
#include <unordered_set>
#include <vector>

namespace Zel
{

class CZelMultiDimImage;

/// Works out Z, T and lambda of an image. The file tells them in three places that overlap: the start and step of its
/// dimension tags, the counts of points, and the coordinates of single frames. Where they disagree, a frame's own
/// coordinate wins over a step, and a log line is all that comes of it, unless the file cannot be served at all.
class CDimensionInference
{
public:
    /// Both must outlive this.
    CDimensionInference(CZelMultiDimImage& image, CZelDimensionOrder& order) : _image(image), _order(order) {}

    /// Adds Z, T and lambda as far as the image has them. False, with errno where there is a reason, when it has to be
    /// given up.
    bool AddDimensions(CDimensions& varToInit);

private:
    /// One dimension as it is being gathered.
    struct CGatheredDim : CZelNonPixDimWithUnits_MetaData
    {
        std::unordered_set<double> PointsSeen; ///< those in Points

        void AddPoint(double value)
        {
            Points.push_back(value);
            PointsSeen.insert(value);
        }
    };
    using CZelDimMetaDatas = std::map<DimensionType::E, CGatheredDim>;

    bool GetDimDataFromDimChannels();
    bool GetDimDataFromDimChannel(CZelMetaDataForDimensionChannel& channel);
    void GetZDimDataFromDimChannel(CZelMetaDataForDimensionChannel& channel);
    void GetTDimDataFromDimChannel(CZelMetaDataForDimensionChannel& channel);
    void GetLDimDataFromDimChannel(CZelMetaDataForDimensionChannel& channel);
    void Put(DimensionType::E type, double firstPoint, double gap);
    void PutZ(double firstPoint, double gap);

    bool GetOrValidateDimMetaDatasFromFrames();
    bool CountFrames(uint64_t frameCount);
    void MultiplyCounts(bool withChannels);
    bool DontAddToPointsOfTDim(uint64_t frameNumber);
    void GetOrValidateDimMetaDatasFromFrame(CZelMetaDataForFrameProperties& frameProperties,
                                            bool dontAddToPointsOfTDim);
    void GetOrValidateDimMetaDataFromFrame(CGatheredDim& dimMetaData, CZelMetaDataForFrameProperties& frameProperties,
                                           bool dontAddToPointsOfTDim);
    void CountFrameWithoutCoordinate(CGatheredDim& dimMetaData);
    void IfNeededUpdateGapBetweenPointsForUnevenlySpacedFrame(CGatheredDim& dimMetaData);
    void ValidateFirstPointVsCoordOfThisFrame(const CGatheredDim& dimMetaData, double coordValue);
    void ValidateConvertedCoordValueAndIfNeededAddToPoints(CGatheredDim& dimMetaData, double coordValue,
                                                           bool dontAddToPointsOfTDim);
    bool CloseGatheredDims();
    static void LogThatStepIsZero();
    bool FinalizeDimCacheUsingZelFieldForNumOfPointsPerDim(CDimensions& varToInit);
    uint32_t CountOf(DimensionType::E type);

    CZelMultiDimImage& _image;
    CZelDimensionOrder& _order;
    CZelDimMetaDatas _dimMetaDatas;
    uint64_t _productOfCounts = 1;
    uint64_t _numOfFramesAfterWhichTimeIndexIncrements = 1;
    bool _tDimEncountered = false;
};

} // namespace Zel
