// What a document tells of itself.

#include "CommonUtil/Numbers.h"
#include "CommonUtil/Text.h"
#include "ZelLoader/Images/TextOf.h"
#include "ZelLoader/ZelImgDoc.h"

#include <array>

namespace Zel
{

namespace
{

std::wstring TimeOrEmpty(const int64_t* time)
{
    return time ? ToWide(ToUtcW3CTimeString(*time)) : std::wstring();
}

} // namespace

CZelMetaDataForImgDocPropSet* CZelImgDoc::ImgDocPropSet()
{
    CZelMetaDataForImgCollProps* props = ImgColl().ImgCollProps();
    return props ? props->ImgDocPropSet() : nullptr;
}

std::wstring CZelImgDoc::FileFormatVersion()
{
    const CArrayStartAndSize<uint32_t>* version = ImgColl().ZELVersionNumber();
    ZEL_ASSERT(version && version->Size == 2 && version->Arr);
    return ToWide(ToString(version->Arr[0]) + " build " + ToString(version->Arr[1]));
}

const wchar_t* CZelImgDoc::DocPersistentID()
{
    CZelMetaDataForOldDocProperties* properties = MetaData().OldDocProperties();
    return TextOrEmpty(properties ? properties->DocPersistentId() : nullptr);
}

const wchar_t* CZelImgDoc::Description()
{
    CZelMetaDataForImgDocPropSet* propSet = ImgDocPropSet();
    return TextOrEmpty(propSet ? propSet->docNote() : nullptr);
}

std::wstring CZelImgDoc::CreationTime()
{
    CZelMetaDataForImgDocPropSet* propSet = ImgDocPropSet();
    return TimeOrEmpty(propSet ? propSet->docTime() : nullptr);
}

std::wstring CZelImgDoc::UpdateDateTime()
{
    CZelMetaDataForImgDocPropSet* propSet = ImgDocPropSet();
    return TimeOrEmpty(propSet ? propSet->docLastSavedTime() : nullptr);
}

const wchar_t* CZelImgDoc::Author()
{
    CZelMetaDataForImgDocPropSet* propSet = ImgDocPropSet();
    return TextOrEmpty(propSet ? propSet->docAuthor() : nullptr);
}

const wchar_t* CZelImgDoc::CreatorSoftwareName()
{
    CZelMetaDataForImgDocPropSet* propSet = ImgDocPropSet();
    return TextOrEmpty(propSet ? propSet->docCreatorName() : nullptr);
}

std::wstring CZelImgDoc::CreatorSoftwareVersion()
{
    CZelMetaDataForImgDocPropSet* propSet = ImgDocPropSet();
    if (!propSet)
        return {};
    std::string version;
    for (const int32_t* part :
         {propSet->docCreatorMajorVersion(), propSet->docCreatorMinorVersion(), propSet->docCreatorSubVersion()})
    {
        if (!part && StrictMode())
            return {};
        version += (version.empty() ? "" : ".") + (part ? ToString(*part) : "0");
    }
    return ToWide(version);
}

std::wstring CZelImgDoc::CreatorSoftwareBuildNumber()
{
    CZelMetaDataForImgDocPropSet* propSet = ImgDocPropSet();
    const int32_t* buildNumber = propSet ? propSet->docCreatorBuildNumber() : nullptr;
    return buildNumber ? ToWide(ToString(*buildNumber)) : std::wstring();
}

const wchar_t* CZelImgDoc::CreatorHardwareName()
{
    ZEL_ASSERT(ImgColl().ImgCollProps()); // unlike its neighbours this one needs the properties to be there
    CZelMetaDataForImgDocPropSet* propSet = ImgDocPropSet();
    return TextOrEmpty(propSet ? propSet->docProductName() : nullptr);
}

const wchar_t* CZelImgDoc::CreatorHardwareVersion()
{
    CZelMetaDataForImgDocPropSet* propSet = ImgDocPropSet();
    const bool hasName = propSet && propSet->docProductName();
    return TextOrEmpty(hasName ? propSet->docProductVersion() : nullptr);
}

const wchar_t* CZelImgDoc::FamilyId()
{
    CZelMetaDataForImgDocPropSet* propSet = ImgDocPropSet();
    return TextOrEmpty(propSet ? propSet->docFamilyId() : nullptr);
}

} // namespace Zel
