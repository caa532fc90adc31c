#include "Tests/Header/HeaderTables.h"

#include <fstream>
#include <regex>
#include <sstream>
#include <stdexcept>

namespace HeaderTables
{

namespace
{

using Lines = std::vector<std::string>;

std::string TextOfFile(const std::string& name)
{
    std::ifstream file(std::string(SOURCE_FOLDER) + "/" + name);
    if (!file)
        throw std::runtime_error("cannot read " + name);
    std::ostringstream text;
    text << file.rdbuf();
    return text.str();
}

/// The lines of the comment after the one that begins with `heading`, without what makes them a comment, up to the end
/// of the comment or the next heading.
Lines LinesAfter(const std::string& heading)
{
    static const std::regex CommentLine(R"(^ +\* ?(.*)$)");
    static const std::regex Heading("^(Sets|Items|Texts) of .*");
    std::istringstream header(TextOfFile("include/Brix/AccessorInterface.h"));
    Lines lines;
    bool isInTable = false;
    for (std::string line; std::getline(header, line);)
    {
        std::smatch comment;
        if (!std::regex_match(line, comment, CommentLine) || comment[1] == "/")
            isInTable = false;
        else if (std::regex_match(comment[1].str(), Heading))
            isInTable = comment[1].str().starts_with(heading);
        else if (isInTable)
            lines.push_back(comment[1]);
    }
    if (lines.empty())
        throw std::runtime_error("no table '" + heading + "'");
    return lines;
}

std::vector<std::string> NamesOfParams(const std::string& text)
{
    static const std::regex Name("[a-z]+(Id|Name)");
    return {std::sregex_token_iterator(text.begin(), text.end(), Name), std::sregex_token_iterator()};
}

/// The words of a row that goes on, if the line is of that kind.
void GoOn(CAnswer* answer, const std::string& line)
{
    static const std::regex Continuation("^ {20,}(.*)$");
    std::smatch match;
    if (answer && std::regex_match(line, match, Continuation))
        answer->Description += " " + match[1].str();
}

} // namespace

std::set<std::string> CAnswer::AllowedTexts() const
{
    static const std::regex Quoted("\"([^\"]*)\"");
    const size_t start = Description.find("one of ");
    if (start == std::string::npos)
        return {};
    const std::string list = Description.substr(start);
    return {std::sregex_token_iterator(list.begin(), list.end(), Quoted, 1), std::sregex_token_iterator()};
}

CSets SetsOf(const std::string& function)
{
    static const std::regex FirstLine(R"re(^"(\w+)" of the (\w+)(, with (.*))?$)re");
    static const std::regex Row("^ {4}(\\w+) +(text|integer|double|point|byte)(s?) +(.*)$");
    CSets sets;
    CSet* set = nullptr;
    CAnswer* answer = nullptr;
    const std::string kind = function == "_AC_GetCustomData" ? "Items" : "Sets";
    for (const std::string& line : LinesAfter(kind + " of " + function + ":"))
    {
        std::smatch match;
        if (std::regex_match(line, match, FirstLine))
            set = &(sets[match[1]] = {match[2], NamesOfParams(match[4]), {}});
        else if (set && std::regex_match(line, match, Row))
            answer = &(set->Answers[match[1]] = {match[2].str() + match[3].str(), match[4]});
        else
            GoOn(answer, line);
    }
    return sets;
}

std::map<std::string, CAnswer> TextsOf(const std::string& function)
{
    static const std::regex Row(R"re(^"(\w+)" +(.*)$)re");
    std::map<std::string, CAnswer> texts;
    CAnswer* answer = nullptr;
    for (const std::string& line : LinesAfter("Texts of " + function))
    {
        std::smatch match;
        if (std::regex_match(line, match, Row))
            answer = &(texts[match[1]] = {"", match[2]});
        else
            GoOn(answer, line);
    }
    return texts;
}

std::set<std::string> WordsOfSources(const std::string& beginOfConstant)
{
    const std::string sources = TextOfFile("CommonImageAccess/BrixKeys.h");
    const std::regex constant(beginOfConstant + "\\w* = L\"(\\w+)\"");
    return {std::sregex_token_iterator(sources.begin(), sources.end(), constant, 1), std::sregex_token_iterator()};
}

} // namespace HeaderTables
