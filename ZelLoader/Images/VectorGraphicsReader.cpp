#include "ZelLoader/Images/VectorGraphicsReader.h"

#include "CommonUtil/Assertion.h"
#include "CommonUtil/Log.h"
#include "CommonUtil/Numbers.h"
#include "CommonUtil/Text.h"
#include "ZelLoader/Images/ShapeClasses.h"

#include <charconv>
#include <cstring>
#include <new>

namespace Zel
{

namespace
{

constexpr uint32_t VersionOfTags = 3;
constexpr uint32_t VersionOfXml = 4;
constexpr uint32_t VersionNotReadYet = 5;
constexpr uint16_t ByteOrderMark = 0xFEFF;

/// The text in an element's first child, where the objects' properties keep their values.
const char* TextInFirstChild(const pugi::xml_node& node)
{
    return node.first_child().first_child().value();
}

/// The number at the start of a text, whatever the host's locale is; 0 where there is none.
double NumberOf(const char* text)
{
    while (*text == ' ' || *text == '\t' || *text == '\n' || *text == '\r' || *text == '+')
        ++text;
    double number = 0;
    std::from_chars(text, text + std::strlen(text), number);
    return number;
}

pugi::xml_node Expect(const pugi::xml_node& node, const char* name)
{
    ZEL_ASSERT(std::strcmp(node.name(), name) == 0);
    return node;
}

CShapePoints ReadShapePoints(const pugi::xml_node& node)
{
    CShapePoints points;
    for (const pugi::xml_node& component : node.children())
    {
        Expect(component, "Component");
        const pugi::xml_node vector = Expect(component.first_child(), "CdVec2");
        const pugi::xml_node x = Expect(vector.first_child(), "double");
        const pugi::xml_node y = Expect(x.next_sibling(), "double");
        points.emplace_back(NumberOf(x.first_child().value()), NumberOf(y.first_child().value()));
    }
    return points;
}

void LogIgnored(const std::string& shapeClass)
{
    ZEL_LOG("Note: intentionally ignoring the specific ROI '%s'", shapeClass.c_str());
}

} // namespace

bool CVectorGraphicsReader::VectorGraphicsImages_initFromBlob(CZelDataField& node)
{
    auto* blob = dynamic_cast<CZelDataFieldForBlob*>(&node);
    ZEL_ASSERT(blob);
    if (!IsZelBlobIdForAnyMeasurements(blob->BlobId()))
        return true;
    switch (blob->BlobVersion())
    {
    case VersionOfXml:
        return ReadXmlBlob(*blob);
    case VersionOfTags:
    {
        auto* blobWithTags = dynamic_cast<CZelDataFieldForBlobWithZelTags*>(blob);
        ZEL_ASSERT(blobWithTags);
        return VectorGraphicsImages_initFromBlobWithZelTags(*blobWithTags);
    }
    case VersionNotReadYet:
        ZEL_LOG("TODO");
        oldAbortCommonUtil();
    default:
        oldAbortCommonUtil();
    }
}

void CVectorGraphicsReader::AddImage(std::wstring name, const CShapeClass& shapeClass, const CShapePoints& points)
{
    const uint32_t id = ToUint32WithCheck(_Images.size());
    _Images.emplace_back(id, std::move(name), shapeClass.Shape, shapeClass.Type, ReducedByPoint5(points));
}

bool CVectorGraphicsReader::ReadXmlBlob(const CZelDataFieldForBlob& blob)
{
    _Document.Seek(blob.Offset(), BfrSeekDirection::BEGIN);
    ZEL_ASSERT(_Document.ReadUInt32() == VersionOfXml);
    const uint32_t byteCount = _Document.ReadUInt32();
    ZEL_ASSERT(byteCount % 2 == 0 && byteCount >= sizeof ByteOrderMark);
    ZEL_ASSERT(_Document.ReadUInt16() == ByteOrderMark);
    const uint32_t sizeOfText = byteCount - static_cast<uint32_t>(sizeof ByteOrderMark);
    ZEL_ASSERT(sizeOfText <= _Document.FileSize() - _Document.GetCurrentOffset()); // before it is allocated
    // Texts that stand once fit the file; blobs that share one would have it parsed, and its regions kept, over and
    // over.
    ZEL_ASSERT(sizeOfText <= _Document.FileSize() - _NumOfXmlBytesRead);
    _NumOfXmlBytesRead += sizeOfText;
    std::vector<Byte> text(sizeOfText);
    ZEL_ASSERT(text.empty() || _Document.ReadData(text.data(), sizeOfText));
    pugi::xml_document xml;
    const pugi::xml_parse_result result =
        xml.load_buffer_inplace(text.data(), text.size(), pugi::parse_default, pugi::encoding_auto);
    if (result.status == pugi::status_out_of_memory) // says nothing about the text, and must not be kept as if it did
        throw std::bad_alloc();
    if (!result)
        return false;
    ParseXmlOfRoiBlobV4(xml.child("qrXML"));
    return true;
}

void CVectorGraphicsReader::ParseXmlOfRoiBlobV4(const pugi::xml_node& root)
{
    const pugi::xml_node versionInfo = Expect(root.first_child(), "VersionInfo");
    const pugi::xml_node holder = Expect(versionInfo.next_sibling(), "Holder");
    const pugi::xml_node propertySet = Expect(holder.first_child(), "PropertySet");
    ReadEachXmlRoi(Expect(propertySet.find_child_by_attribute("Key", "measure:ObjectList"), "Property"));
}

void CVectorGraphicsReader::ReadEachXmlRoi(const pugi::xml_node& objectListNode)
{
    for (const pugi::xml_node& object : objectListNode.children())
    {
        const pugi::xml_node onlyChild = object.first_child();
        ZEL_ASSERT(onlyChild && !onlyChild.next_sibling());
        CXmlRoi roi;
        for (const pugi::xml_node& property : onlyChild.children())
            ReadXmlRoiProperty(property, roi);
        if (!roi.Class)
            continue;
        ModifyShapePointsAsPerBrixRequirements(roi.Points, roi.ShapeClass);
        AddImage(std::move(roi.Name), *roi.Class, roi.Points);
    }
}

void CVectorGraphicsReader::ReadXmlRoiProperty(const pugi::xml_node& node, CXmlRoi& roi)
{
    const char* key = node.attribute("Key").value();
    if (std::strcmp(key, "measure:ObjectName") == 0)
    {
        ZEL_ASSERT(roi.Name.empty());
        roi.Name = ToWide(TextInFirstChild(node));
    }
    else if (std::strcmp(key, "measure:ShapeClass") == 0)
    {
        ZEL_ASSERT(roi.ShapeClass.empty());
        roi.ShapeClass = TextInFirstChild(node);
        ReadRoiTypeAndShape(roi);
    }
    else if (std::strcmp(key, "measure:ShapePoints") == 0)
    {
        ZEL_ASSERT(roi.Points.empty());
        roi.Points = ReadShapePoints(node);
    }
    else if (std::strcmp(key, "measure:ObjectType") == 0)
    {
        ZEL_ASSERT(!roi.HasObjectType);
        roi.HasObjectType = true;
    }
}

void CVectorGraphicsReader::ReadRoiTypeAndShape(CXmlRoi& roi)
{
    if (IsIgnoredShapeClass(roi.ShapeClass))
    {
        LogIgnored(roi.ShapeClass);
        return;
    }
    roi.Class = FindShapeClass(roi.ShapeClass);
    if (!roi.Class)
    {
        ZEL_LOG("Warning: Ignoring the shape class '%s' as not clear how to map it to the required BRIX types and "
                "shapes.",
                roi.ShapeClass.c_str());
        oldAbortCommonUtil();
    }
}

bool CVectorGraphicsReader::VectorGraphicsImages_initFromBlobWithZelTags(CZelDataFieldForBlobWithZelTags& blobWithTags)
{
    // A document's blob serves all its stacks, and is read for the first of them.
    if (blobWithTags.MeasObjMetaDatas().empty() && !_TagTree.ReadMeasureBlobWithZelTags(blobWithTags))
        return false;
    for (const auto& metaData : blobWithTags.MeasObjMetaDatas())
    {
        // A view of its own: what is kept of it while the region is read would else be kept for all of them.
        CZelImgDocMetaData region(metaData->DbgNode());
        ReadTagRoi(region);
    }
    return true;
}

void CVectorGraphicsReader::ReadTagRoi(CZelImgDocMetaData& metaData)
{
    CZelMetaDataForShapeVolume* shapeVolume = metaData.ShapeVolume();
    ZEL_ASSERT(shapeVolume);
    const CArrayStartAndSize<wchar_t>* roiShape = shapeVolume->RoiShape();
    ZEL_ASSERT(roiShape);
    roiShape->CheckLen();
    CZelMetaDataForShapeVolumeObject* volObject = shapeVolume->ShapeVolumeObject();
    ZEL_ASSERT(volObject && volObject->ShapeProperty());
    const CArrayStartAndSize<wchar_t>* roiName = volObject->ShapeProperty()->RoiName();
    ZEL_ASSERT(roiName);
    roiName->CheckLen();
    const std::string zelShapeClass = A(roiShape->Arr);
    if (IsIgnoredShapeClass(zelShapeClass))
    {
        LogIgnored(zelShapeClass);
        return;
    }
    const CShapeClass* shapeClass = FindShapeClass(zelShapeClass);
    if (!shapeClass) // passed over here, while the XML form ends the process
    {
        ZEL_LOG("Warning: Unexpected shapeClassValue '%s'! Ignoring it...", zelShapeClass.c_str());
        return;
    }
    AddImage(roiName->Arr, *shapeClass, GetShapePointsOfTags(zelShapeClass, *volObject));
}

} // namespace Zel
