// The log that the environment turns on when a host loads the plug-in.

#include "Tests/Accessor/Slide.h"
#include "Tests/LoadedPlugin/LoadedPlugin.h"
#include "Tests/Support/TemporaryFolder.h"

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sstream>
#include <sys/stat.h>

using testing::ContainsRegex;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

namespace
{

/// A variable of the environment, until the end of the object.
class CVariable
{
public:
    CVariable(const char* name, const std::string& value) : _name(name) { setenv(name, value.c_str(), 1); }
    ~CVariable() { unsetenv(_name); }
    CVariable(const CVariable&) = delete;
    CVariable& operator=(const CVariable&) = delete;

private:
    const char* _name;
};

std::string TextOf(const std::filesystem::path& file)
{
    std::ostringstream text;
    text << std::ifstream(file).rdbuf();
    return text.str();
}

class LogOfEnvironment : public testing::Test
{
protected:
    /// Loads the plug-in anew, lets it look for a document that is not there, and unloads it.
    void OpenNothing() const
    {
        UnloadPlugin();
        auto* open = reinterpret_cast<decltype(&_AC_Open)>(AddressInPlugin("_AC_Open"));
        AC_HFILE document = nullptr;
        EXPECT_EQ(open(_folder.WideName("none.zel").c_str(), AC_OM_READ, &document), AC_RESULT_FILE_NOT_FOUND);
        UnloadPlugin();
    }
    std::filesystem::path Log() const { return _folder.Path() / "log"; }
    const TestSupport::TemporaryFolder& Folder() const { return _folder; }

private:
    TestSupport::TemporaryFolder _folder;
};

TEST_F(LogOfEnvironment, GoesToTheFileThatItNames)
{
    const CVariable log("ZEL_LOG", Log());
    OpenNothing();
    EXPECT_THAT(TextOf(Log()),
                ContainsRegex("^20[0-9T:-]+Z error BinaryFileReader.cpp:[0-9]+: Error in Opening file:"));
}

TEST_F(LogOfEnvironment, IsReadByItsOwnerAlone)
{
    const CVariable log("ZEL_LOG", Log());
    OpenNothing();
    struct stat status = {};
    ASSERT_EQ(stat(Log().c_str(), &status), 0);
    EXPECT_EQ(status.st_mode & 0777, 0600u);
}

TEST_F(LogOfEnvironment, IsAppended)
{
    std::ofstream(Log()) << "a line of before\n";
    const CVariable log("ZEL_LOG", Log());
    OpenNothing();
    EXPECT_THAT(TextOf(Log()), testing::StartsWith("a line of before\n20"));
}

TEST_F(LogOfEnvironment, DoesNotFollowALink)
{
    const auto target = Folder().Path() / "target";
    std::ofstream(target) << "";
    std::filesystem::create_symlink(target, Log());
    const CVariable log("ZEL_LOG", Log());
    OpenNothing();
    EXPECT_THAT(TextOf(target), IsEmpty());
}

TEST_F(LogOfEnvironment, GoesToStandardErrorByThatName)
{
    const CVariable log("ZEL_LOG", "stderr");
    testing::internal::CaptureStderr();
    OpenNothing();
    EXPECT_THAT(testing::internal::GetCapturedStderr(), HasSubstr("Error in Opening file:"));
}

TEST_F(LogOfEnvironment, LeavesOutWhatIsLessSevereThanTheLevel)
{
    const CVariable log("ZEL_LOG", Log());
    const CVariable level("ZEL_LOG_LEVEL", "fatal");
    OpenNothing();
    EXPECT_THAT(TextOf(Log()), IsEmpty());
}

TEST_F(LogOfEnvironment, IsOffWithoutAName)
{
    testing::internal::CaptureStderr();
    OpenNothing();
    EXPECT_THAT(testing::internal::GetCapturedStderr(), IsEmpty());
    EXPECT_THAT(std::filesystem::directory_iterator(Folder().Path()) == std::filesystem::directory_iterator(), true);
}

} // namespace
