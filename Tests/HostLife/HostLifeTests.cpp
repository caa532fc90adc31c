#include "Fuzzing/Seeds/SampleSlides.h"
#include "Tests/HostLife/HostLibraries.h"
#include "Tests/HostLife/Session.h"
#include "Tests/HostLife/State/HostState.h"
#include "Tests/LoadedPlugin/LoadedPlugin.h"
#include "Tests/Support/Command.h"
#include "Tests/Support/HostLocale.h"
#include "Tests/Support/TemporaryFolder.h"

#include <cfenv>
#include <csignal>
#include <cstdlib>
#include <gtest/gtest.h>
#include <latch>
#include <thread>

/// A host that has settings and libraries of its own loads the plug-in, uses it, and unloads it, a hundred times. All
/// of the host's stays as it is.

using namespace Fuzzing;

namespace
{

constexpr int Often = 100;
constexpr int AFewTimes = 10;

void IgnoreSignal(int) {}

/// Settings that no process has by itself, until the end of the object.
class CUnusualSettings
{
public:
    CUnusualSettings()
    {
        struct sigaction action = {};
        action.sa_handler = IgnoreSignal;
        for (const int signal : {SIGPIPE, SIGTERM, SIGUSR1, SIGINT})
            sigaction(signal, &action, nullptr);
        std::fesetround(FE_UPWARD);
        initstate(42, _random, sizeof _random);
        setenv("ZEL_OF_THE_HOST", "a value", 1);
    }
    ~CUnusualSettings()
    {
        for (const int signal : {SIGPIPE, SIGTERM, SIGUSR1, SIGINT})
            std::signal(signal, SIG_DFL);
        std::fesetround(FE_TONEAREST);
        setstate(_former);
        unsetenv("ZEL_OF_THE_HOST");
    }
    CUnusualSettings(const CUnusualSettings&) = delete;
    CUnusualSettings& operator=(const CUnusualSettings&) = delete;

    /// What the host's random numbers go on from.
    std::string Random() const { return {_random, sizeof _random}; }

private:
    char _random[128] = {};
    char _ofFormer[8] = {};
    char* _former = initstate(1, _ofFormer, sizeof _ofFormer);
};

class HostLife : public testing::Test
{
protected:
    HostLife()
    {
        tzset(); // as the first look at a clock does, whose ever it is
        for (CSampleSlide& slide : SampleSlides())
            _names.push_back(slide.Made.WriteTo(_folder.Path() / (slide.Name + ".zel")).wstring());
        SampleDocuments::Document noRoot = SlideOfBinaryStore();
        noRoot.Root().FixedNum(0);
        _names.push_back(noRoot.WriteTo(_folder.Path() / "no-root.zel").wstring());
        SampleDocuments::Document noStore = SlideOfTiffStore();
        const auto file = noStore.WriteTo(_folder.Path() / "broken-store.zel");
        std::filesystem::resize_file(noStore.StorePath(file, 1), 100);
        _names.push_back(file.wstring());
        _names.push_back(_folder.WideName("missing.zel"));
    }

    /// Loads, uses and unloads the plug-in so many times, with `inBetween` while it is loaded. The time before gives
    /// what is to be expected.
    void LoadUseAndUnload(
        int times, const std::function<void()>& inBetween = [] {})
    {
        const std::vector<CWalkAnswers> answers = WalkAll(_names);
        UnloadPlugin();
        const CHostState before = StateOfThisProcess();
        for (int n = 0; n < times && !HasFailure(); ++n)
        {
            EXPECT_EQ(WalkAll(_names), answers);
            inBetween();
            UnloadPlugin();
            EXPECT_EQ(Difference(before, StateOfThisProcess()), "");
            EXPECT_FALSE(IsPluginInMemory());
        }
    }

    const TestSupport::TemporaryFolder& Folder() const { return _folder; }
    const std::vector<std::wstring>& Names() const { return _names; }

private:
    TestSupport::TemporaryFolder _folder;
    std::vector<std::wstring> _names;
};

TEST_F(HostLife, KeepsItsSettings)
{
    const CUnusualSettings settings;
    const std::string random = settings.Random();
    const CHostState before = StateOfThisProcess();
    LoadUseAndUnload(Often);
    EXPECT_EQ(Difference(before, StateOfThisProcess()), "");
    EXPECT_EQ(settings.Random(), random);
}

TEST_F(HostLife, KeepsItsCommaInNumbers)
{
    const TestSupport::HostLocale locale("de_DE.UTF-8");
    if (!locale.IsThere())
        GTEST_SKIP() << "no German locale here, and none can be built";
    ASSERT_EQ(StateOfThisProcess().at("number in print"), "1234,50");
    LoadUseAndUnload(AFewTimes);
}

TEST_F(HostLife, KeepsTheLocaleOfItsThread)
{
    const TestSupport::HostLocale locale("de_DE.UTF-8");
    if (!locale.IsThere())
        GTEST_SKIP() << "no German locale here, and none can be built";
    const locale_t own = duplocale(LC_GLOBAL_LOCALE);
    const locale_t former = uselocale(own);
    LoadUseAndUnload(AFewTimes);
    EXPECT_EQ(uselocale(former), own);
    freelocale(own);
}

TEST_F(HostLife, IsToldTheSameByEachLocale)
{
    const std::vector<CWalkAnswers> answers = WalkAll(Names());
    const TestSupport::HostLocale locale("de_DE.UTF-8");
    if (!locale.IsThere())
        GTEST_SKIP() << "no German locale here, and none can be built";
    EXPECT_EQ(WalkAll(Names()), answers);
}

TEST_F(HostLife, GoesOnUsingItsLibtiff)
{
    const CHostTiff tiff;
    ASSERT_TRUE(tiff.Works(Folder().Path().string()));
    LoadUseAndUnload(Often,
                     [&]
                     {
                         EXPECT_TRUE(tiff.IsAsItWasSet());
                         EXPECT_TRUE(tiff.Works(Folder().Path().string()));
                     });
    EXPECT_TRUE(tiff.Works(Folder().Path().string()));
}

TEST_F(HostLife, GetsNoMessagesOfThePluginsPictures)
{
    const CHostTiff tiff;
    const int before = tiff.NumOfMessages();
    WalkAll(Names());
    EXPECT_EQ(tiff.NumOfMessages(), before);
    UnloadPlugin();
}

TEST_F(HostLife, GoesOnUsingAnXercesThatItHasStartedBefore)
{
    HostXerces::Start();
    LoadUseAndUnload(AFewTimes, [] { EXPECT_TRUE(HostXerces::Works()); });
    EXPECT_TRUE(HostXerces::Works());
    HostXerces::End();
    EXPECT_FALSE(HostXerces::IsStarted());
}

TEST_F(HostLife, MayStartAndEndXercesWhileThePluginUsesIt)
{
    LoadUseAndUnload(AFewTimes,
                     [&]
                     {
                         HostXerces::Start();
                         EXPECT_TRUE(HostXerces::Works());
                         HostXerces::End();
                         EXPECT_EQ(WalkEverything(Names().front()).ResultOfOpening, AC_RESULT_SUCCESS);
                     });
}

TEST_F(HostLife, MayEndAnXercesThatThePluginGoesOnUsing)
{
    const std::vector<CWalkAnswers> answers = WalkAll(Names());
    UnloadPlugin();
    HostXerces::Start();
    EXPECT_EQ(WalkAll(Names()), answers);
    HostXerces::End();
    EXPECT_EQ(WalkAll(Names()), answers);
    UnloadPlugin();
    EXPECT_FALSE(HostXerces::IsStarted());
}

TEST_F(HostLife, DoesNotFindXercesStartedBySomebodyElse)
{
    LoadUseAndUnload(AFewTimes, [] { EXPECT_TRUE(HostXerces::IsStarted()); });
    EXPECT_FALSE(HostXerces::IsStarted());
}

/// A thread that has got a failure keeps nothing of the plug-in.
TEST_F(HostLife, UnloadsThePluginWhileThreadsLiveOnThatHaveUsedIt)
{
    std::latch hasUsed(1);
    std::latch mayEnd(1);
    std::jthread thread(
        [&]
        {
            WalkAll(Names());
            hasUsed.count_down();
            mayEnd.wait();
        });
    hasUsed.wait();
    UnloadPlugin();
    EXPECT_FALSE(IsPluginInMemory());
    mayEnd.count_down();
}

/// A host without any of the libraries below the plug-in, which come and go with it; it ends by returning from main.
TEST_F(HostLife, OfAHostWithoutLibrariesEndsWell)
{
    std::vector<std::string> words = {PLAIN_HOST, std::to_string(Often)};
    for (const std::wstring& name : Names())
        words.emplace_back(name.begin(), name.end());
    const TestSupport::CommandResult result = TestSupport::RunCommand(words);
    EXPECT_EQ(result.ExitCode, 0);
    EXPECT_EQ(result.Output, "");
    EXPECT_EQ(result.Errors, "");
}

} // namespace
