#include "CommonImageAccess/ImgDocFileUnit.h"

#include "CommonImageAccess/ImgDoc.h"
#include "CommonUtil/Assertion.h"
#include "CommonUtil/Text.h"

#include <algorithm>
#include <cerrno>

namespace CIA
{

using namespace CommonUtil;

CImgDocFileUnit::CImgDocFileUnit(const std::wstring& fileName, uint32_t ID,
                                 const std::vector<std::wstring>& expectedExtensions, bool isFileBigEndian,
                                 bool strictMode, CImgDoc* parent)
    : CBinaryFileReader(fileName, isFileBigEndian), _StrictMode(strictMode), _ParentImgDoc(parent), _ID(ID)
{
    if (errno != 0)
        return;
    if (parent)
    {
        ZEL_ASSERT(!parent->FileUnits().contains(ID));
        ZEL_ASSERT(!parent->FileUnitFileNames().contains(FileName()));
    }
    if (FileName().find(L'.') == std::wstring::npos)
    {
        errno = EINVAL;
        return;
    }
    const bool isExpected =
        std::any_of(expectedExtensions.begin(), expectedExtensions.end(),
                    [this](const std::wstring& extension) { return EndsWith(FileName(), extension); });
    if (!isExpected)
    {
        PAL_PutLogError(PAL_LOGERROR_ERROR, L"Error: Invalid File Type", __FILE__, __LINE__);
        errno = EINVAL;
    }
}

CImgDoc& CImgDocFileUnit::ParentImgDoc() const
{
    ZEL_ASSERT(_ParentImgDoc);
    return *_ParentImgDoc;
}

void CImgDocFileUnit::ContinueCtor()
{
    ZEL_ASSERT(errno == 0);
    const bool isRead = ReadFileHeader() && ReadFileMetaData();
    ZEL_ASSERT(isRead || errno != 0);
}

} // namespace CIA
