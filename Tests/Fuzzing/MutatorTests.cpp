#include "Brix/AccessorInterface.h"
#include "Fuzzing/Mutators/Mutate.h"
#include "Fuzzing/Mutators/TagTrees.h"
#include "Fuzzing/Seeds/SampleSlides.h"
#include "Tests/Support/ChildProcess.h"
#include "Tests/Support/TemporaryFolder.h"

#include <algorithm>
#include <gmock/gmock.h>

/// Mutators know their formats: they find the places that mean something, stay within their room, and what they make
/// still gets past the first checks.

using namespace Fuzzing;

namespace
{

CBytes BytesOfDocument()
{
    return SlideOfAllStores().ToBytes();
}

size_t LeaveAsItIs(uint8_t*, size_t size, size_t)
{
    return size;
}

/// The input after a mutation, in room for `room` bytes.
CBytes Mutated(const CBytes& bytes, unsigned seed, const CFormat& format, size_t room)
{
    CBytes buffer(bytes);
    buffer.resize(std::max(room, bytes.size()));
    buffer.resize(Mutate(buffer.data(), bytes.size(), room, seed, format, LeaveAsItIs));
    return buffer;
}

int NumOfGroupsOf(const std::wstring& fileName)
{
    AC_HFILE document = nullptr;
    INT32 numOfGroups = 0;
    if (_AC_Open(fileName.c_str(), AC_OM_READ, &document) == AC_RESULT_SUCCESS)
        _AC_GetNumOfGroups(document, &numOfGroups);
    _AC_Close(document);
    return numOfGroups;
}

std::vector<uint64_t> TagsIn(const CBytes& bytes)
{
    std::vector<uint64_t> tags;
    for (const CPlace& place : PlacesOfTagTrees(bytes))
        if (place.Kind == PlaceKind::Tag)
            tags.push_back(NumberAt(bytes, place.Offset, place.Size));
    return tags;
}

TEST(Mutator, FindsTheTagsOfATree)
{
    EXPECT_THAT(TagsIn(BytesOfDocument()), testing::IsSupersetOf({2000u, 2001u, 2002u, 2003u, 2005u, 2011u}));
}

TEST(Mutator, FindsTheTagsBehindABrokenLink)
{
    CBytes bytes = BytesOfDocument();
    SetNumberAt(bytes, 8 + 8, 8, 0); // the root's first child
    EXPECT_THAT(TagsIn(bytes), testing::Contains(2001u));
}

TEST(Mutator, FindsTheEntriesOfEachDirectory)
{
    constexpr uint64_t ImageWidth = 256;
    const CBytes bytes = SlideOfDirectories().ToBytes();
    const CPlaces places = PlacesOfTiff(bytes);
    const auto isWidth = [&](const CPlace& place)
    { return place.Kind == PlaceKind::Tag && NumberAt(bytes, place.Offset, place.Size) == ImageWidth; };
    EXPECT_EQ(std::count_if(places.begin(), places.end(), isWidth), 3); // the thumbnail and two frames
}

TEST(Mutator, FindsTheRecordsOfAStore)
{
    const TestSupport::TemporaryFolder folder;
    SampleDocuments::Document document = SlideOfBinaryStore();
    const auto name = document.WriteTo(folder.Path() / "slide.zel");
    const std::string text = TestSupport::BytesOf(document.StorePath(name, 1));
    const CBytes bytes(text.begin(), text.end());
    const CPlaces places = PlacesOfStore(bytes);
    const auto isOffset = [](const CPlace& place) { return place.Kind == PlaceKind::Offset; };
    const auto numOfTiles = static_cast<std::ptrdiff_t>(document.StackOf(1).NumOfTiles());
    EXPECT_EQ(std::count_if(places.begin(), places.end(), isOffset), numOfTiles + 2); // the header tells two
}

class MutationOf : public testing::TestWithParam<CPlaces (*)(std::span<const uint8_t>)>
{
};

TEST_P(MutationOf, AnyBytesStaysWithinItsRoom)
{
    const CFormat format{.Places = GetParam(), .Edit = EditTree};
    CBytes bytes = BytesOfDocument();
    for (unsigned seed = 0; seed < 3000; ++seed) // each one goes on from the one before, far from any format
    {
        bytes = Mutated(bytes, seed, format, 8192);
        ASSERT_LE(bytes.size(), 8192u);
    }
}

INSTANTIATE_TEST_SUITE_P(Formats, MutationOf, testing::Values(PlacesOfTagTrees, PlacesOfStore, PlacesOfTiff));

TEST(Mutator, MakesDocumentsOfWhichManyStillOpen)
{
    const TestSupport::TemporaryFolder folder;
    SlideOfAllStores().WriteTo(folder.Path() / "slide.zel");
    const CBytes bytes = BytesOfDocument();
    int numOfOpened = 0;
    int numOfChanged = 0;
    for (unsigned seed = 0; seed < 200; ++seed)
    {
        CBytes edited = bytes;
        CRandom random(seed);
        EditTree(edited, random);
        numOfChanged += edited != bytes;
        folder.Write("slide.zel", {reinterpret_cast<const char*>(edited.data()), edited.size()});
        const auto open = [&] { return NumOfGroupsOf(folder.WideName("slide.zel")) > 0 ? 0 : 1; };
        numOfOpened += TestSupport::RunInChild(open) == TestSupport::ExitedWith(0);
    }
    EXPECT_GT(numOfChanged, 150);
    EXPECT_GT(numOfOpened, 60);
}

} // namespace
