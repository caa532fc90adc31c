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

/// The names that `nm` tells; `format` takes one out of each line.
Names NamesToldByNm(const std::string& arguments, const char* format)
{
    const std::string command = NM " " + arguments;
    const std::unique_ptr<FILE, int (*)(FILE*)> output(popen(command.c_str(), "r"), &pclose);
    Names names;
    char line[1024];
    char name[sizeof line];
    while (output && std::fgets(line, sizeof line, output.get()))
        if (std::sscanf(line, format, name) == 1)
            names.insert(name);
    return names;
}

Names DynamicSymbolsOf(const std::string& file)
{
    return NamesToldByNm("-D --defined-only " + file, "%*s %*s %s");
}

Names SymbolsThatAreUsedBy(const std::string& file)
{
    return NamesToldByNm("--undefined-only " + file, " U %s");
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

TEST(ExportsOfThePlugin, AreAllAskedByAFullWalk)
{
    Names notAsked = In1Not2(ListedNames(), SymbolsThatAreUsedBy(WALK_FILE));
    std::erase_if(notAsked, [](const std::string& name) { return name.starts_with("PAL_"); });
    EXPECT_EQ(notAsked, Names{"Make24BitBMPBufferTiff"}); // it takes no document, but an open TIFF of the host's
}

TEST(ExportsOfThePlugin, AreAllAskedBySeveralThreadsAtOnce)
{
    // The codecs and a document are released when nobody else uses them.
    const Names alone = {"PAL_ReleaseDataCodec", "ReleaseAndClose"};
    EXPECT_EQ(In1Not2(ListedNames(), SymbolsThatAreUsedBy(THREAD_CALLS_FILE)), alone);
}

} // namespace
