#include "Tests/Threads/Walk/DocumentCalls.h"

#include "Brix/AccessorConveniences.h"

#include <array>
#include <memory>

namespace ThreadsOfTest
{

namespace
{

using CAxes = std::array<AC_AXIS_INFO, 3>;

CAxes FirstPosition()
{
    return {{{AC_AT_Z, 0}, {AC_AT_TIME, 0}, {AC_AT_LAMBDA, 0}}};
}

/// A result, with the numbers that came with it.
template <typename... Numbers>
std::string Told(AC_Result result, Numbers... numbers)
{
    return (std::to_string(result) + ... + (' ' + std::to_string(numbers)));
}

std::string ToldOf(AC_Result result, const CMN_RECT& rect)
{
    return Told(result, rect.x, rect.y, rect.width, rect.height);
}

std::string ToldOf(AC_Result result, const std::vector<BYTE>& bytes)
{
    return Told(result, std::hash<std::string>()(std::string(bytes.begin(), bytes.end())));
}

std::string OpenAnother(const CHandles& handles)
{
    AC_HFILE document = nullptr;
    const AC_Result result = _AC_Open(handles.FileName.c_str(), AC_OM_READ, &document);
    return Told(result, _AC_Close(document));
}

std::string AskFileNames(const CHandles& handles)
{
    UINT count = 0;
    UINT size = 0;
    const wchar_t* const name = handles.FileName.c_str();
    const AC_Result result = _AC_GetNumOfFiles(name, &count);
    return Told(result, count, _AC_GetFileName(name, 0, nullptr, &size), size, _AC_GetFileId(name, nullptr),
                _AC_CanAccess(name), _AC_Connect(), _AC_Disconnect());
}

std::string AskBody(const CHandles& handles)
{
    CMN_RECT whole{};
    UINT64 size = 0;
    _AC_GetImageBody(handles.Image, &whole, nullptr, 0, &size);
    std::vector<BYTE> bytes(size);
    return ToldOf(_AC_GetImageBody(handles.Image, &whole, bytes.data(), size, &size), bytes);
}

std::string AskSampleBody(const CHandles& handles)
{
    BYTE* bytes = nullptr;
    UINT64 size = 0;
    const AC_Result result = GetSampleImageBody(handles.Area, &bytes, &size);
    const std::unique_ptr<BYTE[]> owner(bytes);
    return Told(result, size);
}

std::string AskThumbnail(const CHandles& handles)
{
    UINT size = 0;
    _AC_GetThumbnailData(handles.Document, nullptr, 0, &size);
    std::vector<BYTE> bytes(size);
    return ToldOf(_AC_GetThumbnailData(handles.Document, bytes.data(), size, &size), bytes);
}

std::string AskCustomData(const CHandles& handles)
{
    std::wstring key = L"SlideImage";
    const AC_PARAMS none{};
    UINT64 size = 0;
    _AC_GetCustomData(handles.Document, key.data(), &none, nullptr, 0, &size);
    std::vector<BYTE> bytes(size);
    return ToldOf(_AC_GetCustomData(handles.Document, key.data(), &none, bytes.data(), size, &size), bytes);
}

std::string AskGroupData(const CHandles& handles)
{
    std::string told;
    wchar_t channel[] = L"0";
    AC_PARAM_ELEMENT element{L"channelId", channel};
    const AC_PARAM params{1, &element};
    for (std::wstring key : {L"ZEL_GroupType", L"ZEL_GroupOrder", L"ZEL_GroupPlaneScale", L"ZEL_GroupExposureTime"})
    {
        UINT64 size = 0;
        told += Told(_AC_GetGroupCustomData(handles.Group, key.data(), &params, nullptr, 0, &size), size) + ' ';
    }
    return told;
}

std::string AskTable(const CHandles& handles)
{
    wchar_t channel[] = L"0";
    int size = 0;
    const AC_Result result = _AC_GetLUT(handles.Area, channel, nullptr, nullptr, nullptr, 0, &size);
    return Told(result, size);
}

std::string AskAreaProperties(const CHandles& handles)
{
    std::string told;
    for (const wchar_t* key : {L"SystemInfo", L"GroupName", L"Axes", L"ObjectiveLensInfo", L"PixelLength", L"ImageSize",
                               L"AnalysisROIList", L"EnabledChannelIdList"})
    {
        AC_HPROPERTY set = nullptr;
        told += Told(_AC_GetAreaProperty(handles.Area, key, nullptr, &set), set != nullptr) + ' ';
    }
    return told;
}

std::string AskFrameProperty(const CHandles& handles)
{
    AC_HPROPERTY set = nullptr;
    const AC_Result result = _AC_GetFrameProperty(handles.Image, L"StimulationROIList", nullptr, &set);
    return Told(result, set != nullptr);
}

std::string AskSet(const CHandles& handles)
{
    int count = 0;
    const AC_Result result = _AC_GetPropertyKeyList(handles.Set, nullptr, 0, &count);
    std::vector<const wchar_t*> keys(static_cast<size_t>(count));
    _AC_GetPropertyKeyList(handles.Set, keys.data(), count, &count);
    std::string told = Told(result, count);
    for (const wchar_t* key : keys)
    {
        std::vector<std::wstring> texts;
        told += ' ' + Told(_AC_GetPropertyValue(handles.Set, key, nullptr, 0, &count), count) + ' ' +
                Told(GetValue(handles.Set, key, texts), texts.size());
    }
    return told;
}

std::string AskNames(const CHandles& handles)
{
    int size = 0;
    int sizeOfChannel = 0;
    int numOfAxes = 0;
    const AC_Result ofName = _AC_GetAxisName(AC_AT_Z, nullptr, 0, &size);
    const AC_Result ofChannel = _AC_GetImageChannelId(handles.Image, nullptr, 0, &sizeOfChannel);
    const AC_Result ofAxes = _AC_GetImageAxis(handles.Image, nullptr, 0, &numOfAxes);
    return Told(ofName, size, ofChannel, sizeOfChannel, ofAxes, numOfAxes);
}

std::string AskNextImage(const CHandles& handles)
{
    const wchar_t* channel = L"0";
    AC_HIMAGE image = nullptr;
    const AC_Result result = _AC_GetNextImage(handles.Area, &channel, 1, nullptr, 0, &image);
    return Told(result, GetImage_ParticularOrNext(false, handles.Area, {channel}, nullptr, 0, &image));
}

std::string ReleaseAll(const CHandles& handles)
{
    return Told(_AC_ReleaseGroup(handles.Group), _AC_ReleaseArea(handles.Area), _AC_ReleaseImage(handles.Image),
                _AC_ReleaseProperty(handles.Set));
}

std::vector<CDocumentCall> MakeDocumentCalls()
{
    return {
        {"NumOfGroups",
         [](const CHandles& handles)
         {
             INT32 count = 0;
             const AC_Result result = _AC_GetNumOfGroups(handles.Document, &count);
             return Told(result, count);
         }},
        {"Group",
         [](const CHandles& handles)
         {
             AC_HGROUP group = nullptr;
             const AC_Result result = _AC_GetGroup(handles.Document, 0, &group);
             return Told(result, group == handles.Group);
         }},
        {"NumOfLevels",
         [](const CHandles& handles)
         {
             int count = 0;
             const AC_Result result = _AC_GetNumOfLevels(handles.Group, &count);
             return Told(result, count);
         }},
        {"LevelImageSize",
         [](const CHandles& handles)
         {
             CMN_RECT rect{};
             const AC_Result result = _AC_GetLevelImageSize(handles.Group, 0, &rect);
             return ToldOf(result, rect);
         }},
        {"NumOfArea",
         [](const CHandles& handles)
         {
             INT32 count = 0;
             const AC_Result result = _AC_GetNumOfArea(handles.Group, 0, &count);
             return Told(result, count);
         }},
        {"Area",
         [](const CHandles& handles)
         {
             AC_HAREA area = nullptr;
             const AC_Result result = _AC_GetArea(handles.Group, 0, 1, &area);
             return Told(result, area != nullptr);
         }},
        {"AreaPosition",
         [](const CHandles& handles)
         {
             CMN_RECT rect{};
             const AC_Result result = _AC_GetAreaPosition(handles.Area, &rect);
             return ToldOf(result, rect);
         }},
        {"Image",
         [](const CHandles& handles)
         {
             CAxes axes = FirstPosition();
             AC_HIMAGE image = nullptr;
             const AC_Result result = _AC_GetImage(handles.Area, L"0", axes.data(), 3, &image);
             return Told(result, image == handles.Image);
         }},
        {"ImageSize",
         [](const CHandles& handles)
         {
             CMN_RECT rect{};
             const AC_Result result = _AC_GetImageSize(handles.Image, &rect);
             return ToldOf(result, rect);
         }},
        {"FileVersion",
         [](const CHandles& handles)
         {
             CMN_VERSION_INFO version{};
             const AC_Result result = _AC_GetFileVersion(handles.Document, &version);
             return Told(result, version.product.unMajor, version.product.unMinor);
         }},
        {"SupportedCustomData",
         [](const CHandles& handles)
         {
             int count = 0;
             const AC_Result result = _AC_GetSupportedCustomData(handles.Document, nullptr, 0, &count);
             return Told(result, count);
         }},
        {"DateTime",
         [](const CHandles& handles)
         {
             std::wstring dates;
             const AC_Result result = GetDateTimeString(handles.Area, dates);
             return Told(result, dates.size());
         }},
        {"Open", OpenAnother},
        {"Files", AskFileNames},
        {"Body", AskBody},
        {"SampleBody", AskSampleBody},
        {"Thumbnail", AskThumbnail},
        {"CustomData", AskCustomData},
        {"GroupData", AskGroupData},
        {"Table", AskTable},
        {"AreaProperties", AskAreaProperties},
        {"FrameProperty", AskFrameProperty},
        {"Set", AskSet},
        {"Names", AskNames},
        {"NextImage", AskNextImage, false},
        {"Releases", ReleaseAll},
    };
}

} // namespace

CHandles FirstHandlesOf(const std::wstring& fileName, AC_HFILE document)
{
    CHandles handles{fileName, document};
    CAxes axes = FirstPosition();
    _AC_GetGroup(document, 0, &handles.Group);
    _AC_GetArea(handles.Group, 0, 0, &handles.Area);
    _AC_GetImage(handles.Area, L"0", axes.data(), 3, &handles.Image);
    _AC_GetAreaProperty(handles.Area, L"UserComment", nullptr, &handles.Set);
    return handles;
}

const std::vector<CDocumentCall>& DocumentCalls()
{
    static const std::vector<CDocumentCall> calls = MakeDocumentCalls();
    return calls;
}

} // namespace ThreadsOfTest
