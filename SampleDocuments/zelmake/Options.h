#pragma once

#include "SampleDocuments/Slide.h"
#include "SampleDocuments/zelmake/Told.h"

#include <CLI/CLI.hpp>
#include <string>
#include <vector>

namespace ZelMake
{

/// What the command line asks for.
struct COptions
{
    std::filesystem::path Document;
    std::filesystem::path Picture; ///< empty: one is drawn
    std::vector<uint32_t> DrawnSize = {2000, 1500};
    std::vector<uint32_t> TileSize = {256, 256};
    bool IsTileSizeGiven = false;
    std::string Store = "kor";
    uint32_t RowsPerStrip = 0; ///< 0: not given
    bool IsOneStrip = false;
    std::string Compression = "jpeg";
    uint32_t NumOfLevels = 0; ///< 0: as many as it takes
    bool IsReportJson = false;
    bool IsForced = false; ///< replaces what is there, whoever wrote it
    SampleDocuments::CSlideOptions Slide;
    CTold Told;
    std::filesystem::path Description; ///< empty: there is none
};

/// Lets `parser` fill `options`; its help text explains the program.
void Describe(CLI::App& parser, COptions& options);

/// Throws CSampleError if the command line tells what only the description may tell.
void CheckTogether(const CLI::App& parser, const COptions& options);

/// The options of the slide with all that the command line says in words. Throws CSampleError for options that do not
/// go together.
SampleDocuments::CSlideOptions SlideOptionsOf(const COptions& options);

} // namespace ZelMake
