#pragma once

#include "SampleDocuments/Bytes.h"

#include <limits>
#include <map>
#include <nlohmann/json.hpp>
#include <optional>
#include <set>

/// Reading of JSON that accepts nothing it does not know: each FromJson() takes a value at a place such as
/// "stacks[0].lens" into a variable, or throws CSampleError with that place. There is one beside each larger thing.
namespace SampleDocuments
{

using Json = nlohmann::json;

/// Throws the error "place: reason".
[[noreturn]] void Refuse(const std::string& place, const std::string& reason);

void FromJson(const Json& json, const std::string& place, bool& into);
void FromJson(const Json& json, const std::string& place, std::string& into);
/// A number; or "nan", "inf" and "-inf", for which JSON has none.
void FromJson(const Json& json, const std::string& place, double& into);
/// Bytes as pairs of hexadecimal digits; blanks may part them.
void FromJson(const Json& json, const std::string& place, ByteString& into);

/// A whole number in the range of T.
template <std::integral T>
void FromJson(const Json& json, const std::string& place, T& into);

/// Null leaves it out.
template <typename T>
void FromJson(const Json& json, const std::string& place, std::optional<T>& into);

/// A list.
template <typename T>
void FromJson(const Json& json, const std::string& place, std::vector<T>& into);

/// A list of two.
template <typename A, typename B>
void FromJson(const Json& json, const std::string& place, std::pair<A, B>& into);

/// The members of a JSON object, of which every key that is asked for is known and every other one refused.
class CJsonObject
{
public:
    /// Throws CSampleError if the value is no object.
    CJsonObject(const Json& json, std::string place);

    /// The member, or null if it is not there. Its key counts as known.
    const Json* Find(const std::string& key);
    /// True if it is there, null or not.
    bool Has(const std::string& key) { return Find(key) != nullptr; }
    const std::string& Place() const { return _Place; }
    std::string PlaceOf(const std::string& key) const;

    /// Takes the member if it is there; answers whether it is.
    template <typename T>
    bool Read(const std::string& key, T& into);

    /// The same with one of the names of a table.
    template <typename T>
    bool ReadName(const std::string& key, const std::map<std::string, T>& names, T& into);

    /// Throws CSampleError that names the first key that nobody asked for.
    void RefuseOthers() const;

private:
    const Json& _Json;
    std::string _Place;
    std::set<std::string> _Known;
};

/// Throws the error anew, with the place in front if it tells none in it.
[[noreturn]] void ThrowWithPlace(const CSampleError& error, const std::string& place);

/// Calls read(object) and refuses the keys that it did not ask for. What it throws gets the place.
template <typename TRead>
void ReadJsonObject(const Json& json, const std::string& place, TRead&& read)
{
    try
    {
        CJsonObject object(json, place);
        read(object);
        object.RefuseOthers();
    }
    catch (const CSampleError& error)
    {
        ThrowWithPlace(error, place);
    }
}

/// The JSON of a file; comments are good, a key that comes twice in an object is not. Throws CSampleError with the line
/// of the mistake.
Json ParseFile(const std::filesystem::path& path);

/// "red, green or blue".
std::string Choice(const std::set<std::string>& names);

std::string ItemOf(const std::string& place, size_t index);

template <std::integral T>
void FromJson(const Json& json, const std::string& place, T& into)
{
    using Limits = std::numeric_limits<T>;
    const auto isInRange = [](auto number)
    { return std::cmp_greater_equal(number, Limits::min()) && std::cmp_less_equal(number, Limits::max()); };
    const bool isGood = json.is_number_unsigned() ? isInRange(json.get<uint64_t>())
                                                  : json.is_number_integer() && isInRange(json.get<int64_t>());
    if (!isGood)
        Refuse(place,
               "takes a whole number from " + std::to_string(Limits::min()) + " to " + std::to_string(Limits::max()));
    into = json.get<T>();
}

template <typename T>
void FromJson(const Json& json, const std::string& place, std::optional<T>& into)
{
    if (json.is_null())
        return into.reset();
    T value{};
    FromJson(json, place, value);
    into = std::move(value);
}

template <typename T>
void FromJson(const Json& json, const std::string& place, std::vector<T>& into)
{
    if (!json.is_array())
        Refuse(place, "takes a list");
    into.clear();
    into.reserve(json.size());
    for (size_t i = 0; i < json.size(); ++i)
    {
        T value{};
        FromJson(json[i], ItemOf(place, i), value);
        into.push_back(std::move(value));
    }
}

template <typename A, typename B>
void FromJson(const Json& json, const std::string& place, std::pair<A, B>& into)
{
    if (!json.is_array() || json.size() != 2)
        Refuse(place, "takes a list of two");
    FromJson(json[0], ItemOf(place, 0), into.first);
    FromJson(json[1], ItemOf(place, 1), into.second);
}

template <typename T>
bool CJsonObject::Read(const std::string& key, T& into)
{
    const Json* member = Find(key);
    if (member)
        FromJson(*member, PlaceOf(key), into);
    return member != nullptr;
}

template <typename T>
bool CJsonObject::ReadName(const std::string& key, const std::map<std::string, T>& names, T& into)
{
    const Json* member = Find(key);
    if (!member)
        return false;
    const auto found = member->is_string() ? names.find(member->get<std::string>()) : names.end();
    if (found == names.end())
    {
        std::set<std::string> good;
        for (const auto& [name, value] : names)
            good.insert("\"" + name + "\"");
        Refuse(PlaceOf(key), "takes " + Choice(good));
    }
    into = found->second;
    return true;
}

} // namespace SampleDocuments
