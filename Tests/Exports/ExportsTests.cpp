#include <algorithm>
#include <cstdio>
#include <fstream>
#include <gtest/gtest.h>
#include <iterator>
#include <memory>
#include <regex>
#include <set>
#include <string>

/// What a host can see of the plug-in is what Plugin/Exports.map lists, no more and no less.

namespace
{

using Names = std::set<std::string>;

Names ListedNames()
{
    std::ifstream file(SOURCE_FOLDER "/Plugin/Exports.map");
    const std::string text(std::istreambuf_iterator<char>(file), {});
    const std::string global = text.substr(text.find("global:"), text.find("local:") - text.find("global:"));
    const std::regex name("(\\w+);");
    Names names;
    for (std::sregex_iterator match(global.begin(), global.end(), name), end; match != end; ++match)
        names.insert((*match)[1]);
    return names;
}

/// The names that `nm` tells of a shared object's dynamic symbols; each line is an address, a type and a name.
Names DynamicSymbolsOf(const std::string& file)
{
    const std::string command = NM " -D --defined-only " + file;
    const std::unique_ptr<FILE, int (*)(FILE*)> output(popen(command.c_str(), "r"), &pclose);
    Names names;
    char name[512];
    while (output && std::fscanf(output.get(), "%*s %*s %511s", name) == 1)
        names.insert(name);
    return names;
}

Names In1Not2(const Names& names1, const Names& names2)
{
    Names rest;
    std::set_difference(names1.begin(), names1.end(), names2.begin(), names2.end(), std::inserter(rest, rest.end()));
    return rest;
}

TEST(ExportsOfThePlugin, AreAllThatTheListNames)
{
    ASSERT_TRUE(ListedNames().contains("_AC_Open"));
    EXPECT_EQ(In1Not2(ListedNames(), DynamicSymbolsOf(PLUGIN_FILE)), Names{});
}

TEST(ExportsOfThePlugin, AreNoneBesideTheList)
{
    ASSERT_TRUE(DynamicSymbolsOf(PLUGIN_FILE).contains("_AC_Open"));
    EXPECT_EQ(In1Not2(DynamicSymbolsOf(PLUGIN_FILE), ListedNames()), Names{});
}

} // namespace
