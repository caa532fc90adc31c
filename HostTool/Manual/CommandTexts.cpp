#include "HostTool/Manual/CommandTexts.h"

#include <CLI/CLI.hpp>
#include <sstream>

namespace HostTool
{

namespace
{

/// The parts of a text between separators.
std::vector<std::string> Parts(const std::string& text, char separator)
{
    std::vector<std::string> parts;
    std::istringstream stream(text);
    for (std::string part; std::getline(stream, part, separator);)
        parts.push_back(part);
    return parts;
}

/// The values in braces, as in "TEXT:{csv,geojson}".
std::vector<std::string> ChoicesOf(const std::string& typeName)
{
    const size_t open = typeName.find('{');
    const size_t close = typeName.find('}');
    if (open == std::string::npos || close == std::string::npos || close < open)
        return {};
    std::vector<std::string> choices = Parts(typeName.substr(open + 1, close - open - 1), ',');
    for (std::string& choice : choices) // a map of names shows as name->value
        choice = choice.substr(0, choice.find("->"));
    return choices;
}

COptionText TextOf(const CLI::Option& option)
{
    COptionText text;
    for (const std::string& name : option.get_snames())
        text.Names.push_back("-" + name);
    for (const std::string& name : option.get_lnames())
        text.Names.push_back("--" + name);
    text.IsArgument = text.Names.empty();
    if (text.IsArgument)
        text.Names = {option.get_name()};
    text.What = option.get_description();
    text.Default = option.get_default_str();
    text.IsRequired = option.get_required();
    if (option.get_items_expected_max() == 0)
        return text;
    const std::string typeName = option.get_type_name();
    text.Choices = ChoicesOf(typeName);
    text.Value = text.Choices.empty() ? typeName.substr(0, typeName.find(':')) : "VALUE";
    return text;
}

CCommandTexts TextsOf(const CLI::App& command, const std::string& name)
{
    CCommandTexts texts;
    texts.Name = name;
    texts.What = command.get_description();
    for (const std::string& line : Parts(command.get_footer(), '\n'))
        if (line.starts_with("  "))
            texts.Examples.push_back(line.substr(2));
    for (const CLI::Option* option : command.get_options())
        texts.Options.push_back(TextOf(*option));
    std::stable_partition(texts.Options.begin(), texts.Options.end(),
                          [](const COptionText& option) { return option.IsArgument; });
    return texts;
}

} // namespace

std::vector<CCommandTexts> CommandTextsOf(const CLI::App& program)
{
    std::vector<CCommandTexts> all = {TextsOf(program, "")};
    for (const CLI::App* command : program.get_subcommands([](const CLI::App*) { return true; }))
        all.push_back(TextsOf(*command, command->get_name()));
    return all;
}

} // namespace HostTool
