#pragma once
#include <map>
#include <set>
#include <string>
#include <vector>

/// The tables that stand in the comments of the interface's header, in a form that is read by programs as well:
///
///     Sets of _AC_GetAreaProperty:
///
///     "ChannelInfo" of the group, with channelId
///         format  text  one of "RAW" "JPEG", and any other words
///                       that go on here
namespace HeaderTables
{

/// What an answer is told to be.
struct CAnswer
{
    std::string Type;        ///< "text", "points" and so on; empty where the table has no types
    std::string Description; ///< the rest of the row in one line

    /// Those that follow "one of"; empty: any value will do.
    std::set<std::string> AllowedTexts() const;
    bool MayBe(const std::string& word) const { return Description.find(word) != std::string::npos; }
    bool IsAlwaysNone() const { return Description.starts_with("always none"); }
};

/// A property set, or an item of custom data.
struct CSet
{
    std::string Owner;               ///< "document", "group", "level", "area" or "image"
    std::vector<std::string> Params; ///< their names
    std::map<std::string, CAnswer> Answers;
};
using CSets = std::map<std::string, CSet>;

/// The table below the line "Sets of FUNCTION:" or "Items of FUNCTION:". Throws if there is none.
CSets SetsOf(const std::string& function);

/// The names below the line that begins with "Texts of FUNCTION".
std::map<std::string, CAnswer> TextsOf(const std::string& function);

/// The names that the sources give to the host's words: the texts of the constants that begin so.
std::set<std::string> WordsOfSources(const std::string& beginOfConstant);

} // namespace HeaderTables
