#include "HostTool/Pixels/CommonOptions.h"

#include "HostTool/HostError.h"
#include "HostTool/ManyFiles.h"
#include "HostTool/OutputRules.h"
#include "HostTool/Pixels/Parallel.h"

#include <CLI/CLI.hpp>
#include <map>

namespace HostTool
{

namespace
{

const std::map<std::string, ValueKind> NamesOfValueKinds = {
    {"unsigned", ValueKind::Unsigned}, {"signed", ValueKind::Signed}, {"float", ValueKind::Float}};

} // namespace

std::optional<ValueKind> CCommonOptions::Values() const
{
    const auto kind = NamesOfValueKinds.find(ValuesText);
    return kind == NamesOfValueKinds.end() ? std::nullopt : std::optional(kind->second);
}

unsigned CCommonOptions::JobsOfOne() const
{
    return std::max(1U, Jobs / FilesAtOnce());
}

void CCommonOptions::AddTo(CLI::App& command)
{
    Jobs = UsualNumOfJobs();
    command
        .add_option("-j,--jobs", Jobs,
                    "threads to decode on, of all documents together. Default: one for each processor")
        ->check(CLI::Range(1U, MostJobs));
    command
        .add_option("--values", ValuesText,
                    "what raw values are, which the plug-in does not tell: unsigned, signed or float. Default: float "
                    "for 32 and 64 bits, unsigned for fewer")
        ->check(CLI::IsMember(NamesOfValueKinds));
}

void AddGroupOption(CLI::App& command, int& group)
{
    command.add_option("-g,--group", group, "group, from 0")->check(CLI::NonNegativeNumber)->capture_default_str();
}

void AddPositionOptions(CLI::App& command, CPosition& position)
{
    const auto add = [&command](const char* name, int64_t& place, const char* what)
    { command.add_option(name, place, what)->check(CLI::NonNegativeNumber)->capture_default_str(); };
    add("-z", position.Z, "position on the Z axis, from 0");
    add("-t", position.T, "position on the time axis, from 0");
    add("--lambda", position.Lambda, "position on the wavelength axis, from 0");
}

void AddOutputOptions(CLI::App& command)
{
    CLI::Option* refuse = command.add_flag_callback(
        "--no-clobber", [] { OutputRules::Set(IfExists::Refuse); }, "fail if the output is there already");
    command
        .add_flag_callback(
            "--skip-existing", [] { OutputRules::Set(IfExists::Skip); },
            "leave an output that is there already as it is")
        ->excludes(refuse);
}

void AddBackgroundOption(CLI::App& command, std::string& colour)
{
    const auto check = [](const std::string& text)
    { return ParseColour(text) ? "" : "'" + text + "' is no colour; give white, black or six hexadecimal digits"; };
    command
        .add_option(
            "--background", colour,
            "colour of what has no tile: white, black or six hexadecimal digits. Default: white for a picture in "
            "red, green and blue, 0 for grey and for several channels")
        ->check(CLI::Validator(check, "COLOUR"));
}

void AddStrictOption(CLI::App& command, bool& isStrict, const std::string& what)
{
    command.add_flag("--strict", isStrict, "fail, with exit code 1, if anything " + what);
}

std::optional<CColour> ParseColour(const std::string& text)
{
    if (text == "white")
        return CColour{255, 255, 255};
    if (text == "black")
        return CColour{0, 0, 0};
    const std::string digits = text.starts_with('#') ? text.substr(1) : text;
    if (digits.size() != 6 || digits.find_first_not_of("0123456789abcdefABCDEF") != std::string::npos)
        return std::nullopt;
    const unsigned long number = std::stoul(digits, nullptr, 16);
    return CColour{static_cast<uint8_t>(number >> 16), static_cast<uint8_t>(number >> 8), static_cast<uint8_t>(number)};
}

CPixelRect ParseRect(const std::vector<int64_t>& numbers)
{
    constexpr int64_t most = int64_t{1} << 40; // sums of two stay far from the limits
    for (const int64_t number : numbers)
        if (number < -most || number > most)
            throw CHostError(ExitCode::WrongUsage,
                             "--rect: " + std::to_string(number) + " is out of range; give smaller numbers");
    const CPixelRect rect{numbers[0], numbers[1], numbers[2], numbers[3]};
    if (rect.IsEmpty())
        throw CHostError(ExitCode::WrongUsage, "--rect: a rectangle without pixels; give a width and height above 0");
    return rect;
}

void RequireGroup(const CDocument& document, int group)
{
    const int numOfGroups = document.NumOfGroups();
    if (group >= numOfGroups)
        throw CHostError(
            ExitCode::WrongUsage,
            document.Path().string() + ": there is no group " + std::to_string(group) + " in the document; " +
                (numOfGroups == 0 ? "there is none" : "the last one is " + std::to_string(numOfGroups - 1)));
    document.Group(group); // throws if it can't be read
}

} // namespace HostTool
