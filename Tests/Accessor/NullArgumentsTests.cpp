// Arguments that are NULL: each function complains in its own words before it does anything.

#include "Tests/Accessor/Slide.h"

using namespace SlideOfTest;

namespace
{

/// A document of one tile, and handles to all that is in it.
struct Handles
{
    AC_HFILE Doc;
    AC_HGROUP Group;
    AC_HAREA Area;
    AC_HIMAGE Image;
};

struct ComplaintRow : Row
{
    std::function<AC_Result(Handles&)> Call;
    std::vector<std::string> Messages;
};

class NullArgument : public Slide, public testing::WithParamInterface<ComplaintRow>
{
};

TEST_P(NullArgument, IsComplainedOf)
{
    Open(Stack(1));
    Handles handles = {Doc(), Group(), Area(Group(), 0, 0), Tile(0, 0)};
    AC_Result result = AC_RESULT_SUCCESS;
    EXPECT_EQ(MessagesOf([&] { result = GetParam().Call(handles); }), GetParam().Messages);
    EXPECT_EQ(result, AC_RESULT_INVALID_PARAM);
}

// Places for answers that never come.
int Number;
INT32 Count;
UINT64 Size;
CMN_RECT Rect;
wchar_t Character;
AC_AXIS_INFO Axis;
AC_HGROUP Handle;
const wchar_t* Channel = L"0";

INSTANTIATE_TEST_SUITE_P(
    OfDocuments, NullArgument,
    testing::Values(ComplaintRow{{"OpenWithoutAName"},
                                 [](Handles&) { return _AC_Open(nullptr, 0, &Handle); },
                                 {"Error: fileName or phImgDoc is NULL!"}},
                    ComplaintRow{{"OpenIntoNothing"},
                                 [](Handles&) { return _AC_Open(L"a.zel", 0, nullptr); },
                                 {"Error: fileName or phImgDoc is NULL!"}},
                    ComplaintRow{{"CloseNothing"}, [](Handles&) { return _AC_Close(nullptr); }, {"hImgDoc is NULL!"}},
                    ComplaintRow{{"NumOfGroupsOfNothing"},
                                 [](Handles&) { return _AC_GetNumOfGroups(nullptr, &Count); },
                                 {"Error: params hImgDoc or numOfGroups are NULL!"}},
                    ComplaintRow{{"NumOfGroupsIntoNothing"},
                                 [](Handles& h) { return _AC_GetNumOfGroups(h.Doc, nullptr); },
                                 {"Error: params hImgDoc or numOfGroups are NULL!"}},
                    ComplaintRow{{"GroupOfNothing"},
                                 [](Handles&) { return _AC_GetGroup(nullptr, 0, &Handle); },
                                 {"Error: params hImgDoc or phMultiDimImg are NULL!"}},
                    ComplaintRow{{"GroupIntoNothing"},
                                 [](Handles& h) { return _AC_GetGroup(h.Doc, -1, nullptr); },
                                 {"Error: params hImgDoc or phMultiDimImg are NULL!"}},
                    ComplaintRow{{"ReleaseNoGroup"}, [](Handles&) { return _AC_ReleaseGroup(nullptr); }, {}}),
    NameOfRow());

INSTANTIATE_TEST_SUITE_P(
    OfGroupsAndAreas, NullArgument,
    testing::Values(ComplaintRow{{"NumOfLevelsOfNothing"},
                                 [](Handles&) { return _AC_GetNumOfLevels(nullptr, &Number); },
                                 {"Error: params hMultiDimImg or numOfLevels are NULL!"}},
                    ComplaintRow{{"NumOfLevelsIntoNothing"},
                                 [](Handles& h) { return _AC_GetNumOfLevels(h.Group, nullptr); },
                                 {"Error: params hMultiDimImg or numOfLevels are NULL!"}},
                    ComplaintRow{{"LevelSizeOfNothing"},
                                 [](Handles&) { return _AC_GetLevelImageSize(nullptr, 0, &Rect); },
                                 {"Error: params 'hMultiDimImg' or 'pRect' are NULL!"}},
                    ComplaintRow{{"LevelSizeIntoNothing"},
                                 [](Handles& h) { return _AC_GetLevelImageSize(h.Group, 0, nullptr); },
                                 {"Error: params 'hMultiDimImg' or 'pRect' are NULL!"}},
                    ComplaintRow{{"NumOfAreaOfNothing"},
                                 [](Handles&) { return _AC_GetNumOfArea(nullptr, 0, &Count); },
                                 {"Error: hMultiDimImg or numOfAreas is NULL!"}},
                    ComplaintRow{{"NumOfAreaIntoNothing"},
                                 [](Handles& h) { return _AC_GetNumOfArea(h.Group, 0, nullptr); },
                                 {"Error: hMultiDimImg or numOfAreas is NULL!"}},
                    ComplaintRow{{"AreaOfNothing"},
                                 [](Handles&) { return _AC_GetArea(nullptr, 0, 0, &Handle); },
                                 {"Error: params hMultiDimImg or phArea are NULL!"}},
                    ComplaintRow{{"AreaIntoNothing"},
                                 [](Handles& h) { return _AC_GetArea(h.Group, -1, 0, nullptr); },
                                 {"Error: params hMultiDimImg or phArea are NULL!"}},
                    ComplaintRow{{"ReleaseNoArea"}, [](Handles&) { return _AC_ReleaseArea(nullptr); }, {}},
                    ComplaintRow{
                        {"PositionOfNothing"}, [](Handles&) { return _AC_GetAreaPosition(nullptr, &Rect); }, {}}),
    NameOfRow());

INSTANTIATE_TEST_SUITE_P(
    OfImages, NullArgument,
    testing::Values(ComplaintRow{{"ImageOfNothing"},
                                 [](Handles&) { return _AC_GetImage(nullptr, L"0", nullptr, 0, &Handle); },
                                 {"Error: params hMultiDimTile or ztlCoordIndexes or phDeepZoomTile are NULL"}},
                    ComplaintRow{{"ImageAtNoCoordinates"},
                                 [](Handles& h) { return _AC_GetImage(h.Area, L"0", nullptr, 1, &Handle); },
                                 {"Error: params hMultiDimTile or ztlCoordIndexes or phDeepZoomTile are NULL"}},
                    ComplaintRow{{"ImageIntoNothing"},
                                 [](Handles& h) { return _AC_GetImage(h.Area, L"0", nullptr, 0, nullptr); },
                                 {"Error: params hMultiDimTile or ztlCoordIndexes or phDeepZoomTile are NULL"}},
                    ComplaintRow{{"ImageOfNoChannel"},
                                 [](Handles& h) { return _AC_GetImage(h.Area, nullptr, nullptr, 0, &Handle); },
                                 {"Error: channel ID cannot be NULL!"}},
                    ComplaintRow{{"NextImageOfNoChannels"},
                                 [](Handles& h) { return _AC_GetNextImage(h.Area, nullptr, 1, nullptr, 0, &Handle); },
                                 {}},
                    ComplaintRow{{"NextImageOfFewerThanNoChannels"},
                                 [](Handles& h) { return _AC_GetNextImage(h.Area, &Channel, -1, nullptr, 0, &Handle); },
                                 {}},
                    ComplaintRow{{"NextImageOfNothing"},
                                 [](Handles&) { return _AC_GetNextImage(nullptr, &Channel, 1, nullptr, 0, &Handle); },
                                 {"Error: params hMultiDimTile or ztlCoordIndexes or phDeepZoomTile are NULL"}},
                    ComplaintRow{{"NextImageIntoNothing"},
                                 [](Handles& h) { return _AC_GetNextImage(h.Area, &Channel, 1, nullptr, 0, nullptr); },
                                 {"Error: params hMultiDimTile or ztlCoordIndexes or phDeepZoomTile are NULL"}},
                    ComplaintRow{{"ParticularImageOfNoChannelAtAll"},
                                 [](Handles&)
                                 { return GetImage_ParticularOrNext(true, nullptr, {}, nullptr, 0, nullptr); },
                                 {"Error: params 'channelIDs' is empty!"}},
                    ComplaintRow{{"BodyOfNothing"},
                                 [](Handles&) { return _AC_GetImageBody(nullptr, &Rect, nullptr, 0, &Size); },
                                 {"Error: params hDeepZoomTile or pRect or sizeFilledOrNeeded are NULL!"}},
                    ComplaintRow{{"BodyOfNoRectangle"},
                                 [](Handles& h) { return _AC_GetImageBody(h.Image, nullptr, nullptr, 0, &Size); },
                                 {"Error: params hDeepZoomTile or pRect or sizeFilledOrNeeded are NULL!"}},
                    ComplaintRow{{"BodyWithoutItsSize"},
                                 [](Handles& h) { return _AC_GetImageBody(h.Image, &Rect, nullptr, 0, nullptr); },
                                 {"Error: params hDeepZoomTile or pRect or sizeFilledOrNeeded are NULL!"}},
                    ComplaintRow{{"ReleaseNoImage"},
                                 [](Handles&) { return _AC_ReleaseImage(nullptr); },
                                 {"Error: hDeepZoomTile is NULL!"}},
                    ComplaintRow{{"SizeOfNothing"},
                                 [](Handles&) { return _AC_GetImageSize(nullptr, &Rect); },
                                 {"One of the parameters hImage or pRect, are NULL!"}},
                    ComplaintRow{{"SizeIntoNothing"},
                                 [](Handles& h) { return _AC_GetImageSize(h.Image, nullptr); },
                                 {"One of the parameters hImage or pRect, are NULL!"}},
                    ComplaintRow{{"AxisOfNothing"},
                                 [](Handles&) { return _AC_GetImageAxis(nullptr, &Axis, 1, &Number); },
                                 {"Error: params hDeepZoomTile or filledOrNeededNumOfEles are NULL!"}},
                    ComplaintRow{{"AxisWithoutTheirNumber"},
                                 [](Handles& h) { return _AC_GetImageAxis(h.Image, &Axis, 1, nullptr); },
                                 {"Error: params hDeepZoomTile or filledOrNeededNumOfEles are NULL!"}},
                    ComplaintRow{{"ChannelOfNothing"},
                                 [](Handles&) { return _AC_GetImageChannelId(nullptr, &Character, 1, &Number); },
                                 {"Error: params hDeepZoomTile or channelIdSize are NULL!"}},
                    ComplaintRow{{"ChannelWithoutItsSize"},
                                 [](Handles& h) { return _AC_GetImageChannelId(h.Image, &Character, 1, nullptr); },
                                 {"Error: params hDeepZoomTile or channelIdSize are NULL!"}}),
    NameOfRow());

// A place for an answer that nothing is logged about.
INSTANTIATE_TEST_SUITE_P(Silently, NullArgument,
                         testing::Values(ComplaintRow{{"PositionIntoNothing"},
                                                      [](Handles& h) { return _AC_GetAreaPosition(h.Area, nullptr); },
                                                      {}},
                                         ComplaintRow{{"AxisNameWithoutItsSize"},
                                                      [](Handles&)
                                                      { return _AC_GetAxisName(AC_AT_Z, &Character, 1, nullptr); },
                                                      {}}),
                         NameOfRow());

} // namespace
