#include "SampleDocuments/Description/Json.h"

#include <algorithm>
#include <cctype>

namespace SampleDocuments
{

void Refuse(const std::string& place, const std::string& reason)
{
    throw CSampleError(place.empty() ? reason : place + ": " + reason);
}

void ThrowWithPlace(const CSampleError& error, const std::string& place)
{
    const std::string reason = error.what();
    if (reason.starts_with(place))
        throw CSampleError(reason);
    Refuse(place, reason);
}

std::string ItemOf(const std::string& place, size_t index)
{
    return place + "[" + std::to_string(index) + "]";
}

std::string Choice(const std::set<std::string>& names)
{
    std::string text;
    size_t left = names.size();
    for (const std::string& name : names)
    {
        text += name;
        if (--left > 0)
            text += left == 1 ? " or " : ", ";
    }
    return text;
}

void FromJson(const Json& json, const std::string& place, bool& into)
{
    if (!json.is_boolean())
        Refuse(place, "takes true or false");
    into = json.get<bool>();
}

void FromJson(const Json& json, const std::string& place, std::string& into)
{
    if (!json.is_string())
        Refuse(place, "takes a text");
    into = json.get<std::string>();
}

void FromJson(const Json& json, const std::string& place, double& into)
{
    constexpr double Infinity = std::numeric_limits<double>::infinity();
    static const std::map<std::string, double> names = {
        {"nan", std::numeric_limits<double>::quiet_NaN()}, {"inf", Infinity}, {"-inf", -Infinity}};
    const auto found = json.is_string() ? names.find(json.get<std::string>()) : names.end();
    if (!json.is_number() && found == names.end())
        Refuse(place, "takes a number, \"nan\", \"inf\" or \"-inf\"");
    into = json.is_number() ? json.get<double>() : found->second;
}

void FromJson(const Json& json, const std::string& place, ByteString& into)
{
    std::string digits = json.is_string() ? json.get<std::string>() : "?";
    std::erase(digits, ' ');
    const auto isDigit = [](char character) { return std::isxdigit(static_cast<unsigned char>(character)) != 0; };
    if (digits.size() % 2 != 0 || !std::all_of(digits.begin(), digits.end(), isDigit))
        Refuse(place, "takes bytes as pairs of hexadecimal digits, such as \"00 FF\"");
    into.clear();
    for (size_t i = 0; i < digits.size(); i += 2)
        into.push_back(static_cast<uint8_t>(std::stoul(digits.substr(i, 2), nullptr, 16)));
}

CJsonObject::CJsonObject(const Json& json, std::string place) : _Json(json), _Place(std::move(place))
{
    if (!json.is_object())
        Refuse(_Place, "takes an object, { ... }");
}

const Json* CJsonObject::Find(const std::string& key)
{
    _Known.insert(key);
    const auto found = _Json.find(key);
    return found == _Json.end() ? nullptr : &*found;
}

std::string CJsonObject::PlaceOf(const std::string& key) const
{
    return _Place.empty() ? key : _Place + "." + key;
}

void CJsonObject::RefuseOthers() const
{
    for (const auto& [key, value] : _Json.items())
        if (!_Known.contains(key))
            Refuse(_Place, "there is no key \"" + key + "\" here; take " + Choice(_Known));
}

namespace
{

/// What the JSON library says, without its own number in brackets and on one line.
std::string Plain(std::string message)
{
    const size_t bracket = message.find("] ");
    if (message.starts_with("[json.exception") && bracket != std::string::npos)
        message.erase(0, bracket + 2);
    std::replace(message.begin(), message.end(), '\n', ' ');
    return message;
}

/// Sees each key while the text is parsed and refuses the second one of its name in an object.
class CKeysOfObjects
{
public:
    bool operator()(int, Json::parse_event_t event, Json& parsed)
    {
        if (event == Json::parse_event_t::object_start)
            _Keys.emplace_back();
        else if (event == Json::parse_event_t::object_end)
            _Keys.pop_back();
        else if (event == Json::parse_event_t::key && !_Keys.back().insert(parsed.get<std::string>()).second)
            throw CSampleError("the key \"" + parsed.get<std::string>() + "\" comes twice in an object");
        return true;
    }

private:
    std::vector<std::set<std::string>> _Keys;
};

} // namespace

Json ParseFile(const std::filesystem::path& path)
{
    const ByteString bytes = ReadFile(path);
    CKeysOfObjects keys;
    try
    {
        return Json::parse(bytes.begin(), bytes.end(), std::ref(keys), true, true);
    }
    catch (const Json::exception& error)
    {
        throw CSampleError(Plain(error.what()));
    }
}

} // namespace SampleDocuments
