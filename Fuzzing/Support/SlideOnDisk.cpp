#include "Fuzzing/Support/SlideOnDisk.h"

namespace Fuzzing
{

namespace
{

/// A number that a small change of the input changes.
uint32_t DigestOf(CInput input)
{
    uint32_t digest = 1;
    for (const uint8_t byte : input)
        digest = digest * 31 + byte;
    return digest >> 8;
}

} // namespace

CSlideOnDisk::CSlideOnDisk(SampleDocuments::Document document, std::vector<CSampleSlide> beside)
    : _document(std::move(document)), _documentFile(_folder.File("slide.zel"))
{
    for (CSampleSlide& slide : beside)
        slide.Made.WriteTo(_documentFile);
    _document.WriteTo(_documentFile);
}

void CSlideOnDisk::Walk(CInput input) const
{
    CWalkLimits limits;
    limits.IsOver = HasEndedByDesign;
    const uint32_t digest = DigestOf(input);
    const int mode = digest % 2 == 0 ? AC_OM_READ : AC_OM_FORCE;
    RunExported(
        [&]
        {
            const CWalkAnswers answers = WalkEverything(_documentFile.wstring(), mode, limits);
            if (digest % 16 < 2 && !HasEndedByDesign())
                Require(WalkEverything(_documentFile.wstring(), mode, limits) == answers,
                        "the second walk tells the same");
        });
}

} // namespace Fuzzing
