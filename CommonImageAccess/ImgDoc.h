#pragma once
#include "CommonImageAccess/BrixPropsetProvider.h"
#include "CommonImageAccess/ImgDocFileUnit.h"
#include "CommonImageAccess/MultiDimImage.h"
#include "CommonUtil/Mutex.h"

#include <array>
#include <limits>
#include <map>
#include <memory>
#include <unordered_set>
#include <vector>

namespace CIA
{

/// The file formats of the host family; this plug-in reads the one.
enum tagImgDocFormat : int32_t
{
    eZel = 6,
    eUnknown = 7
};
using ImgDocFormat = tagImgDocFormat;

using CImgDocFileUnits = std::map<uint32_t, std::unique_ptr<CImgDocFileUnit>>;
using StringMap = std::map<std::wstring, const wchar_t*>;                    ///< the texts pointed at live for ever
using CMultiDimImages = std::map<uint32_t, std::unique_ptr<CMultiDimImage>>; ///< by image ID

/// One opened document, and the only object whose lifetime the host controls: it owns its side files and images, and
/// through them everything that a handle can name. It knows of no file format.
class CImgDoc : public CImgDocFileUnit, public CBrixPropsetProvider
{
public:
    CImgDoc(const std::wstring& fileName, const std::vector<std::wstring>& expectedExtensions, bool isFileBigEndian,
            bool strictMode);
    ~CImgDoc() override;

    virtual ImgDocFormat Format() = 0;
    /// The version of the file format, "2 build 1"; asserts that the document tells it.
    virtual std::wstring FileFormatVersion() = 0;
    /// Serves one item of custom data: fills or sizes the buffer. False with EINVAL for an unknown key or wrong
    /// parameters.
    virtual bool BrixCustomProperty(const wchar_t* key,
                                    const CommonUtil::CArrayStartAndSize<const AC_PARAM_ELEMENT>& params,
                                    CByteArray& buffer) = 0;
    /// The thumbnail as a BMP file: fills or sizes the buffer. False with EINVAL when the buffer is too small, ENOPKG
    /// when the document has none that can be read.
    virtual bool Thumbnail(CByteArray& buffer) = 0;
    // Texts of the document: empty when it does not tell them. Those given by pointer live as long as the document.
    virtual const wchar_t* DocPersistentID() = 0;
    virtual const wchar_t* Description() = 0;
    virtual std::wstring CreationTime() = 0; ///< "2015-09-13T12:26:40+00:00"
    virtual const wchar_t* Author() = 0;
    virtual const wchar_t* CreatorSoftwareName() = 0;
    virtual std::wstring CreatorSoftwareVersion() = 0;
    virtual std::wstring CreatorSoftwareBuildNumber() = 0;
    virtual const wchar_t* CreatorHardwareName() = 0;
    virtual const wchar_t* CreatorHardwareVersion() = 0;
    virtual std::wstring UpdateDateTime() = 0;
    virtual const wchar_t* FamilyId() = 0;
    /// The keys of the custom data with their descriptions.
    const StringMap& BrixCustomProperties();

    /// The lock of the whole document, recursive: held by every call that walks or grows the model.
    CommonUtil::CMyMutex& ThreadSafetyMutex() { return _ThreadSafetyMutex; }
    const CImgDocFileUnits& FileUnits() const { return _FileUnits; }
    const std::unordered_set<std::wstring>& FileUnitFileNames() const { return _FileUnitFileNames; }
    /// Takes a side file that has been read into the table under its ID, and its name with it.
    CImgDocFileUnit& AddFileUnit(std::unique_ptr<CImgDocFileUnit> fileUnit);

    /// All images by ID. Empty after a failure, with errno; the next call tries again.
    const CMultiDimImages& MultiDimImages();
    /// The image of a group number: groups are counted from 0 in ascending order of image IDs. Never null; a number
    /// beyond the last is a failed assertion.
    CMultiDimImage* BrixGetGroup(uint32_t groupNumber);
    /// Where the union of all images begins on X or Y, NaN until it was worked out: kept here for all of them.
    double& RealWorldCoordOfDisplayWindow(DimensionType::E xOrY);
    /// Whether it was found out that all images measure X or Y in one unit, or in none.
    bool HaveImagesEqualNativeUnits(DimensionType::E xOrY) const;
    void SetHaveImagesEqualNativeUnits(DimensionType::E xOrY);

protected:
    virtual bool MultiDimImages_init(CMultiDimImages& varToInit) = 0;
    virtual bool BrixCustomProperties_init(StringMap& varToInit) = 0;
    bool BrixPropset_init(const wchar_t* propsetKey, const AC_PARAMS& params, CBrixPropset& propset) override;
    CBrixPropsets& KeptPropsets() override { return _BrixPropsets; }

private:
    struct CPropsetHandler;
    bool BrixPropset_SystemInfo(const AC_PARAMS& params, CBrixPropset& propset);
    bool BrixPropset_UserComment(const AC_PARAMS& params, CBrixPropset& propset);
    bool BrixPropset_IdInfo(const AC_PARAMS& params, CBrixPropset& propset);

    CBrixPropsets _BrixPropsets;
    StringMap _BrixCustomProperties;
    CommonUtil::CMyMutex _ThreadSafetyMutex;
    std::array<double, 2> _RealWorldCoordOfDisplayWindow = {std::numeric_limits<double>::quiet_NaN(),
                                                            std::numeric_limits<double>::quiet_NaN()};
    std::array<bool, 2> _HaveImagesEqualNativeUnits = {};
    // Images go after the side files that they refer to: their destructors read nothing.
    CMultiDimImages _MultiDimImages;
    std::vector<CMultiDimImage*> BrixGroups;
    std::unordered_set<std::wstring> _FileUnitFileNames;
    CImgDocFileUnits _FileUnits;
};

/// Opens a document. The object comes back with errno non-zero when the file cannot be opened or read; a file that
/// breaks a rule of the format ends in an exception. Implemented by the layer that knows the format.
std::unique_ptr<CImgDoc> NewImgDoc(const wchar_t* fileName, bool strictMode);

} // namespace CIA
