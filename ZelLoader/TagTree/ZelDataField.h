#pragma once
#include "CommonImageAccess/TiffIfd.h"
#include "CommonUtil/BinaryFileReader.h"
#include "CommonUtil/DataWithType.h"
#include "ZelLoader/TagTree/IfdOffsets.h"

#include <cstdint>
#include <memory>
#include <unordered_map>
#include <vector>

namespace Zel
{

using namespace CommonUtil;

class CZelImgDocMetaData;

/// The second tag of a field that has none. A field that stores this very number has none either.
constexpr uint32_t SecondTagAbsent = 4294967295u;

enum ZelDataFieldType
{
    ZelDataFieldForSimpleTypes = 0,
    ZelDataFieldForVolume = 1,
    ZelDataFieldForTiffIfd = 2,
    ZelDataFieldForBlob = 3
};

/// A node of the tag tree: a volume, or a leaf of one of three kinds. A volume owns the nodes below it; who read the
/// tree owns the root. Nodes do not change once the tree was read, except for what they fetch on demand.
class CZelDataField
{
public:
    virtual ~CZelDataField() = default;
    /// Logs the address and the tags of this node and of all nodes below it: it tells on which node a wrapper stands.
    virtual void DbgPrintAllPointers() const;

    CZelDataField(const CZelDataField&) = delete;
    CZelDataField& operator=(const CZelDataField&) = delete;

    /// What the field is; a number means something only under its parent.
    uint32_t Tag() const { return _Tag; }
    /// An index or ID, by the tag; SecondTagAbsent when there is none.
    uint32_t SecondTag() const { return _SecondTag; }
    bool IsSecondTagPresent() const { return _SecondTag != SecondTagAbsent; }
    ZelDataFieldType Type() const { return _Type; }

protected:
    CZelDataField(uint32_t tag, uint32_t secondTag, ZelDataFieldType type)
        : _Tag(tag), _SecondTag(secondTag), _Type(type)
    {
    }

private:
    uint32_t _Tag;
    uint32_t _SecondTag;
    ZelDataFieldType _Type;
};

/// An inner node.
class CZelDataFieldForVolume : public CZelDataField
{
public:
    CZelDataFieldForVolume(uint32_t tag, uint32_t secondTag) : CZelDataField(tag, secondTag, ZelDataFieldForVolume) {}
    void DbgPrintAllPointers() const override;

    /// The child nodes, in the order of the chain.
    const std::vector<std::unique_ptr<CZelDataField>>& Children() const { return _Children; }
    void AddChild(std::unique_ptr<CZelDataField> child) { _Children.push_back(std::move(child)); }
    /// How many children bear the tag. In a big volume each child is looked at once, however often this is asked.
    uint32_t NumOfChildren(uint32_t tag) const;

private:
    /// The children counted so far, by tag. Kept for big volumes only.
    struct CTagCounts
    {
        std::unordered_map<uint32_t, uint32_t> NumOfChildrenByTag;
        size_t NumOfChildrenCounted = 0;
    };

    std::vector<std::unique_ptr<CZelDataField>> _Children;
    mutable std::unique_ptr<CTagCounts> _TagCounts;
};

/// A number, a text or an array of numbers.
class CZelDataFieldForSimpleTypes : public CZelDataField
{
public:
    CZelDataFieldForSimpleTypes(int32_t origFieldType, uint32_t tag, CDataWithType dataWithType, uint32_t secondTag)
        : CZelDataField(tag, secondTag, ZelDataFieldForSimpleTypes), _DataWithType(std::move(dataWithType)),
          _OrigFieldType(origFieldType)
    {
    }

    CDataWithType& DataWithType() { return _DataWithType; }
    /// The type code as it stood in the file.
    int32_t OrigFieldType() const { return _OrigFieldType; }

private:
    CDataWithType _DataWithType;
    int32_t _OrigFieldType;
};

/// A reference to one of the TIFF directories of the same file; the second tag is its number in their chain, from 0.
class CZelDataFieldForTiffIfd : public CZelDataField
{
public:
    /// `ifdOffsets` belongs to the document and must live as long as TiffIfd() may be asked for.
    CZelDataFieldForTiffIfd(uint32_t tag, uint32_t secondTag, uint32_t offsetOfFirstIfd, CIfdOffsets& ifdOffsets)
        : CZelDataField(tag, secondTag, ZelDataFieldForTiffIfd), OffsetOfFirstIfd(offsetOfFirstIfd),
          _IfdOffsets(ifdOffsets)
    {
    }

    /// The directory, read from the document's file on first use and kept. A directory that the chain does not reach,
    /// or that does not lie in the file, is a failed assertion; the next call tries again.
    CIA::CTiffIfd& TiffIfd(CBinaryFileReader& b);

private:
    uint32_t OffsetOfFirstIfd;
    CIfdOffsets& _IfdOffsets;
    std::unique_ptr<CIA::CTiffIfd> _TiffIfd;
};

/// What a blob holds. Numbers of the file format; others may occur.
enum ZelBlobID : uint32_t
{
    ZelBlobIdForUnknown = 0,
    ZelBlobIdForMask = 1,
    ZelBlobIdForParticle = 2,
    ZelBlobIdForMeasurements = 3,
    ZelBlobIdForRoiMeasurements = 4,
    ZelBlobIdForChannelMeasurements = 5,
    ZelBlobIdForMacroSlideImage = 6,
    ZelBlobIdForLineProfile = 7,
    ZelBlobIdForHolder = 8,
    ZelBlobIdForParticleMeasurementCache = 9,
    ZelBlobIdForTaxonomyFrame = 10,
    ZelBlobIdForTaxonomyImage = 11,
    ZelBlobIdForKymograph = 12
};

/// True for the three kinds of measurements.
bool IsZelBlobIdForAnyMeasurements(uint32_t blobId);

/// A place in the file. Only the blob's header was read: whoever reads the payload finds out whether it is there.
class CZelDataFieldForBlob : public CZelDataField
{
public:
    CZelDataFieldForBlob(uint32_t tag, uint32_t secondTag, uint64_t offset, uint32_t blobId, uint32_t blobVersion,
                         uint32_t dataSizeInBytes)
        : CZelDataField(tag, secondTag, ZelDataFieldForBlob), _Offset(offset), _BlobId(blobId),
          _BlobVersion(blobVersion), _DataSizeInBytes(dataSizeInBytes)
    {
    }

    uint64_t Offset() const { return _Offset; } ///< of the payload, in the file
    uint32_t BlobId() const { return _BlobId; } ///< a ZelBlobID, if it is known
    uint32_t BlobVersion() const { return _BlobVersion; }
    uint32_t DataSizeInBytes() const { return _DataSizeInBytes; } ///< of the payload, as the blob's header tells it

private:
    uint64_t _Offset;
    uint32_t _BlobId;
    uint32_t _BlobVersion;
    uint32_t _DataSizeInBytes;
};

/// A measurement blob whose payload is a row of tag trees, one for each measured object.
class CZelDataFieldForBlobWithZelTags : public CZelDataFieldForBlob
{
public:
    CZelDataFieldForBlobWithZelTags(uint32_t tag, uint32_t secondTag, uint64_t offset, uint32_t blobId,
                                    uint32_t blobVersion, uint32_t dataSizeInBytes);
    ~CZelDataFieldForBlobWithZelTags() override;
    void DbgPrintAllPointers() const override;

    /// The root of each tree, in file order; empty until CZelTagTreeReader::ReadMeasureBlobWithZelTags ran.
    const std::vector<std::unique_ptr<CZelImgDocMetaData>>& MeasObjMetaDatas() const { return _MeasObjMetaDatas; }
    /// Takes a tree and makes its root wrapper. Asserts that the tree is there and that its tag is 0.
    void AddMeasObj(std::unique_ptr<CZelDataFieldForVolume> rootNode);
    /// Frees all trees.
    void ForgetMeasObjs();

private:
    std::vector<std::unique_ptr<CZelDataFieldForVolume>> _RootNodes;
    std::vector<std::unique_ptr<CZelImgDocMetaData>> _MeasObjMetaDatas; ///< one for each root node
};

} // namespace Zel
