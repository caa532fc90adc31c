/// `zel export --strip` and `zel info --private`: what may tell a person, a case or a laboratory.

#include "Tests/HostTool/ZelRun.h"

#include <gmock/gmock.h>
#include <nlohmann/json.hpp>

namespace
{

using namespace SampleDocuments;
using nlohmann::json;
using testing::HasSubstr;
using testing::Not;

class PersonalFacts : public ZelRun
{
protected:
    PersonalFacts()
    {
        Write(Document()
                  .Properties({.Note = "seen by Dr. Xaver",
                               .CreationTime = 1577836800,
                               .LastSavedTime = 1577840400,
                               .Author = "Ann Ypsilon",
                               .FamilyId = "family-77"})
                  .With(Stack(1)
                            .Size(128, 128)
                            .Tiles(64, 64)
                            .Name("Patient Zett")
                            .Channels({"DAPI"})
                            .Lens({.Magnification = 20})
                            .Experiment("Trial Quebec")
                            .Sample("Case 4711", "left kidney")
                            .Overview(EncodeJpeg(DrawPicture(90, 40), 85))
                            .LayerBlob(Regions({Rectangle("biopsy Romeo", {10, 20}, {30, 40})})))
                  .Thumbnail(DrawPicture(48, 32)));
    }

    const Words Telling = {"Xaver", "Ypsilon", "family-77",  "Zett",  "Quebec",
                           "4711",  "kidney",  "2020-01-01", "Romeo", "slide"};
};

TEST_F(PersonalFacts, AreInAnOrdinaryExport)
{
    Run("export", "out.ome.tif");
    for (const char* text :
         {"Xaver", "Ypsilon", "family-77", "Zett", "Quebec", "4711", "kidney", "2020-01-01", "Romeo"})
        EXPECT_THAT(BytesOf("out.ome.tif"), HasSubstr(text));
}

TEST_F(PersonalFacts, AreNowhereInAStrippedOne)
{
    for (const Words& layout : {Words{"--strip"}, Words{"--strip", "--layout", "flat"}})
    {
        Run("export", "out.ome.tif", layout);
        for (const std::string& text : Telling)
            EXPECT_THAT(BytesOf("out.ome.tif"), Not(HasSubstr(text)));
    }
}

TEST_F(PersonalFacts, GoWithoutWhatIsMeasured)
{
    Run("export", "out.ome.tif", {"--strip"});
    const auto result = TestSupport::RunCommand({"/usr/bin/python3", READ_OME_TIFF, Name("out.ome.tif")});
    ASSERT_EQ(result.ExitCode, 0) << result.Errors;
    const json facts = json::parse(result.Output);
    EXPECT_EQ(facts["pixel"], json::parse(R"(["0.5", "0.5", null])"));
    EXPECT_EQ(facts["channels"], json::parse(R"(["DAPI"])"));
    EXPECT_EQ(facts["objective"]["NominalMagnification"], "20");
    EXPECT_EQ(facts["regions"].size(), 1u);
    EXPECT_EQ(facts["date"], nullptr);
    EXPECT_EQ(facts["series"].size(), 1u);
}

TEST_F(PersonalFacts, DoNotGoWithThePictureOfTheLabel)
{
    ExpectRefusal("export", "out.ome.tif", {"--strip", "--overview"}, "--strip");
}

TEST_F(PersonalFacts, AreToldByInfo)
{
    const auto result = TestSupport::RunCommand({ZEL, "info", SlideName(), "--private"});
    EXPECT_EQ(result.ExitCode, 0) << result.Errors;
    for (const std::string& text : Telling)
        EXPECT_THAT(result.Output, HasSubstr(text));
    EXPECT_THAT(result.Output, HasSubstr("only with --overview; its label may be seen\n"));
    EXPECT_THAT(result.Output, HasSubstr("only with --thumbnail or --layout flat\n"));
    EXPECT_THAT(result.Output, Not(HasSubstr("DAPI")));
}

TEST_F(PersonalFacts, AreLeftOutWhereTheDocumentTellsNone)
{
    Write(Document().WithoutProperties().With(Stack(1).Name("")));
    const auto result = TestSupport::RunCommand({ZEL, "info", SlideName(), "--private"});
    for (const char* what : {"author", "comment", "family", "group 0", "overview", "thumbnail"})
        EXPECT_THAT(result.Output, Not(HasSubstr(what)));
}

} // namespace
