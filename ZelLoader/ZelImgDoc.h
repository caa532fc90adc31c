#pragma once
#include "CommonImageAccess/ImgDoc.h"
#include "CommonImageAccess/TiffAccess.h"
#include "ZelLoader/Catalogue/ZELFormat.h"
#include "ZelLoader/TagTree/ZelTagTreeReader.h"

#include <memory>
#include <vector>

namespace Zel
{

using namespace CIA;
using namespace CommonUtil;

/// An opened document of this format: a file shaped like a TIFF, whose private tag tree begins behind the 8 bytes of
/// the TIFF header. The tree is read whole by the constructor and stays as it is for the life of the document.
class CZelImgDoc : public CImgDoc
{
public:
    /// Usable only when errno is 0 afterwards; a tree that breaks a rule ends in an exception.
    CZelImgDoc(const wchar_t* fileName, bool strictMode);

    ImgDocFormat Format() override { return eZel; }
    std::wstring FileFormatVersion() override;
    bool BrixCustomProperty(const wchar_t* key, const CArrayStartAndSize<const AC_PARAM_ELEMENT>& params,
                            CByteArray& buffer) override;
    bool Thumbnail(CByteArray& buffer) override;
    const wchar_t* DocPersistentID() override;
    const wchar_t* Description() override;
    std::wstring CreationTime() override;
    const wchar_t* Author() override;
    const wchar_t* CreatorSoftwareName() override;
    /// "1.2.3"; a missing part is 0, or in strict mode makes the whole text empty.
    std::wstring CreatorSoftwareVersion() override;
    std::wstring CreatorSoftwareBuildNumber() override;
    const wchar_t* CreatorHardwareName() override;
    const wchar_t* CreatorHardwareVersion() override;
    std::wstring UpdateDateTime() override;
    const wchar_t* FamilyId() override;

    /// What the display flow says of the stack with that ID, for the group custom data of that key. False when it says
    /// nothing.
    bool IterateDPFAndGetDisplayLayerAndChannel(uint32_t SecondTagValue, const wchar_t* Keyname,
                                                AC_VALUE_WITH_TYPE& valuewithtype);
    /// What the display flow says of the plane that all images are shown on. False when it says nothing.
    bool IteratePlaneProperty(const wchar_t* Keyname, std::string& strValue);

    /// The root of the metadata; asserts that it has been read.
    CZelImgDocMetaData& MetaData();
    /// The image collection; asserts that there is one.
    CZelMetaDataForImgColl& ImgColl();
    CZelTagTreeReader& TagTree() { return _TagTree; }
    /// The stack IDs of the images that the display process flow shows, in display order; one that is shown several
    /// times is there as often.
    const std::vector<int32_t>& VisibleLayers() const { return vecVisibleLayers; }
    /// The file as a TIFF, opened at the first need. Null when libtiff does not take it; the next call tries again.
    TIFF* AsTiffFilePtr() { return _AsTiff.TiffFilePtr(); }
    /// The same, standing on a directory; asserts that there is one of that number.
    TIFF* AsTiffFilePtrSetTo(uint32_t directory) { return _AsTiff.SetDirectory(directory); }

protected:
    bool ReadFileHeader() override;
    bool ReadFileMetaData() override;
    bool MultiDimImages_init(CMultiDimImages& varToInit) override;
    bool BrixCustomProperties_init(StringMap& varToInit) override;

private:
    bool AreStackIDsUnique();
    CZelMetaDataForImgDocPropSet* ImgDocPropSet();
    const CArrayStartAndSize<Byte>* StoredThumbnail();
    bool ThumbnailFromFirstDirectory(CByteArray& buffer);
    bool CroppedLevelImageSize(const CArrayStartAndSize<const AC_PARAM_ELEMENT>& params, CByteArray& buffer);
    bool SlideImage(const CArrayStartAndSize<const AC_PARAM_ELEMENT>& params, CByteArray& buffer);
    bool GetDisplayValue(CZelMetaDataForDispChannel& channel, int32_t stackID, const wchar_t* Keyname,
                         AC_VALUE_WITH_TYPE& valuewithtype);
    void InitializeVisibleDiplayLayersList(const std::vector<int32_t>& vecUnOrderedLayers);

    std::vector<int32_t> vecVisibleLayers;
    CZelTagTreeReader _TagTree;
    std::unique_ptr<CZelDataFieldForVolume> RootNode;
    std::unique_ptr<CZelImgDocMetaData> _MetaData; ///< refers to nodes of RootNode's tree
    CTiffImageDoc _AsTiff;
};

} // namespace Zel
