#include "CommonUtil/Assertion.h"
#include "CommonUtil/Log.h"
#include "ZelLoader/TagTree/ZelTagTreeReader.h"

#include <new>

// The part of the tree's reader that finds blobs and fetches the trees of measured objects out of them.

namespace Zel
{

namespace
{

constexpr uint32_t BlobVersionWithZelTags = 3;
constexpr uint32_t NumOfBlobTypes = 3;

} // namespace

/// Gives back what an object took of the budget that could not be read in the end: it may be asked for again and again.
class CZelTagTreeReader::CBudgetOfObject
{
public:
    explicit CBudgetOfObject(CTreeBudget& budget) : _budget(budget), _before(budget) {}
    CBudgetOfObject(const CBudgetOfObject&) = delete;
    CBudgetOfObject& operator=(const CBudgetOfObject&) = delete;
    ~CBudgetOfObject()
    {
        if (!_isSpent)
            _budget = _before;
    }
    void Spend() { _isSpent = true; }

private:
    CTreeBudget& _budget;
    const CTreeBudget _before;
    bool _isSpent = false;
};

bool CZelTagTreeReader::ReadBlobHeader(uint32_t& sizeOfBlob, uint32_t& blobId, uint32_t& blobVersion)
{
    blobId = _Document.ReadUInt32();
    sizeOfBlob = _Document.ReadUInt32();
    blobVersion = _Document.ReadUInt32();
    return true;
}

std::unique_ptr<CZelDataFieldForBlob> CZelTagTreeReader::FinishReadingZelDataFieldForBlob(uint32_t tag,
                                                                                          uint32_t dataSizeInBytes,
                                                                                          uint32_t secondTag,
                                                                                          bool isDataInline)
{
    ZEL_ASSERT(!isDataInline);
    uint32_t sizeOfBlob = 0;
    uint32_t blobId = 0;
    uint32_t blobVersion = 0;
    ReadBlobHeader(sizeOfBlob, blobId, blobVersion);
    if (sizeOfBlob > dataSizeInBytes)
        ZEL_LOG("WARNING: Unexpected possibly fatal file format error: sizeOfBlob > dataSizeInBytes..trying with "
                "sizeOfBlob...");
    const uint64_t offset = _Document.GetCurrentOffset();
    // A version means something only together with the ID.
    if (IsZelBlobIdForAnyMeasurements(blobId) && blobVersion == BlobVersionWithZelTags)
        return std::make_unique<CZelDataFieldForBlobWithZelTags>(tag, secondTag, offset, blobId, blobVersion,
                                                                 sizeOfBlob);
    return std::make_unique<CZelDataFieldForBlob>(tag, secondTag, offset, blobId, blobVersion, sizeOfBlob);
}

bool CZelTagTreeReader::ReadMeasureBlobWithZelTags(CZelDataFieldForBlobWithZelTags& blobWithTags)
{
    _Document.Seek(blobWithTags.Offset(), BfrSeekDirection::BEGIN);
    const uint32_t blobVersion = _Document.ReadUInt32();
    ZEL_ASSERT(blobVersion == BlobVersionWithZelTags);
    const uint32_t blobType = _Document.ReadUInt32();
    ZEL_ASSERT(blobType < NumOfBlobTypes);
    const uint32_t numOfMeasurementObjs = _Document.ReadUInt32();
    // A number that the file cannot hold is not refused here: the objects that are there count, as before any bad one.
    return ReadMeasObjs(blobWithTags, numOfMeasurementObjs);
}

bool CZelTagTreeReader::ReadMeasObjs(CZelDataFieldForBlobWithZelTags& blobWithTags, uint32_t numOfMeasurementObjs)
{
    // Objects before a bad one stay. Memory or bytes that the machine did not give say nothing about the file: then the
    // blob is as if it had not been asked for.
    const CTreeBudget budgetBefore = _Budget;
    const auto forget = [&]
    {
        blobWithTags.ForgetMeasObjs();
        _Budget = budgetBefore;
    };
    _Document.ForgetFailure();
    try
    {
        for (uint32_t i = 0; i < numOfMeasurementObjs; ++i)
            if (!ReadMeasObj(blobWithTags))
                return false;
    }
    catch (const std::bad_alloc&)
    {
        forget();
        throw;
    }
    catch (...)
    {
        if (_Document.HasFailed())
            forget();
        throw;
    }
    return true;
}

bool CZelTagTreeReader::ReadMeasObj(CZelDataFieldForBlobWithZelTags& blobWithTags)
{
    CBudgetOfObject budget(_Budget);
    SkipXml();
    _Document.ReadUInt16();
    _Document.ReadUInt16();
    std::unique_ptr<CZelDataFieldForVolume> rootNode = ReadVolume(0, _Document.GetCurrentOffset(), 0);
    if (!rootNode)
        return false;
    blobWithTags.AddMeasObj(std::move(rootNode));
    budget.Spend();
    return true;
}

void CZelTagTreeReader::SkipXml()
{
    const uint32_t xmlSize = _Document.ReadUInt32();
    constexpr uint32_t sizeOfValueBeforeXml = sizeof(uint16_t);
    _Document.ReadUInt16();
    ZEL_ASSERT(xmlSize >= sizeOfValueBeforeXml); // it counts the value as well
    const uint64_t sizeOfText = xmlSize - sizeOfValueBeforeXml;
    ZEL_ASSERT(sizeOfText < NumOfBytesLeft());
    _Document.Seek(_Document.GetCurrentOffset() + sizeOfText, BfrSeekDirection::BEGIN);
    ZEL_LOG("Deleting xml as it is of no use for now...TODO: confirm!");
}

} // namespace Zel
