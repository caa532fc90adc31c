// Several threads at once, on one document and on several. A race shows best under the thread sanitizer.

#include "CommonImageAccess/ImgDoc.h"
#include "Tests/Accessor/Slide.h"
#include "Tests/Threads/OnThreads.h"

using namespace SlideOfTest;
using namespace ThreadsOfTest;

namespace
{

Stack BigEnough()
{
    return Stack(1).Size(1000, 1000).Levels(3).Z(2).Channels(2).Contents(Labels(1));
}

class Threads : public Slide
{
};

TEST_F(Threads, OnOneDocumentAllGetTheSameAnswers)
{
    Open(BigEnough());
    const std::string expected = AnswersOf(Doc(), {BigEnough()});
    Open(BigEnough()); // nothing of it is built yet
    OnThreads([&](int) { EXPECT_EQ(AnswersOf(Doc(), {BigEnough()}), expected); });
}

TEST_F(Threads, OnOneDocumentAllGetTheSameHandles)
{
    Open(BigEnough());
    std::array<std::vector<void*>, NumOfThreads> handles;
    OnThreads(
        [&](int thread)
        {
            auto& mine = handles[static_cast<size_t>(thread)];
            for (UINT64 number = 0; number < 16; ++number)
            {
                mine.push_back(Area(Group(), 0, number));
                mine.push_back(Image(mine.back(), L"1", {AtZ(1)}));
            }
        });
    for (const auto& ofAThread : handles)
        EXPECT_EQ(ofAThread, handles.front());
}

TEST_F(Threads, AskForPositionsWhileOthersAskForImages)
{
    Open(BigEnough());
    const AC_HAREA area = Area(Group(), 0, 5);
    const AC_HIMAGE image = Image(area, L"0", {AtZ(0)});
    OnThreads(
        [&](int thread)
        {
            for (UINT64 number = 0; number < 16; ++number)
            {
                if (thread % 2 == 0)
                {
                    EXPECT_EQ(PositionOf(area), (CMN_RECT{256, 256, 256, 256}));
                    EXPECT_EQ(RectOf(image), (CMN_RECT{256, 256, 256, 256}));
                }
                else
                    BodyOf(Image(Area(Group(), 0, number), L"0", {AtZ(1)}));
            }
        });
}

TEST_F(Threads, AreToldPositionsOnceMoreWhileAnotherOneIsInsideTheDocument)
{
    Open(BigEnough());
    const AC_HAREA area = Area(Group(), 0, 5);
    const AC_HIMAGE image = Image(area, L"0", {AtZ(0)});
    PositionOf(area);
    RectOf(image);
    const CommonUtil::CLock inside(static_cast<CIA::CImgDoc*>(Doc())->ThreadSafetyMutex());
    // It would wait for ever if it waited at all.
    std::jthread(
        [&]
        {
            EXPECT_EQ(PositionOf(area), (CMN_RECT{256, 256, 256, 256}));
            EXPECT_EQ(RectOf(image), (CMN_RECT{256, 256, 256, 256}));
        })
        .join();
}

TEST_F(Threads, OnSeveralDocumentsDoNotMeet)
{
    Open(BigEnough());
    const std::string expected = AnswersOf(Doc(), {BigEnough()});
    OnThreads(
        [&](int)
        {
            AC_HFILE doc = nullptr;
            ASSERT_EQ(Call(_AC_Open, FileName().c_str(), 0, &doc), AC_RESULT_SUCCESS);
            EXPECT_EQ(AnswersOf(doc, {BigEnough()}), expected);
            EXPECT_EQ(Call(_AC_Close, doc), AC_RESULT_SUCCESS);
        });
}

TEST_F(Threads, ThatFailAtOnceGetTheirOwnResults)
{
    Document().With(Stack(1).WithoutStore()).WriteTo(Folder().Path() / "missing.zel");
    Document().With(Stack(1)).WithoutDisplayFlow().WriteTo(Folder().Path() / "broken.zel");
    const std::wstring missing = Folder().WideName("missing.zel");
    const std::wstring broken = Folder().WideName("broken.zel");
    OnThreads(
        [&](int thread)
        {
            const bool isMissing = thread % 2 == 0;
            for (int i = 0; i < 10; ++i)
            {
                AC_HFILE doc = nullptr;
                EXPECT_EQ(Call(_AC_Open, isMissing ? missing.c_str() : broken.c_str(), 0, &doc),
                          isMissing ? AC_RESULT_MISSING_FILE : AC_RESULT_FAILURE);
            }
        });
}

} // namespace
