// The property sets of areas and images.

#include "Brix/AccessorConveniences.h"
#include "Fuzzing/Walk/Walks.h"

#include <algorithm>
#include <array>

namespace Fuzzing
{

namespace
{

void* Parameter(const wchar_t* text)
{
    return const_cast<wchar_t*>(text);
}

std::vector<AC_VALUE> ValuesOf(CAnswers& answers, AC_HPROPERTY set, const wchar_t* key)
{
    int count = 0;
    if (!answers.Succeeds("number of values", _AC_GetPropertyValue, set, key, nullptr, 0, &count))
        return {};
    std::vector<AC_VALUE> values(static_cast<size_t>(std::max(count, 0)));
    answers.Ask("values", _AC_GetPropertyValue, set, key, values.data(), count, &count);
    return values;
}

std::vector<const wchar_t*> KeysOf(CAnswers& answers, AC_HPROPERTY set)
{
    int count = 0;
    if (!answers.Succeeds("number of keys", _AC_GetPropertyKeyList, set, nullptr, 0, &count))
        return {};
    std::vector<const wchar_t*> keys(static_cast<size_t>(std::max(count, 0)));
    answers.Ask("keys", _AC_GetPropertyKeyList, set, keys.data(), count, &count);
    return keys;
}

void WalkTable(CAnswers& answers, AC_HAREA area, const wchar_t* channel)
{
    int count = 0;
    wchar_t* const askedChannel = const_cast<wchar_t*>(channel);
    if (!answers.Succeeds("size of table", _AC_GetLUT, area, askedChannel, nullptr, nullptr, nullptr, 0, &count))
        return;
    std::vector<int> red(static_cast<size_t>(count));
    std::vector<int> green(red);
    std::vector<int> blue(red);
    if (answers.Succeeds("table", _AC_GetLUT, area, askedChannel, red.data(), green.data(), blue.data(), count, &count))
        for (const std::vector<int>* table : {&red, &green, &blue})
            answers.Bytes("table", table->data(), table->size() * sizeof(int));
}

void WalkRegions(CAnswers& answers, AC_HAREA area, const CSetGetter& get)
{
    AC_HPROPERTY list = nullptr;
    if (!answers.Succeeds("list of regions", _AC_GetAreaProperty, area, L"AnalysisROIList", nullptr, &list))
        return;
    int room = answers.Limits().Regions;
    for (const AC_VALUE& id : ValuesOf(answers, list, L"id"))
        if (room-- > 0 && id.nType == AC_VT_STRING)
            WalkSet(answers, get, L"AnalysisROIInfo", {{L"roiId", Parameter(id.value.pszString)}});
    WalkSet(answers, get, L"AnalysisROIInfo", {{L"roiId", Parameter(L"4000000000")}});
}

void WalkPropertiesOfAbove(CAnswers& answers, AC_HAREA area, const CSetGetter& get)
{
    for (const wchar_t* key : {L"SystemInfo", L"UserComment", L"IdInfo", L"GroupName", L"EnabledChannelIdList", L"Axes",
                               L"ObjectiveLensInfo", L"XYStagePosition", L"CreationDateTime", L"UpdateDateTime",
                               L"WorkInfo", L"AnalysisROIList", L"ImagingROIList", L"ImagingROIInfo", L"Unknown"})
        WalkSet(answers, get, key);
    for (const wchar_t* axis : {L"ZSTACK", L"TIMELAPSE", L"LAMBDA", L"Unknown"})
        WalkSet(answers, get, L"AxisInfo", {{L"axisName", Parameter(axis)}});
    static constexpr std::array ChannelIds = {L"99", L"0", L"1", L"2", L"3"};
    const int count = std::clamp(answers.Limits().Channels + 1, 1, static_cast<int>(ChannelIds.size()));
    for (int n = 0; n < count; ++n)
    {
        const wchar_t* channel = ChannelIds[static_cast<size_t>(n)];
        WalkSet(answers, get, L"ImageChannelIdList", {{L"channelId", Parameter(channel)}});
        WalkSet(answers, get, L"ChannelInfo", {{L"channelId", Parameter(channel)}});
        WalkSet(answers, get, L"LUTInfo", {{L"channelId", Parameter(channel)}, {L"planeName", Parameter(L"all")}});
        WalkTable(answers, area, channel);
    }
    WalkRegions(answers, area, get);
}

void WalkConveniences(CAnswers& answers, AC_HAREA area)
{
    std::wstring dates;
    if (answers.Succeeds("dates", [&] { return GetDateTimeString(area, dates); }))
        answers.Text("dates", dates.c_str());
    AC_HPROPERTY set = nullptr;
    if (!answers.Succeeds("set", _AC_GetAreaProperty, area, L"GroupName", nullptr, &set))
        return;
    for (const wchar_t* key : KeysOf(answers, set))
    {
        std::vector<std::wstring> texts;
        answers.Ask("texts", [&] { return GetValue(set, key, texts); });
        for (const std::wstring& text : texts)
            answers.Text("text", text.c_str());
    }
}

} // namespace

void WalkSet(CAnswers& answers, const CSetGetter& get, const wchar_t* key, std::vector<AC_PARAM_ELEMENT> params)
{
    const AC_PARAMS record{static_cast<INT32>(params.size()), params.data()};
    AC_HPROPERTY set = nullptr;
    if (!answers.Succeeds("set", [&] { return get(key, params.empty() ? nullptr : &record, &set); }))
        return;
    for (const wchar_t* keyOfSet : KeysOf(answers, set))
    {
        answers.Text("key", keyOfSet);
        for (const AC_VALUE& value : ValuesOf(answers, set, keyOfSet))
            answers.Value(value);
    }
    ValuesOf(answers, set, L"unknown");
    answers.Ask("release set", _AC_ReleaseProperty, set);
}

void WalkProperties(CAnswers& answers, AC_HAREA area, bool withPropertiesOfAbove)
{
    const CSetGetter get = [area](const wchar_t* key, const AC_PARAMS* params, AC_HPROPERTY* set)
    { return _AC_GetAreaProperty(area, key, params, set); };
    WalkSet(answers, get, L"PixelLength");
    WalkSet(answers, get, L"ImageSize");
    WalkSet(answers, get, L"ImageSize", {{L"unknown", Parameter(L"0")}});
    if (!withPropertiesOfAbove)
        return;
    WalkPropertiesOfAbove(answers, area, get);
    WalkConveniences(answers, area);
}

} // namespace Fuzzing
