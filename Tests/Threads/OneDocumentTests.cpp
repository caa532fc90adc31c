#include "Brix/PlatformAbstractionLayer.h"
#include "Fuzzing/Seeds/SampleSlides.h"
#include "Fuzzing/Walk/FullWalk.h"
#include "Tests/Support/TemporaryFolder.h"
#include "Tests/Threads/OnThreads.h"
#include "Tests/Threads/Walk/PlatformWalk.h"

#include <algorithm>
#include <array>
#include <gtest/gtest.h>
#include <set>

/// Eight threads on one document, with every exported function that may run beside others: all but _AC_Close, and
/// ReleaseAndClose with it. What each is told is what one thread alone is told. Races are for the thread sanitizer to
/// see; no log is read here, since the locks of those who read it would order what nothing else does.

using namespace Fuzzing;
using namespace ThreadsOfTest;

namespace
{

struct CDocumentCloser
{
    void operator()(void* document) const { _AC_Close(document); }
};
using CDocument = std::unique_ptr<void, CDocumentCloser>;

class ThreadsOnOneDocument : public testing::TestWithParam<size_t>
{
protected:
    ThreadsOnOneDocument() { SampleSlides().at(GetParam()).Made.WriteTo(_folder.Path() / "slide.zel"); }

    std::wstring Name() const { return _folder.WideName("slide.zel"); }
    CDocument Open() const
    {
        AC_HFILE document = nullptr;
        EXPECT_EQ(_AC_Open(Name().c_str(), AC_OM_READ, &document), AC_RESULT_SUCCESS);
        return CDocument(document);
    }

private:
    TestSupport::TemporaryFolder _folder;
};

/// All that every thread is told alike, whatever the others ask.
CWalkLimits WithoutNextImages()
{
    CWalkLimits limits;
    limits.NextImages = false;
    return limits;
}

TEST_P(ThreadsOnOneDocument, AreToldWhatOneIsToldAlone)
{
    const CPlatformFiles files;
    const std::string expectedOfPlatform = files.AskEverything();
    const CWalkAnswers expected = WalkOpenDocument(Open().get(), WithoutNextImages());
    const CWalkAnswers expectedOfAnother = WalkEverything(Name());
    for (int round = 0; round < NumOfRounds(); ++round)
    {
        PAL_ReleaseDataCodec();            // they are searched anew
        const CDocument document = Open(); // nothing of it is built yet
        OnThreads(
            [&](int thread)
            {
                const auto askPlatform = [&] { EXPECT_EQ(files.AskEverything(), expectedOfPlatform); };
                if (thread % 2 == 0)
                    askPlatform();
                EXPECT_EQ(WalkOpenDocument(document.get(), WithoutNextImages()), expected);
                WalkOpenDocument(document.get()); // with next images, of which each thread gets some
                EXPECT_EQ(WalkEverything(Name()), expectedOfAnother); // a document of its own over the same files
                if (thread % 2 != 0)
                    askPlatform();
            });
    }
}

/// The images that a walk over an area meets, from its first one on.
std::set<AC_HIMAGE> ImagesOf(AC_HAREA area, const wchar_t* channel, AC_AXIS_INFO* axes, int numOfAxes)
{
    std::set<AC_HIMAGE> images;
    AC_HIMAGE image = nullptr;
    for (AC_Result result = _AC_GetImage(area, channel, axes, numOfAxes, &image); result == AC_RESULT_SUCCESS && image;
         result = _AC_GetNextImage(area, &channel, 1, nullptr, 0, &image))
        images.insert(image);
    return images;
}

TEST_P(ThreadsOnOneDocument, ShareTheWalkOverTheImagesOfAnArea)
{
    const CDocument document = Open();
    AC_HGROUP group = nullptr;
    ASSERT_EQ(_AC_GetGroup(document.get(), 0, &group), AC_RESULT_SUCCESS);
    AC_HAREA area = nullptr;
    ASSERT_EQ(_AC_GetArea(group, 0, 0, &area), AC_RESULT_SUCCESS);
    std::array<AC_AXIS_INFO, 3> axes = {{{AC_AT_Z, 0}, {AC_AT_TIME, 0}, {AC_AT_LAMBDA, 0}}};
    const std::set<AC_HIMAGE> expected = ImagesOf(area, L"0", axes.data(), 3);
    ASSERT_FALSE(expected.empty());
    OnThreads(
        [&](int)
        {
            for (int i = 0; i < 20 * NumOfRounds(); ++i)
                EXPECT_TRUE(std::ranges::includes(expected, ImagesOf(area, L"0", axes.data(), 3)));
        });
}

std::string NameOfSlide(const testing::TestParamInfo<size_t>& info)
{
    std::string name = SampleSlides().at(info.param).Name;
    std::erase(name, '-');
    return name;
}

INSTANTIATE_TEST_SUITE_P(OfEachKind, ThreadsOnOneDocument, testing::Range(size_t{0}, SampleSlides().size()),
                         NameOfSlide);

TEST(ThreadOnACodec, MayReleaseThemWhileOthersReadDocuments)
{
    const TestSupport::TemporaryFolder folder;
    const std::wstring name = SlideOfBinaryStore().WriteTo(folder.Path() / "slide.zel").wstring();
    const CWalkAnswers expected = WalkEverything(name);
    OnThreads(
        [&](int thread)
        {
            if (thread != 0)
            {
                EXPECT_EQ(WalkEverything(name), expected);
                return;
            }
            for (int i = 0; i < 100; ++i)
            {
                bool isSupported = false;
                EXPECT_EQ(PAL_IsSupportedDataCodec(L"LZ4", &isSupported), PAL_RESULT_SUCCESS);
                EXPECT_TRUE(isSupported);
                EXPECT_EQ(PAL_ReleaseDataCodec(), PAL_RESULT_SUCCESS);
            }
        });
}

} // namespace
