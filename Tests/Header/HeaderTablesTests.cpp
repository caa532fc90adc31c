// The tables of the interface's header say what the plug-in answers, over one document of each kind.

#include "CommonUtil/Text.h"
#include "Fuzzing/Seeds/SampleSlides.h"
#include "Tests/DocumentData/CustomData.h"
#include "Tests/Header/HeaderTables.h"

#include <algorithm>

using namespace SlideOfTest;
using CommonUtil::A;
using CommonUtil::ToWide;
using HeaderTables::CSet;
using HeaderTables::CSets;

namespace
{

/// The documents in which everything that a host can be told is told by one of them.
std::vector<Fuzzing::CSampleSlide> Samples()
{
    std::vector<Fuzzing::CSampleSlide> samples = Fuzzing::SampleSlides();
    const auto small = [] { return Stack(1).Size(16, 16).Tiles(16, 16); };
    samples.push_back({"plane", Document().With(small()
                                                    .YUnit("10^-6m^1")
                                                    .Display({.PlaneUnit = "10^-6m^1",
                                                              .PlaneYUnit = "PIXEL",
                                                              .PlaneOrigin = {{1, 2}},
                                                              .PlaneScale = {{0.5, 0.5}},
                                                              .PlaneRect = {{0, 0, 16, 16}}}))});
    samples.push_back(
        {"tables",
         Document().With(small().InDocument(Stack::OneStrip).TiffCompression(7).JpegTables({1, 2, 3, 4, 5}))});
    return samples;
}

/// A request with parameters of these names and values.
using CRequest = std::map<std::string, std::wstring>;

/// What is answered to the requests: "area ImageSize size", and how many values came in all.
using CCounts = std::map<std::string, size_t>;

class TablesOfTheHeader : public Slide
{
protected:
    /// Asks all that the tables name of the open document.
    void AskAll();

    CSets OfAreas = HeaderTables::SetsOf("_AC_GetAreaProperty");
    CSets OfImages = HeaderTables::SetsOf("_AC_GetFrameProperty");
    CCounts Values; ///< by set and key

private:
    void AskArea(AC_HAREA area);
    void Check(const std::string& name, const CSet& told, AC_HPROPERTY set);
    template <typename Function>
    void Ask(const CSets& sets, void* object, AC_HAREA area, Function function);
};

/// The values that a parameter may have in an area's group.
std::vector<std::wstring> ValuesOfParam(const std::string& name, AC_HAREA area)
{
    if (name == "axisName")
        return {L"ZSTACK", L"TIMELAPSE", L"LAMBDA"};
    if (name == "planeName")
        return {L"all"};
    const wchar_t* list = name == "channelId" ? L"EnabledChannelIdList" : L"AnalysisROIList";
    std::vector<std::wstring> values;
    for (const AC_VALUE& value : ValuesOf(SetOf(area, list), L"id"))
        values.emplace_back(value.value.pszString);
    return values;
}

std::vector<CRequest> RequestsOf(const CSet& set, AC_HAREA area)
{
    std::vector<CRequest> requests{{}};
    for (const std::string& param : set.Params)
    {
        std::vector<CRequest> longer;
        for (const CRequest& request : requests)
            for (const std::wstring& value : ValuesOfParam(param, area))
            {
                longer.push_back(request);
                longer.back()[param] = value;
            }
        requests = longer;
    }
    return requests;
}

bool IsOfType(const AC_VALUE& value, const std::string& type)
{
    static const std::map<std::string, AC_ValueType> Types = {
        {"text", AC_VT_STRING},   {"texts", AC_VT_STRING}, {"bytes", AC_VT_STRING}, {"integer", AC_VT_INTEGER},
        {"double", AC_VT_DOUBLE}, {"point", AC_VT_POINT},  {"points", AC_VT_POINT}};
    return Types.at(type) == value.nType;
}

void ExpectAllowed(const HeaderTables::CAnswer& told, const std::string& text)
{
    const std::set<std::string> allowed = told.AllowedTexts();
    EXPECT_TRUE(allowed.empty() || allowed.contains(text)) << "is '" << text << "'";
}

void CheckValue(const HeaderTables::CAnswer& told, const AC_VALUE& value)
{
    EXPECT_TRUE(IsOfType(value, told.Type)) << "is a " << TextOf(value);
    if (value.nType != AC_VT_STRING || told.Type == "bytes")
        return;
    if (!value.value.pszString)
    {
        EXPECT_TRUE(told.MayBe("NULL"));
        return;
    }
    ExpectAllowed(told, A(value.value.pszString));
}

void TablesOfTheHeader::Check(const std::string& name, const CSet& told, AC_HPROPERTY set)
{
    for (const std::wstring& key : KeysOf(set))
    {
        SCOPED_TRACE(name + ", " + A(key));
        const auto row = told.Answers.find(A(key));
        ASSERT_NE(row, told.Answers.end()) << "is not in the table";
        const std::vector<AC_VALUE> values = ValuesOf(set, key.c_str());
        const bool isList = row->second.Type.ends_with("s") && row->second.Type != "bytes";
        EXPECT_TRUE(isList || values.size() == 1);
        for (const AC_VALUE& value : values)
            CheckValue(row->second, value);
        Values[name + ", " + A(key)] += values.size();
    }
}

template <typename Function>
void TablesOfTheHeader::Ask(const CSets& sets, void* object, AC_HAREA area, Function function)
{
    for (const auto& [name, set] : sets)
        for (CRequest& request : RequestsOf(set, area))
        {
            std::vector<std::pair<std::wstring, std::wstring*>> params;
            for (auto& [param, value] : request)
                params.emplace_back(ToWide(param), &value);
            std::vector<AC_PARAM_ELEMENT> elements;
            for (auto& [param, value] : params)
                elements.push_back({param.c_str(), value->data()});
            const AC_PARAMS record{static_cast<int32_t>(elements.size()), elements.data()};
            AC_HPROPERTY answer = nullptr;
            if (Call(function, object, ToWide(name).c_str(), elements.empty() ? nullptr : &record, &answer) ==
                AC_RESULT_SUCCESS)
                Check(name, set, answer);
        }
}

void TablesOfTheHeader::AskArea(AC_HAREA area)
{
    Ask(OfAreas, area, area, _AC_GetAreaProperty);
    for (const wchar_t* channel : {L"0", L"1"})
        for (const Axes& axes : {Axes{}, {AtZ(1)}, {AtT(1)}, {AtL(1)}})
        {
            AC_HIMAGE image = nullptr;
            Axes asked = axes;
            Call(_AC_GetImage, area, channel, asked.data(), static_cast<int>(asked.size()), &image);
            if (image)
                Ask(OfImages, image, area, _AC_GetFrameProperty);
        }
}

void TablesOfTheHeader::AskAll()
{
    for (int group = 0; group < NumOfGroups(Doc()); ++group)
        AskArea(Area(Group(group), 0, 0));
}

/// What the tables promise and no document tells.
std::vector<std::string> Unanswered(const CSets& sets, const CCounts& values)
{
    std::vector<std::string> unanswered;
    for (const auto& [name, set] : sets)
        for (const auto& [key, told] : set.Answers)
        {
            const auto found = values.find(name + ", " + key);
            const bool isThere = found != values.end();
            if (!isThere || (found->second != 0) == told.IsAlwaysNone())
                unanswered.push_back(name + ", " + key);
        }
    return unanswered;
}

TEST_F(TablesOfTheHeader, TellEachKeyOfASetThatIsAnsweredWithItsType)
{
    for (Fuzzing::CSampleSlide& sample : Samples())
    {
        SCOPED_TRACE(sample.Name);
        Open(sample.Made);
        AskAll();
    }
    EXPECT_THAT(Unanswered(OfAreas, Values), IsEmpty());
    EXPECT_THAT(Unanswered(OfImages, Values), IsEmpty());
}

std::set<std::string> NamesOf(const CSets& sets)
{
    std::set<std::string> names;
    for (const auto& [name, set] : sets)
        names.insert(name);
    return names;
}

TEST_F(TablesOfTheHeader, HaveEachSetThatThePluginKnows)
{
    std::set<std::string> known = HeaderTables::WordsOfSources("BRIX_GETAREAPROPERTY_KEY_");
    EXPECT_EQ(known.erase("ImagingROIInfo"), 1u); // without a region to ask about
    EXPECT_EQ(NamesOf(OfAreas), known);
    known = HeaderTables::WordsOfSources("BRIX_GETFRAMEPROPERTY_KEY_");
    EXPECT_EQ(known.erase("StimulationROIInfo"), 1u);
    EXPECT_EQ(NamesOf(OfImages), known);
}

TEST_F(TablesOfTheHeader, TellTheParametersThatASetNeeds)
{
    Open(Document().With(Stack(1).Z(2)));
    AC_HAREA area = Area(Group(), 0, 0);
    for (const auto& [name, set] : OfAreas)
    {
        // An unknown parameter comes first: it is not looked at once the set is there.
        EXPECT_NE(ResultOfSet(area, ToWide(name).c_str(), {{L"unknown", L"0"}}), AC_RESULT_SUCCESS) << name;
        const AC_Result withNone = ResultOfSet(area, ToWide(name).c_str());
        EXPECT_TRUE(set.Params.empty() || withNone != AC_RESULT_SUCCESS) << name;
    }
}

TEST_F(TablesOfTheHeader, TellTheCustomDataOfADocument)
{
    const CSets told = HeaderTables::SetsOf("_AC_GetCustomData");
    std::set<std::string> answered;
    for (Fuzzing::CSampleSlide& sample : Samples())
    {
        Open(sample.Made);
        std::array<AC_CUSTOM_DATA_INFO, 8> infos{};
        int count = 0;
        ASSERT_EQ(Call(_AC_GetSupportedCustomData, Doc(), infos.data(), 8, &count), AC_RESULT_SUCCESS);
        for (int n = 0; n < count; ++n)
        {
            std::wstring name = infos.at(static_cast<size_t>(n)).pszName;
            ASSERT_TRUE(told.contains(A(name))) << A(name);
            const CSet& set = told.at(A(name));
            Params params;
            if (set.Params == std::vector<std::string>{"groupId", "levelId"})
                params = Params{{L"groupId", L"0"}, {L"levelId", L"0"}};
            uint64_t size = 0;
            ASSERT_EQ(Call(_AC_GetCustomData, Doc(), name.data(), params.Get(), nullptr, uint64_t{0}, &size),
                      AC_RESULT_SUCCESS);
            EXPECT_TRUE(set.Answers.at("data").Type != "integers" || size == 4 * sizeof(int32_t));
            if (size > 0)
                answered.insert(A(name));
        }
    }
    EXPECT_EQ(answered, NamesOf(told));
}

TEST_F(TablesOfTheHeader, TellTheTextsOfAGroup)
{
    const auto told = HeaderTables::TextsOf("_AC_GetGroupCustomData");
    std::set<std::string> names;
    std::set<std::string> answered;
    for (Fuzzing::CSampleSlide& sample : Samples())
    {
        Open(sample.Made);
        for (const auto& [name, row] : told)
        {
            SCOPED_TRACE(sample.Name + ", " + name);
            names.insert(name);
            const CAnswer answer = GroupData(Group(), ToWide(name), {{L"channelId", L"0"}});
            if (answer.Result == AC_RESULT_PROPERTY_NOT_FOUND)
                continue;
            EXPECT_EQ(answer.Result, AC_RESULT_SUCCESS);
            answered.insert(name);
            ExpectAllowed(row, answer.Text);
        }
    }
    EXPECT_EQ(answered, names);
    EXPECT_EQ(names, HeaderTables::WordsOfSources("BRIX_GROUPCUSTOMDATA_KEY_"));
}

} // namespace
