#pragma once

#include "SampleDocuments/Description/Description.h"
#include "SampleDocuments/Description/Things.h"

/// The parts that a description is read by.
namespace SampleDocuments
{

/// Where the pictures of a description come from.
class CPictures
{
public:
    CPictures(std::filesystem::path folder, std::function<CPicture()> usual)
        : _Folder(std::move(folder)), _Usual(std::move(usual))
    {
    }

    /// That of "picture", a file, or of "draw", a width and a height; the usual one if there is neither. "draw" is
    /// taken for a picture of that size, always the same.
    CPicture PictureFor(CJsonObject& object);
    const CPicture& Usual();
    /// The first one that was asked for; null if none was.
    const CPicture* First() const { return _First ? &*_First : nullptr; }

private:
    CPicture Load(CJsonObject& object);

    std::filesystem::path _Folder;
    std::function<CPicture()> _Usual;
    std::optional<CPicture> _UsualPicture;
    std::optional<CPicture> _First;
};

/// How the pixels of a stack are described.
struct CDescribedPixels
{
    CSlideOptions Slide;
    uint32_t Component = ComponentType::Uint8;
    uint32_t NumOfComponents = 0; ///< 0: those of the picture, or 1
    std::optional<uint32_t> ColorSpace;
    std::optional<int32_t> ComponentOrder;
};

/// "tile", "levels", "pixels", "store" and "grow" of a stack.
CDescribedPixels PixelsFromJson(CJsonObject& object, const CSlideOptions& defaults);

/// The dimensions of a stack, if the object has "dimensions".
std::optional<std::vector<CStackDimension>> DimensionsFromJson(CJsonObject& object);

/// What a stack tells besides its pixels.
void ReadStackMetadata(CJsonObject& object, Stack& stack);

/// A stack; its ID is `usualId` if it tells none.
Stack StackFromJson(const Json& json, const std::string& place, uint32_t usualId, const CSlideOptions& defaults,
                    CPictures& pictures);

/// Changes of single fields when all else is there.
void ApplyEdits(const Json& json, const std::string& place, Document& document);

} // namespace SampleDocuments
