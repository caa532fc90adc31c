#include "PlatformAbstractionLayer/DataCodecs.h"

#include "Brix/PlatformAbstractionLayer.h"
#include "Tests/Support/Log.h"
#include "Tests/Support/TemporaryFolder.h"

#include <climits>
#include <gtest/gtest.h>
#include <random>
#include <string>

// The registry of this program itself: beside it is no folder of libraries, so there is the built-in codec alone.

namespace
{

struct FileNameRow
{
    const wchar_t* File;
    const wchar_t* Codec;
};

class CodecName : public testing::TestWithParam<FileNameRow>
{
};

TEST_P(CodecName, IsTakenFromTheFileName)
{
    EXPECT_EQ(GetDataCodecName(GetParam().File), GetParam().Codec);
}

INSTANTIATE_TEST_SUITE_P(
    Codecs, CodecName,
    testing::Values(FileNameRow{L"LZ4DATACODEC.dll", L"LZ4"}, FileNameRow{L"/x/plugin/lz4DataCodec.dll", L"LZ4"},
                    FileNameRow{L"zipPlugin_forHDF5.dll", L"ZIP"}, FileNameRow{L"zipdll.dll", L"ZIP"},
                    FileNameRow{L"aDataCodecPlugin_forHdf5.dll", L"ADATACODEC"},
                    FileNameRow{L"aDllDataCodec.dll", L"ADLL"}, FileNameRow{L"a.dll.dataCodec.dll", L""},
                    FileNameRow{L"zip.dll", L""}, FileNameRow{L"DataCodec.dll", L""}, FileNameRow{L"", L""},
                    FileNameRow{L"/dataCodec/zip.dll", L""}, FileNameRow{L"\u00e4DataCodec.dll", L"\u00e4"}));

std::string RandomBytes(size_t size)
{
    std::mt19937_64 random(size);
    std::string bytes;
    while (bytes.size() < size)
    {
        const uint64_t number = random();
        bytes.append(reinterpret_cast<const char*>(&number), sizeof number);
    }
    bytes.resize(size);
    return bytes;
}

std::string TextBytes(size_t size)
{
    std::string bytes;
    for (size_t i = 0; bytes.size() < size; ++i)
        bytes += "line " + std::to_string(i * 7919 % 1000) + " of a text that repeats itself\n";
    bytes.resize(size);
    return bytes;
}

struct CodedBytes
{
    int Result;
    std::string Bytes; ///< what was written, in case of success
};

CodedBytes Encode(const std::string& bytes, int targetSize, const wchar_t* codec = L"LZ4")
{
    std::string target(static_cast<size_t>(targetSize), '\0');
    int written = 0;
    const int result =
        PAL_Encode(codec, bytes.data(), static_cast<int>(bytes.size()), target.data(), targetSize, &written);
    return {result, result == 0 ? target.substr(0, static_cast<size_t>(written)) : ""};
}

CodedBytes Encode(const std::string& bytes)
{
    long bound = 0;
    EXPECT_EQ(PAL_GetEncodeBound(L"LZ4", static_cast<long>(bytes.size()), &bound), 0);
    return Encode(bytes, static_cast<int>(bound));
}

CodedBytes Decode(const std::string& bytes, size_t targetSize)
{
    const auto target = std::make_unique<char[]>(targetSize); // of that size exactly, for the address sanitizer
    int written = 0;
    const int result = PAL_Decode(L"LZ4", bytes.data(), static_cast<int>(bytes.size()), target.get(),
                                  static_cast<int>(targetSize), &written);
    return {result, result == 0 ? std::string(target.get(), static_cast<size_t>(written)) : ""};
}

class BlockOfSize : public testing::TestWithParam<size_t>
{
};

TEST_P(BlockOfSize, ComesBackAsItWas)
{
    for (const std::string& block : {RandomBytes(GetParam()), std::string(GetParam(), 'x'), TextBytes(GetParam())})
    {
        const CodedBytes encoded = Encode(block);
        ASSERT_EQ(encoded.Result, 0);
        const CodedBytes decoded = Decode(encoded.Bytes, block.size());
        EXPECT_EQ(decoded.Result, 0);
        EXPECT_TRUE(decoded.Bytes == block);
    }
}

INSTANTIATE_TEST_SUITE_P(Codecs, BlockOfSize,
                         testing::Values(1, 2, 12, 13, 100, 4095, 65536, 65537, 1000003, size_t{64} << 20));

TEST(BuiltInCodec, MakesRepeatingBlocksSmall)
{
    EXPECT_LT(Encode(TextBytes(100000)).Bytes.size(), 50000u);
}

TEST(BuiltInCodec, NeedsAllOfTheEncodedSize)
{
    const std::string block = RandomBytes(1000);
    const auto size = static_cast<int>(Encode(block).Bytes.size());
    EXPECT_EQ(Encode(block, size).Result, 0);
    EXPECT_EQ(Encode(block, size - 1).Result, 4);
    EXPECT_EQ(Encode(block, 0).Result, 4);
}

TEST(BuiltInCodec, NeedsAllOfTheDecodedSize)
{
    const std::string block = TextBytes(1000);
    const std::string encoded = Encode(block).Bytes;
    EXPECT_EQ(Decode(encoded, 1000).Result, 0);
    EXPECT_EQ(Decode(encoded, 1001).Bytes, block);
    EXPECT_EQ(Decode(encoded, 999).Result, 4);
}

TEST(BuiltInCodec, RefusesDamagedData)
{
    EXPECT_EQ(Decode(std::string(100, '\xFF'), 1000).Result, 4);
    EXPECT_EQ(Decode(RandomBytes(1000), 100).Result, 4);
}

TEST(BuiltInCodec, SurvivesAnyDamage)
{
    const std::string block = TextBytes(2000);
    const std::string encoded = Encode(block).Bytes;
    for (size_t place = 0; place < encoded.size(); ++place)
    {
        std::string damaged = encoded;
        damaged[place] = static_cast<char>(damaged[place] ^ 0xFF);
        const int result = Decode(damaged, block.size()).Result;
        EXPECT_TRUE(result == 0 || result == 4) << result;
        EXPECT_NE(Decode(encoded.substr(0, place), block.size()).Bytes, block);
    }
}

TEST(BuiltInCodec, TakesADecodedSizeOf0ForAFailure)
{
    const CodedBytes nothing = Encode("", 16);
    ASSERT_EQ(nothing.Result, 0);
    ASSERT_EQ(nothing.Bytes.size(), 1u);
    EXPECT_EQ(Decode(nothing.Bytes, 0).Result, 4);
    EXPECT_EQ(Decode(nothing.Bytes, 16).Result, 4);
}

TEST(BuiltInCodec, TellsTheBoundOfASize)
{
    const auto bound = [](long size)
    {
        long result = -1;
        return PAL_GetEncodeBound(L"LZ4", size, &result) == 0 ? result : 0;
    };
    EXPECT_GE(bound(0), 1);
    EXPECT_GE(bound(1000), 1000);
    EXPECT_GE(bound(0x7E000000), 0x7E000000);
    EXPECT_EQ(bound(0x7E000001), 0);
    EXPECT_EQ(bound(INT_MAX), 0);
    EXPECT_EQ(bound(0x100000001), 0);
    EXPECT_EQ(bound(-1), 0);
    EXPECT_EQ(bound(LONG_MIN), 0);
}

TEST(BuiltInCodec, RefusesNegativeAndHugeSizes)
{
    char source[16] = {};
    char target[16];
    int written = 0;
    for (const int size : {-1, INT_MIN})
    {
        EXPECT_EQ(PAL_Encode(L"LZ4", source, size, target, 16, &written), 4);
        EXPECT_EQ(PAL_Encode(L"LZ4", source, 16, target, size, &written), 4);
        EXPECT_EQ(PAL_Decode(L"LZ4", source, size, target, 16, &written), 4);
        EXPECT_EQ(PAL_Decode(L"LZ4", source, 16, target, size, &written), 4);
    }
    EXPECT_EQ(PAL_Encode(L"LZ4", source, INT_MAX, target, 16, &written), 4);
    EXPECT_EQ(PAL_Decode(L"LZ4", source, 0, target, 16, &written), 4);
}

TEST(Codec, ReportsItsFailures)
{
    const TestSupport::LogReaderOfTest reader;
    char buffer[16] = {};
    int written = 0;
    long bound = 0;
    PAL_GetEncodeBound(L"LZ4", -1, &bound);
    PAL_Encode(L"LZ4", buffer, -1, buffer, 16, &written);
    PAL_Decode(L"LZ4", buffer, -1, buffer, 16, &written);
    EXPECT_EQ(reader.Errors(), (std::vector<std::wstring>{L"PAL_GetEncodeBound() failed.", L"PAL_Encode() failed.",
                                                          L"PAL_Decode() failed."}));
}

TEST(Codec, IsFoundByItsExactName)
{
    char buffer[100] = {};
    int written = 0;
    long bound = 0;
    for (const wchar_t* name : {L"lz4", L"", L"NONE", L"LZ4 "})
    {
        EXPECT_EQ(PAL_GetEncodeBound(name, 10, &bound), 2);
        EXPECT_EQ(PAL_Encode(name, buffer, 10, buffer + 50, 50, &written), 2);
        EXPECT_EQ(PAL_Decode(name, buffer, 10, buffer + 50, 50, &written), 2);
    }
    EXPECT_EQ(PAL_GetEncodeBound(std::wstring(5000, L'x').c_str(), 10, &bound), 2);
}

TEST(Codec, NeedsAllItsArguments)
{
    char buffer[100] = {};
    int written = 0;
    long bound = 0;
    EXPECT_EQ(PAL_GetEncodeBound(nullptr, 10, &bound), 1);
    EXPECT_EQ(PAL_GetEncodeBound(L"LZ4", 10, nullptr), 1);
    for (const auto call : {PAL_Encode, PAL_Decode})
    {
        EXPECT_EQ(call(nullptr, buffer, 10, buffer, 50, &written), 1);
        EXPECT_EQ(call(L"LZ4", nullptr, 10, buffer, 50, &written), 1);
        EXPECT_EQ(call(L"LZ4", buffer, 10, nullptr, 50, &written), 1);
        EXPECT_EQ(call(L"LZ4", buffer, 10, buffer, 50, nullptr), 1);
    }
    EXPECT_EQ(PAL_IsSupportedDataCodec(L"LZ4", nullptr), 1);
    bool isSupported = true;
    EXPECT_EQ(PAL_IsSupportedDataCodec(nullptr, &isSupported), 1);
}

TEST(Codec, IsSupportedOrNot)
{
    const auto isSupported = [](const wchar_t* name)
    {
        bool result = false;
        EXPECT_EQ(PAL_IsSupportedDataCodec(name, &result), 0);
        return result;
    };
    EXPECT_TRUE(isSupported(L"LZ4"));
    EXPECT_TRUE(isSupported(L"NONE"));
    EXPECT_FALSE(isSupported(L"lz4"));
    EXPECT_FALSE(isSupported(L""));
}

TEST(Codec, IsNotSearchedForNone)
{
    PAL_ReleaseDataCodec();
    const TestSupport::LogReaderOfTest reader;
    bool isSupported = false;
    PAL_IsSupportedDataCodec(L"NONE", &isSupported);
    EXPECT_TRUE(reader.Lines().empty());
    PAL_IsSupportedDataCodec(L"LZ4", &isSupported);
    ASSERT_EQ(reader.Lines().size(), 1u);
    EXPECT_EQ(reader.Lines()[0].Text, L"Add data built-in LZ4 codec");
}

TEST(Codec, IsSearchedOnceUntilItIsReleased)
{
    PAL_ReleaseDataCodec();
    const TestSupport::LogReaderOfTest reader;
    Encode("text", 100);
    Encode("text", 100);
    EXPECT_EQ(reader.Lines().size(), 1u);
    EXPECT_EQ(PAL_ReleaseDataCodec(), 0);
    EXPECT_EQ(Encode("text", 100).Result, 0);
    EXPECT_EQ(reader.Lines().size(), 2u);
}

} // namespace
