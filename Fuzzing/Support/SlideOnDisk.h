#pragma once
#include "Fuzzing/Seeds/SampleSlides.h"
#include "Fuzzing/Support/FuzzTarget.h"
#include "Fuzzing/Walk/FullWalk.h"

namespace Fuzzing
{

/// A good document with its stores in a folder of this process, of which a target replaces one file.
class CSlideOnDisk
{
public:
    /// `beside`: whose stores lie in the same place.
    explicit CSlideOnDisk(SampleDocuments::Document document, std::vector<CSampleSlide> beside = {});

    const std::filesystem::path& DocumentFile() const { return _documentFile; }
    std::filesystem::path StoreFile(uint32_t stackId) const { return _document.StorePath(_documentFile, stackId); }

    /// Opens the document and asks for everything, by a mode that the input decides, sometimes twice. Requires that the
    /// answers are the same both times.
    void Walk(CInput input) const;

private:
    CScratchFolder _folder;
    SampleDocuments::Document _document;
    std::filesystem::path _documentFile;
};

} // namespace Fuzzing
