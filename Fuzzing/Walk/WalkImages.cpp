// Areas and the images in them.

#include "Brix/AccessorConveniences.h"
#include "Fuzzing/Walk/Walks.h"

#include <algorithm>
#include <array>
#include <memory>

namespace Fuzzing
{

namespace
{

void WalkBody(CAnswers& answers, AC_HIMAGE image, CMN_RECT rect)
{
    UINT64 size = 0;
    if (!answers.Succeeds("size of body", _AC_GetImageBody, image, &rect, nullptr, UINT64{0}, &size))
        return;
    answers.Number("size of body", static_cast<int64_t>(size));
    if (size > answers.Limits().BytesOfAnswer)
        return answers.NoteLargeBody();
    std::vector<BYTE> bytes(size);
    if (answers.Succeeds("body", _AC_GetImageBody, image, &rect, bytes.data(), size, &size))
        answers.Bytes("body", bytes.data(), bytes.size());
}

void WalkAxes(CAnswers& answers, AC_HIMAGE image)
{
    int count = 0;
    if (!answers.Succeeds("number of axes", _AC_GetImageAxis, image, nullptr, 0, &count))
        return;
    std::vector<AC_AXIS_INFO> axes(static_cast<size_t>(std::max(count, 0)));
    if (answers.Succeeds("axes", _AC_GetImageAxis, image, axes.data(), count, &count))
        for (const AC_AXIS_INFO& axis : axes)
        {
            answers.Number("axis", axis.nType);
            answers.Number("position", axis.nNumber);
        }
}

void WalkChannelOfImage(CAnswers& answers, AC_HIMAGE image)
{
    int size = 0;
    if (!answers.Succeeds("size of channel", _AC_GetImageChannelId, image, nullptr, 0, &size))
        return;
    std::vector<wchar_t> channel(static_cast<size_t>(std::max(size, 0)));
    if (answers.Succeeds("channel", _AC_GetImageChannelId, image, channel.data(), size, &size))
        answers.Text("channel", channel.data());
}

/// From the image that was asked for last, in the order of the store.
void WalkNextImages(CAnswers& answers, AC_HAREA area)
{
    if (!answers.Limits().NextImages)
        return;
    std::array<const wchar_t*, 2> channels = {L"0", L"1"};
    for (int n = 0; n < answers.Limits().ImagesOfArea; ++n)
    {
        AC_HIMAGE image = nullptr;
        // A document of one channel does not have the second.
        if (!answers.Succeeds("next image", _AC_GetNextImage, area, channels.data(), 2, nullptr, 0, &image) &&
            !answers.Succeeds("next image", _AC_GetNextImage, area, channels.data(), 1, nullptr, 0, &image))
            return;
        if (image)
            WalkImage(answers, image);
    }
}

void WalkPosition(CAnswers& answers, AC_HAREA area, const wchar_t* channel, int64_t position, int numOfAxes)
{
    std::array<AC_AXIS_INFO, 3> axes = {{{AC_AT_Z, position}, {AC_AT_TIME, position}, {AC_AT_LAMBDA, 0}}};
    AC_HIMAGE image = nullptr;
    if (answers.Succeeds("image", _AC_GetImage, area, channel, axes.data(), numOfAxes, &image) && image)
        WalkImage(answers, image);
}

void WalkPositions(CAnswers& answers, AC_HAREA area)
{
    for (const wchar_t* channel : {L"99", L"0", L"1"})
        for (const int numOfAxes : {0, 1, 2, 3}) // it depends on the group which of them name an image
            WalkPosition(answers, area, channel, 0, numOfAxes);
    WalkPosition(answers, area, L"0", 1000000, 3);
    WalkPosition(answers, area, L"0", -1, 3);
    WalkPosition(answers, area, L"0", 1, 3);
    WalkPosition(answers, area, L"0", 1, 1);
}

void WalkImagesByConveniences(CAnswers& answers, AC_HAREA area)
{
    AC_HIMAGE image = nullptr;
    const std::vector<const wchar_t*> channels = {L"0"};
    const auto ask = [&](bool isParticular)
    { return GetImage_ParticularOrNext(isParticular, area, channels, nullptr, 0, &image); };
    answers.Ask("image", ask, true);
    if (answers.Limits().NextImages)
        answers.Ask("image", ask, false);
    // The room for this one is made by the plug-in, as large as the image claims to be: a host asks for the size first.
    if (answers.HasMetLargeBody())
        return;
    BYTE* bytes = nullptr;
    UINT64 size = 0;
    const bool isThere = answers.Succeeds("sample image", [&] { return GetSampleImageBody(area, &bytes, &size); });
    const std::unique_ptr<BYTE[]> owner(isThere ? bytes : nullptr);
    if (isThere)
        answers.Bytes("sample image", bytes, size);
}

} // namespace

void WalkImage(CAnswers& answers, AC_HIMAGE image)
{
    CMN_RECT rect{};
    if (answers.Succeeds("size of image", _AC_GetImageSize, image, &rect))
        answers.Rect("image", rect);
    WalkAxes(answers, image);
    WalkChannelOfImage(answers, image);
    const CSetGetter get = [image](const wchar_t* key, const AC_PARAMS* params, AC_HPROPERTY* set)
    { return _AC_GetFrameProperty(image, key, params, set); };
    for (const wchar_t* key : {L"JpegTables", L"StimulationROIList", L"StimulationROIInfo", L"Unknown"})
        WalkSet(answers, get, key);
    for (const wchar_t* axis : {L"ZSTACK", L"TIMELAPSE", L"LAMBDA"})
        WalkSet(answers, get, L"AxisPosition", {{L"axisName", const_cast<wchar_t*>(axis)}});
    WalkBody(answers, image, {});
    for (const CMN_RECT& part : {CMN_RECT{0, 0, 1, 1}, CMN_RECT{rect.width / 2, rect.height / 2, 3, 2},
                                 CMN_RECT{rect.width - 1, rect.height - 1, 1, 1}, CMN_RECT{rect.width, 0, 1, 1},
                                 CMN_RECT{0, 0, UINT64{1} << 33, 1}, CMN_RECT{~UINT64{0}, ~UINT64{0}, 2, 2}})
        WalkBody(answers, image, part);
    answers.Ask("release image", _AC_ReleaseImage, image);
}

void WalkArea(CAnswers& answers, AC_HAREA area, bool withPropertiesOfAbove)
{
    CMN_RECT rect{};
    if (answers.Succeeds("position of area", _AC_GetAreaPosition, area, &rect))
        answers.Rect("area", rect);
    WalkProperties(answers, area, withPropertiesOfAbove);
    WalkNextImages(answers, area); // without one to go on from
    WalkPositions(answers, area);
    WalkNextImages(answers, area);
    if (withPropertiesOfAbove)
        WalkImagesByConveniences(answers, area);
    answers.Ask("release area", _AC_ReleaseArea, area);
}

} // namespace Fuzzing
