#pragma once
#include "CommonImageAccess/ObjectiveLens.h"
#include "ZelLoader/Images/ZelMultiDimImage.h"

namespace Zel
{

/// The device subtypes that mean something here.
constexpr int32_t DeviceSubTypeOfCamera = 0; ///< also that of a device that tells none
constexpr int32_t DeviceSubTypeOfRevolver = 20000;

/// The lens that the revolver of a stack's optical path carries.
class CZelObjectiveLens : public CObjectiveLens
{
public:
    CZelObjectiveLens(CZelMetaDataForStackLevelDevicePropSet& metaData, CZelMultiDimImage& image)
        : MetaData(metaData), ParentMultiDimImg(image)
    {
    }

    const wchar_t* Name() override;
    double Magnification() override;
    const wchar_t* ImmersionMedium() override;
    /// That of the stack, else of the first channel that tells one; 0, with ENOEXEC where a revolver tells nothing.
    double NumericalAperture() override;
    double WorkingDistance() override;
    const wchar_t* WorkingDistanceUnits() override;
    double RefractiveIndex() override;

private:
    CZelMetaDataForStackLevelDevicePropSet& MetaData;
    CZelMultiDimImage& ParentMultiDimImg;
};

} // namespace Zel
