#include "ZelLoader/Images/ZelDimensionOrder.h"

#include "CommonUtil/Assertion.h"
#include "CommonUtil/Log.h"

#include <algorithm>
#include <cerrno>

namespace Zel
{

uint64_t CutProduct(uint64_t a, uint64_t b)
{
    constexpr uint64_t MaxProduct = uint64_t{1} << 63;
    uint64_t product = 0;
    return __builtin_mul_overflow(a, b, &product) ? MaxProduct : std::min(product, MaxProduct);
}

void CZelDimensionOrder::Clear()
{
    _ExistenceAndIdxOfZelZtlcDims.clear();
    _ExistenceAndIdxOfZelZtlcDimsIncludingDummyDims.clear();
    _isKnown = false;
}

void CZelDimensionOrder::Add(DimensionType::E type)
{
    if (type != DimensionType::DimensionType_Dummy)
        _ExistenceAndIdxOfZelZtlcDims.push_back(type);
    _ExistenceAndIdxOfZelZtlcDimsIncludingDummyDims.push_back(type);
}

const std::vector<DimensionType::E>& CZelDimensionOrder::ExistenceAndIdxOfZelZtlcDims() const
{
    ZEL_ASSERT(_isKnown);
    return _ExistenceAndIdxOfZelZtlcDims;
}

const std::vector<DimensionType::E>& CZelDimensionOrder::ExistenceAndIdxOfZelZtlcDimsIncludingDummyDims() const
{
    ZEL_ASSERT(_isKnown);
    return _ExistenceAndIdxOfZelZtlcDimsIncludingDummyDims;
}

bool CZelDimensionOrder::Has(DimensionType::E type) const
{
    const auto& dims = ExistenceAndIdxOfZelZtlcDims();
    return std::find(dims.begin(), dims.end(), type) != dims.end();
}

const CArrayStartAndSize<uint32_t>& CZelDimensionOrder::NumOfPointsPerDim() const
{
    const CArrayStartAndSize<uint32_t>* numOfPointsPerDim = _MetaData.NumOfPointsPerDim();
    ZEL_ASSERT(numOfPointsPerDim);
    return *numOfPointsPerDim;
}

const CNumOfPointsPerDim& CZelDimensionOrder::NumOfPointsPerDimWithoutDummyEles()
{
    if (_NumOfPointsPerDimWithoutDummyEles.empty())
    {
        CNumOfPointsPerDim counts;
        if (NumOfPointsPerDimWithoutDummyEles_init(counts))
            _NumOfPointsPerDimWithoutDummyEles = std::move(counts);
    }
    return _NumOfPointsPerDimWithoutDummyEles;
}

uint64_t CZelDimensionOrder::ProductOfCounts()
{
    uint64_t product = 1;
    for (const auto& [type, count] : NumOfPointsPerDimWithoutDummyEles())
        product = CutProduct(product, count);
    return product;
}

const std::vector<DimensionType::E>& CZelDimensionOrder::DumminessOfNumOfPointsPerDim()
{
    NumOfPointsPerDimWithoutDummyEles();
    return _DumminessOfNumOfPointsPerDim;
}

void CZelDimensionOrder::AssertIsDummyEle(uint32_t idx) const
{
    ZEL_ASSERT(NumOfPointsPerDim().Arr[idx] == 1);
}

bool CZelDimensionOrder::NumOfPointsPerDimWithoutDummyEles_init(CNumOfPointsPerDim& varToInit)
{
    ZEL_ASSERT(varToInit.empty());
    if (!_MetaData.NumOfPointsPerDim())
    {
        errno = ENOEXEC;
        return false;
    }
    const CArrayStartAndSize<uint32_t>& numOfPointsPerDim = NumOfPointsPerDim();
    const auto numOfZtlcDims = static_cast<uint32_t>(ExistenceAndIdxOfZelZtlcDims().size());
    _DumminessOfNumOfPointsPerDim.clear();
    if (numOfZtlcDims == 0)
    {
        AddTrailingDummies(false);
        return true;
    }
    const auto& dimsIncludingDummies = ExistenceAndIdxOfZelZtlcDimsIncludingDummyDims();
    const auto numOf2007tags = static_cast<uint32_t>(_MetaData.Dimensions()->size());
    ZEL_ASSERT(numOfPointsPerDim.Size > 0);
    ZEL_ASSERT(numOfPointsPerDim.Size >= numOfZtlcDims);
    ZEL_ASSERT(dimsIncludingDummies.size() == numOf2007tags);
    if (numOfPointsPerDim.Size < numOf2007tags)
        ZEL_LOG("STRANGE!!! numOf2007tags=%u, numOfPointsPerDim.Size=%u!!!", numOf2007tags, numOfPointsPerDim.Size);

    const bool numOfPointsPerDimContainsNoDummyEles = numOfPointsPerDim.Size == numOfZtlcDims;
    uint32_t idxIntoNumOfPointsPerDim = 0;
    for (uint32_t idxIn2007s = 0; idxIn2007s < numOf2007tags; ++idxIn2007s)
    {
        const DimensionType::E dimType = dimsIncludingDummies[idxIn2007s];
        if (!numOfPointsPerDimContainsNoDummyEles)
            idxIntoNumOfPointsPerDim = idxIn2007s;
        if (dimType != DimensionType::DimensionType_Dummy)
        {
            ZEL_ASSERT(idxIntoNumOfPointsPerDim < numOfPointsPerDim.Size);
            _DumminessOfNumOfPointsPerDim.push_back(dimType);
            ZEL_ASSERT(varToInit.emplace(dimType, numOfPointsPerDim.Arr[idxIntoNumOfPointsPerDim]).second);
            if (numOfPointsPerDimContainsNoDummyEles)
                ++idxIntoNumOfPointsPerDim;
        }
        else if (!numOfPointsPerDimContainsNoDummyEles && idxIntoNumOfPointsPerDim < numOfPointsPerDim.Size)
        {
            AssertIsDummyEle(idxIntoNumOfPointsPerDim);
            _DumminessOfNumOfPointsPerDim.push_back(DimensionType::DimensionType_Dummy);
            ZEL_ASSERT(_DumminessOfNumOfPointsPerDim.size() == idxIntoNumOfPointsPerDim + 1);
        }
    }
    AddTrailingDummies(numOfPointsPerDimContainsNoDummyEles);
    return true;
}

void CZelDimensionOrder::AddTrailingDummies(bool numOfPointsPerDimContainsNoDummyEles)
{
    const auto numOfKnownEles = static_cast<uint32_t>(_DumminessOfNumOfPointsPerDim.size());
    const uint32_t numOfEles = NumOfPointsPerDim().Size;
    if (numOfEles <= numOfKnownEles)
        return;
    ZEL_ASSERT(!numOfPointsPerDimContainsNoDummyEles);
    for (uint32_t i = 0; i < numOfEles - numOfKnownEles; ++i)
    {
        AssertIsDummyEle(i); // counted from the start of the list, not from its tail: files rely on it
        _DumminessOfNumOfPointsPerDim.push_back(DimensionType::DimensionType_Dummy);
    }
}

} // namespace Zel
