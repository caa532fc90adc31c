// The exported functions that find images, tell where they stand and read their bytes.

#include "Brix/AccessorConveniences.h"
#include "CommonImageAccess/Boundary.h"
#include "CommonImageAccess/Handles.h"
#include "CommonUtil/Text.h"

#include <algorithm>
#include <array>
#include <cwchar>
#include <optional>
#include <span>

using namespace CIA;
using namespace CommonUtil;

namespace
{

struct CAxis
{
    AC_AxisType AxisType;
    DimensionType::E Dimension;
};

constexpr std::array<CAxis, 3> Axes = {{{AC_AT_TIME, DimensionType::DimensionType_T},
                                        {AC_AT_Z, DimensionType::DimensionType_Z},
                                        {AC_AT_LAMBDA, DimensionType::DimensionType_L}}};

std::optional<DimensionType::E> DimensionOfAxis(AC_AxisType axisType)
{
    for (const CAxis& axis : Axes)
        if (axis.AxisType == axisType)
            return axis.Dimension;
    return {};
}

std::optional<AC_AxisType> AxisOfDimension(DimensionType::E type)
{
    for (const CAxis& axis : Axes)
        if (axis.Dimension == type)
            return axis.AxisType;
    return {};
}

/// The number that a text is the canonical decimal form of: no sign, blank, prefix or leading zero. False when it is
/// none.
bool CanonicalNumber(const wchar_t* text, uint32_t& number)
{
    const bool isFirstADigit = text[0] >= L'0' && text[0] <= L'9';
    number = static_cast<uint32_t>(text[0] - L'0');
    if (isFirstADigit && text[1] == L'\0') [[likely]]
        return true;
    if (!isFirstADigit || number == 0)
        return false;
    uint64_t sum = number;
    const wchar_t* digit = text + 1;
    for (; *digit >= L'0' && *digit <= L'9'; ++digit)
    {
        sum = sum * 10 + static_cast<uint64_t>(*digit - L'0');
        if (sum > 0xFFFFFFFF)
            return false;
    }
    number = static_cast<uint32_t>(sum);
    return *digit == L'\0';
}

/// The coordinates of one request: what the host asked for, in the words of the model.
class CRequest
{
public:
    explicit CRequest(CMultiDimImage& image) : _image(image) {}

    /// The number of a channel. False after a complaint about its text.
    bool ChannelID(const wchar_t* text, uint32_t& channelID)
    {
        if (!text || !CanonicalNumber(text, channelID)) [[unlikely]]
            return RefuseText(text);
        if (!_image.DimensionOf(DimensionType::DimensionType_C).IsValidCoordinate(channelID)) [[unlikely]]
            return Refuse("Channel ID lies outside the acceptable range!");
        return true;
    }

    /// False after a complaint about one of the positions.
    bool AddAxes(std::span<const AC_AXIS_INFO> axes)
    {
        for (const AC_AXIS_INFO& axis : axes)
            if (!AddAxis(axis))
                return false;
        return true;
    }

    void AddChannel(uint32_t channelID)
    {
        CCoordinate::AssertIsIndexOf(_image.DimensionOf(DimensionType::DimensionType_C), channelID);
        Coords.Set(DimensionType::DimensionType_C, channelID);
    }

    CFrameCoords Coords;

private:
    /// False after a complaint: an unknown axis, or a position other than 0 on one that the image has not.
    bool AddAxis(const AC_AXIS_INFO& axis)
    {
        const std::optional<DimensionType::E> type = DimensionOfAxis(axis.nType);
        if (!type)
        {
            ZEL_LOG("ztlCoords: Unrecognized BRIX dimension type %d!", static_cast<int>(axis.nType));
            return false;
        }
        CDimension* dimension = _image.FindDimension(*type);
        if (!dimension)
        {
            ZEL_LOG("ztlCoords: BRIX dimension type %s invalid for this BRIX Group!", DimensionTypeToString(*type));
            ZEL_LOG("We will tolerate this only in case it is asking for for coord idx of 0...");
            return axis.nNumber == 0;
        }
        const uint32_t index = CheckedIndex(axis, *dimension);
        CCoordinate::AssertIsIndexOf(*dimension, index);
        Coords.Set(*type, index);
        return true;
    }

    [[gnu::cold]] static bool Refuse(const char* text)
    {
        ZEL_LOG("%s", text);
        return false;
    }
    [[gnu::cold]] static bool RefuseText(const wchar_t* text)
    {
        if (!text)
            return Refuse("Error: channel ID cannot be NULL!");
        ZEL_WLOG(L"Channel ID '%s' cannot be converted to integer!", text);
        return false;
    }

    static uint32_t CheckedIndex(const AC_AXIS_INFO& axis, CDimension& dimension)
    {
        const auto number = static_cast<long long>(axis.nNumber);
        const int axisType = static_cast<int>(axis.nType);
        if (number < 0)
            ZEL_LOG("ztlCoords: Negative coordinate index '%lld' for BRIX dimension type %d!", number, axisType);
        ZEL_ASSERT(static_cast<uint64_t>(number) <= 0xFFFFFFFE);
        const auto index = static_cast<uint32_t>(number);
        if (!dimension.IsValidCoordIdx(index))
        {
            ZEL_LOG("ztlCoords: Invalid coordinate index '%lld' for BRIX dimension type %d!", number, axisType);
            errno = EINVAL; // the reason of the coordinate's own assertion, which comes next
        }
        return index;
    }

    CMultiDimImage& _image;
};

/// What a request that found no tile comes to.
[[gnu::cold]] AC_Result ResultWithoutATile(CMultiDimImage& image, bool particularOrNext)
{
    if (errno != 0)
        return CiaResultToAC_Result();
    if (!particularOrNext)
        return AC_RESULT_NO_MORE_FRAME;
    image.DbgValidateNullDeepZoomTile();
    return AC_RESULT_SUCCESS;
}

using CChannelTexts = std::span<const wchar_t* const>;
using CAxes = std::span<const AC_AXIS_INFO>;

AC_Result FindParticularImage(CMultiDimTile& area, CChannelTexts channelTexts, CAxes axes, AC_HTILE* phDeepZoomTile)
{
    CMultiDimImage& image = area.Level().ParentMultiDimImg();
    CRequest request(image);
    uint32_t channelID = 0;
    for (const wchar_t* text : channelTexts)
        if (!request.ChannelID(text, channelID))
            return AC_RESULT_INVALID_PARAM;
    if (!axes.empty() && !request.AddAxes(axes))
        return AC_RESULT_INVALID_PARAM;
    ZEL_ASSERT(channelTexts.size() == 1);
    request.AddChannel(channelID);
    CDeepZoomTile* tile = area.DeepZoomTile(request.Coords);
    *phDeepZoomTile = tile;
    return tile ? AC_RESULT_SUCCESS : ResultWithoutATile(image, true);
}

AC_Result FindNextImage(CMultiDimTile& area, CChannelTexts channelTexts, CAxes axes, AC_HTILE* phDeepZoomTile)
{
    CMultiDimImage& image = area.Level().ParentMultiDimImg();
    CRequest request(image);
    CChannelSelection selectedChannelIDs;
    for (const wchar_t* text : channelTexts)
    {
        uint32_t channelID = 0;
        if (!request.ChannelID(text, channelID))
            return AC_RESULT_INVALID_PARAM;
        selectedChannelIDs.Add(channelID);
    }
    if (!axes.empty() && !request.AddAxes(axes))
        return AC_RESULT_INVALID_PARAM;
    CDeepZoomTile* tile = area.NextDeepZoomTile(request.Coords, selectedChannelIDs);
    *phDeepZoomTile = tile;
    return tile ? AC_RESULT_SUCCESS : ResultWithoutATile(image, false);
}

/// Both requests for an image: the host's arguments tested, the document held.
template <auto Find>
[[gnu::noinline]] AC_Result GetImage(AC_HMULTIDIMTILE hMultiDimTile, CChannelTexts channelTexts,
                                     const AC_AXIS_INFO* ztlCoordIndexes, int numOfElesInZtlCoordIndexes,
                                     AC_HTILE* phDeepZoomTile)
{
    if (!hMultiDimTile || (!ztlCoordIndexes && numOfElesInZtlCoordIndexes != 0) || !phDeepZoomTile)
        return Complain("Error: params hMultiDimTile or ztlCoordIndexes or phDeepZoomTile are NULL");
    return AtBoundary(
        [&]
        {
            CMultiDimTile& area = Area(hMultiDimTile);
            const CLock lock(DocOf(area).ThreadSafetyMutex());
            const auto numOfAxes = static_cast<size_t>(std::max(numOfElesInZtlCoordIndexes, 0));
            return Find(area, channelTexts, {ztlCoordIndexes, numOfAxes}, phDeepZoomTile);
        });
}

} // namespace

extern "C"
{

    AC_Result GetImage_ParticularOrNext(bool particularOrNext, AC_HMULTIDIMTILE hMultiDimTile,
                                        const std::vector<const wchar_t*>& channelIDs, AC_AXIS_INFO* ztlCoordIndexes,
                                        int numOfElesInZtlCoordIndexes, AC_HTILE* phDeepZoomTile)
    {
        if (!particularOrNext)
            return GetImage<FindNextImage>(hMultiDimTile, channelIDs, ztlCoordIndexes, numOfElesInZtlCoordIndexes,
                                           phDeepZoomTile);
        if (channelIDs.empty())
            return Complain("Error: params 'channelIDs' is empty!");
        return GetImage<FindParticularImage>(hMultiDimTile, channelIDs, ztlCoordIndexes, numOfElesInZtlCoordIndexes,
                                             phDeepZoomTile);
    }

    AC_Result _AC_GetImage(AC_HMULTIDIMTILE hMultiDimTile, const wchar_t* channelID, AC_AXIS_INFO* ztlCoordIndexes,
                           int numOfElesInZtlCoordIndexes, AC_HTILE* phDeepZoomTile)
    {
        return GetImage<FindParticularImage>(hMultiDimTile, {&channelID, 1}, ztlCoordIndexes,
                                             numOfElesInZtlCoordIndexes, phDeepZoomTile);
    }

    AC_Result _AC_GetNextImage(AC_HAREA hMultiDimTile, const wchar_t** channelIds, int numOfChannels,
                               AC_AXIS_INFO* ztlCoordIndexes, int numOfZtlCoordIndexes, AC_HIMAGE* phDeepZoomTile)
    {
        if (!channelIds || numOfChannels < 0)
            return AC_RESULT_INVALID_PARAM;
        if (numOfChannels == 0) // more than a wrong argument: a failed assertion, before anything else is looked at
            return AtBoundary([]() -> AC_Result { FailAssertion(__FILE__, __LINE__); });
        return GetImage<FindNextImage>(hMultiDimTile, {channelIds, static_cast<size_t>(numOfChannels)}, ztlCoordIndexes,
                                       numOfZtlCoordIndexes, phDeepZoomTile);
    }

    AC_Result _AC_ReleaseImage(AC_HTILE hDeepZoomTile)
    {
        return hDeepZoomTile ? AC_RESULT_SUCCESS : Complain("Error: hDeepZoomTile is NULL!");
    }

    AC_Result _AC_GetImageAxis(AC_HTILE hDeepZoomTile, AC_AXIS_INFO* ztlIndexes, int maxAllowedEles,
                               int* filledOrNeededNumOfEles)
    {
        if (!hDeepZoomTile || !filledOrNeededNumOfEles)
            return Complain("Error: params hDeepZoomTile or filledOrNeededNumOfEles are NULL!");
        return AtBoundary(
            [&]
            {
                CDeepZoomTile& tile = Tile(hDeepZoomTile);
                const CLock lock(DocOf(tile).ThreadSafetyMutex());
                std::vector<AC_AXIS_INFO> axes;
                for (const auto& [type, coordinate] : tile.Coords())
                    if (const std::optional<AC_AxisType> axis = AxisOfDimension(type))
                        axes.push_back({*axis, coordinate->Index()});
                const auto count = static_cast<int>(axes.size());
                *filledOrNeededNumOfEles = count;
                if (count > 0 && count <= maxAllowedEles && ztlIndexes)
                    std::copy(axes.begin(), axes.end(), ztlIndexes);
                return AC_RESULT_SUCCESS;
            });
    }

    AC_Result _AC_GetImageChannelId(AC_HTILE hDeepZoomTile, wchar_t* channelID, int channelIdArrSize,
                                    int* channelIdSize)
    {
        if (!hDeepZoomTile || !channelIdSize)
            return Complain("Error: params hDeepZoomTile or channelIdSize are NULL!");
        return AtBoundary(
            [&]
            {
                CDeepZoomTile& tile = Tile(hDeepZoomTile);
                const CLock lock(DocOf(tile).ThreadSafetyMutex());
                const auto found = tile.Coords().find(DimensionType::DimensionType_C);
                ZEL_ASSERT(found != tile.Coords().end());
                const std::wstring text = ToWide(ToString(found->second->Index()));
                *channelIdSize = static_cast<int>(text.size()) + 1;
                if (channelID && *channelIdSize <= channelIdArrSize)
                    std::wmemcpy(channelID, text.c_str(), text.size() + 1);
                return AC_RESULT_SUCCESS;
            });
    }

    AC_Result _AC_GetAxisName(AC_AxisType axisType, wchar_t* pBuffer, int nBufferSize, int* pnSize)
    {
        const std::optional<DimensionType::E> type = DimensionOfAxis(axisType);
        if (!type)
            return Complain("Unexpected axis type!");
        if (!pnSize)
            return AC_RESULT_INVALID_PARAM;
        const wchar_t* name = DimensionName(*type);
        *pnSize = static_cast<int>(std::wcslen(name)) + 1;
        if (*pnSize <= nBufferSize && pBuffer)
            std::wmemcpy(pBuffer, name, static_cast<size_t>(*pnSize));
        return AC_RESULT_SUCCESS;
    }

} // extern "C"
