#pragma once
#include "CommonUtil/BasicArray.h"
#include "CommonUtil/BinaryFileReader.h"
#include "ZelLoader/TagTree/IfdOffsets.h"
#include "ZelLoader/TagTree/ZelDataField.h"

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace Zel
{

using namespace CommonUtil;

/// Volumes may lie in each other this deep, the outermost one included.
constexpr uint32_t MaxDepthOfVolumes = 200;

/// The 24 bytes at the start of a volume. A header that was rejected stays as it is here: it has no children.
struct CVolumeHeader
{
    uint16_t MyOwnSize = 0;                  ///< must be 24
    uint16_t FixedNum = 0;                   ///< must be 21073
    uint32_t Version = 0;                    ///< means nothing to this reader
    uint64_t RelativeOffsetOfFirstChild = 0; ///< from the start of the volume
    uint32_t NumOfChildren = 0;
};

/// Reads tag trees out of a document: its own, which starts at byte 8 of the file, and those in its measurement blobs.
///
/// A tree is a web of offsets that anyone may have written, so that a volume may contain itself. Reading is bounded:
/// all trees of a document together hold at most as many fields as the file could hold side by side, arrays of at most
/// 64 MB or four times the file, whichever is more, and are at most MaxDepthOfVolumes deep; one more is a failed
/// assertion. All that is read must lie in the file (assertion). The document's errno must be 0 when an operation
/// starts and is asserted to stay so.
class CZelTagTreeReader
{
public:
    /// `document` must outlive the reader, and the reader the use of the trees that it gave out. `strictMode`: a value
    /// that cannot be read gives up the volume that holds it, instead of the value alone.
    CZelTagTreeReader(CBinaryFileReader& document, bool strictMode);

    bool StrictMode() const { return _StrictMode; }
    /// Where the file's header says that the first TIFF directory lies; 0 until it was set. Nodes take it when they are
    /// read, so it is to be set before the tree is.
    uint32_t OffsetOfFirstIfd() const { return _OffsetOfFirstIfd; }
    void SetOffsetOfFirstIfd(uint32_t offset) { _OffsetOfFirstIfd = offset; }

    /// The volume whose header lies at `offset`, with all that is below it, under the tags given. Null when a value
    /// below could not be read in strict mode. A rejected header gives an empty volume; a chain of children that is
    /// shorter or longer than the header's count is logged and read as far as both go.
    std::unique_ptr<CZelDataFieldForVolume> ReadVolume(uint32_t tag, uint64_t offset, uint32_t secondTag);
    /// False for a header that is none. A volume with a name ends the process: nobody knows how to read one.
    bool ReadVolumeHeader(uint64_t offset, CVolumeHeader& volHdr);
    /// Reads the field at `zelDataFieldOffset` and appends its node to `vol`; a field that cannot be used is left out.
    /// Puts the offset of the field's next sibling, from the volume's start, into `zelDataFieldOffset`; 0 on the last.
    /// False when the volume must be given up.
    bool ReadZelDataField(uint64_t& zelDataFieldOffset, CZelDataFieldForVolume* vol);

    // The rest of a field, the stream standing behind its header. Null when there is nothing to keep.
    std::unique_ptr<CZelDataField> FinishReadingZelDataFieldForExtendedTypes(uint32_t tag, int32_t fieldType,
                                                                             uint32_t secondTag);
    std::unique_ptr<CZelDataFieldForSimpleTypes>
    FinishReadingZelDataFieldForSimpleTypes(uint32_t tag, int32_t fieldType, uint32_t dataSizeInBytes,
                                            uint32_t secondTag, bool isArray, bool isDataInline);
    std::unique_ptr<CZelDataFieldForBlob> FinishReadingZelDataFieldForBlob(uint32_t tag, uint32_t dataSizeInBytes,
                                                                           uint32_t secondTag, bool isDataInline);

    /// What a type code and a stored size mean: how many elements of which type and size, and whether the code is one
    /// for arrays. False for an unknown code. A size that breaks the code's rule is a failed assertion.
    bool ParseDataSizeInBytesAndFieldType(int32_t fieldType, bool isDataInline, uint32_t dataSizeInBytes,
                                          bool& fieldTypeIndicatesArray, uint32_t& numOfEles, int32_t& eleType,
                                          uint32_t& eleSizeInBytes) const;
    /// The array of `arrSizeInBytes` bytes at the stream's position. Text is widened to 32 bits a character, and a
    /// terminating zero is put behind it.
    std::unique_ptr<CBasicArray> ReadDataArray(uint32_t eleSize, uint32_t arrSizeInBytes, int32_t zelFieldType);

    /// Reads the three numbers at the stream's position; true.
    bool ReadBlobHeader(uint32_t& sizeOfBlob, uint32_t& blobId, uint32_t& blobVersion);
    /// Fetches the objects of a measurement blob into its node. To be called only while the node holds none. False when
    /// an object's tree could not be read; the objects before it stay.
    bool ReadMeasureBlobWithZelTags(CZelDataFieldForBlobWithZelTags& blobWithTags);

    /// The tags on the way to the field that is being read, "\2000\2001\2002".
    std::string DbgTagPathToString() const;
    /// These tags, and these tags with the number of earlier siblings with that tag behind each. Empty before and after
    /// a read that went well; after one that was given up they tell where.
    const std::vector<uint32_t>& DbgTagPath() const { return _DbgTagPath; }
    const std::vector<uint32_t>& DbgTagPathWithIndex() const { return _DbgTagPathWithIndex; }

private:
    struct CFieldHeader;
    /// What was read of all trees of the document, which the size of the file limits.
    struct CTreeBudget
    {
        uint64_t NumOfFieldHeadersRead = 0;
        uint64_t NumOfArrayBytes = 0; ///< as they lie in memory
    };
    class CBudgetOfObject;

    CFieldHeader ReadFieldHeader(uint64_t offset, CZelDataFieldForVolume& vol);
    bool FinishReadingValue(const CFieldHeader& header, std::unique_ptr<CZelDataField>& node);
    std::optional<CDataWithType> ReadNumber(int32_t fieldType, bool isDataInline);
    void TakeArrayBytes(uint64_t numOfBytes);
    std::unique_ptr<CBasicArray> ReadText(uint32_t eleSize, uint32_t sizeInBytes);
    bool ReadMeasObjs(CZelDataFieldForBlobWithZelTags& blobWithTags, uint32_t numOfMeasurementObjs);
    bool ReadMeasObj(CZelDataFieldForBlobWithZelTags& blobWithTags);
    void SkipXml();
    uint64_t NumOfBytesLeft();
    void PushDbgTag(uint32_t tag, uint32_t numOfEarlierSiblings);
    void PopDbgTag();
    void ForgetDbgTags();

    CBinaryFileReader& _Document;
    CIfdOffsets _IfdOffsets;
    bool _StrictMode;
    uint32_t _OffsetOfFirstIfd = 0;
    uint32_t _DepthOfVolumes = 0;
    CTreeBudget _Budget;
    std::vector<uint32_t> _DbgTagPath;
    std::vector<uint32_t> _DbgTagPathWithIndex;
};

} // namespace Zel
