#include "Tests/LoadedPlugin/LoadedPlugin.h"

#include <dlfcn.h>
#include <filesystem>
#include <gtest/gtest.h>

namespace
{

/// The file that the code at an address was loaded from.
std::filesystem::path FileOf(const void* address)
{
    Dl_info info{};
    return dladdr(address, &info) != 0 ? std::filesystem::path(info.dli_fname) : std::filesystem::path();
}

TEST(LoadedPlugin, IsTheSharedObjectOfThisBuild)
{
    EXPECT_EQ(std::filesystem::canonical(FileOf(AddressInPlugin("_AC_Open"))), std::filesystem::canonical(PLUGIN));
}

TEST(LoadedPlugin, KeepsWhatIsNoPartOfItsInterface)
{
    EXPECT_THROW(AddressInPlugin("AC_Open"), std::exception);
}

} // namespace
