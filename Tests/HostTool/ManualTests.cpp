#include "HostTool/Manual/Completion.h"
#include "HostTool/Manual/ManualPage.h"
#include "Tests/HostTool/ZelProgram.h"

#include <gmock/gmock.h>

namespace
{

using namespace ZelTest;
using HostTool::CCommandTexts;
using testing::HasSubstr;
using testing::StartsWith;

/// A command of each kind of option.
CCommandTexts Draw()
{
    CCommandTexts command;
    command.Name = "draw";
    command.What = "Draws a .zel file. It takes long.";
    command.Examples = {"zel draw a.zel", "zel draw b.zel --kind grey"};
    command.Options = {{{"FILE"}, "the file", "TEXT", {}, "", true, true},
                       {{"-k", "--kind"}, "what to draw", "VALUE", {"grey", "colour"}, "grey", false, false},
                       {{"--fast"}, "don't wait", "", {}, "", false, false}};
    return command;
}
std::vector<CCommandTexts> Program()
{
    CCommandTexts program;
    program.What = "Does things.";
    program.Options = {{{"--version"}, "print the version", "", {}, "", false, false}};
    return {program, Draw()};
}

TEST(ManualPage, BeginsWithTheFirstSentence)
{
    EXPECT_THAT(HostTool::ManualPageOf(Draw(), Program(), "1.2"),
                StartsWith(".TH ZEL-DRAW 1 \"\" \"zel 1.2\" \"User commands\"\n"
                           ".SH NAME\n"
                           "zel\\-draw \\- draws a .zel file\n"
                           ".SH SYNOPSIS\n"
                           ".B zel draw\n"
                           "\\fIFILE\\fR [\\fIoptions\\fR]\n"));
}

TEST(ManualPage, TellsEachOption)
{
    const std::string page = HostTool::ManualPageOf(Draw(), Program(), "1.2");
    EXPECT_THAT(page, HasSubstr(".TP\n\\fB\\-k\\fR, \\fB\\-\\-kind\\fR \\fIVALUE\\fR\n"
                                "what to draw; one of grey, colour (default: grey)\n"));
    EXPECT_THAT(page, HasSubstr(".TP\n\\fB\\-\\-fast\\fR\ndon't wait\n"));
}

TEST(ManualPage, ShowsTheExamples)
{
    EXPECT_THAT(HostTool::ManualPageOf(Draw(), Program(), "1.2"),
                HasSubstr(".SH EXAMPLES\n.nf\nzel draw a.zel\nzel draw b.zel \\-\\-kind grey\n.fi\n"));
}

TEST(ManualPage, OfTheProgramListsTheCommands)
{
    EXPECT_THAT(HostTool::ManualPageOf(Program().front(), Program(), "1.2"),
                HasSubstr(".SH COMMANDS\n.TP\n.BR zel\\-draw (1)\nDraws a .zel file."));
}

/// What bash completes.
class BashCompletion : public testing::Test
{
protected:
    /// The words that bash offers for the last one of a line.
    std::string Offered(const std::string& line) const
    {
        const std::string script = Folder.Write("zel", HostTool::BashCompletionOf(Program()));
        return RunCommand({"bash", "-c",
                           "source '" + script + "'; cd '" + Folder.Path().string() + "'; COMP_WORDS=(" + line +
                               "); COMP_CWORD=$((${#COMP_WORDS[@]} - 1)); _zel; echo \"${COMPREPLY[*]}\""})
            .Output;
    }

    TestSupport::TemporaryFolder Folder;
};

TEST_F(BashCompletion, OffersCommands)
{
    EXPECT_EQ(Offered("zel dr"), "draw\n");
}

TEST_F(BashCompletion, OffersOptionsOfTheProgramAndOfACommand)
{
    EXPECT_EQ(Offered("zel --v"), "--version\n");
    EXPECT_EQ(Offered("zel draw --"), "--kind --fast\n");
    EXPECT_EQ(Offered("zel --plugin x.so draw --f"), "--fast\n");
}

TEST_F(BashCompletion, OffersTheValuesOfAnOption)
{
    EXPECT_EQ(Offered("zel draw --kind ''"), "grey colour\n");
    EXPECT_EQ(Offered("zel draw -k c"), "colour\n");
}

TEST_F(BashCompletion, OffersFiles)
{
    Folder.Write("slide.zel", "");
    EXPECT_EQ(Offered("zel draw sl"), "slide.zel\n");
}

TEST(ZshCompletion, DescribesCommandsAndOptions)
{
    const std::string script = HostTool::ZshCompletionOf(Program());
    EXPECT_THAT(script, StartsWith("#compdef zel\n"));
    EXPECT_THAT(script, HasSubstr("        'draw:Draws a .zel file. It takes long.'\n"));
    EXPECT_THAT(script, HasSubstr("'(-k --kind)'{-k,--kind}'[what to draw]:VALUE:(grey colour)'"));
    EXPECT_THAT(script, HasSubstr("'(--fast)'--fast'[don'\\''t wait]'"));
}

class ZelManual : public ZelProgram
{
protected:
    /// The names that the program's help lists.
    static Words Commands()
    {
        return {"info",  "tile",   "region", "thumbnail", "overview", "rois",  "export",
                "files", "verify", "tiles",  "tree",      "tour",     "manual"};
    }
};

TEST_F(ZelManual, HasAPageForEachCommand)
{
    EXPECT_EQ(Run({"manual", Folder.Name("share")}).ExitCode, 0);
    for (const std::string& command : Commands())
        EXPECT_THAT(Output("share/man/man1/zel-" + command + ".1"), HasSubstr(".SH EXAMPLES\n")) << command;
    EXPECT_THAT(Output("share/man/man1/zel.1"), HasSubstr(".SH COMMANDS\n"));
    EXPECT_THAT(Output("share/bash-completion/completions/zel"), HasSubstr("complete "));
    EXPECT_THAT(Output("share/zsh/site-functions/_zel"), HasSubstr("#compdef zel"));
}

TEST_F(ZelManual, HasTwoExamplesInTheHelpOfEachCommand)
{
    for (const std::string& command : Commands())
    {
        const CommandResult help = Run({command, "--help"});
        EXPECT_EQ(help.ExitCode, 0);
        const size_t examples = help.Output.find("Examples:\n");
        ASSERT_NE(examples, std::string::npos) << command;
        EXPECT_EQ(NumOfLines(help.Output.substr(examples)), 3u) << help.Output;
    }
}

TEST_F(ZelManual, IsNotWrittenWhereItCannotBe)
{
    Folder.Write("file", "in the way");
    ExpectRefusal(Run({"manual", Folder.Name("file")}), 2, "cannot make this folder");
}

TEST_F(ZelManual, TellsTheVersionOnRequest)
{
    EXPECT_THAT(Run({"--version"}).Output, StartsWith("zel "));
}

} // namespace
