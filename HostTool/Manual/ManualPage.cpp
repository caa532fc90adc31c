#include "HostTool/Manual/ManualPage.h"

#include "HostTool/HostError.h"

#include <algorithm>
#include <sstream>

namespace HostTool
{

namespace
{

/// A text that stands for itself in a page.
std::string Escaped(const std::string& text)
{
    std::string escaped;
    for (const char c : text)
        escaped += c == '\\' ? "\\e" : c == '-' ? "\\-" : std::string(1, c);
    return escaped.starts_with('.') || escaped.starts_with('\'') ? "\\&" + escaped : escaped;
}

std::string TitleOf(const CCommandTexts& command)
{
    return command.Name.empty() ? "zel" : "zel-" + command.Name;
}

std::string Upper(std::string text)
{
    std::transform(text.begin(), text.end(), text.begin(),
                   [](char c) { return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c; });
    return text;
}

/// The first sentence without its full stop, as the list of all pages has it.
std::string Summary(const std::string& what)
{
    size_t end = what.find('\n');
    for (const char* sign : {". ", ": "})
        end = std::min(end, what.find(sign));
    std::string summary = what.substr(0, end);
    if (summary.ends_with('.'))
        summary.pop_back();
    if (!summary.empty() && summary.front() >= 'A' && summary.front() <= 'Z')
        summary.front() = static_cast<char>(summary.front() - 'A' + 'a');
    return summary;
}

void PrintSynopsis(std::ostream& out, const CCommandTexts& command)
{
    out << ".SH SYNOPSIS\n.B zel";
    if (command.Name.empty())
    {
        out << "\n[\\fIoptions\\fR] \\fIcommand\\fR ...\n";
        return;
    }
    out << ' ' << command.Name << '\n';
    for (const COptionText& option : command.Options)
        if (option.IsArgument)
            out << "\\fI" << Escaped(option.Names.front()) << "\\fR ";
    out << "[\\fIoptions\\fR]\n";
}

void PrintOptions(std::ostream& out, const CCommandTexts& command)
{
    out << ".SH OPTIONS\n";
    for (const COptionText& option : command.Options)
    {
        out << ".TP\n";
        for (size_t i = 0; i < option.Names.size(); ++i)
            out << (i == 0 ? "" : ", ") << "\\fB" << Escaped(option.Names[i]) << "\\fR";
        if (!option.Value.empty() && !option.IsArgument)
            out << " \\fI" << Escaped(option.Value) << "\\fR";
        out << '\n' << Escaped(option.What);
        for (size_t i = 0; i < option.Choices.size(); ++i)
            out << (i == 0 ? "; one of " : ", ") << Escaped(option.Choices[i]);
        // The place of the plug-in is that of this very machine.
        if (!option.Default.empty() && option.Default.find('/') == std::string::npos)
            out << " (default: " << Escaped(option.Default) << ")";
        out << (option.IsRequired && !option.IsArgument ? "; has to be given\n" : "\n");
    }
}

void PrintCommands(std::ostream& out, const std::vector<CCommandTexts>& all)
{
    out << ".SH COMMANDS\n";
    for (const CCommandTexts& command : all)
        if (!command.Name.empty())
            out << ".TP\n.BR zel\\-" << Escaped(command.Name) << " (1)\n" << Escaped(command.What) << '\n';
}

} // namespace

std::string ManualPageOf(const CCommandTexts& command, const std::vector<CCommandTexts>& all,
                         const std::string& version)
{
    std::ostringstream out;
    const std::string title = TitleOf(command);
    out << ".TH " << Upper(title) << " 1 \"\" \"zel " << version << "\" \"User commands\"\n"
        << ".SH NAME\n"
        << Escaped(title) << " \\- " << Escaped(Summary(command.What)) << '\n';
    PrintSynopsis(out, command);
    out << ".SH DESCRIPTION\n" << Escaped(command.What) << '\n';
    PrintOptions(out, command);
    if (command.Name.empty())
        PrintCommands(out, all);
    out << ".SH EXAMPLES\n.nf\n";
    for (const std::string& example : command.Examples)
        out << Escaped(example) << '\n';
    out << ".fi\n.SH EXIT STATUS\n" << MeaningsOfExitCodes << '\n';
    if (!command.Name.empty())
        out << ".SH SEE ALSO\n.BR zel (1)\n";
    return out.str();
}

} // namespace HostTool
