#include "Benchmarks/Host.h"

#include "Benchmarks/Slide.h"

namespace Benchmarks
{

COpenDocument::COpenDocument(const std::filesystem::path& path)
{
    Require(_AC_Open(path.wstring().c_str(), AC_OM_READ, &_document) == AC_RESULT_SUCCESS, "_AC_Open");
    _firstGroup = Group(0);
}

COpenDocument::~COpenDocument()
{
    _AC_Close(_document);
}

uint32_t COpenDocument::NumOfGroups() const
{
    INT32 numOfGroups = 0;
    Require(_AC_GetNumOfGroups(_document, &numOfGroups) == AC_RESULT_SUCCESS, "_AC_GetNumOfGroups");
    return static_cast<uint32_t>(numOfGroups);
}

AC_HGROUP COpenDocument::Group(uint32_t number) const
{
    AC_HGROUP group = nullptr;
    Require(_AC_GetGroup(_document, static_cast<int>(number), &group) == AC_RESULT_SUCCESS, "_AC_GetGroup");
    return group;
}

AC_HAREA COpenDocument::Area(AC_HGROUP group, uint32_t number)
{
    AC_HAREA area = nullptr;
    Require(_AC_GetArea(group, 0, number, &area) == AC_RESULT_SUCCESS, "_AC_GetArea");
    return area;
}

AC_HIMAGE COpenDocument::Image(AC_HAREA area, AC_AXIS_INFO* axes, int numOfAxes)
{
    AC_HIMAGE image = nullptr;
    Require(_AC_GetImage(area, L"0", axes, numOfAxes, &image) == AC_RESULT_SUCCESS && image, "_AC_GetImage");
    return image;
}

AC_HIMAGE COpenDocument::AtTime(uint32_t time) const
{
    AC_AXIS_INFO axis{AC_AT_TIME, time};
    return Image(Area(_firstGroup, 0), &axis, 1);
}

void COpenDocument::ReadBody(AC_HIMAGE image, std::vector<BYTE>& buffer)
{
    CMN_RECT whole{};
    UINT64 size = 0;
    Require(_AC_GetImageBody(image, &whole, buffer.data(), buffer.size(), &size) == AC_RESULT_SUCCESS &&
                size == buffer.size(),
            "_AC_GetImageBody");
}

} // namespace Benchmarks
