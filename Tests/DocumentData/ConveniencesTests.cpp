// The exported conveniences for hosts in C++.

#include "CommonImageAccess/BrixPropset.h"
#include "Tests/Properties/PropertySets.h"
#include "Tests/Support/ChildProcess.h"

#include <sys/resource.h>

using namespace SlideOfTest;

namespace
{

using Texts = std::vector<std::wstring>;

class Conveniences : public Slide
{
protected:
    AC_HAREA FirstArea() const { return Area(Group(), 0, 0); }
};

// ---- GetValue ----

TEST_F(Conveniences, GetValueAppendsAllTexts)
{
    Open(Stack(1).Channels(3));
    Texts texts = {L"before"};
    EXPECT_EQ(Call(GetValue, SetOf(FirstArea(), L"EnabledChannelIdList"), L"id", std::ref(texts)), AC_RESULT_SUCCESS);
    EXPECT_EQ(texts, (Texts{L"before", L"0", L"1", L"2"}));
}

TEST_F(Conveniences, GetValueFailsWithoutATextInTheEnd)
{
    Open(Stack(1));
    Texts texts;
    EXPECT_EQ(Call(GetValue, SetOf(FirstArea(), L"Axes"), L"axisName", std::ref(texts)), AC_RESULT_FAILURE);
    texts = {L"before"};
    EXPECT_EQ(Call(GetValue, SetOf(FirstArea(), L"Axes"), L"axisName", std::ref(texts)), AC_RESULT_SUCCESS);
}

TEST_F(Conveniences, GetValueRefusesValuesThatAreNoTexts)
{
    Open(Stack(1));
    Texts texts;
    EXPECT_EQ(Call(GetValue, SetOf(FirstArea(), L"ImageSize"), L"size", std::ref(texts)), AC_RESULT_INVALID_PARAM);
    EXPECT_THAT(texts, IsEmpty());
}

TEST_F(Conveniences, GetValueRefusesAnUnknownKeyAndNoSet)
{
    Open(Stack(1));
    Texts texts;
    EXPECT_EQ(Call(GetValue, SetOf(FirstArea(), L"Axes"), L"name", std::ref(texts)), AC_RESULT_INVALID_PARAM);
    EXPECT_EQ(Call(GetValue, nullptr, L"name", std::ref(texts)), AC_RESULT_INVALID_PARAM);
}

TEST_F(Conveniences, GetValueTakesAMissingTextForAnEmptyOne)
{
    CIA::CBrixPropset set;
    set.AddString(L"units", nullptr);
    Texts texts;
    EXPECT_EQ(Call(GetValue, &set, L"units", std::ref(texts)), AC_RESULT_SUCCESS);
    EXPECT_EQ(texts, Texts{L""});
}

// ---- GetDateTimeString ----

TEST_F(Conveniences, GetDateTimeStringJoinsCreationAndUpdate)
{
    Open(Document().With(Stack(1)).Properties({.CreationTime = 0, .LastSavedTime = 60}));
    std::wstring text = L"before";
    EXPECT_EQ(Call(GetDateTimeString, FirstArea(), std::ref(text)), AC_RESULT_SUCCESS);
    EXPECT_EQ(text, L"1970-01-01T00:00:00+00:001970-01-01T00:01:00+00:00");
}

TEST_F(Conveniences, GetDateTimeStringRefusesNull)
{
    std::wstring text;
    EXPECT_EQ(Call(GetDateTimeString, nullptr, std::ref(text)), AC_RESULT_INVALID_PARAM);
}

// ---- GetSampleImageBody ----

struct SampleRow : Row
{
    Stack Group;
    CIndexes Middle;
};

class SampleImage : public Conveniences, public testing::WithParamInterface<SampleRow>
{
};

TEST_P(SampleImage, IsThatInTheMiddleOfTheAxes)
{
    Open(GetParam().Group);
    BYTE* buffer = nullptr;
    UINT64 size = 0;
    ASSERT_EQ(Call(GetSampleImageBody, FirstArea(), &buffer, &size), AC_RESULT_SUCCESS);
    const std::unique_ptr<BYTE[]> owner(buffer);
    EXPECT_EQ(ByteString(buffer, buffer + size), GetParam().Group.TileBytes(0, 0, 0, GetParam().Middle));
}

INSTANTIATE_TEST_SUITE_P(
    Axes, SampleImage,
    testing::Values(SampleRow{{"T"}, Stack(1).T(4), {.T = 2}}, SampleRow{{"Z"}, Stack(1).Z(3), {.Z = 1}},
                    SampleRow{{"Lambda"}, Stack(1).Lambda(2), {.L = 1}},
                    SampleRow{{"All"}, Stack(1).Z(3).T(2).Lambda(5).Channels(2), {.Z = 1, .T = 1, .L = 2}},
                    SampleRow{{"Jpeg"}, Stack(1).Jpeg().Z(3), {.Z = 1}}),
    NameOfRow());

TEST_F(Conveniences, GetSampleImageBodyNeedsAnAxis)
{
    Open(Stack(1));
    BYTE* buffer = nullptr;
    UINT64 size = 7;
    EXPECT_EQ(Call(GetSampleImageBody, FirstArea(), &buffer, &size), AC_RESULT_FAILURE);
    EXPECT_EQ(buffer, nullptr);
}

TEST_F(Conveniences, GetSampleImageBodyRefusesNull)
{
    BYTE* buffer = nullptr;
    UINT64 size = 0;
    EXPECT_EQ(Call(GetSampleImageBody, nullptr, &buffer, &size), AC_RESULT_INVALID_PARAM);
    EXPECT_EQ(buffer, nullptr);
}

TEST_F(Conveniences, GetSampleImageBodyTakesNoMemoryForBytesThatAreNotThere)
{
    Document document;
    document.With(Stack(1).Z(2));
    for (CStoredTile& tile : document.Store(1).Tiles)
        tile.Size = 1U << 30;
    Open(std::move(document));
    const auto read = [&]
    {
        BYTE* buffer = nullptr;
        UINT64 size = 0;
        const AC_Result result = Call(GetSampleImageBody, FirstArea(), &buffer, &size);
        rusage usage{};
        getrusage(RUSAGE_SELF, &usage);
        constexpr long ModestKilobytes = 512 << 10;
        return result == AC_RESULT_FAILURE && !buffer && usage.ru_maxrss < ModestKilobytes ? 0 : 1;
    };
    EXPECT_EQ(TestSupport::RunInChild(read), TestSupport::ExitedWith(0));
}

TEST_F(Conveniences, GetSampleImageBodyServesAnyImageThatIsAllThere)
{
    constexpr UINT64 SizeOfImage = UINT64{17000} * 16000; // more than 256 MB
    Document document;
    document.With(Stack(1).Z(2));
    document.Store(1).Tile({0, 0, 1, 0}).Size = SizeOfImage;
    document.WriteTo(Folder().Path() / "slide.zel");
    const auto store = document.StorePath(Folder().Path() / "slide.zel", 1);
    std::filesystem::resize_file(store, std::filesystem::file_size(store) + SizeOfImage);
    ASSERT_EQ(ResultOfOpeningFile(FileName()), AC_RESULT_SUCCESS);
    BYTE* buffer = nullptr;
    UINT64 size = 0;
    EXPECT_EQ(Call(GetSampleImageBody, FirstArea(), &buffer, &size), AC_RESULT_SUCCESS);
    const std::unique_ptr<BYTE[]> owner(buffer);
    EXPECT_EQ(size, SizeOfImage);
}

TEST_F(Conveniences, GetSampleImageBodyTellsTheSizeAlsoOfWhatCannotBeRead)
{
    for (const uint32_t sizeOfImage : {100U << 20, 300U << 20})
    {
        Document document;
        document.With(Stack(1).Z(2));
        for (CStoredTile& tile : document.Store(1).Tiles)
            tile.Size = sizeOfImage;
        Open(std::move(document));
        BYTE* buffer = nullptr;
        UINT64 size = 0;
        EXPECT_EQ(Call(GetSampleImageBody, FirstArea(), &buffer, &size), AC_RESULT_FAILURE);
        EXPECT_EQ(size, sizeOfImage);
        EXPECT_EQ(buffer, nullptr);
    }
}

TEST_F(Conveniences, GetSampleImageBodyLeavesNothingBehindWhereNoImageIs)
{
    Open(Stack(1).Z(2).Size(512, 256).Tiles(256, 256).MissingTile(0, 1, 0));
    BYTE* buffer = nullptr;
    UINT64 size = 0;
    EXPECT_NE(Call(GetSampleImageBody, Area(Group(), 0, 1), &buffer, &size), AC_RESULT_SUCCESS);
    EXPECT_EQ(buffer, nullptr);
}

} // namespace
