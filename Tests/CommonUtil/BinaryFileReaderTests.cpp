#include "CommonUtil/BinaryFileReader.h"

#include "CommonUtil/Assertion.h"
#include "CommonUtil/Log.h"
#include "Tests/Support/Assertion.h"
#include "Tests/Support/Log.h"
#include "Tests/Support/TemporaryFolder.h"

#include <cerrno>
#include <cstring>
#include <filesystem>
#include <sys/stat.h>
#include <unistd.h>

using namespace CommonUtil;
using TestSupport::LogOf;

namespace
{

class BinaryFileReader : public testing::Test
{
protected:
    /// A reader of a new file of these bytes.
    CBinaryFileReader Open(const std::string& bytes)
    {
        return CBinaryFileReader(ToWideName(_folder.Write("file.zel", bytes)), false);
    }
    static std::wstring ToWideName(const std::string& name) { return {name.begin(), name.end()}; }
    std::wstring Name(const char* name) const { return _folder.WideName(name); }

    TestSupport::TemporaryFolder _folder;
};

/// Bytes that tell their place.
std::string CountingBytes(size_t size)
{
    std::string bytes(size, '\0');
    for (size_t i = 0; i < size; ++i)
        bytes[i] = static_cast<char>(i * 2654435761u >> 13);
    return bytes;
}

TEST_F(BinaryFileReader, ClearsErrnoAndOpens)
{
    errno = EINVAL;
    CBinaryFileReader reader = Open("12345");
    EXPECT_EQ(errno, 0);
    EXPECT_EQ(reader.FileSize(), 5u);
    EXPECT_EQ(reader.GetCurrentOffset(), 0u);
    EXPECT_FALSE(reader.IsFileBigEndian());
}

TEST_F(BinaryFileReader, TellsAMissingFileByErrno)
{
    CBinaryFileReader reader(Name("missing.zel"), false);
    EXPECT_EQ(errno, ENOENT);
    EXPECT_EQ(reader.FileSize(), 0u);
    EXPECT_TRUE(reader.CloseFile());
}

TEST_F(BinaryFileReader, LogsTheNameOfAFileThatDoesNotOpen)
{
    const std::string log = LogOf([&] { CBinaryFileReader(Name("m\u00e4ssing.zel"), false); });
    EXPECT_NE(log.find("Error in Opening file:\n"), std::string::npos) << log;
    EXPECT_NE(log.find("File=" + _folder.Name("m\u00e4ssing.zel") + "\n\n"), std::string::npos) << log;
}

TEST_F(BinaryFileReader, LogsThePlaceOfAFailedOpenWhenAskedTo)
{
    EXPECT_EQ(LogOf([&] { CBinaryFileReader(Name("missing.zel"), false); }).find("Returning error from"),
              std::string::npos);
    IsCommonUtilV2 = true;
    EXPECT_NE(LogOf([&] { CBinaryFileReader(Name("missing.zel"), false); })
                  .find("Returning error from BinaryFileReader.cpp, line "),
              std::string::npos);
    IsCommonUtilV2 = false;
}

TEST_F(BinaryFileReader, RefusesBigEndianFilesBeforeItOpensThem)
{
    const size_t numOfOpenFiles = TestSupport::NumOfOpenFiles();
    errno = ENODATA;
    EXPECT_FAILED_ASSERTION(CBinaryFileReader(Name("missing.zel"), true));
    EXPECT_EQ(errno, 0);
    EXPECT_EQ(TestSupport::NumOfOpenFiles(), numOfOpenFiles);
}

TEST_F(BinaryFileReader, TakesBackslashesForSlashes)
{
    _folder.Write("a/b.zel", "12");
    std::wstring name = Name("a\\b.zel");
    const CBinaryFileReader reader(name, false);
    EXPECT_EQ(errno, 0);
    EXPECT_EQ(reader.FileName(), Name("a/b.zel"));
    EXPECT_EQ(reader.FileSize(), 2u);
}

TEST_F(BinaryFileReader, DoesNotWaitAtAPipe)
{
    ASSERT_EQ(mkfifo(_folder.Name("pipe.zel").c_str(), 0600), 0);
    const CBinaryFileReader reader(Name("pipe.zel"), false);
    EXPECT_EQ(errno, ENOENT);
}

TEST_F(BinaryFileReader, ReadsEachTypeAndMovesBehindIt)
{
    std::string bytes = "c";
    const auto append = [&](auto value) { bytes.append(reinterpret_cast<const char*>(&value), sizeof value); };
    append(int16_t{-2});
    append(int16_t{-3});
    append(uint16_t{65535});
    append(int32_t{-4});
    append(uint32_t{4000000000});
    append(uint32_t{4100000000});
    append(int64_t{-5000000000});
    append(uint64_t{18000000000000000000u});
    append(1.5f);
    append(-0.25);
    CBinaryFileReader reader = Open(bytes);
    EXPECT_EQ(reader.ReadChar(), 'c');
    EXPECT_EQ(reader.ReadShort(), -2);
    EXPECT_EQ(reader.ReadInt16(), -3);
    EXPECT_EQ(reader.ReadUInt16(), 65535);
    EXPECT_EQ(reader.ReadInt32(), -4);
    EXPECT_EQ(reader.ReadUInt32(), 4000000000);
    EXPECT_EQ(reader.ReadDword(), 4100000000);
    EXPECT_EQ(reader.ReadInt64(), -5000000000);
    EXPECT_EQ(reader.ReadUInt64(), 18000000000000000000u);
    EXPECT_EQ(reader.ReadFloat(), 1.5f);
    EXPECT_EQ(reader.ReadDouble(), -0.25);
    EXPECT_EQ(reader.GetCurrentOffset(), reader.FileSize());
}

TEST_F(BinaryFileReader, RefusesEachTypeThatReachesBeyondTheEnd)
{
    const auto refuses = [this](size_t size, auto&& read)
    {
        CBinaryFileReader reader = Open(std::string(size, '\0'));
        EXPECT_FAILED_ASSERTION(read(reader));
        EXPECT_EQ(reader.GetCurrentOffset(), 0u);
    };
    refuses(0, [](auto& reader) { reader.ReadChar(); });
    refuses(1, [](auto& reader) { reader.ReadShort(); });
    refuses(1, [](auto& reader) { reader.ReadInt16(); });
    refuses(1, [](auto& reader) { reader.ReadUInt16(); });
    refuses(3, [](auto& reader) { reader.ReadInt32(); });
    refuses(3, [](auto& reader) { reader.ReadUInt32(); });
    refuses(3, [](auto& reader) { reader.ReadDword(); });
    refuses(7, [](auto& reader) { reader.ReadInt64(); });
    refuses(7, [](auto& reader) { reader.ReadUInt64(); });
    refuses(3, [](auto& reader) { reader.ReadFloat(); });
    refuses(7, [](auto& reader) { reader.ReadDouble(); });
}

TEST_F(BinaryFileReader, SeeksToAnyByteButNotToTheEnd)
{
    CBinaryFileReader reader = Open("12345");
    EXPECT_TRUE(reader.Seek(4, BfrSeekDirection::BEGIN));
    EXPECT_EQ(reader.ReadChar(), '5');
    EXPECT_TRUE(reader.Seek(0, BfrSeekDirection::BEGIN));
    EXPECT_EQ(reader.ReadChar(), '1');
    EXPECT_FAILED_ASSERTION(reader.Seek(5, BfrSeekDirection::BEGIN));
}

TEST_F(BinaryFileReader, SeeksOnFromWhereItStands)
{
    CBinaryFileReader reader = Open("12345");
    EXPECT_TRUE(reader.Seek(1, BfrSeekDirection::CURRENT));
    EXPECT_TRUE(reader.Seek(2, BfrSeekDirection::CURRENT));
    EXPECT_EQ(reader.GetCurrentOffset(), 3u);
    EXPECT_FALSE(reader.Seek(3, BfrSeekDirection::CURRENT));
    EXPECT_EQ(reader.GetCurrentOffset(), 3u);
    EXPECT_TRUE(reader.Seek(2, BfrSeekDirection::CURRENT));
    EXPECT_EQ(reader.GetCurrentOffset(), 5u);
    EXPECT_FALSE(reader.Seek(1, BfrSeekDirection::CURRENT));
}

TEST_F(BinaryFileReader, HoldsEverySeekAgainstTheWholeSize)
{
    CBinaryFileReader reader = Open("12345");
    EXPECT_FAILED_ASSERTION(reader.Seek(5, BfrSeekDirection::CURRENT));
    EXPECT_FAILED_ASSERTION(reader.Seek(0xFFFFFFFFFFFFFFFF, BfrSeekDirection::CURRENT));
    CBinaryFileReader empty = Open("");
    EXPECT_FAILED_ASSERTION(empty.Seek(0, BfrSeekDirection::BEGIN));
}

TEST_F(BinaryFileReader, DoesNotSeekFromTheEnd)
{
    CBinaryFileReader reader = Open("12345");
    for (uint64_t offset = 0; offset < 5; ++offset)
        EXPECT_FAILED_ASSERTION(reader.Seek(offset, BfrSeekDirection::END));
}

TEST_F(BinaryFileReader, ReadsDataWhereItStandsForAnOffsetOf0)
{
    CBinaryFileReader reader = Open("12345678");
    Byte buffer[4];
    ASSERT_TRUE(reader.Seek(2, BfrSeekDirection::BEGIN));
    EXPECT_TRUE(reader.ReadData(buffer, 4, 0));
    EXPECT_EQ(std::memcmp(buffer, "3456", 4), 0);
    EXPECT_EQ(reader.GetCurrentOffset(), 6u);
}

TEST_F(BinaryFileReader, ReadsDataAtAnyOtherOffset)
{
    CBinaryFileReader reader = Open("12345678");
    Byte buffer[3];
    EXPECT_TRUE(reader.ReadData(buffer, 3, 5));
    EXPECT_EQ(std::memcmp(buffer, "678", 3), 0);
    EXPECT_EQ(reader.GetCurrentOffset(), reader.FileSize());
}

TEST_F(BinaryFileReader, ReadsNoDataWithoutBufferCountOrPlace)
{
    CBinaryFileReader reader = Open("12345678");
    Byte buffer[3];
    EXPECT_FALSE(reader.ReadData(nullptr, 3));
    EXPECT_FALSE(reader.ReadData(buffer, 0));
    EXPECT_FALSE(reader.ReadData(buffer, 3, 9));
}

TEST_F(BinaryFileReader, RefusesDataThatReachesBeyondTheEnd)
{
    CBinaryFileReader reader = Open("12345678");
    Byte buffer[9];
    EXPECT_FAILED_ASSERTION(reader.ReadData(buffer, 9));
    EXPECT_FAILED_ASSERTION(reader.ReadData(buffer, 1, 8));
    EXPECT_FAILED_ASSERTION(reader.ReadData(buffer, 0xFFFFFFFF, 7));
}

TEST_F(BinaryFileReader, GivesTheSameBytesForSmallAndLargeReadsInAnyOrder)
{
    const std::string bytes = CountingBytes(100000);
    CBinaryFileReader reader = Open(bytes);
    std::vector<Byte> buffer(bytes.size());
    uint32_t random = 1;
    for (int i = 0; i < 2000; ++i)
    {
        random = random * 1664525 + 1013904223;
        const uint32_t offset = random % 90000;
        const uint32_t size = 1 + (i % 50 == 0 ? 9999 : random / 7 % 60);
        ASSERT_TRUE(reader.Seek(offset, BfrSeekDirection::BEGIN));
        ASSERT_TRUE(reader.ReadData(buffer.data(), size));
        ASSERT_EQ(std::memcmp(buffer.data(), bytes.data() + offset, size), 0) << offset << " " << size;
    }
}

TEST_F(BinaryFileReader, ReadsBehindFourGigabytes)
{
    constexpr uint64_t Far = 5'000'000'000;
    const std::string name = _folder.Write("file.zel", "1");
    std::filesystem::resize_file(name, Far);
    CBinaryFileReader reader(ToWideName(name), false);
    EXPECT_EQ(reader.FileSize(), Far);
    ASSERT_TRUE(reader.Seek(Far - 4, BfrSeekDirection::BEGIN));
    EXPECT_EQ(reader.ReadInt32(), 0);
    EXPECT_EQ(reader.GetCurrentOffset(), Far);
}

TEST_F(BinaryFileReader, DoesNotTouchAClosedStream)
{
    CBinaryFileReader reader = Open("12345");
    EXPECT_TRUE(reader.CloseFile());
    EXPECT_TRUE(reader.CloseFile());
    Byte buffer[1];
    EXPECT_FALSE(reader.Seek(1, BfrSeekDirection::BEGIN));
    EXPECT_FALSE(reader.ReadData(buffer, 1));
    EXPECT_FAILED_ASSERTION(reader.ReadChar());
    EXPECT_FAILED_ASSERTION(reader.GetCurrentOffset());
}

TEST_F(BinaryFileReader, OpensAgainAfterAClose)
{
    CBinaryFileReader reader = Open("12345");
    EXPECT_FAILED_ASSERTION(reader.OpenFile());
    EXPECT_EQ(reader.ReadChar(), '1');
    reader.CloseFile();
    _folder.Write("file.zel", "67890"); // what was read before is not read again
    EXPECT_TRUE(reader.OpenFile());
    EXPECT_EQ(reader.GetCurrentOffset(), 0u);
    EXPECT_EQ(reader.ReadChar(), '6');
}

TEST_F(BinaryFileReader, FailsWhenTheFileHasShrunk)
{
    CBinaryFileReader reader = Open(CountingBytes(50000));
    std::filesystem::resize_file(_folder.Path() / "file.zel", 10);
    EXPECT_EQ(reader.FileSize(), 50000u);
    std::vector<Byte> buffer(20000);
    EXPECT_FAILED_ASSERTION(reader.ReadData(buffer.data(), 20000, 1));
    EXPECT_FAILED_ASSERTION(reader.ReadData(buffer.data(), 4, 8));
    EXPECT_TRUE(reader.ReadData(buffer.data(), 2, 8));
    EXPECT_EQ(errno, 0);
}

TEST_F(BinaryFileReader, FailsToReadAFolder)
{
    std::filesystem::create_directory(_folder.Path() / "folder.zel");
    CBinaryFileReader reader(Name("folder.zel"), false);
    EXPECT_EQ(errno, 0);
    EXPECT_FAILED_ASSERTION(reader.ReadChar());
    EXPECT_EQ(errno, 0);
}

TEST_F(BinaryFileReader, LeavesErrnoAloneWhenItGoes)
{
    {
        const CBinaryFileReader reader = Open("1");
        errno = ENODATA;
    }
    EXPECT_EQ(errno, ENODATA);
}

TEST_F(BinaryFileReader, ClosesItsFileWhenItGoes)
{
    const size_t numOfOpenFiles = TestSupport::NumOfOpenFiles();
    {
        const CBinaryFileReader reader = Open("1");
        EXPECT_EQ(TestSupport::NumOfOpenFiles(), numOfOpenFiles + 1);
    }
    EXPECT_EQ(TestSupport::NumOfOpenFiles(), numOfOpenFiles);
}

} // namespace
