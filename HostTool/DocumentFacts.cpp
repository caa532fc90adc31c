#include "HostTool/DocumentFacts.h"

#include "HostTool/HostError.h"

namespace HostTool
{

namespace
{

std::optional<std::string> Known(std::optional<std::string> text)
{
    return text && !text->empty() ? std::move(text) : std::nullopt;
}

/// The properties of the document, for which the interface asks any area.
void AddProperties(CDocumentFacts& facts, const CArea& area)
{
    if (const auto system = area.Properties(L"SystemInfo"))
    {
        facts.DeviceName = Known(system->Text(L"name"));
        facts.DeviceVersion = Known(system->Text(L"version"));
        facts.Author = Known(system->Text(L"userName"));
    }
    if (const auto comment = area.Properties(L"UserComment"))
        facts.Comment = Known(comment->Text(L"comment"));
    if (const auto id = area.Properties(L"IdInfo"))
        facts.FamilyID = Known(id->Text(L"familyId"));
    if (const auto created = area.Properties(L"CreationDateTime"))
        facts.Created = Known(created->Text(L"dateTime"));
    if (const auto updated = area.Properties(L"UpdateDateTime"))
        facts.Updated = Known(updated->Text(L"dateTime"));
}

void AddPictures(CDocumentFacts& facts, const CDocument& document)
{
    try
    {
        facts.Thumbnail = document.Thumbnail();
    }
    catch (const CHostError& error)
    {
        facts.Remarks.push_back({"warning", "thumbnail-unreadable", error.what()});
    }
    facts.Overview = document.Overview();
}

} // namespace

CDocumentFacts FactsOf(const CDocument& document)
{
    CDocumentFacts facts;
    facts.Path = document.Path();
    facts.FormatVersion = document.FormatVersion();
    const std::vector<int> groups = document.ReadableGroups();
    if (!groups.empty())
    {
        AddProperties(facts, document.Group(groups.front()).FirstArea());
        AddPictures(facts, document);
    }
    for (const CHostError& missing : document.MissingGroups())
        facts.Remarks.push_back({"error", "missing-file", missing.what()});
    for (const int group : groups)
        facts.Groups.push_back(FactsOf(document.Group(group), facts.Remarks));
    return facts;
}

} // namespace HostTool
