#include "HostTool/Manual/Completion.h"

#include <sstream>

namespace HostTool
{

namespace
{

std::string Joined(const std::vector<std::string>& words, const std::string& separator)
{
    std::string text;
    for (const std::string& word : words)
        text += (text.empty() ? "" : separator) + word;
    return text;
}

std::vector<std::string> OptionsOf(const CCommandTexts& command)
{
    std::vector<std::string> names;
    for (const COptionText& option : command.Options)
        if (!option.IsArgument)
            names.insert(names.end(), option.Names.begin(), option.Names.end());
    return names;
}

std::vector<std::string> NamesOf(const std::vector<CCommandTexts>& all)
{
    std::vector<std::string> names;
    for (const CCommandTexts& command : all)
        if (!command.Name.empty())
            names.push_back(command.Name);
    return names;
}

/// The cases of `case $command$previous in` for options with few values.
void PrintChoices(std::ostream& out, const CCommandTexts& command)
{
    for (const COptionText& option : command.Options)
    {
        if (option.Choices.empty())
            continue;
        std::vector<std::string> cases;
        for (const std::string& name : option.Names)
            cases.push_back("\"" + command.Name + " " + name + "\"");
        out << "        " << Joined(cases, " | ") << ") words=\"" << Joined(option.Choices, " ") << "\" ;;\n";
    }
}

/// A text within single quotes and brackets of an argument of _arguments.
std::string ForZsh(const std::string& text)
{
    std::string quoted;
    for (const char c : text)
    {
        if (c == '\'')
            quoted += "'\\''";
        else if (c == '[' || c == ']' || c == ':' || c == '\\')
            quoted += std::string("\\") + c;
        else
            quoted += c;
    }
    return quoted;
}

void PrintZshOption(std::ostream& out, const COptionText& option)
{
    if (option.IsArgument)
        return;
    const std::string names = Joined(option.Names, " ");
    out << " \\\n                '(" << names << ")'";
    out << (option.Names.size() > 1 ? "{" + Joined(option.Names, ",") + "}" : option.Names.front());
    out << "'[" << ForZsh(option.What) << ']';
    if (!option.Value.empty())
        out << ':' << ForZsh(option.Value) << ':'
            << (option.Choices.empty() ? "_files" : "(" + Joined(option.Choices, " ") + ")");
    out << '\'';
}

} // namespace

std::string BashCompletionOf(const std::vector<CCommandTexts>& all)
{
    std::ostringstream out;
    out << "# bash completion of zel\n"
           "_zel()\n"
           "{\n"
           "    local current=${COMP_WORDS[COMP_CWORD]} previous=${COMP_WORDS[COMP_CWORD - 1]} command='' words='' i\n"
           "    for ((i = 1; i < COMP_CWORD; ++i)); do\n"
           "        case ${COMP_WORDS[i]} in\n"
           "        --plugin) ((++i)) ;;\n"
           "        -*) ;;\n"
           "        *)\n"
           "            command=${COMP_WORDS[i]}\n"
           "            break\n"
           "            ;;\n"
           "        esac\n"
           "    done\n"
           "    case \"$command $previous\" in\n";
    for (const CCommandTexts& command : all)
        PrintChoices(out, command);
    out << "        *)\n"
           "            case $command:$current in\n";
    for (const CCommandTexts& command : all)
        out << "            " << command.Name << ":-*) words=\"" << Joined(OptionsOf(command), " ") << "\" ;;\n";
    out << "            :*) words=\"" << Joined(NamesOf(all), " ")
        << "\" ;;\n"
           "            esac\n"
           "            ;;\n"
           "    esac\n"
           "    if [ -n \"$words\" ]; then\n"
           "        mapfile -t COMPREPLY < <(compgen -W \"$words\" -- \"$current\")\n"
           "    else\n"
           "        mapfile -t COMPREPLY < <(compgen -f -- \"$current\")\n"
           "    fi\n"
           "}\n"
           "complete -o filenames -F _zel zel\n";
    return out.str();
}

std::string ZshCompletionOf(const std::vector<CCommandTexts>& all)
{
    std::ostringstream out;
    out << "#compdef zel\n"
           "_zel()\n"
           "{\n"
           "    local curcontext=$curcontext state line\n"
           "    local -a commands=(\n";
    for (const CCommandTexts& command : all)
        if (!command.Name.empty())
            out << "        '" << command.Name << ':' << ForZsh(command.What) << "'\n";
    out << "    )\n"
           "    _arguments -C";
    for (const COptionText& option : all.front().Options)
        PrintZshOption(out, option);
    out << " \\\n        '1:command:->command' '*::argument:->argument'\n"
           "    case $state in\n"
           "    command) _describe command commands ;;\n"
           "    argument)\n"
           "        case $words[1] in\n";
    for (const CCommandTexts& command : all)
    {
        if (command.Name.empty())
            continue;
        out << "        " << command.Name << ")\n            _arguments";
        for (const COptionText& option : command.Options)
            PrintZshOption(out, option);
        out << " \\\n                '*:file:_files'\n            ;;\n";
    }
    out << "        esac\n"
           "        ;;\n"
           "    esac\n"
           "}\n"
           "_zel \"$@\"\n";
    return out.str();
}

} // namespace HostTool
