#pragma once
#include "CommonImageAccess/DimensionType.h"

#include <cstdint>
#include <limits>
#include <map>
#include <memory>
#include <vector>

namespace CIA
{

class CMultiDimImage;

/// One axis of an image: an ordered list of points, each with an index and a value in the units of the model. Every
/// property is worked out on first use; a failure leaves NaN or 0xFFFFFFFF and the next call tries again.
class CDimension
{
public:
    CDimension(DimensionType::E type, CMultiDimImage& parent) : _Type(type), _ParentMultiDimImg(parent) {}
    virtual ~CDimension() = default;
    CDimension(const CDimension&) = delete;
    CDimension& operator=(const CDimension&) = delete;

    virtual const wchar_t* Name() = 0;
    /// False while the first point is being worked out, when the last one cannot be had yet.
    virtual bool DbgIsCallingLastPointAllowed() { return !DbgIsFirstPointBeingInitialized; }

    DimensionType::E Type() const { return _Type; }
    CMultiDimImage& ParentMultiDimImg() const { return _ParentMultiDimImg; }

    /// Clears errno. Evenly spaced as declared by the source, or because all gaps agree to 6 significant digits; two
    /// points always are, one never is. False with errno when the source failed.
    bool HasEvenlySpacedPoints();
    /// Clears errno.
    bool IsEachPointAPixel();
    /// 0xFFFFFFFF: unknown.
    uint32_t NumOfPoints() { return _NumOfPoints != 0xFFFFFFFF ? _NumOfPoints : WorkOutNumOfPoints(); }
    // NaN: unknown, and a NaN is what differs from itself.
    double FirstPoint() { return _FirstPoint == _FirstPoint ? _FirstPoint : WorkOutFirstPoint(); }
    double LastPoint() { return _LastPoint == _LastPoint ? _LastPoint : WorkOutLastPoint(); }
    /// The distance from one point to the next, negative when the values fall; NaN: unknown. Asked of an uneven
    /// dimension it is a failed assertion.
    double GapBetweenPoints();
    /// The points, when they are kept one by one; empty for a dimension that the source declares even.
    const std::vector<double>& Points();
    /// The unit text in the model's vocabulary, null when there is none. It lives for ever.
    const wchar_t* Units();
    /// The unit text of the document, null when it has none.
    virtual const wchar_t* NativeUnits() = 0;

    uint32_t MaxIdx();
    bool IsValidCoordIdx(uint32_t idx) { return idx <= MaxIdx(); }
    /// True when `value` lies between the first and the last point; asserts that the values do not fall.
    bool IsValidCoordinate(double value)
    {
        if (_FirstPoint <= _LastPoint) [[likely]] // both are known: a NaN compares with nothing
            return value >= _FirstPoint && value <= _LastPoint;
        return IsBetweenFirstAndLastPoint(value);
    }
    /// The value at an index; X and Y may be asked beyond their end, the others not (assertion).
    double Value(uint32_t index);
    /// The index of a value: the nearest one when evenly spaced, else the last point that is not beyond the value;
    /// 0xFFFFFFFF when the value does not lie on this dimension.
    uint32_t Idx(double value);

protected:
    virtual bool HasEvenlySpacedPoints_init(bool& varToInit) = 0;
    virtual bool FirstPoint_init(double& varToInit) = 0;
    virtual bool NumOfPoints_init(uint32_t& varToInit) = 0;
    virtual bool GapBetweenPoints_init(double& varToInit) = 0;
    virtual bool Points_init(std::vector<double>& varToInit) = 0;
    virtual bool IsEachPointAPixel_init(bool& varToInit) = 0;

    bool DbgIsFirstPointInitNotYetCalled = true;
    bool DbgIsFirstPointBeingInitialized = false;

private:
    bool HasEvenlySpacedPoints_init_andChangeToEvenlySpacedIfNeeded_core(bool& varToInit);
    uint32_t WorkOutNumOfPoints();
    double WorkOutFirstPoint();
    double WorkOutLastPoint();
    bool _FirstPoint_init(double& varToInit);
    bool _NumOfPoints_init(uint32_t& varToInit);
    bool _Points_init(std::vector<double>& varToInit);
    bool LastPoint_init(double& varToInit);
    bool Units_init(const wchar_t*& varToInit);
    bool IsBetweenFirstAndLastPoint(double value);
    void AssertImagesHaveEqualNativeUnits();
    uint32_t IdxOnUnevenPoints(double value, bool IsDescending);
    uint32_t IdxOnEvenPoints(double value);

    DimensionType::E _Type;
    CMultiDimImage& _ParentMultiDimImg;
    double _FirstPoint = std::numeric_limits<double>::quiet_NaN();
    double _LastPoint = std::numeric_limits<double>::quiet_NaN();
    double _GapBetweenPoints = std::numeric_limits<double>::quiet_NaN();
    uint32_t _NumOfPoints = 0xFFFFFFFF;
    const wchar_t* _Units = nullptr;
    std::vector<double> _Points;
    bool _HasEvenlySpacedPoints = false;
    bool _HasEvenlySpacedPoints__IsInited = false;
    bool _IsEachPointAPixel = false;
    bool _IsEachPointAPixel__IsInited = false;
};

using CDimensions = std::map<DimensionType::E, std::unique_ptr<CDimension>>;
using CDimensionRefs = std::map<DimensionType::E, CDimension*>; ///< borrowed from a CDimensions

/// A dimension whose points are counted from 0: channels and pyramid levels.
class CUnitlessDimension : public CDimension
{
public:
    using CDimension::CDimension;
    const wchar_t* NativeUnits() override;

protected:
    bool HasEvenlySpacedPoints_init(bool& varToInit) override;
    bool FirstPoint_init(double& varToInit) override;
    bool GapBetweenPoints_init(double& varToInit) override;
    bool Points_init(std::vector<double>& varToInit) override;
    bool IsEachPointAPixel_init(bool& varToInit) override;
};

/// The channels of an image, counted only when asked for.
class CChannelDimension : public CUnitlessDimension
{
public:
    explicit CChannelDimension(CMultiDimImage& parent) : CUnitlessDimension(DimensionType::DimensionType_C, parent) {}
    const wchar_t* Name() override { return L"Dimension for Color Channels"; }

protected:
    bool NumOfPoints_init(uint32_t& varToInit) override;
};

/// The pyramid levels of an image, counted only when asked for.
class CPyramidDimension : public CUnitlessDimension
{
public:
    explicit CPyramidDimension(CMultiDimImage& parent) : CUnitlessDimension(DimensionType::DimensionType_P, parent) {}
    const wchar_t* Name() override { return L"Dimension for Deepzoom Pyramid Levels"; }

protected:
    bool NumOfPoints_init(uint32_t& varToInit) override;
};

} // namespace CIA
