#include "PlatformAbstractionLayer/Files.h"

#include "CommonUtil/PlatformCalls.h"
#include "Tests/Support/ChildProcess.h"
#include "Tests/Support/TemporaryFolder.h"

#include <cerrno>
#include <fcntl.h>
#include <filesystem>
#include <gtest/gtest.h>
#include <memory>
#include <unistd.h>

using TestSupport::ExitedWith;
using TestSupport::RunInChild;

namespace
{

struct CloseFile
{
    void operator()(std::FILE* stream) const { PAL_CloseFile(stream); }
};
using Stream = std::unique_ptr<std::FILE, CloseFile>;

class Files : public testing::Test
{
protected:
    std::wstring Name(const char* name) const { return _folder.WideName(name); }
    std::string BytesOf(const char* name) const { return TestSupport::BytesOf(_folder.Name(name)); }
    void MakePipe(const char* name) const { ASSERT_EQ(mkfifo(_folder.Name(name).c_str(), 0600), 0); }

    TestSupport::TemporaryFolder _folder;
};

TEST_F(Files, OpenByWideName)
{
    _folder.Write("\u00e4 \u4e2d.zel", "12");
    const Stream stream(PAL_OpenFile(Name("\u00e4 \u4e2d.zel").c_str(), L"rb"));
    ASSERT_TRUE(stream);
    EXPECT_EQ(std::fgetc(stream.get()), '1');
}

TEST_F(Files, OpenInEveryMode)
{
    const auto open = [&](const wchar_t* mode) { return Stream(PAL_OpenFile(Name("file").c_str(), mode)); };
    std::fputs("12", open(L"w").get());
    std::fputs("3", open(L"ab").get());
    std::fputs("0", open(L"r+b").get());
    EXPECT_EQ(BytesOf("file"), "023");
    EXPECT_FALSE(open(L"wx"));
    EXPECT_EQ(errno, EEXIST);
    EXPECT_TRUE(open(L"w+"));
    EXPECT_EQ(BytesOf("file"), "");
}

TEST_F(Files, FailToOpenWithTheReasonInErrno)
{
    EXPECT_FALSE(PAL_OpenFile(Name("missing").c_str(), L"rb"));
    EXPECT_EQ(errno, ENOENT);
    EXPECT_FALSE(PAL_OpenFile(Name("missing/file").c_str(), L"w"));
    EXPECT_EQ(errno, ENOENT);
    EXPECT_FALSE(PAL_OpenFile(Name("file").c_str(), L""));
    EXPECT_EQ(errno, EINVAL);
    EXPECT_FALSE(PAL_OpenFile(std::wstring(10000, L'x').c_str(), L"rb"));
    EXPECT_EQ(errno, ENAMETOOLONG);
}

TEST_F(Files, DoNotOpenWithoutNameOrMode)
{
    EXPECT_FALSE(PAL_OpenFile(nullptr, L"rb"));
    EXPECT_FALSE(PAL_OpenFile(L"file", nullptr));
}

TEST_F(Files, AreClosedOnce)
{
    const size_t numOfOpenFiles = TestSupport::NumOfOpenFiles();
    std::FILE* stream = PAL_OpenFile(Name("file").c_str(), L"w");
    EXPECT_EQ(TestSupport::NumOfOpenFiles(), numOfOpenFiles + 1);
    EXPECT_EQ(PAL_CloseFile(stream), 0);
    EXPECT_EQ(TestSupport::NumOfOpenFiles(), numOfOpenFiles);
    EXPECT_EQ(PAL_CloseFile(nullptr), 1);
}

TEST_F(Files, AreNotInheritedByOtherPrograms)
{
    for (const wchar_t* mode : {L"w", L"rb", L"r+", L"a"})
    {
        const Stream stream(PAL_OpenFile(Name("file").c_str(), mode));
        ASSERT_TRUE(stream);
        EXPECT_NE(fcntl(fileno(stream.get()), F_GETFD) & FD_CLOEXEC, 0);
    }
}

TEST_F(Files, BlockAsEverOnceTheyAreOpen)
{
    _folder.Write("file", "12");
    const Stream stream(OpenFileToRead(Name("file")));
    ASSERT_TRUE(stream);
    EXPECT_EQ(fcntl(fileno(stream.get()), F_GETFL) & O_NONBLOCK, 0);
    EXPECT_NE(fcntl(fileno(stream.get()), F_GETFD) & FD_CLOEXEC, 0);
}

TEST_F(Files, MayBePipesThatSomebodyWritesTo)
{
    MakePipe("pipe");
    const auto readWhatIsWritten = [&]
    {
        const int otherEnd = open(_folder.Name("pipe").c_str(), O_RDWR);
        const Stream stream(PAL_OpenFile(Name("pipe").c_str(), L"rb"));
        return stream && write(otherEnd, "7", 1) == 1 ? std::fgetc(stream.get()) : errno;
    };
    EXPECT_EQ(RunInChild(readWhatIsWritten, 10), ExitedWith('7'));
}

TEST_F(Files, ToBeReadAtAnyPlaceAreNoPipes)
{
    MakePipe("pipe");
    EXPECT_EQ(RunInChild([&] { return OpenFileToRead(Name("pipe")) ? 1 : errno; }, 10), ExitedWith(ENOENT));
}

TEST_F(Files, MayBeFoldersAndDevices)
{
    EXPECT_TRUE(Stream(PAL_OpenFile(_folder.WideName("").c_str(), L"rb")));
    EXPECT_TRUE(Stream(PAL_OpenFile(L"/dev/null", L"rb")));
    EXPECT_TRUE(Stream(OpenFileToRead(_folder.WideName(""))));
    EXPECT_TRUE(Stream(OpenFileToRead(L"/dev/null")));
}

TEST_F(Files, HaveASize)
{
    _folder.Write("\u00e4", "123");
    struct stat status = {};
    EXPECT_EQ(_wstat64(Name("\u00e4").c_str(), &status), 0);
    EXPECT_EQ(status.st_size, 3);
    EXPECT_EQ(_wstat64(Name("missing").c_str(), &status), -1);
    EXPECT_EQ(errno, ENOENT);
    EXPECT_EQ(_wstat64(nullptr, &status), -1);
    EXPECT_EQ(errno, EINVAL);
}

TEST_F(Files, OpenByTheCallsThatTellTheError)
{
    std::FILE* stream = nullptr;
    EXPECT_EQ(_wfopen_s(&stream, Name("file").c_str(), L"w"), 0);
    EXPECT_TRUE(Stream(stream));
    EXPECT_EQ(fopen_s(&stream, _folder.Name("file").c_str(), "r"), 0);
    EXPECT_TRUE(Stream(stream));
    EXPECT_EQ(fopen_s(&stream, _folder.Name("missing").c_str(), "r"), ENOENT);
    EXPECT_EQ(stream, nullptr);
    EXPECT_EQ(_wfopen_s(&stream, nullptr, L"r"), EINVAL);
    EXPECT_EQ(_wfopen_s(nullptr, L"file", L"r"), EINVAL);
    EXPECT_EQ(fopen_s(&stream, nullptr, "r"), EINVAL);
}

TEST_F(Files, OpenAsDescriptors)
{
    int descriptor = -1;
    ASSERT_EQ(_wsopen_s(&descriptor, Name("file").c_str(), O_CREAT | O_WRONLY, _SH_DENYNO, 0600), 0);
    EXPECT_EQ(write(descriptor, "1", 1), 1);
    EXPECT_EQ(close(descriptor), 0);
    EXPECT_EQ(BytesOf("file"), "1");
    EXPECT_EQ(_wsopen_s(&descriptor, Name("missing").c_str(), O_RDONLY, _SH_DENYNO, 0), ENOENT);
    EXPECT_EQ(descriptor, -1);
    EXPECT_EQ(_wsopen_s(nullptr, L"file", O_RDONLY, _SH_DENYNO, 0), EINVAL);
}

TEST_F(Files, AreRemoved)
{
    _folder.Write("a", "");
    _folder.Write("b", "");
    EXPECT_EQ(_wremove(Name("a").c_str()), 0);
    EXPECT_EQ(_wremove(Name("a").c_str()), -1);
    EXPECT_EQ(DeleteFile(Name("b").c_str()), 1);
    EXPECT_EQ(DeleteFile(Name("b").c_str()), 0);
    EXPECT_TRUE(std::filesystem::is_empty(_folder.Path()));
}

TEST_F(Files, AreAccessible)
{
    _folder.Write("a", "");
    EXPECT_EQ(_waccess(Name("a").c_str(), R_OK), 0);
    EXPECT_EQ(_waccess(Name("b").c_str(), F_OK), -1);
}

TEST_F(Files, HaveAttributes)
{
    _folder.Write("a", "");
    EXPECT_EQ(GetFileAttributes(Name("a").c_str()), 128u);
    EXPECT_EQ(GetFileAttributes(_folder.WideName("").c_str()), 16u);
    EXPECT_EQ(GetFileAttributes(Name("b").c_str()), INVALID_FILE_ATTRIBUTES);
}

TEST_F(Files, StandInFoldersThatAreMade)
{
    EXPECT_EQ(CreateDirectory(Name("a").c_str(), nullptr), 1);
    EXPECT_EQ(CreateDirectory(Name("a").c_str(), nullptr), 0);
    EXPECT_EQ(errno, EEXIST);
    EXPECT_EQ(_wmkdir(Name("a/b").c_str()), 0);
    EXPECT_TRUE(std::filesystem::is_directory(_folder.Path() / "a" / "b"));
}

TEST_F(Files, CountFromTheCurrentFolder)
{
    EXPECT_EQ(RunInChild(
                  [&]
                  {
                      const bool isSet = SetCurrentDirectory(_folder.WideName("").c_str()) == 1;
                      return isSet && std::filesystem::equivalent(std::filesystem::current_path(), _folder.Path()) &&
                                     SetCurrentDirectory(L"missing") == 0
                                 ? 0
                                 : 1;
                  }),
              ExitedWith(0));
}

/// Two processes open one file; the second one's share flag decides whether it may.
struct Sharing
{
    int First;
    int Second;
    bool IsShared;
};

class SharedFile : public testing::TestWithParam<Sharing>
{
};

TEST_P(SharedFile, IsOpenedByTheSecondProcessIfBothFlagsAllow)
{
    const TestSupport::TemporaryFolder folder;
    folder.Write("file", "1");
    const auto open = [&](int shflag) { return Stream(_wfsopen(folder.WideName("file").c_str(), L"rb", shflag)); };
    const Stream first = open(GetParam().First);
    ASSERT_TRUE(first);
    const auto openInChild = [&]
    {
        errno = 0;
        return open(GetParam().Second) ? 0 : errno;
    };
    EXPECT_EQ(RunInChild(openInChild), ExitedWith(GetParam().IsShared ? 0 : EWOULDBLOCK));
}

INSTANTIATE_TEST_SUITE_P(Wfsopen, SharedFile,
                         testing::Values(Sharing{16, 16, false}, Sharing{16, 32, false}, Sharing{32, 48, false},
                                         Sharing{48, 128, false}, Sharing{16, 64, true}, Sharing{64, 16, true},
                                         Sharing{64, 64, true}, Sharing{128, 128, true}, Sharing{128, 16, false},
                                         Sharing{128, 64, true}),
                         [](const auto& row)
                         { return std::to_string(row.param.First) + "Then" + std::to_string(row.param.Second); });

TEST_F(Files, AreUnlockedWhenTheyAreClosed)
{
    _folder.Write("file", "1");
    EXPECT_TRUE(Stream(_wfsopen(Name("file").c_str(), L"rb", 16)));
    EXPECT_TRUE(Stream(_wfsopen(Name("file").c_str(), L"rb", 16)));
}

TEST_F(Files, AreNotLeftOpenWhenTheyCannotBeLocked)
{
    _folder.Write("file", "1");
    const Stream first(_wfsopen(Name("file").c_str(), L"rb", 16));
    const size_t numOfOpenFiles = TestSupport::NumOfOpenFiles();
    EXPECT_FALSE(_wfsopen(Name("file").c_str(), L"rb", 16));
    EXPECT_EQ(TestSupport::NumOfOpenFiles(), numOfOpenFiles);
}

TEST_F(Files, AreMissingBeforeTheyAreLocked)
{
    EXPECT_FALSE(_wfsopen(Name("missing").c_str(), L"rb", 0));
    EXPECT_EQ(errno, ENOENT);
    EXPECT_FALSE(_wfsopen(nullptr, L"rb", 16));
}

} // namespace
