#pragma once
#include "CommonImageAccess/Handles.h"
#include "Tests/Accessor/Slide.h"
#include "Tests/Support/Assertion.h"
#include "ZelLoader/Images/ZelMultiDimImage.h"
#include "ZelLoader/Store/KorFile.h"
#include "ZelLoader/ZelImgDoc.h"

#include <optional>

/// Documents below the interface: the classes that read them. What a host can see is tested as a host sees it.
namespace SlideOfTest
{

using CIA::DimensionType;
using DimType = DimensionType::E;
using TestSupport::AssertionOf;

constexpr DimType DimX = DimensionType::DimensionType_X;
constexpr DimType DimY = DimensionType::DimensionType_Y;
constexpr DimType DimZ = DimensionType::DimensionType_Z;
constexpr DimType DimT = DimensionType::DimensionType_T;
constexpr DimType DimL = DimensionType::DimensionType_L;
constexpr DimType DimC = DimensionType::DimensionType_C;
constexpr DimType DimP = DimensionType::DimensionType_P;
constexpr DimType DimDummy = DimensionType::DimensionType_Dummy;

class ZelSlide : public Slide
{
protected:
    /// Writes a document and reads its tree; nothing is built of it yet.
    Zel::CZelImgDoc& Read(Document document)
    {
        document.WriteTo(Folder().Path() / "slide.zel");
        _readDoc.emplace(FileName().c_str(), true);
        errno = 0;
        return *_readDoc;
    }
    /// The document that was read.
    Zel::CZelImgDoc& ReadDocument() { return _readDoc.value(); }
    /// Reads a document; nothing of its first image is built yet.
    Zel::CZelMultiDimImage& ReadImage(Document document)
    {
        return static_cast<Zel::CZelMultiDimImage&>(*Read(std::move(document)).MultiDimImages().begin()->second);
    }
    Zel::CZelMultiDimImage& ReadImage(const Stack& stack) { return ReadImage(Document().With(stack)); }
    /// The same, and its dimensions are there: most of an image cannot be asked for without them.
    template <typename Described>
    Zel::CZelMultiDimImage& BuildImage(Described&& described)
    {
        Zel::CZelMultiDimImage& image = ReadImage(std::forward<Described>(described));
        image.Dimensions();
        return image;
    }
    /// A dimension of the image that was read.
    static CIA::CDimension& DimensionOf(Zel::CZelMultiDimImage& image, DimType type) { return image.DimensionOf(type); }
    /// An image of the document that was opened.
    Zel::CZelMultiDimImage& ImageOf(int group = 0) const
    {
        return static_cast<Zel::CZelMultiDimImage&>(CIA::Group(Group(group)));
    }
    /// The store of the image that was opened.
    const Zel::CKorFile& Store(int group = 0) const { return *ImageOf(group).KorFile(); }

private:
    std::optional<Zel::CZelImgDoc> _readDoc;
};

} // namespace SlideOfTest
