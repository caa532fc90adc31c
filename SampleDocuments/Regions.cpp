#include "SampleDocuments/Regions.h"

namespace SampleDocuments
{

namespace
{

constexpr uint32_t VersionOfXml = 4;
constexpr uint32_t VersionOfTree = 3;
constexpr size_t LargestPayload = 0xFFFFFFFF - 12;

} // namespace

Regions& Regions::AsXml()
{
    _IsTree = false;
    return *this;
}

Regions& Regions::AsTree()
{
    _IsTree = true;
    return *this;
}

Regions& Regions::Id(uint32_t blobId)
{
    _BlobId = blobId;
    return *this;
}

Regions& Regions::BlobVersion(uint32_t version)
{
    _BlobVersion = version;
    return *this;
}

Regions& Regions::PayloadVersion(uint32_t version)
{
    _PayloadVersion = version;
    return *this;
}

Regions& Regions::PayloadType(uint32_t type)
{
    _PayloadType = type;
    return *this;
}

Regions& Regions::NumOfObjects(uint32_t count)
{
    _NumOfObjects = count;
    return *this;
}

Regions& Regions::ByteCount(uint32_t bytes)
{
    _ByteCount = bytes;
    return *this;
}

Regions& Regions::ByteOrderMark(uint16_t mark)
{
    _ByteOrderMark = mark;
    return *this;
}

Regions& Regions::Xml(std::string utf8)
{
    return XmlUnits(ToUtf16(utf8));
}

Regions& Regions::XmlUnits(std::u16string units)
{
    _Units = std::move(units);
    return *this;
}

Regions& Regions::EditXml(std::function<void(std::string& utf8)> edit)
{
    _EditXml = std::move(edit);
    return *this;
}

std::string Regions::ToXml() const
{
    std::string xml = "<qrXML><VersionInfo/><Holder><PropertySet><Property Key=\"measure:ObjectList\">";
    for (const CRegion& region : _Regions)
        xml += XmlOf(region);
    xml += "</Property></PropertySet></Holder></qrXML>";
    if (_EditXml)
        _EditXml(xml);
    return xml;
}

ByteString Regions::XmlPayload() const
{
    const std::u16string made = _Units ? std::u16string() : ToUtf16(ToXml());
    const std::u16string& text = _Units ? *_Units : made;
    const size_t size = text.size() * sizeof(char16_t);
    ByteString payload;
    payload.reserve(10 + size);
    Append(payload, _PayloadVersion.value_or(VersionOfXml));
    Append(payload, _ByteCount.value_or(static_cast<uint32_t>(sizeof(_ByteOrderMark) + size)));
    Append(payload, _ByteOrderMark);
    Append(payload, std::span(reinterpret_cast<const uint8_t*>(text.data()), size));
    return payload;
}

ByteString Regions::TreePayload() const
{
    ByteString payload;
    Append(payload, _PayloadVersion.value_or(VersionOfTree));
    Append(payload, _PayloadType);
    Append(payload, _NumOfObjects.value_or(static_cast<uint32_t>(_Regions.size())));
    for (const CRegion& region : _Regions)
    {
        const auto size = static_cast<uint32_t>(sizeof(uint16_t) + region.XmlBeforeTree.size());
        Append(payload, region.SizeOfXmlBeforeTree.value_or(size));
        Append(payload, uint16_t{0});
        Append(payload, std::string_view(region.XmlBeforeTree));
        Append(payload, uint32_t{0});
        AppendTree(payload, TreeOf(region));
    }
    return payload;
}

ByteString Regions::Payload() const
{
    ByteString payload = _IsTree ? TreePayload() : XmlPayload();
    if (payload.size() > LargestPayload)
        throw CSampleError("regions: " + std::to_string(payload.size()) +
                           " bytes are more than a blob can tell; take fewer of them");
    return payload;
}

CNode Regions::ToBlob() const
{
    return Blob(_BlobId, _BlobVersion.value_or(_IsTree ? VersionOfTree : VersionOfXml), Payload());
}

} // namespace SampleDocuments
