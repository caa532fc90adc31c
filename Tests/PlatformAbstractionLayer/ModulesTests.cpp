#include "PlatformAbstractionLayer/Modules.h"

#include "Brix/PlatformAbstractionLayer.h"
#include "CommonUtil/PlatformCalls.h"
#include "Tests/Support/ChildProcess.h"
#include "Tests/Support/Log.h"
#include "Tests/Support/TemporaryFolder.h"

#include <array>
#include <climits>
#include <dlfcn.h>
#include <filesystem>
#include <gtest/gtest.h>
#include <sys/stat.h>

using TestSupport::LogOf;

namespace
{

const std::filesystem::path Program = std::filesystem::read_symlink("/proc/self/exe");

/// The layer as a shared object in a folder of its own, as a host has it.
class LoadedModule : public testing::Test
{
protected:
    void SetUp() override
    {
        std::filesystem::copy_file(PLATFORM_MODULE, _folder.Path() / "Module.so");
        _module = PAL_LoadLibrary(_folder.WideName("Module.so").c_str());
        ASSERT_TRUE(_module);
    }
    void TearDown() override { EXPECT_EQ(PAL_ReleaseLibrary(_module), 0); }

    template <typename Function>
    Function* Export(const char* name) const
    {
        return reinterpret_cast<Function*>(PAL_GetProcAddress(_module, name));
    }
    bool IsLoaded() const
    {
        void* const module = dlopen(_folder.Name("Module.so").c_str(), RTLD_LAZY | RTLD_NOLOAD);
        return module && dlclose(module) == 0;
    }

    TestSupport::TemporaryFolder _folder;
    void* _module = nullptr;
};

TEST_F(LoadedModule, KnowsItself)
{
    const auto currentModule = Export<decltype(PAL_GetCurrentModule)>("PAL_GetCurrentModule");
    EXPECT_EQ(currentModule(), _module);
    EXPECT_EQ(currentModule(), _module);
    EXPECT_NE(PAL_GetCurrentModule(), _module);
}

TEST_F(LoadedModule, IsNotKeptByKnowingItself)
{
    Export<decltype(PAL_GetCurrentModule)>("PAL_GetCurrentModule")();
    EXPECT_TRUE(IsLoaded());
    EXPECT_EQ(PAL_ReleaseLibrary(_module), 0);
    EXPECT_FALSE(IsLoaded());
    _module = PAL_LoadLibrary(_folder.WideName("Module.so").c_str());
}

TEST_F(LoadedModule, TellsItsPath)
{
    const auto modulePath = Export<decltype(PAL_GetModulePath)>("PAL_GetModulePath");
    std::array<wchar_t, PATH_MAX> path{};
    uint32_t size = 0;
    EXPECT_EQ(modulePath(_module, path.data(), PATH_MAX, &size), PAL_RESULT_SUCCESS);
    EXPECT_EQ(path.data(), _folder.WideName("Module.so"));
    EXPECT_EQ(size, _folder.WideName("Module.so").size() + 1);
}

TEST_F(LoadedModule, ExportsNoWin32Name)
{
    for (const char* name : {"FindFirstFile", "Sleep", "_wfopen", "Utf8ToUtf16", "PutLog", "GetTempPath"})
        EXPECT_EQ(PAL_GetProcAddress(_module, name), nullptr) << name;
}

TEST(ModuleLoadedByARelativeName, TellsItsFullPathFromAnywhere)
{
    const TestSupport::TemporaryFolder folder;
    std::filesystem::copy_file(PLATFORM_MODULE, folder.Path() / "Module.so");
    const auto tellsItsPath = [&]
    {
        std::filesystem::current_path(folder.Path());
        void* const module = PAL_LoadLibrary(L"./Module.so");
        std::filesystem::current_path("/");
        return std::filesystem::path(PathOfModule(module)) == std::filesystem::canonical(folder.Path() / "Module.so")
                   ? 0
                   : 1;
    };
    EXPECT_EQ(TestSupport::RunInChild(tellsItsPath), TestSupport::ExitedWith(0));
}

TEST(ModulePath, IsThatOfTheProgramForNull)
{
    std::array<wchar_t, PATH_MAX> path{};
    uint32_t size = 0;
    EXPECT_EQ(PAL_GetModulePath(nullptr, path.data(), PATH_MAX, &size), PAL_RESULT_SUCCESS);
    EXPECT_EQ(Utf16ToUtf8(path.data()), Program);
}

TEST(ModulePath, IsThatOfTheProgramWhenTheLayerIsLinkedIntoIt)
{
    EXPECT_EQ(PathOfModule(PAL_GetCurrentModule()), Program);
    EXPECT_EQ(Utf16ToUtf8(DirOfCurrentModule()), Program.parent_path());
}

TEST(ModulePath, TellsItsSizeAlone)
{
    uint32_t size = 0;
    EXPECT_EQ(PAL_GetModulePath(nullptr, nullptr, 0, &size), PAL_RESULT_SUCCESS);
    EXPECT_EQ(size, Program.string().size() + 1);
}

TEST(ModulePath, NeedsRoomForTheZero)
{
    const auto length = static_cast<uint32_t>(Program.string().size());
    std::vector<wchar_t> path(length, L'?');
    uint32_t size = 0;
    EXPECT_EQ(PAL_GetModulePath(nullptr, path.data(), length, &size), PAL_RESULT_TOO_SMALL);
    EXPECT_EQ(size, length + 1);
    EXPECT_EQ(path[0], L'?');
}

TEST(ModulePath, TakesBufferAndSizeTogetherOnly)
{
    const std::string complaint = "pBuffer and nBufferSize must either be non-NULL and non-zero respectively, or be "
                                  "NULL and zero respectively.\n";
    wchar_t buffer[1];
    uint32_t size = 0;
    const auto logOf = [&](wchar_t* pBuffer, uint32_t nBufferSize)
    { return LogOf([&] { EXPECT_EQ(PAL_GetModulePath(nullptr, pBuffer, nBufferSize, &size), PAL_RESULT_FAILURE); }); };
    EXPECT_NE(logOf(buffer, 0).find(complaint), std::string::npos);
    EXPECT_NE(logOf(nullptr, 1).find(complaint), std::string::npos);
    EXPECT_EQ(PAL_GetModulePath(nullptr, buffer, 1, nullptr), PAL_RESULT_FAILURE);
}

TEST(ModuleFileName, IsThatOfTheProgram)
{
    std::array<wchar_t, PATH_MAX> path{};
    EXPECT_EQ(GetModuleFileNameW(nullptr, path.data(), PATH_MAX), Program.string().size());
    EXPECT_EQ(Utf16ToUtf8(path.data()), Program);
    EXPECT_EQ(GetModuleFileNameW(nullptr, path.data(), static_cast<uint32_t>(Program.string().size())), 0u);
    EXPECT_EQ(GetModuleFileNameW(nullptr, nullptr, 100), 0u);
}

TEST(Library, LogsItsNameWhenItCannotBeLoaded)
{
    const TestSupport::TemporaryFolder folder;
    folder.Write("none.so", "no library");
    const auto logOf = [](const std::wstring& name)
    { return LogOf([&] { EXPECT_EQ(PAL_LoadLibrary(name.c_str()), nullptr); }); };
    EXPECT_NE(logOf(folder.WideName("none.so")).find("Error loading Library - " + folder.Name("none.so") + "\n"),
              std::string::npos);
    EXPECT_NE(logOf(folder.WideName("missing.so")).find("Error loading Library - "), std::string::npos);
    EXPECT_NE(logOf(folder.WideName("")).find("Error loading Library - "), std::string::npos);
    EXPECT_NE(logOf(L"").find("Error loading Library - "), std::string::npos);
    EXPECT_EQ(PAL_LoadLibrary(nullptr), nullptr);
}

TEST(Library, OfAnEmptyNameIsNone)
{
    EXPECT_EQ(PAL_LoadLibrary(L""), nullptr); // and not the program itself
}

TEST(Library, IsNotAPipeToWaitAt)
{
    const TestSupport::TemporaryFolder folder;
    ASSERT_EQ(mkfifo(folder.Name("pipe.so").c_str(), 0600), 0);
    EXPECT_EQ(TestSupport::RunInChild([&] { return PAL_LoadLibrary(folder.WideName("pipe.so").c_str()) ? 1 : 0; }, 10),
              TestSupport::ExitedWith(0));
}

TEST(Library, HasItsExportsAlone)
{
    void* const module = PAL_LoadLibrary(L"libc.so.6");
    ASSERT_TRUE(module);
    EXPECT_NE(PAL_GetProcAddress(module, "qsort"), nullptr);
    EXPECT_EQ(PAL_GetProcAddress(module, "no such function"), nullptr);
    EXPECT_EQ(PAL_GetProcAddress(module, nullptr), nullptr);
    EXPECT_EQ(PAL_GetProcAddress(nullptr, "qsort"), nullptr);
    EXPECT_EQ(PAL_ReleaseLibrary(module), 0);
    EXPECT_NE(PAL_ReleaseLibrary(nullptr), 0);
}

} // namespace
