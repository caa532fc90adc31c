#include "Fuzzing/Seeds/SampleSlides.h"
#include "Fuzzing/Support/SlideOnDisk.h"
#include "Tests/Support/TemporaryFolder.h"

#include <gtest/gtest.h>

/// A seed is good where its target puts it: what does not open is no place to go on from.

using namespace Fuzzing;

namespace
{

std::vector<std::filesystem::path> SeedsOf(const char* target)
{
    std::vector<std::filesystem::path> seeds;
    for (const auto& entry : std::filesystem::directory_iterator(std::filesystem::path(SEEDS_FOLDER) / target))
        seeds.push_back(entry.path());
    return seeds;
}

AC_Result ResultOfOpening(const CSlideOnDisk& slide)
{
    return WalkEverything(slide.DocumentFile().wstring()).ResultOfOpening;
}

/// Puts each seed of a target into the place of a file of the slide, and opens the slide.
void ExpectThatEachOpens(const char* target, const CSlideOnDisk& slide, const std::filesystem::path& place)
{
    const std::vector<std::filesystem::path> seeds = SeedsOf(target);
    EXPECT_GE(seeds.size(), 5u);
    for (const std::filesystem::path& seed : seeds)
    {
        std::filesystem::copy_file(seed, place, std::filesystem::copy_options::overwrite_existing);
        EXPECT_EQ(ResultOfOpening(slide), AC_RESULT_SUCCESS) << seed;
    }
}

TEST(Seed, OfADocumentOpensBesideTheStoresOfAllOthers)
{
    const CSlideOnDisk slide(SlideOfAllStores(), SampleSlides());
    ExpectThatEachOpens("document", slide, slide.DocumentFile());
}

TEST(Seed, OfAStoreOpensBesideItsDocument)
{
    const CSlideOnDisk slide(SlideOfBinaryStore());
    ExpectThatEachOpens("store", slide, slide.StoreFile(1));
}

TEST(Seed, OfATiffStoreOpensBesideItsDocument)
{
    const CSlideOnDisk slide(SlideOfTiffStore());
    ExpectThatEachOpens("tiff-store", slide, slide.StoreFile(1));
}

TEST(Seed, OfDirectoriesOpensUnderItsTree)
{
    const CSlideOnDisk slide(SlideOfDirectories());
    ExpectThatEachOpens("directories", slide, slide.DocumentFile());
}

} // namespace
