// Which build folders the scripts configure before they build in them.

#include "Tests/Support/Command.h"
#include "Tests/Support/TemporaryFolder.h"

#include <filesystem>
#include <fstream>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

using testing::HasSubstr;

namespace
{

namespace fs = std::filesystem;

/// A checkout of which nothing but the set-up is there, and programs that tell how they are called in the place of
/// those that build.
class BuildFolder : public testing::Test
{
protected:
    BuildFolder()
    {
        fs::create_directories(Checkout / "cmake");
        fs::copy_file(SETUP, Checkout / "cmake/setup.sh");
        fs::create_directories(Checkout / "build/release");
        for (const char* program : {"cmake", "ninja"})
        {
            const fs::path file = Programs / program;
            fs::create_directories(Programs);
            std::ofstream(file) << "#!/bin/sh\necho " << program << " \"$@\" >> '" << Calls.string() << "'\n";
            fs::permissions(file, fs::perms::owner_all);
        }
    }

    /// Leaves the build folder as it is once the checkout of that name was configured.
    void ConfiguredAs(const fs::path& checkout) const
    {
        std::ofstream(Checkout / "build/release/build.ninja") << "";
        std::ofstream(Checkout / "build/release/CMakeCache.txt")
            << "CMAKE_HOME_DIRECTORY:INTERNAL=" << checkout.string() << "\n";
    }

    /// How the programs are called while the checkout is built.
    std::string CallsOfBuild() const
    {
        const std::string script = "PATH='" + Programs.string() + "':$PATH; . '" +
                                   (Checkout / "cmake/setup.sh").string() + "'; build release zel";
        EXPECT_EQ(TestSupport::RunCommand({"/bin/bash", "-euo", "pipefail", "-c", script}).ExitCode, 0);
        std::ifstream file(Calls);
        return {std::istreambuf_iterator<char>(file), {}};
    }

    TestSupport::TemporaryFolder Folder;
    fs::path Checkout = Folder.Name("checkout");
    fs::path Programs = Folder.Name("programs");
    fs::path Calls = Folder.Name("calls");
};

TEST_F(BuildFolder, ThatIsEmptyIsConfigured)
{
    EXPECT_THAT(CallsOfBuild(), HasSubstr("cmake --preset release --log-level"));
}

TEST_F(BuildFolder, OfThisCheckoutIsBuiltAsItIs)
{
    ConfiguredAs(Checkout);
    EXPECT_EQ(CallsOfBuild(), "ninja --quiet -C " + (Checkout / "build/release").string() + " zel\n");
}

TEST_F(BuildFolder, OfThisCheckoutByAnotherNameIsBuiltAsItIs)
{
    fs::create_directory_symlink(Checkout, Folder.Name("link"));
    ConfiguredAs(Folder.Name("link"));
    EXPECT_EQ(CallsOfBuild(), "ninja --quiet -C " + (Checkout / "build/release").string() + " zel\n");
}

TEST_F(BuildFolder, ThatCameWithACopyOfACheckoutIsConfiguredAnew)
{
    fs::create_directories(Folder.Name("original"));
    ConfiguredAs(Folder.Name("original"));
    EXPECT_THAT(CallsOfBuild(), HasSubstr("cmake --preset release --fresh"));
}

TEST_F(BuildFolder, ThatWasMovedWithItsCheckoutIsConfiguredAnew)
{
    ConfiguredAs(Folder.Name("gone"));
    EXPECT_THAT(CallsOfBuild(), HasSubstr("cmake --preset release --fresh"));
}

} // namespace
