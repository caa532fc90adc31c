// What a document and its groups tell besides pictures.

#include "Fuzzing/Walk/Walks.h"

#include <algorithm>
#include <array>

namespace Fuzzing
{

namespace
{

/// Parameters are texts that nobody writes to, behind a pointer that says otherwise.
void* Parameter(const wchar_t* text)
{
    return const_cast<wchar_t*>(text);
}

void WalkThumbnail(CAnswers& answers, AC_HFILE document)
{
    UINT size = 0;
    if (!answers.Succeeds("size of thumbnail", _AC_GetThumbnailData, document, nullptr, UINT{0}, &size))
        return;
    answers.Number("size of thumbnail", size);
    if (size > answers.Limits().BytesOfAnswer)
        return;
    std::vector<BYTE> bytes(size);
    if (answers.Succeeds("thumbnail", _AC_GetThumbnailData, document, bytes.data(), size, &size))
        answers.Bytes("thumbnail", bytes.data(), bytes.size());
    if (!bytes.empty())
        answers.Ask("thumbnail with too little room", _AC_GetThumbnailData, document, bytes.data(), size - 1, &size);
}

void WalkCustomData(CAnswers& answers, AC_HFILE document, const wchar_t* key, std::vector<AC_PARAM_ELEMENT> elements)
{
    const AC_PARAMS params{static_cast<INT32>(elements.size()), elements.data()};
    wchar_t* const askedKey = const_cast<wchar_t*>(key);
    UINT64 size = 0;
    if (!answers.Succeeds("size of custom data", _AC_GetCustomData, document, askedKey, &params, nullptr, UINT64{0},
                          &size))
        return;
    answers.Number("size of custom data", static_cast<int64_t>(size));
    if (size > answers.Limits().BytesOfAnswer)
        return;
    std::vector<BYTE> bytes(size);
    if (answers.Succeeds("custom data", _AC_GetCustomData, document, askedKey, &params, bytes.data(), size, &size))
        answers.Bytes("custom data", bytes.data(), bytes.size());
}

void WalkSupportedCustomData(CAnswers& answers, AC_HFILE document)
{
    int count = 0;
    if (!answers.Succeeds("number of custom data", _AC_GetSupportedCustomData, document, nullptr, 0, &count))
        return;
    std::vector<AC_CUSTOM_DATA_INFO> infos(static_cast<size_t>(std::max(count, 0)));
    if (answers.Succeeds("custom data infos", _AC_GetSupportedCustomData, document, infos.data(), count, &count))
        for (const AC_CUSTOM_DATA_INFO& info : infos)
        {
            answers.Text("name", info.pszName);
            answers.Text("description", info.pszDescription);
        }
}

void WalkAxisNames(CAnswers& answers)
{
    for (const int type : {-1, 0, 1, 2, 3})
    {
        int size = 0;
        const auto axis = static_cast<AC_AxisType>(type);
        if (!answers.Succeeds("size of an axis' name", _AC_GetAxisName, axis, nullptr, 0, &size))
            continue;
        std::vector<wchar_t> name(static_cast<size_t>(size));
        if (answers.Succeeds("name of an axis", _AC_GetAxisName, axis, name.data(), size, &size))
            answers.Text("axis", name.data());
    }
}

} // namespace

void WalkDocumentData(CAnswers& answers, AC_HFILE document)
{
    WalkAxisNames(answers);
    CMN_VERSION_INFO version{};
    if (answers.Succeeds("version", _AC_GetFileVersion, document, &version))
        answers.Bytes("version", &version, sizeof version);
    WalkThumbnail(answers, document);
    WalkSupportedCustomData(answers, document);
    WalkCustomData(answers, document, L"SlideImage", {});
    for (const wchar_t* number : {L"0", L"1", L"7", L"-1", L"x"})
        WalkCustomData(answers, document, L"CroppedLevelImageSize",
                       {{L"groupId", Parameter(number)}, {L"levelId", Parameter(L"0")}});
    WalkCustomData(answers, document, L"Unknown", {});
}

void WalkGroupCustomData(CAnswers& answers, AC_HGROUP group)
{
    static constexpr std::array Keys = {L"ZEL_GroupType",         L"ZEL_GroupOrder",      L"ZEL_GroupRenderOperation",
                                        L"ZEL_GroupTransparency", L"ZEL_GroupPlaneUnit",  L"ZEL_GroupPlaneYUnit",
                                        L"ZEL_GroupPlaneOrigin",  L"ZEL_GroupPlaneScale", L"ZEL_GroupPlaneSize",
                                        L"ZEL_GroupFrameUnit",    L"ZEL_GroupFrameYUnit", L"ZEL_GroupFrameOrigin",
                                        L"ZEL_GroupFrameScale",   L"ZEL_GroupAxis0",      L"ZEL_GroupAxis1",
                                        L"ZEL_GroupExposureTime", L"ZEL_GroupUnknown"};
    for (const wchar_t* key : Keys)
        for (const wchar_t* channel : {L"0", L"1", L"99"})
        {
            AC_PARAM_ELEMENT element{L"channelId", Parameter(channel)};
            const AC_PARAM params{1, &element};
            UINT64 size = 0;
            wchar_t* const askedKey = const_cast<wchar_t*>(key);
            if (!answers.Succeeds("size of group data", _AC_GetGroupCustomData, group, askedKey, &params, nullptr,
                                  UINT64{0}, &size) ||
                size > answers.Limits().BytesOfAnswer)
                continue;
            std::vector<BYTE> bytes(size);
            if (answers.Succeeds("group data", _AC_GetGroupCustomData, group, askedKey, &params, bytes.data(), size,
                                 &size))
                answers.Bytes("group data", bytes.data(), bytes.size());
        }
}

} // namespace Fuzzing
