#pragma once
#include "CommonImageAccess/PixelDimension.h"
#include "ZelLoader/Catalogue/ZELFormat.h"

#include <vector>

namespace Zel
{

using namespace CIA;
using namespace CommonUtil;

/// Marks a dimension whose start the file does not tell.
constexpr double NoFirstPoint = 4294967295.0;

/// What is known of Z, T or lambda of an image, gathered from several places of the file. Values are in model units.
struct CZelNonPixDimWithUnits_MetaData
{
    uint32_t NumOfPoints = 0;   ///< filled last
    std::vector<double> Points; ///< in the order in which frames told them
    double _FirstPoint = NoFirstPoint;
    double _GapBetweenPoints = 0; ///< 0: unevenly spaced
    DimensionType::E _DimType = DimensionType::DimensionType_Dummy;
};

/// X or Y of an image of this format.
class CZelDimensionWithPixels : public CPixelDimension
{
public:
    /// `metaData` must live as long as the dimension.
    CZelDimensionWithPixels(DimensionType::E type, CMultiDimImage& image, CZelMetaDataForMultiDimImgProps& metaData)
        : CPixelDimension(type, image), MetaData(metaData)
    {
    }

    const wchar_t* NativeUnits() override;

protected:
    bool HasEvenlySpacedPoints_init(bool& varToInit) override;
    bool NumOfPoints_init(uint32_t& varToInit) override;
    bool GapBetweenPoints_init(double& varToInit) override;
    bool Points_init(std::vector<double>& varToInit) override;

private:
    bool NativeUnits_init(const wchar_t*& varToInit);

    CZelMetaDataForMultiDimImgProps& MetaData;
    const wchar_t* _NativeUnits = nullptr;
};

/// Z, T or lambda of an image of this format.
class CZelNonPixelDimensionWithUnits : public CDimension
{
public:
    CZelNonPixelDimensionWithUnits(CMultiDimImage& image, CZelNonPixDimWithUnits_MetaData metaData)
        : CDimension(metaData._DimType, image), MetaData(std::move(metaData))
    {
    }

    const wchar_t* Name() override { return DimensionName(Type()); }
    /// A constant by type: the values were converted already, whatever the file's own unit was.
    const wchar_t* NativeUnits() override;

protected:
    bool HasEvenlySpacedPoints_init(bool& varToInit) override;
    bool FirstPoint_init(double& varToInit) override;
    bool NumOfPoints_init(uint32_t& varToInit) override;
    bool GapBetweenPoints_init(double& varToInit) override;
    bool Points_init(std::vector<double>& varToInit) override;
    bool IsEachPointAPixel_init(bool& varToInit) override;

private:
    void AssertIsEven();

    CZelNonPixDimWithUnits_MetaData MetaData;
};

} // namespace Zel
