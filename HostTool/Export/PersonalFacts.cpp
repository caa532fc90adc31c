#include "HostTool/Export/PersonalFacts.h"

#include "HostTool/Table.h"
#include "HostTool/Text.h"

#include <set>

namespace HostTool
{

namespace
{

constexpr const char* Removed = "left out with --strip";

class CFactList
{
public:
    void Add(const std::string& what, const std::optional<std::string>& value)
    {
        if (value && !value->empty())
            Facts.push_back({what, *value, Removed});
    }
    void AddPicture(const std::string& what, const std::optional<ByteBuffer>& picture, const std::string& inExport)
    {
        if (picture && !picture->empty())
            Facts.push_back({what, "a picture of " + std::to_string(picture->size()) + " bytes", inExport});
    }

    std::vector<CPersonalFact> Facts;
};

/// "7: Crypt, Gland, ..."; nothing if none has a name.
std::optional<std::string> NamesOf(const std::vector<CRegionFacts>& regions)
{
    constexpr size_t mostNames = 10;
    std::set<std::string> names;
    for (const CRegionFacts& region : regions)
        if (region.Name && !region.Name->empty())
            names.insert(*region.Name);
    if (names.empty())
        return std::nullopt;
    std::string text = std::to_string(names.size()) + ": ";
    size_t count = 0;
    for (const std::string& name : names)
    {
        if (count == mostNames)
            return text + ", ...";
        text += (count++ == 0 ? "" : ", ") + name;
    }
    return text;
}

} // namespace

std::vector<CPersonalFact> PersonalFactsOf(const CDocumentFacts& document,
                                           const std::vector<std::vector<CRegionFacts>>& regions)
{
    CFactList list;
    list.Facts.push_back({"name of the file", document.Path.filename().string(), "not written"});
    list.Add("author", document.Author);
    list.Add("comment", document.Comment);
    list.Add("family", document.FamilyID);
    list.Add("created", document.Created);
    list.Add("updated", document.Updated);
    for (size_t i = 0; i < document.Groups.size(); ++i)
    {
        const CGroupFacts& group = document.Groups[i];
        const std::string name = "group " + std::to_string(group.Number);
        list.Add(name + ", name", group.Name);
        list.Add(name + ", experiment", group.Experiment);
        list.Add(name + ", sample", group.Sample);
        list.Add(name + ", its description", group.SampleComment);
        if (i < regions.size())
            list.Add(name + ", names of regions", NamesOf(regions[i]));
    }
    list.AddPicture("overview", document.Overview, "only with --overview; its label may be seen");
    list.AddPicture("thumbnail", document.Thumbnail, "only with --thumbnail or --layout flat");
    return std::move(list.Facts);
}

void PrintPersonalFacts(std::ostream& out, const CDocument& document)
{
    const CDocumentFacts facts = FactsOf(document);
    std::vector<std::vector<CRegionFacts>> regions;
    for (const CGroupFacts& group : facts.Groups)
        regions.push_back(RegionsOf(document.Group(group.Number)));
    CTable table;
    table.Add({"what", "in the document", "in an export"});
    for (const CPersonalFact& fact : PersonalFactsOf(facts, regions))
        table.Add({fact.What, Printable(fact.Value), fact.InExport});
    out << Printable(facts.Path.string()) << '\n';
    table.Print(out, "  ");
}

void Strip(CDocumentFacts& document)
{
    for (auto* text : {&document.Author, &document.Comment, &document.FamilyID, &document.Created, &document.Updated})
        text->reset();
}

void Strip(CGroupFacts& group)
{
    for (auto* text : {&group.Name, &group.Experiment, &group.Sample, &group.SampleComment})
        text->reset();
}

void Strip(CRegionFacts& region)
{
    region.Name.reset();
}

} // namespace HostTool
