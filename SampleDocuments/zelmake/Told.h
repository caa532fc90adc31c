#pragma once

#include "SampleDocuments/Document.h"

#include <CLI/CLI.hpp>

namespace ZelMake
{

constexpr auto GroupOfTold = "What it tells";

/// What the command line says of a slide besides its pixels. What is not given is not told.
struct CTold
{
    std::optional<std::string> Name;
    std::optional<std::string> Note;
    std::optional<std::string> Author;
    SampleDocuments::CObjectiveLens Lens;
    std::string ImmersionMedium; ///< empty: not given
    std::optional<int64_t> Exposure;
    std::vector<double> Stage;
    std::optional<std::string> Experiment;
    std::optional<std::string> Sample;
    std::vector<double> Limits;
    uint32_t NumOfRegions = 0;
    std::string RegionsForm = "xml";
    uint16_t ThumbnailBits = 24;
};

/// Lets `parser` fill `told`; the options are in the group GroupOfTold.
void Describe(CLI::App& parser, CTold& told);

/// Says it of a stack, and of the document that shows the picture.
void Tell(SampleDocuments::Stack& stack, const CTold& told);
void Tell(SampleDocuments::Document& document, const SampleDocuments::CPicture& picture, const CTold& told);

} // namespace ZelMake
