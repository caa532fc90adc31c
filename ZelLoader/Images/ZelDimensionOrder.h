#pragma once
#include "CommonImageAccess/DimensionType.h"
#include "ZelLoader/Catalogue/ZELFormat.h"

#include <cstdint>
#include <map>
#include <optional>
#include <vector>

namespace Zel
{

using namespace CIA;
using namespace CommonUtil;

using CNumOfPointsPerDim = std::map<DimensionType::E, uint32_t>;

/// Which of Z, T, lambda and C an image has, in the order of its dimension tags, and how many points each one has. A
/// dimension tag without entries is a dummy: a placeholder that the list of counts may or may not have an element for.
/// Frames and the records of a tile store are numbered in this order.
class CZelDimensionOrder
{
public:
    /// `metaData` must outlive this.
    explicit CZelDimensionOrder(CZelMetaDataForMultiDimImg& metaData) : _MetaData(metaData) {}

    /// Starts the lists anew; to be followed by an Add for each dimension tag and one SetIsKnown.
    void Clear();
    void Add(DimensionType::E type); ///< DimensionType_Dummy for a dummy
    void SetIsKnown() { _isKnown = true; }

    // The lists; asking before the dimension tags were read is a failed assertion.
    const std::vector<DimensionType::E>& ExistenceAndIdxOfZelZtlcDims() const;
    const std::vector<DimensionType::E>& ExistenceAndIdxOfZelZtlcDimsIncludingDummyDims() const;
    bool Has(DimensionType::E type) const;

    /// The counts by dimension; empty on failure, with errno, and for an image that has none of the four.
    const CNumOfPointsPerDim& NumOfPointsPerDimWithoutDummyEles();
    /// The product of the counts, cut to 2^63.
    uint64_t ProductOfCounts();
    /// The dimension of each element of the stored list of counts, dummies included.
    const std::vector<DimensionType::E>& DumminessOfNumOfPointsPerDim();
    /// The stored list of counts itself; asserts that there is one.
    const CArrayStartAndSize<uint32_t>& NumOfPointsPerDim() const;

private:
    bool NumOfPointsPerDimWithoutDummyEles_init(CNumOfPointsPerDim& varToInit);
    void AddTrailingDummies(bool numOfPointsPerDimContainsNoDummyEles);
    void AssertIsDummyEle(uint32_t idx) const;

    CZelMetaDataForMultiDimImg& _MetaData;
    bool _isKnown = false;
    std::vector<DimensionType::E> _ExistenceAndIdxOfZelZtlcDims;
    std::vector<DimensionType::E> _ExistenceAndIdxOfZelZtlcDimsIncludingDummyDims;
    CNumOfPointsPerDim _NumOfPointsPerDimWithoutDummyEles;
    std::vector<DimensionType::E> _DumminessOfNumOfPointsPerDim;
};

/// `a` times `b`, cut to 2^63: products of counts that a file only claims must not wrap.
uint64_t CutProduct(uint64_t a, uint64_t b);

} // namespace Zel
