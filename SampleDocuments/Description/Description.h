#pragma once

#include "SampleDocuments/Slide.h"

namespace SampleDocuments
{

/// What a description leaves open.
struct CDescriptionDefaults
{
    CSlideOptions Slide;               ///< how pictures become stacks
    std::function<CPicture()> Picture; ///< what they show; asked for at most once
};

/// The document that a JSON file describes. Throws CSampleError, "FILE: stacks[0].lens: reason", for a file that can't
/// be read, is no JSON or has a key or a value that means nothing; pictures are looked for beside the file.
///
/// All keys, with what they stand for, are told in docs/zelmake.md.
Document DocumentFromDescription(const std::filesystem::path& file, const CDescriptionDefaults& defaults);

} // namespace SampleDocuments
