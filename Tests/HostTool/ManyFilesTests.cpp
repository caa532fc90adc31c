/// Commands on several documents.

#include "SampleDocuments/Slide.h"
#include "Tests/HostTool/ZelProgram.h"

#include <gmock/gmock.h>
#include <nlohmann/json.hpp>
#include <sstream>

namespace
{

using namespace ZelTest;
using nlohmann::json;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::Not;
namespace fs = std::filesystem;

/// Three sound documents in two folders, and one that is damaged.
class ZelOnMany : public ZelProgram
{
protected:
    ZelOnMany()
    {
        for (const char* name : {"a/first.zel", "a/second.zel", "b/below/first.zel"})
            SlideFromPicture(DrawPicture(100, 80), CSlideOptions()).WriteTo(Folder.Name(name));
    }
    std::string Damaged() const { return Folder.Write("b/damaged.zel", "no slide at all, but some bytes"); }
    CommandResult RunAll(const std::string& command, Words options = {}) const
    {
        options.insert(options.begin(), {command, "-r", Folder.Path().string()});
        return Run(options);
    }
    static std::vector<std::string> LinesOf(const std::string& text)
    {
        std::vector<std::string> lines;
        std::istringstream stream(text);
        for (std::string line; std::getline(stream, line);)
            lines.push_back(line);
        return lines;
    }
    std::vector<std::string> NamesIn(const std::string& folder) const
    {
        std::vector<std::string> names;
        for (const auto& entry : fs::directory_iterator(Folder.Name(folder)))
            names.push_back(entry.path().filename().string());
        std::sort(names.begin(), names.end());
        return names;
    }
};

TEST_F(ZelOnMany, TellsOfEachInALineOfJson)
{
    Damaged();
    const CommandResult result = RunAll("info", {"--json"});
    EXPECT_EQ(result.ExitCode, 1);
    EXPECT_EQ(NumOfLines(result.Errors), 1u) << result.Errors;
    const auto lines = LinesOf(result.Output);
    ASSERT_EQ(lines.size(), 4u);
    EXPECT_EQ(json::parse(lines[0]).at("path"), Folder.Name("a/first.zel")) << "in the order of names";
    EXPECT_EQ(json::parse(lines[3]).at("isOpened"), false);
}

TEST_F(ZelOnMany, GivesJsonForPeopleOnRequest)
{
    const std::string slide = Folder.Name("a/first.zel");
    EXPECT_EQ(NumOfLines(Run({"info", slide, "--json"}).Output), 1u);
    EXPECT_GT(NumOfLines(Run({"info", slide, "--json", "--pretty"}).Output), 50u);
}

TEST_F(ZelOnMany, TellsOfEachGroupInALineOfATable)
{
    const std::string damaged = Damaged();
    const auto lines = LinesOf(RunAll("info", {"--csv"}).Output);
    ASSERT_EQ(lines.size(), 5u);
    EXPECT_THAT(lines[0], testing::StartsWith("path,group,name,width,height,"));
    EXPECT_THAT(lines[1], testing::StartsWith(Folder.Name("a/first.zel") + ",0,Stack 1,100,80,"));
    const auto numOfCommas = [](const std::string& line) { return std::count(line.begin(), line.end(), ','); };
    EXPECT_THAT(lines[4], HasSubstr("cannot open: the file is damaged"));
    EXPECT_EQ(numOfCommas(lines[1]), numOfCommas(lines[0]));
}

TEST_F(ZelOnMany, TakesFilesAndLists)
{
    const std::string list = Folder.Write("list", Folder.Name("a/second.zel") + "\r\n\n");
    const CommandResult result = Run({"files", Folder.Name("a/first.zel"), "@" + list});
    EXPECT_EQ(result.ExitCode, 0) << result.Errors;
    EXPECT_LT(result.Output.find("first.zel"), result.Output.find("second.zel"));
    EXPECT_EQ(Run({"files", "@" + Folder.Name("none")}).ExitCode, 2);
    EXPECT_EQ(Run({"files", "-r", Folder.Path() / "none"}).ExitCode, 2);
}

TEST_F(ZelOnMany, WritesAnOutputForEachIntoAFolder)
{
    EXPECT_EQ(RunAll("thumbnail", {"--out-dir", Folder.Name("out"), "--name", "{parent}-{stem}.png"}).ExitCode, 0);
    EXPECT_THAT(NamesIn("out"), ElementsAre("a-first.png", "a-second.png", "below-first.png"));
    EXPECT_EQ(Run({"export", Folder.Name("a/first.zel"), "--out-dir", Folder.Name("one")}).ExitCode, 0);
    EXPECT_THAT(NamesIn("one"), ElementsAre("first.ome.tif"));
}

TEST_F(ZelOnMany, RefusesTwoOutputsOfOneNameBeforeAnythingIsWritten)
{
    ExpectRefusal(RunAll("rois", {"--out-dir", Folder.Name("out")}), 2, "have one output, ");
    ExpectRefusal(RunAll("rois", {"-o", Folder.Name("out")}), 2, "is one output for 3 documents");
    EXPECT_FALSE(fs::exists(Folder.Name("out")));
}

TEST_F(ZelOnMany, WritesOverNoneOfThem)
{
    const std::string before = Output("a/second.zel");
    const CommandResult result = Run({"rois", Folder.Name("a/first.zel"), Folder.Name("a/second.zel"), "--out-dir",
                                      Folder.Name("a"), "--name", "{stem}.zel"});
    EXPECT_EQ(result.ExitCode, 2);
    EXPECT_EQ(Output("a/second.zel"), before);
}

TEST_F(ZelOnMany, GoesOnAfterAFailureUnlessItIsToldNotTo)
{
    const std::string damaged = Damaged();
    const Words files = {"verify", damaged, Folder.Name("a/first.zel"), "--jobs", "1"};
    EXPECT_THAT(Run(files).Output, HasSubstr("first.zel"));
    Words fast = files;
    fast.emplace_back("--fail-fast");
    const CommandResult result = Run(fast);
    EXPECT_EQ(result.ExitCode, 1);
    EXPECT_EQ(result.Output, "");
}

TEST_F(ZelOnMany, AnswersTheWorstCode)
{
    const std::string sound = Folder.Name("a/first.zel");
    const std::string none = Folder.Name("none.zel");
    EXPECT_EQ(Run({"info", sound, none}).ExitCode, 2);
    EXPECT_EQ(Run({"info", none, Damaged(), sound}).ExitCode, 1);
}

TEST_F(ZelOnMany, SaysNothingButFailuresIfItIsQuiet)
{
    const CommandResult sound = RunAll("verify", {"--quiet"});
    EXPECT_EQ(sound.Output + sound.Errors, "");
    Damaged();
    const CommandResult damaged = RunAll("verify", {"--quiet"});
    EXPECT_EQ(damaged.Output, "");
    EXPECT_EQ(NumOfLines(damaged.Errors), 1u);
}

TEST_F(ZelOnMany, ComparesEachWithItsOwnHashes)
{
    const Words names = {"--name", "{parent}-{stem}.json"};
    Words write = {"--out-dir", Folder.Name("hashes")};
    write.insert(write.end(), names.begin(), names.end());
    EXPECT_EQ(RunAll("verify", write).ExitCode, 0);
    Words compare = {"--against", Folder.Name("hashes")};
    compare.insert(compare.end(), names.begin(), names.end());
    EXPECT_EQ(RunAll("verify", compare).ExitCode, 0);
    fs::copy_file(Folder.Name("hashes/a-first.json"), Folder.Name("hashes/a-second.json"),
                  fs::copy_options::overwrite_existing);
    EXPECT_EQ(RunAll("verify", compare).ExitCode, 0) << "the pictures are the same";
}

TEST_F(ZelOnMany, KeepsLinesWholeWhereParallelRunsAppendToOneFile)
{
    const std::string all = Folder.Name("all.jsonl");
    const std::string one = "'" ZEL "' info -r '" + Folder.Path().string() + "' --json >> '" + all + "'";
    RunCommand({"sh", "-c", one + " & " + one + " & " + one + " & " + one + " & wait"});
    const auto lines = LinesOf(Output("all.jsonl"));
    EXPECT_EQ(lines.size(), 12u);
    for (const std::string& line : lines)
        EXPECT_TRUE(json::accept(line)) << line;
}

TEST_F(ZelOnMany, EndsThemAllAndLeavesNothingWhenTheUserEndsIt)
{
    CSlideOptions large;
    large.Grow = 12;
    for (const char* name : {"c/first.zel", "c/second.zel"})
        SlideFromPicture(DrawPicture(600, 400), large).WriteTo(Folder.Name(name));
    // The pipe that nobody reads keeps it from ending by itself.
    const CommandResult result = RunCommand(
        {"bash", "-c",
         "mkdir '" + Folder.Name("out") + "'; mkfifo '" + Folder.Name("out/first.json") + "'; '" ZEL "' verify '" +
             Folder.Name("c/first.zel") + "' '" + Folder.Name("c/second.zel") + "' -q --out-dir '" +
             Folder.Name("out") + "' --name '{stem}.json' & p=$!; sleep 1; kill -TERM $p; wait $p; echo $?"});
    EXPECT_EQ(result.Output, "143\n");
    for (const std::string& name : NamesIn("out"))
        EXPECT_THAT(name, Not(HasSubstr(".part")));
}

TEST_F(ZelOnMany, IsOneDocumentForOtherCommands)
{
    EXPECT_EQ(Run({"tiles", Folder.Name("a/first.zel"), Folder.Name("a/second.zel")}).ExitCode, 2);
    EXPECT_THAT(Run({"tiles", "@" + Folder.Name("list")}).Errors, HasSubstr("no such file"));
}

} // namespace
