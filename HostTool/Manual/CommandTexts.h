#pragma once

#include <string>
#include <vector>

namespace CLI
{
class App;
}

namespace HostTool
{

/// An option of a command, as its help tells it.
struct COptionText
{
    std::vector<std::string> Names; ///< "-g", "--group"; of an argument its one name, "FILE"
    std::string What;
    std::string Value;                ///< what stands behind it: "INT"; empty for a flag
    std::vector<std::string> Choices; ///< the values that it takes, where they are few
    std::string Default;
    bool IsArgument = false;
    bool IsRequired = false;
};

/// A command with all that its help tells. The help of the whole program is one too, with an empty name.
struct CCommandTexts
{
    std::string Name;
    std::string What;
    std::vector<std::string> Examples;
    std::vector<COptionText> Options; ///< arguments first
};

/// Of the program, and then of each of its commands: what manual pages and completions are made of.
std::vector<CCommandTexts> CommandTextsOf(const CLI::App& program);

} // namespace HostTool
