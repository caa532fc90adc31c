// Answers do not depend on the locale of the host.

#include "Tests/Accessor/Slide.h"
#include "Tests/Support/HostLocale.h"

using namespace SlideOfTest;

namespace
{

const std::vector<Stack>& StacksOfManyNumbers()
{
    static const std::vector<Stack> stacks = {
        Stack(1000).Size(600, 300).Levels(2).Channels(2).Z(3, 0.25, 1.5).Contents(Labels(1000)).Name("\xC3\xA4"),
        Stack(2000)
            .Size(300, 300)
            .Origin(-1234.5, 99.25)
            .T(2)
            .FrameCoordinates(DimensionMeaning::T, {0.125, 3.75}, "10^-3s^1")
            .Contents(Labels(2000))};
    return stacks;
}

Document DocumentOfManyNumbers()
{
    return Document().With(StacksOfManyNumbers()[0]).With(StacksOfManyNumbers()[1]);
}

class AnswersUnderALocale : public Slide, public testing::WithParamInterface<const char*>
{
};

TEST_P(AnswersUnderALocale, AreThoseUnderTheClassicOne)
{
    Open(DocumentOfManyNumbers());
    const std::string expected = AnswersOf(Doc(), StacksOfManyNumbers());
    ASSERT_GT(expected.size(), 1000u);
    const TestSupport::HostLocale locale(GetParam());
    if (!locale.IsThere())
        GTEST_SKIP() << "no locale " << GetParam() << " here, and none can be built";
    Open(DocumentOfManyNumbers());
    EXPECT_EQ(AnswersOf(Doc(), StacksOfManyNumbers()), expected);
}

TEST_P(AnswersUnderALocale, ComeFromFilesOfAnyName)
{
    const TestSupport::HostLocale locale(GetParam());
    if (!locale.IsThere())
        GTEST_SKIP() << "no locale " << GetParam() << " here, and none can be built";
    DocumentOfManyNumbers().WriteTo(Folder().Path() / "\xC3\xA4\xE5\x88\x87.zel");
    EXPECT_EQ(ResultOfOpeningFile(Folder().WideName("\xC3\xA4\xE5\x88\x87.zel")), AC_RESULT_SUCCESS);
}

INSTANTIATE_TEST_SUITE_P(Locales, AnswersUnderALocale, testing::Values("C", "C.UTF-8", "de_DE.UTF-8"),
                         [](const auto& row)
                         {
                             std::string name = row.param;
                             std::erase_if(name, [](char c) { return !std::isalnum(static_cast<unsigned char>(c)); });
                             return name;
                         });

} // namespace
