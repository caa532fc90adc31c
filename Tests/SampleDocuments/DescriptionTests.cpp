#include "SampleDocuments/Codecs.h"
#include "SampleDocuments/Description/Description.h"
#include "SampleDocuments/Tags.h"

#include "Tests/SampleDocuments/Bytes.h"
#include "Tests/Support/TemporaryFolder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

using namespace SampleDocuments;
using namespace BytesOfTest;
using testing::HasSubstr;
using testing::StartsWith;

namespace
{

class Description : public testing::Test
{
protected:
    /// The document of a description whose pictures are 40 pixels wide and 20 high unless it says otherwise.
    Document Described(const std::string& json)
    {
        WriteFile(_file, BytesOf(json));
        CDescriptionDefaults defaults;
        defaults.Picture = [] { return DrawPicture(40, 20); };
        return DocumentFromDescription(_file, defaults);
    }

    /// That of one stack.
    Document WithStack(const std::string& members) { return Described(R"({"stacks": [{)" + members + "}]}"); }

    ByteString ValueAt(Document document, const Path& path) { return document.Volume(path).Value(); }

    /// One line, which begins with the file.
    void ExpectRefusal(const std::string& json, const std::string& reason)
    {
        try
        {
            Described(json);
            ADD_FAILURE() << json << " was taken";
        }
        catch (const CSampleError& error)
        {
            EXPECT_THAT(error.what(), StartsWith(_file.string() + ": "));
            EXPECT_THAT(error.what(), HasSubstr(reason));
            EXPECT_EQ(std::string(error.what()).find('\n'), std::string::npos);
        }
    }

    TestSupport::TemporaryFolder _folder;
    const std::filesystem::path _file = _folder.Path() / "description.json";
};

TEST_F(Description, ThatSaysNothingIsThatOfTheCommandLine)
{
    Document document = Described("{}");
    EXPECT_EQ(document.Stacks().size(), 1u);
    EXPECT_EQ(document.StackOf(1).Plan().Width, 40u);
    EXPECT_EQ(document.Volume({2000, 2004, 2109, 38, 268435458}).Value(), BitmapOf(DrawPicture(40, 20)));
    EXPECT_EQ(document.File().Directories.at(0).Width(), 40u);
}

TEST_F(Description, TellsOfTheDocument)
{
    Document document = Described(R"({
        "versionNumber": [5, 12], "persistentId": "id", "thumbnail": null, "firstDirectory": null,
        "oldThumbnail": {"draw": [8, 8], "bits": 4},
        "properties": {"author": "me", "note": null, "creationTime": "1970-01-02T00:00:01Z", "creatorSubVersion": 9}})");
    EXPECT_EQ(document.Volume({2000, 2035}).Value(), UInt32s(0, {5, 12}).Value());
    EXPECT_EQ(document.DocumentProperties().Child(Tag::Author).Value(), Utf16("me"));
    EXPECT_EQ(document.DocumentProperties().FindChild(Tag::Note), nullptr);
    EXPECT_EQ(document.DocumentProperties().Child(Tag::DocumentTime).Value(), Int64(0, 86401).Value());
    EXPECT_EQ(document.DocumentProperties().Child(Tag::CreatorSubVersion).Value(), Hex("09000000"));
    EXPECT_EQ(document.DocumentProperties().FindChild(Tag::Thumbnail), nullptr);
    EXPECT_EQ(document.Volume({2, 38, 268435458}).Value(), BitmapOf(DrawPicture(8, 8), {.Bits = 4}));
    EXPECT_EQ(document.Volume({2, 50}).Value(), Utf16("id"));
    EXPECT_TRUE(document.File().Directories.empty());
}

TEST_F(Description, PutsAPictureIntoTheFirstDirectory)
{
    Document raw = Described(R"({"firstDirectory": {"draw": [8, 4], "compression": 34712}})");
    EXPECT_EQ(raw.File().Directories[0].StripOrTile(0), PackedRows(DrawPicture(8, 4)));
    Document jpeg = Described(R"({"firstDirectory": {"draw": [8, 4], "kind": "jpeg"}})");
    EXPECT_EQ(Decode(jpeg.File().Directories[0].StripOrTile(0)).Width(), 8u);
}

TEST_F(Description, CanLeaveOutWhatDocumentsUsuallyHave)
{
    Document document = Described(R"({"properties": null, "displayLayers": null, "thumbnail": null, "stacks": []})");
    EXPECT_EQ(document.Volume({2000}).Children().size(), 1u) << "the version number";
}

TEST_F(Description, ShowsAPictureFromAFileBesideIt)
{
    WriteFile(_folder.Path() / "a.png", EncodePng(DrawPicture(30, 12)));
    Document document = WithStack(R"("picture": "a.png", "grow": 2, "pixels": {"compression": "raw"})");
    EXPECT_EQ(document.StackOf(1).Plan().Width, 60u);
    EXPECT_EQ(document.Volume({2000, 2004, 2109, 38, 268435458}).Value(), BitmapOf(DrawPicture(30, 12)));
}

TEST_F(Description, TellsOfTheLensAndTheExposureOfAStack)
{
    Document document = WithStack(R"("lens": {"name": "UPlan", "magnification": 20, "aperture": 0.5, "immersion": "oil",
        "workingDistance": {"value": 0.6, "unit": "m"}, "refractiveIndex": 1.5}, "exposure": 5000000000)");
    CNode& lens = document.StackDevice(1, 0);
    EXPECT_EQ(lens.Child(Tag::LensName).Value(), Utf16("UPlan"));
    EXPECT_EQ(lens.Child(Tag::ImmersionMedium).Value(), Hex("03000000"));
    EXPECT_EQ(lens.At({Tag::WorkingDistance, Tag::Value}).Value(), Double(0, 0.6).Value());
    EXPECT_EQ(document.StackDevice(1, 1).Child(Tag::Exposure).Value(), Int64(0, 5000000000).Value());
}

TEST_F(Description, TellsOfDevicesAtEachLevel)
{
    Document document = WithStack(R"("devices": [{"id": 9, "subType": 20000, "hasProperties": false}],
        "dimensions": [{"kind": "channel", "channels": ["a", {"name": "b", "lens": {"aperture": 1}}]}],
        "frames": [{"frame": 1, "oldExposure": 8}])");
    EXPECT_EQ(document.StackProperties(1).At({2043, 9, 120130}).Value(), Hex("204E0000"));
    EXPECT_EQ(document.ChannelDevice(1, 1).Child(Tag::Aperture).Value(), Double(0, 1).Value());
    EXPECT_EQ(document.FrameDevice(1, 1).Child(Tag::OldExposure).Value(), Hex("08000000"));
}

TEST_F(Description, TellsWhatElseAStackHas)
{
    Document document = WithStack(R"("id": 7, "name": "n", "creationTime": 5, "stackType": 256, "axisMeanings": [6, -1],
        "stage": {"x": {"value": 1.5, "unit": "m"}, "y": 2}, "experimentName": "e", "sampleName": "s",
        "sampleDescription": "d", "origin": [1], "scale": null, "yUnit": "PIXEL", "stackLimits": [1, 2],
        "lookUpTable": {"form": "simple", "colours": [[1, 2, 3]]})");
    CNode& properties = document.StackProperties(7);
    EXPECT_EQ(properties.Child(Tag::StackName).Value(), Utf16("n"));
    EXPECT_EQ(properties.Child(Tag::CreationTime).Value(), Int64(0, 5).Value());
    EXPECT_EQ(properties.Child(Tag::StackType).Value(), Hex("00010000"));
    EXPECT_EQ(properties.Child(Tag::Axis1Meaning).Value(), Hex("FFFFFFFF"));
    EXPECT_EQ(properties.At({Tag::Acquisition, Tag::StageX, Tag::Unit}).Value(), Utf16("m"));
    EXPECT_EQ(properties.At({Tag::Acquisition, Tag::StageY}).FindChild(Tag::Unit), nullptr);
    EXPECT_EQ(properties.At({Tag::Acquisition, Tag::SampleDescription}).Value(), Utf16("d"));
    EXPECT_EQ(properties.Child(Tag::FrameOrigin).Value(), Double(0, 1).Value());
    EXPECT_EQ(properties.FindChild(Tag::FrameScale), nullptr);
    EXPECT_EQ(properties.Child(Tag::Limits).Value(), Doubles(0, {1, 2}).Value());
    EXPECT_EQ(properties.Child(Tag::LookUpTable).Value(), Hex("030201"));
}

TEST_F(Description, TellsOfDimensionsAndTheirChannels)
{
    Document document = WithStack(R"("limits": null, "dimensions": [
        {"kind": "z", "points": 2, "start": "nan", "step": null, "unit": "m"},
        {"kind": "channel", "channels": [{"name": "a", "limits": [3, 4], "lookUpTable": {"ramp": [9, 9, 9], "size": 2}}]}],
        "frameCoordinates": {"z": {"values": [1, 2], "unit": "m"}})");
    EXPECT_EQ(document.StackVolume(1).Child(2003).Value(), UInt32s(0, {2, 1}).Value());
    CNode& z = document.DimensionVolume(1, 0).Child(2008);
    EXPECT_EQ(z.At({Tag::ZStart, Tag::Unit}).Value(), Utf16("m"));
    EXPECT_EQ(z.FindChild(Tag::ZStep), nullptr);
    EXPECT_EQ(document.ChannelVolume(1, 0).Child(Tag::Limits).Value(), Doubles(0, {3, 4}).Value());
    EXPECT_EQ(document.ChannelVolume(1, 0).At({2004, 268435458}).Value(), Hex("000000 090909"));
    EXPECT_EQ(document.Frame(1, 1).At({2006, 2014, 268435458}).Value(), Double(0, 2).Value());
}

TEST_F(Description, GivesPixelsOfAnyTypeAndAnyTiles)
{
    Document document = WithStack(R"("contents": "pattern", "size": [1000, 400], "tile": [100, 50],
        "grid": [{"level": 0, "columns": [-1, 3], "rows": [0, 1]}], "pixels": {"type": "double", "compression": "raw"},
        "missingTiles": [{"level": 0, "column": -1, "row": 1}])");
    EXPECT_EQ(document.StackOf(1).NumOfTiles(), 9u);
    EXPECT_EQ(document.StackOf(1).TileBytes(0, -1, 0).size(), 100u * 50u * 8u);
}

TEST_F(Description, GivesBytesThatAreNoPixels)
{
    Document bytes = WithStack(R"("contents": "bytes", "bytesPerTile": 77, "pixels": {"compression": 99})");
    EXPECT_EQ(bytes.StackOf(1).TileBytes(0, 0, 0).size(), 77u);
    EXPECT_EQ(bytes.StackOf(1).Plan().Pixels.CompressionFormat, 99u);
    Document labels = WithStack(R"("contents": "labels")");
    EXPECT_EQ(labels.StackOf(1).TileBytes(0, 0, 0), BytesOf("stack 1 level 0 column 0 row 0 Z 0 T 0 L 0 C 0"));
}

TEST_F(Description, TellsWhereAStackIsKept)
{
    EXPECT_EQ(WithStack(R"("store": "document")").StackOf(1).Plan().Storage, StackStorage::InDocument);
    EXPECT_EQ(WithStack(R"("store": "ome-tiff", "bigTiff": true)").StackOf(1).Plan().Storage, StackStorage::TiffStore);
    EXPECT_FALSE(WithStack(R"("isStoreWritten": false)").StackOf(1).Plan().IsStoreWritten);
    Document drawing = WithStack(R"("store": "vectorGraphics")");
    EXPECT_NE(drawing.Frame(1).FindChild(Tag::FrameVectorGraphics), nullptr);
}

TEST_F(Description, TellsHowStacksAreShown)
{
    Document document = Described(R"({"stacks": [{}, {"display": {"operatorId": 3, "transparency": 0.5,
        "planeOrigin": [1, 2], "planeRect": [1, 2, 3, 4], "hidden": false}}], "displayOrder": [2, 1]})");
    CNode& channel = document.DisplayLayer(0).Child(2013);
    EXPECT_EQ(channel.Child(Tag::StackToShow).Value(), Hex("02000000"));
    EXPECT_EQ(channel.Child(Tag::OperatorId).Value(), Hex("03000000"));
    EXPECT_EQ(channel.Child(Tag::Hidden).Value(), Hex("00"));
    Document detailed = Described(R"({"displayLayers": [[{"stackId": 1}, {"operatorType": -1}]]})");
    EXPECT_EQ(detailed.DisplayLayer(0).At({Nth(2013, 1), 10000}).Value(), Hex("FFFFFFFF"));
}

TEST_F(Description, PutsBlobsWhereTheyCanLie)
{
    Document document = Described(R"({"stacks": [{"blobs": [{"id": 1, "version": 2, "bytes": "AB"}],
        "frames": [{"frame": 0, "blobs": [{"id": 5}]}], "channelBlobs": [{"channel": 3, "blobs": [{"id": 3}]}]}],
        "blobs": [{"id": 4, "version": 9}]})");
    EXPECT_EQ(document.Volume({2000, 2001, 2024}).Value(), Hex("01000000 01000000 02000000 AB"));
    EXPECT_EQ(document.Frame(1).Child(2024).Value()[0], 5);
    EXPECT_EQ(document.Volume({2000, 2001, 2036, 2024}).Value()[0], 3);
    EXPECT_EQ(document.StackVolume(1).Child(2036).SecondTag(), 3u);
    EXPECT_EQ(document.Volume({2000, 2024}).Value()[8], 9);
}

TEST_F(Description, DrawsRegionsInBothForms)
{
    const std::string regions = R"("regions": [{"class": "rectangle", "name": "r", "points": [[1, 2], [3, 4]]},
                                               {"class": "any.other", "points": [[5, "inf"]]}])";
    const Regions expected({Rectangle("r", {1, 2}, {3, 4}), []
                            {
                                CRegion region("any.other", "", {{5, std::numeric_limits<double>::infinity()}});
                                region.Name.reset();
                                return region;
                            }()});
    EXPECT_EQ(ValueAt(WithStack(R"("blobs": [{)" + regions + "}]"), {2000, 2001, 2024}), expected.ToBlob().Value());
    EXPECT_EQ(ValueAt(WithStack(R"("blobs": [{"form": "tree", )" + regions + "}]"), {2000, 2001, 2024}),
              Regions(expected).AsTree().ToBlob().Value());
}

TEST_F(Description, DrawsManyRegionsAndDamagedOnes)
{
    EXPECT_EQ(ValueAt(WithStack(R"("blobs": [{"many": 100, "over": [40, 20]}])"), {2000, 2001, 2024}),
              Regions(ManyRegions(100, 40, 20)).ToBlob().Value());
    EXPECT_EQ(
        ValueAt(WithStack(R"("blobs": [{"xml": "", "payloadVersion": 6, "byteCount": 7, "byteOrderMark": 65534}])"),
                {2000, 2001, 2024}),
        Joined({Hex("04000000 0A000000 04000000"), Hex("06000000 07000000 FEFF")}));
    EXPECT_EQ(
        ValueAt(WithStack(R"("blobs": [{"form": "tree", "payloadType": 3, "numOfObjects": 8}])"), {2000, 2001, 2024}),
        Joined({Hex("04000000 0C000000 03000000"), Hex("03000000 03000000 08000000")}));
    EXPECT_EQ(ValueAt(WithStack(R"("blobs": [{"regions": [{"class": null, "points": null, "objectType": null}]}])"),
                      {2000, 2001, 2024}),
              Regions()
                  .EditXml([](std::string& xml)
                           { xml.insert(xml.find("</Property>"), "<Object><PropertySet></PropertySet></Object>"); })
                  .ToBlob()
                  .Value());
}

TEST_F(Description, PutsTheOverviewIntoTheFirstFrame)
{
    Document document = WithStack(R"("overview": {"draw": [10, 10], "encoding": "png"})");
    const ByteString blob = document.Frame(1).Child(2024).Value();
    EXPECT_EQ(blob[0], BlobId::MacroSlideImage);
    EXPECT_EQ(Decode(std::span(blob).subspan(12)), DrawPicture(10, 10));
}

TEST_F(Description, ChangesSingleFieldsAtTheEnd)
{
    Document document = Described(R"({"stacks": [{}, {}], "edits": [
        {"at": [2000, [2001, 1], 2005], "drop": [2030, 2015], "count": 1},
        {"at": [2000, [2001, 1], 2005, 2019], "length": 12, "dataSize": 99},
        {"at": [2000, [2001, 1]], "secondTag": null, "add": {"tag": 7, "code": 5, "value": "01 02", "secondTag": 4}},
        {"at": [2000], "put": {"tag": 2035, "children": [{"tag": 1}]}}]})");
    CNode& second = document.Volume({2000, Nth(2001, 1)});
    EXPECT_EQ(second.Child(2005).FindChild(2030), nullptr);
    EXPECT_EQ(second.At({2005, 2019}).Value().size(), 12u);
    EXPECT_FALSE(second.SecondTag().has_value());
    EXPECT_EQ(second.Child(7).Value(), Hex("0102"));
    EXPECT_EQ(second.Child(7).SecondTag(), 4u);
    EXPECT_TRUE(document.Volume({2000, 2035}).IsVolume());
    EXPECT_NE(document.Volume({2000, 2001, 2005}).FindChild(2030), nullptr);
}

struct CMistake
{
    const char* Name;
    const char* Json;
    const char* Reason;
};

class MistakeInADescription : public Description, public testing::WithParamInterface<CMistake>
{
};

TEST_P(MistakeInADescription, IsToldWithItsPlace)
{
    ExpectRefusal(GetParam().Json, GetParam().Reason);
}

INSTANTIATE_TEST_SUITE_P(
    All, MistakeInADescription,
    testing::Values(
        CMistake{"NoJson", "{\n\"stacks\": ]", "parse error at line 2, column 11"},
        CMistake{"NoObject", "[]", "takes an object"},
        CMistake{"UnknownKey", R"({"stack": []})", R"(there is no key "stack" here; take blobs, )"},
        CMistake{"UnknownKeyBelow", R"({"stacks": [{}, {"lens": {"aperature": 1}}]})",
                 R"(stacks[1].lens: there is no key "aperature" here; take aperture, immersion, )"},
        CMistake{"KeyTwice", R"({"stacks": [{"id": 1, "id": 2}]})", R"(the key "id" comes twice)"},
        CMistake{"NoList", R"({"stacks": {}})", "stacks: takes a list"},
        CMistake{"NoText", R"({"persistentId": 1})", "persistentId: takes a text"},
        CMistake{"NoFlag", R"({"stacks": [{"bigTiff": 1}]})", "stacks[0].bigTiff: takes true or false"},
        CMistake{"NoNumber", R"({"stacks": [{"scale": ["a"]}]})", "stacks[0].scale[0]: takes a number"},
        CMistake{"NoWholeNumber", R"({"stacks": [{"id": 1.5}]})", "stacks[0].id: takes a whole number"},
        CMistake{"NumberOutOfRange", R"({"stacks": [{"id": 4294967296}]})", "from 0 to 4294967295"},
        CMistake{"NegativeNumber", R"({"stacks": [{"id": -1}]})", "from 0 to 4294967295"},
        CMistake{"NoSuchName", R"({"stacks": [{"store": "zip"}]})", R"(stacks[0].store: takes "document", "kor", )"},
        CMistake{"NoBytes", R"({"blobs": [{"bytes": "0"}]})", "blobs[0].bytes: takes bytes"},
        CMistake{"NoTime", R"({"properties": {"creationTime": "2023-02-29T00:00:00Z"}})",
                 "properties.creationTime: takes seconds"},
        CMistake{"NoPair", R"({"blobs": [{"regions": [{"points": [[1]]}]}]})",
                 "blobs[0].regions[0].points[0]: takes a list of two"},
        CMistake{"NoColour", R"({"stacks": [{"lookUpTable": {"colours": [[1, 2]]}}]})", "takes [red, green, blue]"},
        CMistake{"TwoTables", R"({"stacks": [{"lookUpTable": {"bytes": "", "ramp": [1, 2, 3]}}]})", "takes one of"},
        CMistake{"NoSuchBits", R"({"thumbnail": {"bits": 3}})", "thumbnail: bitmap: there are 1, 4, 8 or 24 bits"},
        CMistake{"NoSuchPicture", R"({"stacks": [{"picture": "none.png"}]})", "none.png: can't be read"},
        CMistake{"PictureAndPattern", R"({"stacks": [{"contents": "pattern", "draw": [1, 1]}]})",
                 "stacks[0]: picture and draw are for"},
        CMistake{"PictureOfASize", R"({"stacks": [{"size": [1, 1]}]})", "stacks[0]: size and grid are for other"},
        CMistake{"PictureOfFloats", R"({"stacks": [{"pixels": {"type": "float"}}]})", "stacks[0].pixels.type: "},
        CMistake{"DrawnTooLarge", R"({"stacks": [{"draw": [20000, 1]}]})", "from 1 to 10000"},
        CMistake{"NoKind", R"({"stacks": [{"dimensions": [{}]}]})", "stacks[0].dimensions[0].kind: is needed"},
        CMistake{"NoSuchFrame", R"({"stacks": [{"frames": [{"frame": 5}]}]})",
                 "stack 1: there is no frame 5; it has 1"},
        CMistake{"NoSuchStack", R"({"displayOrder": [7]})", "there is no stack 7"},
        CMistake{"TooManyRegions", R"({"blobs": [{"many": 1000001}]})", "blobs[0].many: takes at most"},
        CMistake{"NoWay", R"({"edits": [{"drop": [1]}]})", "edits[0].at: is needed"},
        CMistake{"NoSuchNode", R"({"edits": [{"at": [2000, [2001, 4]]}]})", "edits[0]: "},
        CMistake{"NothingToDrop", R"({"edits": [{"at": [2000], "drop": [3]}]})",
                 "edits[0]: tag 2000 has no child 3 to drop"},
        CMistake{"NoTag", R"({"edits": [{"at": [2000], "add": {"code": 5}}]})", "edits[0].add.tag: is needed"}),
    [](const testing::TestParamInfo<CMistake>& mistake) { return mistake.param.Name; });

TEST(DescriptionFile, ThatCantBeReadIsTold)
{
    EXPECT_THROW(DocumentFromDescription("/no/such/file.json", {}), CSampleError);
}

// The example and the page that tells the keys.

using Json = nlohmann::json;

class ExampleOfADescription : public testing::Test
{
protected:
    Document DocumentOf(const Json& json)
    {
        WriteFile(_file, BytesOf(json.dump()));
        CDescriptionDefaults defaults;
        defaults.Picture = [] { return DrawPicture(40, 20); };
        return DocumentFromDescription(_file, defaults);
    }

    /// The keys that the object at a place takes, as the refusal of another one tells them.
    std::set<std::string> KeysAt(Json json, const Json::json_pointer& place)
    {
        json[place]["?"] = 1;
        try
        {
            DocumentOf(json);
        }
        catch (const CSampleError& error)
        {
            std::string text = error.what();
            EXPECT_THAT(text, HasSubstr("there is no key \"?\" here; take "));
            text.erase(0, text.find("; take ") + 7);
            text.replace(text.find(" or "), 4, ", ");
            std::set<std::string> keys;
            for (size_t start = 0, end = 0; end != std::string::npos; start = end + 2)
            {
                end = text.find(", ", start);
                keys.insert(text.substr(start, end - start));
            }
            return keys;
        }
        ADD_FAILURE() << place.to_string() << " takes any key";
        return {};
    }

    /// All objects of the example, by their places.
    std::vector<Json::json_pointer> Objects() const
    {
        std::vector<Json::json_pointer> places = {Json::json_pointer("")};
        for (size_t i = 0; i < places.size(); ++i)
            for (const auto& [key, value] : _example[places[i]].items())
                if (value.is_structured())
                    places.push_back(_example[places[i]].is_array() ? places[i] / std::stoul(key) : places[i] / key);
        std::erase_if(places, [this](const Json::json_pointer& place) { return !_example[place].is_object(); });
        return places;
    }

    TestSupport::TemporaryFolder _folder;
    const std::filesystem::path _file = _folder.Path() / "description.json";
    const Json _example = Json::parse(ReadFile(EXAMPLES "/everything.json"));
};

TEST_F(ExampleOfADescription, IsADocument)
{
    Document document = DocumentOf(_example);
    ASSERT_EQ(document.Stacks().size(), 4u);
    EXPECT_EQ(document.StackDevice(1).Child(Tag::LensName).Value(), Utf16("UPlan 20x"));
    EXPECT_EQ(document.Frame(1).Child(Tag::Blob).Value()[0], BlobId::MacroSlideImage);
    EXPECT_EQ(document.ChannelDevice(2, 1).Child(Tag::OldExposure).Value(), Hex("0C000000"));
    EXPECT_NE(document.StackProperties(9).FindChild(Tag::StackName), nullptr);
    EXPECT_EQ(document.StackProperties(3).Child(4711).Value(), Hex("07000000"));
    EXPECT_NO_THROW(document.WriteTo(_folder.Path() / "slide.zel"));
}

TEST_F(ExampleOfADescription, HasNoObjectWhoseKeysThePageDoesNotTell)
{
    const ByteString bytes = ReadFile(PAGE);
    const std::string page(bytes.begin(), bytes.end());
    Json example = _example;
    for (const Json::json_pointer& place : Objects())
        if (example[place].contains("draw"))
            example[place]["draw"] = {8, 8};
    std::set<std::string> shapes, untold;
    for (const Json::json_pointer& place : Objects())
    {
        std::string shape;
        for (const auto& [key, value] : example[place].items())
            shape += key + " ";
        if (!shapes.insert(shape).second)
            continue;
        for (const std::string& key : KeysAt(example, place))
            if (page.find("`" + key + "`") == std::string::npos && page.find("\"" + key + "\":") == std::string::npos)
                untold.insert(place.to_string() + " " + key);
    }
    EXPECT_THAT(untold, testing::IsEmpty());
    EXPECT_GT(shapes.size(), 30u);
}

} // namespace
