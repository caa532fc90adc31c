#pragma once
#include "SampleDocuments/Document.h"

#include <string>
#include <vector>

namespace Fuzzing
{

/// A small document of one kind.
struct CSampleSlide
{
    std::string Name;
    SampleDocuments::Document Made;
};

/// One of each kind that the plug-in reads, each a few thousand bytes. No two have stacks of the same ID but different
/// stores.
std::vector<CSampleSlide> SampleSlides();

// The good documents beside which a target puts its input.
SampleDocuments::Document SlideOfBinaryStore();
SampleDocuments::Document SlideOfTiffStore();
SampleDocuments::Document SlideOfDirectories();
/// With a stack of each storage.
SampleDocuments::Document SlideOfAllStores();

// Those stacks, to which a seed gives other pixels.
SampleDocuments::Stack StackOfBinaryStore();
SampleDocuments::Stack StackOfTiffStore();
SampleDocuments::Stack StackOfDirectories();

} // namespace Fuzzing
