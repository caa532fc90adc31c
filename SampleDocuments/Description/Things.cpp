#include "SampleDocuments/Description/Things.h"

#include <chrono>
#include <cstdio>

namespace SampleDocuments
{

void FromJson(const Json& json, const std::string& place, CJsonTime& into)
{
    if (!json.is_string())
        return FromJson(json, place, into.Seconds);
    int year = 0;
    unsigned month = 0, day = 0, hours = 0, minutes = 0, seconds = 0;
    char zone = 0, more = 0;
    const int parts = std::sscanf(json.get<std::string>().c_str(), "%4d-%2u-%2uT%2u:%2u:%2u%c%c", &year, &month, &day,
                                  &hours, &minutes, &seconds, &zone, &more);
    const std::chrono::year_month_day date{std::chrono::year(year), std::chrono::month(month), std::chrono::day(day)};
    if (parts != 7 || zone != 'Z' || !date.ok() || hours > 23 || minutes > 59 || seconds > 59)
        Refuse(place, "takes seconds since 1970, or a text such as \"2020-01-31T12:00:00Z\"");
    into.Seconds = std::chrono::sys_days(date).time_since_epoch() / std::chrono::seconds(1);
    into.Seconds += 3600 * int64_t{hours} + 60 * int64_t{minutes} + seconds;
}

void FromJson(const Json& json, const std::string& place, CColour& into)
{
    std::vector<uint8_t> parts;
    if (!json.is_array() || json.size() != 3)
        Refuse(place, "takes [red, green, blue]");
    FromJson(json[0], ItemOf(place, 0), into.Red);
    FromJson(json[1], ItemOf(place, 1), into.Green);
    FromJson(json[2], ItemOf(place, 2), into.Blue);
}

void FromJson(const Json& json, const std::string& place, CPoint& into)
{
    std::pair<double, double> point;
    FromJson(json, place, point);
    into = {point.first, point.second};
}

void FromJson(const Json& json, const std::string& place, CMeasured& into)
{
    if (!json.is_object())
        return FromJson(json, place, into.Value);
    ReadJsonObject(json, place,
                   [&into](CJsonObject& object)
                   {
                       object.Read("value", into.Value);
                       object.Read("unit", into.Unit);
                   });
}

void FromJson(const Json& json, const std::string& place, CObjectiveLens& into)
{
    static const std::map<std::string, int32_t> media = {
        {"empty", Immersion::Empty},           {"air", Immersion::Air},
        {"water", Immersion::Water},           {"oil", Immersion::Oil},
        {"glycerol", Immersion::Glycerol},     {"silicone", Immersion::Silicone},
        {"oilSpecial", Immersion::OilSpecial}, {"unknown", Immersion::Unknown},
        {"hyalideK9", Immersion::HyalideK9},   {"glycerol100", Immersion::Glycerol100}};
    ReadJsonObject(json, place,
                   [&into](CJsonObject& object)
                   {
                       object.Read("name", into.Name);
                       object.Read("magnification", into.Magnification);
                       object.Read("aperture", into.Aperture);
                       object.Read("workingDistance", into.WorkingDistance);
                       object.Read("refractiveIndex", into.RefractiveIndex);
                       const Json* medium = object.Find("immersion");
                       if (medium && !medium->is_string())
                           object.Read("immersion", into.ImmersionMedium);
                       else if (medium)
                           object.ReadName("immersion", media, into.ImmersionMedium.emplace());
                   });
}

void FromJson(const Json& json, const std::string& place, CDevice& into)
{
    ReadJsonObject(json, place,
                   [&into](CJsonObject& object)
                   {
                       object.Read("id", into.Id);
                       object.Read("subType", into.SubType);
                       object.Read("lens", into.Lens);
                       object.Read("exposure", into.Exposure);
                       object.Read("oldExposure", into.OldExposure);
                       object.Read("hasProperties", into.HasProperties);
                   });
}

void ReadDevices(CJsonObject& object, std::optional<COpticalPath>& into)
{
    object.Read("devices", into);
    COpticalPath more;
    CObjectiveLens lens;
    CDevice camera = Camera({});
    if (object.Read("lens", lens))
        more.push_back(Revolver(lens));
    const bool hasExposure = object.Read("exposure", camera.Exposure);
    if (object.Read("oldExposure", camera.OldExposure) || hasExposure)
        more.push_back(camera);
    if (more.empty())
        return;
    if (!into)
        into.emplace();
    into->insert(into->end(), more.begin(), more.end());
}

void FromJson(const Json& json, const std::string& place, CLookUpTable& into)
{
    static const std::map<std::string, TableForm::E> forms = {{"volume", TableForm::Volume},
                                                              {"simple", TableForm::Simple}};
    constexpr uint32_t MostColours = 1u << 24;
    ReadJsonObject(json, place,
                   [&into](CJsonObject& object)
                   {
                       object.ReadName("form", forms, into.Form);
                       std::vector<CColour> colours;
                       uint32_t numOfColours = 256;
                       CColour brightest;
                       const bool isList = object.Read("colours", colours), isRamp = object.Read("ramp", brightest);
                       const bool isLong = object.Read("size", numOfColours);
                       const bool isBytes = object.Read("bytes", into.Bytes);
                       if (isList + isRamp + isBytes != 1 || (isLong && !isRamp))
                           Refuse(object.Place(), "takes one of colours, ramp (with size) and bytes");
                       if (numOfColours > MostColours)
                           Refuse(object.PlaceOf("size"), "takes at most " + std::to_string(MostColours));
                       if (isRamp)
                           colours = Ramp(numOfColours, brightest);
                       if (!isBytes)
                           into = CLookUpTable(colours, into.Form);
                   });
}

void FromJson(const Json& json, const std::string& place, CDisplayChannel& into)
{
    ReadJsonObject(json, place,
                   [&into](CJsonObject& object)
                   {
                       object.Read("stackId", into.StackId);
                       object.Read("operatorType", into.OperatorType);
                       object.Read("operatorId", into.OperatorId);
                       object.Read("transparency", into.Transparency);
                       object.Read("planeUnit", into.PlaneUnit);
                       object.Read("planeYUnit", into.PlaneYUnit);
                       object.Read("planeOrigin", into.PlaneOrigin);
                       object.Read("planeScale", into.PlaneScale);
                       object.Read("planeRect", into.PlaneRect);
                       object.Read("hidden", into.Hidden);
                   });
}

namespace
{

void ReadTime(CJsonObject& object, const char* key, std::optional<int64_t>& into)
{
    std::optional<CJsonTime> time;
    if (object.Read(key, time))
        into = time ? std::optional(time->Seconds) : std::nullopt;
}

} // namespace

void FromJson(const Json& json, const std::string& place, CDocumentProperties& into)
{
    ReadJsonObject(json, place,
                   [&into](CJsonObject& object)
                   {
                       object.Read("note", into.Note);
                       ReadTime(object, "creationTime", into.CreationTime);
                       ReadTime(object, "lastSavedTime", into.LastSavedTime);
                       object.Read("author", into.Author);
                       object.Read("creatorName", into.CreatorName);
                       object.Read("productName", into.ProductName);
                       object.Read("productVersion", into.ProductVersion);
                       object.Read("familyId", into.FamilyId);
                       object.Read("creatorMajorVersion", into.CreatorMajorVersion);
                       object.Read("creatorMinorVersion", into.CreatorMinorVersion);
                       object.Read("creatorSubVersion", into.CreatorSubVersion);
                       object.Read("creatorBuildNumber", into.CreatorBuildNumber);
                   });
}

} // namespace SampleDocuments
