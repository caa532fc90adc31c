#pragma once

#include "SampleDocuments/Region.h"

namespace SampleDocuments
{

/// What a blob is for, of those that readers know.
struct BlobId
{
    enum E : uint32_t
    {
        Unknown = 0,
        Mask = 1,
        Particle = 2,
        Measurements = 3,
        RoiMeasurements = 4,
        ChannelMeasurements = 5,
        MacroSlideImage = 6
    };
};

/// A blob of regions of interest, in one of the two forms that documents have. It can lie in a layer, a frame, a
/// channel and the document:
///
///     Document()
///         .With(Stack(1)
///                   .LayerBlob(Regions({Rectangle("cell", {10, 20}, {30, 40}), Dot("spot", {5, 5})}))
///                   .FrameBlob(0, Regions({Polygon("area", {{0, 0}, {9, 0}, {5, 7}})}).AsTree())
///                   .ChannelBlob(1, Regions({CRegion("xv.any.other", "odd", {{1, 2}})})))
///         .FileBlob(Regions(ManyRegions(100000, 1000, 1000)))
///         .FileBlob(Blob(1, 9, BytesOf("a blob of another kind")))
///
/// What is worked out (versions, sizes, counts) can be set otherwise, for damaged documents.
class Regions
{
public:
    Regions() = default;
    Regions(std::vector<CRegion> regions) : _Regions(std::move(regions)) {}

    Regions& AsXml();             ///< version 4: a text in UTF-16 behind a head of 10 bytes; the form of a new object
    Regions& AsTree();            ///< version 3: a tree of tags for each region
    Regions& Id(uint32_t blobId); ///< RoiMeasurements if not called

    // Numbers that stand against the truth.
    Regions& BlobVersion(uint32_t version);    ///< in the header of the blob; 4 or 3 by form
    Regions& PayloadVersion(uint32_t version); ///< the first number of the payload; the same
    Regions& PayloadType(uint32_t type);       ///< of the tree form; 0
    Regions& NumOfObjects(uint32_t count);     ///< of the tree form
    Regions& ByteCount(uint32_t bytes);        ///< of the XML form: bytes of mark and text
    Regions& ByteOrderMark(uint16_t mark);     ///< of the XML form; 0xFEFF
    Regions& Xml(std::string utf8);            ///< of the XML form: the whole text in the place of that of the regions
    Regions& XmlUnits(std::u16string units);   ///< the same, also with such as are no text
    Regions& EditXml(std::function<void(std::string& utf8)> edit); ///< of the XML form, behind that of each region

    /// The XML text of the regions, in UTF-8.
    std::string ToXml() const;
    ByteString Payload() const;
    CNode ToBlob() const;
    operator CNode() const { return ToBlob(); }

private:
    ByteString XmlPayload() const;
    ByteString TreePayload() const;

    bool _IsTree = false;
    uint32_t _BlobId = BlobId::RoiMeasurements;
    std::vector<CRegion> _Regions;
    std::optional<uint32_t> _BlobVersion;
    std::optional<uint32_t> _PayloadVersion;
    uint32_t _PayloadType = 0;
    std::optional<uint32_t> _NumOfObjects;
    std::optional<uint32_t> _ByteCount;
    uint16_t _ByteOrderMark = 0xFEFF;
    std::optional<std::u16string> _Units;
    std::function<void(std::string&)> _EditXml;
};

} // namespace SampleDocuments
