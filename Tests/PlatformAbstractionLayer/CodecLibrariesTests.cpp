#include "Brix/PlatformAbstractionLayer.h"
#include "PlatformAbstractionLayer/LogHook.h"
#include "Tests/Support/TemporaryFolder.h"

#include <dlfcn.h>
#include <filesystem>
#include <gtest/gtest.h>
#include <string>
#include <sys/stat.h>
#include <thread>
#include <vector>

namespace
{

/// The layer as a shared object in a folder of its own, with codec libraries in the folder "plugin" beside it.
class CodecLibraries : public testing::Test
{
protected:
    void TearDown() override
    {
        if (_module)
        {
            EXPECT_EQ(Export<decltype(PAL_ReleaseDataCodec)>("PAL_ReleaseDataCodec")(), 0);
            EXPECT_EQ(dlclose(_module), 0);
        }
    }

    void AddLibrary(const char* library, const std::string& name) const
    {
        std::filesystem::create_directories(_folder.Path() / "plugin");
        std::filesystem::copy_file(library, _folder.Path() / "plugin" / name);
    }
    template <typename Function>
    Function* Export(const char* name)
    {
        if (!_module)
        {
            std::filesystem::copy_file(PLATFORM_MODULE, _folder.Path() / "Module.so");
            _module = dlopen(_folder.Name("Module.so").c_str(), RTLD_NOW);
        }
        return reinterpret_cast<Function*>(dlsym(_module, name));
    }
    bool IsSupported(const wchar_t* codec)
    {
        bool isSupported = false;
        EXPECT_EQ(Export<decltype(PAL_IsSupportedDataCodec)>("PAL_IsSupportedDataCodec")(codec, &isSupported), 0);
        return isSupported;
    }
    std::string Encoded(const wchar_t* codec, const std::string& block)
    {
        return Coded("PAL_Encode", codec, block, block.size() + 100);
    }
    std::string Decoded(const wchar_t* codec, const std::string& bytes, size_t size)
    {
        return Coded("PAL_Decode", codec, bytes, size);
    }
    /// What the module logs while it searches for codecs; errors are marked by an exclamation mark.
    std::vector<std::wstring> LogOfTheSearch()
    {
        static std::vector<std::wstring> lines;
        lines.clear();
        const auto attach = Export<void(LogReader)>("AttachLogReader");
        attach([](const CLogLine& line) { lines.push_back((line.IsError ? L"! " : L"") + std::wstring(line.Text)); });
        IsSupported(L"any");
        attach(nullptr);
        return lines;
    }
    int Release() { return Export<decltype(PAL_ReleaseDataCodec)>("PAL_ReleaseDataCodec")(); }
    bool IsLoaded(const char* library) const
    {
        void* const module = dlopen(_folder.Name(std::string("plugin/") + library).c_str(), RTLD_LAZY | RTLD_NOLOAD);
        return module && dlclose(module) == 0;
    }

    TestSupport::TemporaryFolder _folder;

private:
    std::string Coded(const char* call, const wchar_t* codec, const std::string& source, size_t targetSize)
    {
        std::string target(targetSize, '\0');
        int written = 0;
        const int result = Export<decltype(PAL_Encode)>(call)(codec, source.data(), static_cast<int>(source.size()),
                                                              target.data(), static_cast<int>(target.size()), &written);
        return result == 0 ? target.substr(0, static_cast<size_t>(written)) : "failed with " + std::to_string(result);
    }

    void* _module = nullptr;
};

const std::string Block = "a block of bytes, a block of bytes, a block of bytes";

std::string TurnedOver(std::string bytes)
{
    for (char& byte : bytes)
        byte = static_cast<char>(byte ^ 0x55);
    return bytes;
}

TEST_F(CodecLibraries, NeedNotBeThere)
{
    EXPECT_TRUE(IsSupported(L"LZ4"));
    EXPECT_EQ(Decoded(L"LZ4", Encoded(L"LZ4", Block), Block.size()), Block);
}

TEST_F(CodecLibraries, AddACodec)
{
    AddLibrary(CODEC, "TurnOverDataCodec.dll");
    EXPECT_TRUE(IsSupported(L"TURNOVER"));
    EXPECT_EQ(Encoded(L"TURNOVER", Block), TurnedOver(Block));
    EXPECT_EQ(Decoded(L"TURNOVER", TurnedOver(Block), Block.size()), Block);
    long bound = 0;
    EXPECT_EQ(Export<decltype(PAL_GetEncodeBound)>("PAL_GetEncodeBound")(L"TURNOVER", 70000, &bound), 0);
    EXPECT_EQ(bound, 70000);
    EXPECT_TRUE(IsSupported(L"LZ4"));
}

TEST_F(CodecLibraries, TellOfTheirFailures)
{
    AddLibrary(CODEC, "TurnOverDataCodec.dll");
    EXPECT_EQ(Decoded(L"TURNOVER", Block, Block.size() - 1), "failed with 4");
    EXPECT_EQ(Decoded(L"TURNOVER", "", 1), "failed with 4");
}

TEST_F(CodecLibraries, ReplaceTheBuiltInCodec)
{
    AddLibrary(CODEC, "lz4DataCodec.dll");
    EXPECT_EQ(Encoded(L"LZ4", Block), TurnedOver(Block));
}

TEST_F(CodecLibraries, NeedAllThreeExports)
{
    AddLibrary(CODEC_WITHOUT_DECODE, "HalfDataCodec.dll");
    EXPECT_FALSE(IsSupported(L"HALF"));
    EXPECT_EQ(Encoded(L"HALF", Block), "failed with 2");
    EXPECT_TRUE(IsLoaded("HalfDataCodec.dll")) << "the load is not undone";
    EXPECT_TRUE(IsSupported(L"LZ4"));
}

TEST_F(CodecLibraries, NeedTheNameOfACodec)
{
    AddLibrary(CODEC, "Codec.dll");
    AddLibrary(CODEC, "TurnOverDataCodec.so");
    AddLibrary(CODEC, "OtherDataCodec.DLL");
    EXPECT_FALSE(IsSupported(L"CODEC"));
    EXPECT_FALSE(IsSupported(L"TURNOVER"));
    EXPECT_FALSE(IsSupported(L"OTHER"));
}

TEST_F(CodecLibraries, MayBeNoLibrariesAtAll)
{
    AddLibrary(CODEC, "ZDataCodec.dll");
    _folder.Write("plugin/ADataCodec.dll", "no library at all");
    _folder.Write("plugin/BDataCodec.dll/file", "a folder");
    ASSERT_EQ(mkfifo(_folder.Name("plugin/CDataCodec.dll").c_str(), 0600), 0);
    for (const wchar_t* name : {L"A", L"B", L"C"})
        EXPECT_FALSE(IsSupported(name));
    EXPECT_TRUE(IsSupported(L"Z")) << "the search goes on";
}

TEST_F(CodecLibraries, AreReported)
{
    AddLibrary(CODEC, "1DataCodec.dll");
    AddLibrary(CODEC_WITHOUT_DECODE, "2DataCodec.dll");
    AddLibrary(CODEC, "3.dll");
    _folder.Write("plugin/4DataCodec.dll", "no library at all");
    EXPECT_EQ(LogOfTheSearch(),
              (std::vector<std::wstring>{L"Add data codec: 1",
                                         L"! " + _folder.WideName("plugin/2DataCodec.dll") + L" is not DataCodec.",
                                         L"! " + _folder.WideName("plugin/3.dll") + L" is not DataCodec.",
                                         L"Error loading Library - " + _folder.WideName("plugin/4DataCodec.dll"),
                                         L"Add data built-in LZ4 codec"}));
}

TEST_F(CodecLibraries, LeaveTheBuiltInCodecOutWhenTheyReplaceIt)
{
    AddLibrary(CODEC, "lz4DataCodec.dll");
    EXPECT_EQ(LogOfTheSearch(), std::vector<std::wstring>{L"Add data codec: LZ4"});
}

TEST_F(CodecLibraries, AreSearchedOnceUntilTheyAreReleased)
{
    EXPECT_FALSE(IsSupported(L"LATE"));
    AddLibrary(CODEC, "LateDataCodec.dll");
    EXPECT_FALSE(IsSupported(L"LATE"));
    EXPECT_EQ(Release(), 0);
    EXPECT_EQ(Encoded(L"LATE", Block), TurnedOver(Block));
}

TEST_F(CodecLibraries, AreUnloadedWhenTheyAreReleased)
{
    AddLibrary(CODEC, "TurnOverDataCodec.dll");
    EXPECT_TRUE(IsSupported(L"TURNOVER"));
    EXPECT_TRUE(IsLoaded("TurnOverDataCodec.dll"));
    EXPECT_EQ(Release(), 0);
    EXPECT_FALSE(IsLoaded("TurnOverDataCodec.dll"));
    EXPECT_EQ(Release(), 0);
}

TEST_F(CodecLibraries, OfOneNameDoNotPileUp)
{
    AddLibrary(CODEC, "1DataCodec.dll");
    AddLibrary(CODEC, "1Plugin_forHDF5.dll");
    EXPECT_EQ(LogOfTheSearch(),
              (std::vector<std::wstring>{L"Add data codec: 1", L"Add data codec: 1", L"Add data built-in LZ4 codec"}));
    EXPECT_TRUE(IsLoaded("1DataCodec.dll"));
    EXPECT_FALSE(IsLoaded("1Plugin_forHDF5.dll"));
}

TEST_F(CodecLibraries, ServeSeveralThreadsWhileAnotherAsks)
{
    AddLibrary(CODEC, "TurnOverDataCodec.dll");
    const auto encode = Export<decltype(PAL_Encode)>("PAL_Encode");
    const auto decode = Export<decltype(PAL_Decode)>("PAL_Decode");
    const auto isSupported = Export<decltype(PAL_IsSupportedDataCodec)>("PAL_IsSupportedDataCodec");
    const auto goThereAndBack = [&](const wchar_t* codec)
    {
        for (int turn = 0; turn < 300; ++turn)
        {
            char encoded[200];
            char decoded[200];
            int encodedSize = 0;
            int decodedSize = 0;
            EXPECT_EQ(encode(codec, Block.data(), static_cast<int>(Block.size()), encoded, 200, &encodedSize), 0);
            EXPECT_EQ(decode(codec, encoded, encodedSize, decoded, 200, &decodedSize), 0);
            EXPECT_EQ(std::string(decoded, static_cast<size_t>(decodedSize)), Block);
        }
    };
    std::vector<std::jthread> threads;
    for (int i = 0; i < 4; ++i)
        threads.emplace_back(goThereAndBack, i % 2 == 0 ? L"LZ4" : L"TURNOVER");
    for (int turn = 0; turn < 300; ++turn)
    {
        bool isThere = false;
        EXPECT_EQ(isSupported(L"TURNOVER", &isThere), 0);
        EXPECT_TRUE(isThere);
    }
}

} // namespace
