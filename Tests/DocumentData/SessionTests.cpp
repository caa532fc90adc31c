// Whole sessions, as a host plays them: everything is asked for, in the order in which hosts do, twice, and from two
// threads on two documents.

#include "Tests/DocumentData/CustomData.h"

#include <sstream>
#include <thread>

using namespace SlideOfTest;

namespace
{

/// Everything that a host is told, one answer a line.
class Session
{
public:
    explicit Session(const std::wstring& fileName) : _fileName(fileName) {}

    std::string Play()
    {
        Tell("connect", _AC_Connect());
        Tell("can access", _AC_CanAccess(_fileName.c_str()));
        AC_HFILE doc = nullptr;
        Tell("open", Call(_AC_Open, _fileName.c_str(), AC_OM_READ, &doc));
        TellDocument(doc);
        for (int number = 0; number < NumOfGroups(doc); ++number)
            TellGroup(GroupOf(doc, number));
        Tell("close", Call(_AC_Close, doc));
        TellFiles();
        Tell("disconnect", _AC_Disconnect());
        return _told.str();
    }

private:
    template <typename Answer>
    void Tell(const std::string& question, const Answer& answer)
    {
        _told << question << ": " << testing::PrintToString(answer) << '\n';
    }

    void TellFiles()
    {
        UINT count = 0;
        Tell("number of files", Call(_AC_GetNumOfFiles, _fileName.c_str(), &count));
        Tell("files", count);
        UINT size = 0;
        Tell("name of the file", Call(_AC_GetFileName, _fileName.c_str(), UINT{0}, nullptr, &size));
    }

    void TellDocument(AC_HFILE doc)
    {
        CMN_VERSION_INFO version{};
        Tell("version", Call(_AC_GetFileVersion, doc, &version));
        Tell("product", version.product.unMajor * 1000 + version.product.unMinor);
        UINT size = 0;
        Tell("thumbnail", Call(_AC_GetThumbnailData, doc, nullptr, UINT{0}, &size));
        ByteString thumbnail(size);
        Tell("its bytes", Call(_AC_GetThumbnailData, doc, thumbnail.data(), size, &size));
        Tell("thumbnail", thumbnail);
        std::array<AC_CUSTOM_DATA_INFO, 2> infos{};
        int count = 0;
        Tell("custom data", Call(_AC_GetSupportedCustomData, doc, infos.data(), 2, &count));
        TellCustomData(doc, L"SlideImage", {});
        TellCustomData(doc, L"CroppedLevelImageSize", {{L"groupId", L"0"}, {L"levelId", L"0"}});
    }

    void TellCustomData(AC_HFILE doc, std::wstring key, Params params)
    {
        UINT64 size = 0;
        Tell("size", Call(_AC_GetCustomData, doc, key.data(), params.Get(), nullptr, UINT64{0}, &size));
        ByteString bytes(size);
        Tell("bytes", Call(_AC_GetCustomData, doc, key.data(), params.Get(), bytes.data(), size, &size));
        Tell("custom data", bytes);
    }

    void TellGroup(AC_HGROUP group)
    {
        for (const wchar_t* key :
             {L"ZEL_GroupType", L"ZEL_GroupOrder", L"ZEL_GroupRenderOperation", L"ZEL_GroupTransparency",
              L"ZEL_GroupPlaneUnit", L"ZEL_GroupPlaneYUnit", L"ZEL_GroupPlaneOrigin", L"ZEL_GroupPlaneScale",
              L"ZEL_GroupPlaneSize", L"ZEL_GroupFrameOrigin", L"ZEL_GroupFrameScale", L"ZEL_GroupFrameUnit",
              L"ZEL_GroupFrameYUnit", L"ZEL_GroupAxis0", L"ZEL_GroupAxis1"})
            Tell("group data", GroupData(group, key));
        Tell("exposure", GroupData(group, L"ZEL_GroupExposureTime", {{L"channelId", L"0"}}));
        for (int level = 0; level < NumOfLevels(group); ++level)
        {
            Tell("level", LevelRect(group, level));
            const auto numOfAreas = static_cast<UINT64>(NumOfAreas(group, level));
            for (UINT64 number = 0; number < numOfAreas; ++number)
                TellArea(Area(group, level, number));
        }
        Tell("release", Call(_AC_ReleaseGroup, group));
    }

    void TellSet(AC_HAREA area, const wchar_t* key, Params params = {})
    {
        const AC_Result result = ResultOfSet(area, key, params);
        Tell(testing::PrintToString(std::wstring(key)), result);
        if (result == AC_RESULT_SUCCESS)
            Tell("set", ToldByArea(area, key, params));
    }

    void TellArea(AC_HAREA area)
    {
        Tell("area", PositionOf(area));
        for (const wchar_t* key :
             {L"SystemInfo", L"UserComment", L"IdInfo", L"CreationDateTime", L"UpdateDateTime", L"GroupName",
              L"WorkInfo", L"EnabledChannelIdList", L"Axes", L"ObjectiveLensInfo", L"XYStagePosition",
              L"AnalysisROIList", L"ImagingROIList", L"PixelLength", L"ImageSize"})
            TellSet(area, key);
        for (const wchar_t* axis : {L"ZSTACK", L"TIMELAPSE", L"LAMBDA"})
            TellSet(area, L"AxisInfo", {{L"axisName", axis}});
        for (const wchar_t* channel : {L"0", L"1"})
        {
            TellSet(area, L"ImageChannelIdList", {{L"channelId", channel}});
            TellSet(area, L"ChannelInfo", {{L"channelId", channel}});
            TellSet(area, L"LUTInfo", {{L"channelId", channel}, {L"planeName", L"all"}});
            TellTable(area, channel);
        }
        for (const AC_VALUE& id : ValuesOf(SetOf(area, L"AnalysisROIList"), L"id"))
            TellSet(area, L"AnalysisROIInfo", {{L"roiId", id.value.pszString}});
        TellConveniences(area);
        for (AC_HIMAGE image = Image(area, L"0", {AtZ(0), AtT(0), AtL(0)}); image; image = NextImage(area))
            TellImage(image);
        Tell("release", Call(_AC_ReleaseArea, area));
    }

    void TellTable(AC_HAREA area, std::wstring channel)
    {
        int count = 0;
        Tell("table", Call(_AC_GetLUT, area, channel.data(), nullptr, nullptr, nullptr, 0, &count));
        std::vector<int> red(static_cast<size_t>(count));
        std::vector<int> green(red);
        std::vector<int> blue(red);
        Tell("colours", Call(_AC_GetLUT, area, channel.data(), red.data(), green.data(), blue.data(), count, &count));
        Tell("red", red);
        Tell("blue", blue);
    }

    void TellConveniences(AC_HAREA area)
    {
        std::wstring dates;
        Tell("dates", Call(GetDateTimeString, area, std::ref(dates)));
        Tell("dates", dates);
        BYTE* buffer = nullptr;
        UINT64 size = 0;
        Tell("sample", Call(GetSampleImageBody, area, &buffer, &size));
        const std::unique_ptr<BYTE[]> owner(buffer);
        Tell("bytes", size);
    }

    void TellImage(AC_HIMAGE image)
    {
        Tell("image", RectOf(image));
        Tell("axes", AxesOf(image));
        Tell("channel", ChannelOf(image));
        for (const wchar_t* axis : {L"ZSTACK", L"TIMELAPSE", L"LAMBDA"})
            if (ResultOfImageSet(image, L"AxisPosition", {{L"axisName", axis}}) == AC_RESULT_SUCCESS)
                Tell("position", ToldBy(SetOfImage(image, L"AxisPosition", {{L"axisName", axis}})));
        Tell("stimulation", ToldBy(SetOfImage(image, L"StimulationROIList")));
        Tell("tables", ResultOfImageSet(image, L"JpegTables"));
        const ByteString body = BodyOf(image);
        Tell("body", std::hash<std::string>()(std::string(body.begin(), body.end())));
        Tell("release", Call(_AC_ReleaseImage, image));
    }

    std::wstring _fileName;
    std::ostringstream _told;
};

Stack Full()
{
    return Stack(1)
        .Size(300, 200)
        .Tiles(128, 128)
        .Levels(2)
        .Z(2)
        .T(2)
        .Channels({CChannel("DAPI", 3, 100).With(Camera(300)).With(CLookUpTable(Ramp(256, {0, 0, 255}))), "FITC"})
        .Lens({.Name = "UPlan 20x", .Magnification = 20, .ImmersionMedium = Immersion::Oil})
        .ChannelDevice(1, Revolver({.Aperture = 0.75}))
        .Stage(1500.5, -20)
        .Experiment("growth")
        .Sample("leaf", "third from the top")
        .LayerBlob(Regions(RegionOfEachClass()))
        .Overview(BytesOf("a picture"));
}

Stack InTiff()
{
    return Stack(1).Size(100, 80).Tiles(64, 64).Z(2).InTiffStore();
}

struct KindRow : Row
{
    Document Made;
    Document Other; ///< what the second thread works on
};

class WholeSession : public testing::TestWithParam<KindRow>
{
protected:
    TestSupport::TemporaryFolder Folder;

    std::wstring Write(Document document, const char* name)
    {
        document.WriteTo(Folder.Path() / name);
        return Folder.WideName(name);
    }
    std::wstring First() { return Write(GetParam().Made, "first.zel"); }
};

TEST_P(WholeSession, TellsTheSameTwice)
{
    const std::wstring name = First();
    const std::string told = Session(name).Play();
    EXPECT_EQ(Session(name).Play(), told);
    EXPECT_THAT(told, HasSubstr("open: SUCCESS"));
}

TEST_P(WholeSession, TellsTheSameWhileAnotherOneRuns)
{
    const std::wstring first = First();
    const std::wstring second = Write(GetParam().Other, "second.zel");
    const std::string toldOfFirst = Session(first).Play();
    const std::string toldOfSecond = Session(second).Play();
    std::array<std::string, 2> told;
    {
        const std::jthread firstThread([&] { told[0] = Session(first).Play(); });
        const std::jthread secondThread([&] { told[1] = Session(second).Play(); });
    }
    EXPECT_EQ(told[0], toldOfFirst);
    EXPECT_EQ(told[1], toldOfSecond);
}

TEST_P(WholeSession, LeavesNoFileOpen)
{
    const std::wstring name = First();
    const size_t before = TestSupport::NumOfOpenFiles();
    Session(name).Play();
    EXPECT_EQ(TestSupport::NumOfOpenFiles(), before);
}

Document FullDocument()
{
    return Document()
        .With(Full())
        .With(Stack(2))
        .FileBlob(Regions({Dot("spot", {5, 5})}).AsTree())
        .Thumbnail(DrawPicture(20, 10), {.Bits = 8});
}
Document PlainDocument()
{
    return Document()
        .With(Stack(1).Size(64, 48).InDocument(16))
        .FirstDirectory(DrawPicture(20, 10), FirstDirectoryKind::Jpeg);
}

INSTANTIATE_TEST_SUITE_P(
    Documents, WholeSession,
    testing::Values(KindRow{{"WithEverything"}, FullDocument(), FullDocument()},
                    KindRow{{"InTiffDirectories"}, PlainDocument(), PlainDocument()},
                    KindRow{{"InATiffStore"}, Document().With(InTiff()), Document().With(InTiff())},
                    KindRow{{"Compressed"}, Document().With(Stack(1).Size(200, 100).Jpeg(3)), FullDocument()},
                    KindRow{{"WithRegionsBesideOneWithout"},
                            Document().With(Stack(1).LayerBlob(Regions({Dot("spot", {1, 2})}))),
                            PlainDocument()}),
    NameOfRow());

} // namespace
