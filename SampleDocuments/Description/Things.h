#pragma once

#include "SampleDocuments/Description/Json.h"
#include "SampleDocuments/Document.h"

/// The smaller things that a description is made of.
namespace SampleDocuments
{

/// Seconds since 1970, or a text such as "2020-01-31T12:00:00Z".
struct CJsonTime
{
    int64_t Seconds = 0;
};

void FromJson(const Json& json, const std::string& place, CJsonTime& into);
/// [red, green, blue]
void FromJson(const Json& json, const std::string& place, CColour& into);
/// [x, y]
void FromJson(const Json& json, const std::string& place, CPoint& into);
/// A number, or {"value": ..., "unit": ...}
void FromJson(const Json& json, const std::string& place, CMeasured& into);
void FromJson(const Json& json, const std::string& place, CObjectiveLens& into);
void FromJson(const Json& json, const std::string& place, CDevice& into);
void FromJson(const Json& json, const std::string& place, CLookUpTable& into);
void FromJson(const Json& json, const std::string& place, CDisplayChannel& into);
void FromJson(const Json& json, const std::string& place, CDocumentProperties& into);
void FromJson(const Json& json, const std::string& place, CRegion& into);
/// A blob of regions, or one with any bytes.
void FromJson(const Json& json, const std::string& place, CNode& into);

/// "lens", "exposure", "oldExposure" and "devices" of whatever has an optical path.
void ReadDevices(CJsonObject& object, std::optional<COpticalPath>& into);

} // namespace SampleDocuments
