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

protected:
    virtual bool MultiDimImages_init(CMultiDimImages& varToInit) = 0;

private:
    CommonUtil::CMyMutex _ThreadSafetyMutex;
    std::array<double, 2> _RealWorldCoordOfDisplayWindow = {std::numeric_limits<double>::quiet_NaN(),
                                                            std::numeric_limits<double>::quiet_NaN()};
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
