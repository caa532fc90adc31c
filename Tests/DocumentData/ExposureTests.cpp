// The exposure time of a channel, which stacks, channels and frames can tell.

#include "SampleDocuments/Tags.h"
#include "Tests/DocumentData/CustomData.h"

using namespace SlideOfTest;

namespace
{

constexpr auto Key = L"ZEL_GroupExposureTime";

class Exposure : public Slide
{
protected:
    CAnswer Of(const wchar_t* channel) const { return GroupData(Group(), Key, {{L"channelId", channel}}); }
};

struct ExposureRow : Row
{
    Stack Group;
    CAnswer Answer; ///< of channel 0
};

class ExposureTime : public Exposure, public testing::WithParamInterface<ExposureRow>
{
};

TEST_P(ExposureTime, IsTakenFromTheFirstThatTellsIt)
{
    Open(GetParam().Group);
    EXPECT_EQ(Of(L"0"), GetParam().Answer);
}

const CAnswer NotFound = {AC_RESULT_PROPERTY_NOT_FOUND, 0, ""};

Stack TwoChannels()
{
    return Stack(1).Z(2).Channels({"A", "B"});
}
CDevice SilentCamera()
{
    return {.Id = 5, .SubType = DeviceSubType::Camera, .HasProperties = false};
}
CDevice NamelessCamera(int64_t time)
{
    return {.Id = 6, .Exposure = time};
}

INSTANTIATE_TEST_SUITE_P(
    Stacks, ExposureTime,
    testing::Values(
        ExposureRow{{"New"}, TwoChannels().Exposure(1200), Text("1200")},
        ExposureRow{{"Old"}, TwoChannels().OldExposure(12), Text("12000")},
        ExposureRow{{"OldBeyond32Bits"}, TwoChannels().OldExposure(2000000000), Text("2000000000000")},
        ExposureRow{{"NewBeforeOld"}, TwoChannels().Exposure(7).OldExposure(12), Text("7")},
        ExposureRow{{"BehindALens"}, TwoChannels().Lens({}).Exposure(3), Text("3")},
        ExposureRow{{"OfADeviceWithoutSubtype"}, TwoChannels().Device(NamelessCamera(4)), Text("4")},
        ExposureRow{{"Negative"}, TwoChannels().Exposure(-5), Text("-5")},
        ExposureRow{{"BeforeThatOfAChannel"}, TwoChannels().Exposure(1).ChannelDevice(0, Camera(2)), Text("1")},
        ExposureRow{{"Nowhere"}, TwoChannels(), NotFound}, ExposureRow{{"NoCamera"}, TwoChannels().Lens({}), NotFound},
        ExposureRow{{"OfTheFirstCameraAlone"}, TwoChannels().Device(Camera({})).Device(NamelessCamera(4)), NotFound},
        ExposureRow{{"CameraThatTellsNothing"}, TwoChannels().Device(SilentCamera()), NotFound}),
    NameOfRow());

INSTANTIATE_TEST_SUITE_P(
    Channels, ExposureTime,
    testing::Values(
        ExposureRow{{"New"}, TwoChannels().ChannelDevice(0, Camera(300)), Text("300")},
        ExposureRow{{"Old"}, TwoChannels().ChannelDevice(0, Camera({}, 3)), Text("3000")},
        ExposureRow{{"ForWantOfTheStacks"}, TwoChannels().Lens({}).ChannelDevice(0, Camera(300)), Text("300")},
        ExposureRow{{"OfAnotherChannel"}, TwoChannels().ChannelDevice(1, Camera(300)), NotFound},
        ExposureRow{{"OfTheNextCamera"},
                    TwoChannels().ChannelDevice(0, Camera({})).ChannelDevice(0, NamelessCamera(4)),
                    Text("4")},
        ExposureRow{{"CameraThatTellsNothing"},
                    TwoChannels().ChannelDevice(0, SilentCamera()).ChannelDevice(0, NamelessCamera(4)),
                    NotFound},
        ExposureRow{
            {"BeforeThatOfAFrame"}, TwoChannels().ChannelDevice(0, Camera(2)).FrameDevice(0, Camera(3)), Text("2")}),
    NameOfRow());

INSTANTIATE_TEST_SUITE_P(
    Frames, ExposureTime,
    testing::Values(ExposureRow{{"New"}, TwoChannels().FrameDevice(0, Camera(9)), Text("9")},
                    ExposureRow{{"Old"}, TwoChannels().FrameDevice(0, Camera({}, 9)), Text("9000")},
                    ExposureRow{{"OfAnyChannel"}, TwoChannels().FrameDevice(3, Camera(9)), Text("9")},
                    ExposureRow{{"WithoutChannels"}, Stack(1).FrameDevice(0, Camera(9)), Text("9")},
                    ExposureRow{{"OfTheFirstThatListsDevices"},
                                TwoChannels().FrameDevice(1, Camera(5)).FrameDevice(2, Camera(6)),
                                Text("5")},
                    ExposureRow{{"NotBehindOneThatListsOthers"},
                                TwoChannels().FrameDevice(0, Revolver({})).FrameDevice(1, Camera(5)),
                                NotFound},
                    ExposureRow{{"OfTheNextCamera"},
                                TwoChannels().FrameDevice(0, Camera({})).FrameDevice(0, NamelessCamera(4)),
                                Text("4")},
                    ExposureRow{{"CameraThatTellsNothing"},
                                TwoChannels().FrameDevice(0, SilentCamera()).FrameDevice(0, NamelessCamera(4)),
                                NotFound},
                    // The text that the channel left is no answer.
                    ExposureRow{{"NeitherInChannelNorFrame"},
                                TwoChannels().ChannelDevice(0, Camera({})).FrameDevice(0, Camera({})),
                                NotFound}),
    NameOfRow());

TEST_F(Exposure, BelongsToTheChannelThatIsAsked)
{
    Open(TwoChannels().ChannelDevice(0, Camera(300)).ChannelDevice(1, Camera(400)));
    EXPECT_EQ(Of(L"1"), Text("400"));
    EXPECT_EQ(Of(L"1 and more"), Text("400"));
}

TEST_F(Exposure, OfAnUnknownChannelIsRefused)
{
    Open(TwoChannels().Exposure(5));
    EXPECT_EQ(Of(L"2"), (CAnswer{AC_RESULT_INVALID_PARAM, 0, ""}));
    EXPECT_EQ(Of(L"-1"), (CAnswer{AC_RESULT_INVALID_PARAM, 0, ""}));
    EXPECT_EQ(Of(L"4294967296"), (CAnswer{AC_RESULT_INVALID_PARAM, 0, ""})); // not cut to 0
    EXPECT_EQ(Of(L"B"), Text("5"));                                          // no number is 0
}

TEST_F(Exposure, NeedsTheChannel)
{
    Open(TwoChannels().Exposure(5));
    const CAnswer refused{AC_RESULT_INVALID_PARAM, 0, ""};
    EXPECT_EQ(GroupData(Group(), Key), refused);
    EXPECT_EQ(GroupData(Group(), Key, {{L"channelId", nullptr}}), refused);
    UINT64 size = 7;
    EXPECT_EQ(Call(_AC_GetGroupCustomData, Group(), std::wstring(Key).data(), nullptr, nullptr, UINT64{0}, &size),
              AC_RESULT_INVALID_PARAM);
    EXPECT_EQ(size, 0U);
}

TEST_F(Exposure, ThatBreaksARuleHasNoSize)
{
    Document document;
    document.With(TwoChannels().Exposure(1200));
    document.StackDevice(1).Put(SampleDocuments::Text(Tag::Exposure, u"not a number"));
    Open(std::move(document));
    EXPECT_EQ(Of(L"0"), (CAnswer{AC_RESULT_FAILURE, 0, ""}));
}

struct MessageRow : Row
{
    Stack Group;
    const char* Message;
};

class MissingExposure : public Exposure, public testing::WithParamInterface<MessageRow>
{
};

TEST_P(MissingExposure, IsExplainedInTheLog)
{
    Open(GetParam().Group);
    EXPECT_THAT(MessagesOf([&] { Of(L"0"); }), Contains(GetParam().Message));
}

Stack WithEmptyPath()
{
    Stack stack = TwoChannels();
    stack.Plan().OpticalPath.emplace();
    return stack;
}

INSTANTIATE_TEST_SUITE_P(
    Messages, MissingExposure,
    testing::Values(MessageRow{{"NoOpticalPath"}, TwoChannels(), "missing imgOpticalPath tag!"},
                    MessageRow{{"NoDevices"}, WithEmptyPath(), "No deviceIDs 0 tag found!"},
                    MessageRow{{"SilentCamera"}, TwoChannels().Device(SilentCamera()), "missing 120114 needed tag!"},
                    MessageRow{{"SingleChannel"}, Stack(1), "Warning! No channel metadata present for the channel."},
                    MessageRow{{"NoPathOfTheChannel"},
                               TwoChannels(),
                               "Warning! No ChannelLevelImgOpticalPath info present for the channel."}),
    NameOfRow());

} // namespace
