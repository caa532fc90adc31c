#pragma once

#include "SampleDocuments/Codecs.h"
#include "SampleDocuments/Document.h"

namespace SampleDocuments
{

/// How a picture becomes a slide.
struct CSlideOptions
{
    uint32_t TileWidth = 256;
    uint32_t TileHeight = 256;
    std::optional<uint32_t> NumOfLevels; ///< down to the level of one tile if not set
    bool IsCutToWholeTiles = false;      ///< so that a grown slide has few different tiles
    uint32_t Grow = 1;                   ///< the slide is so many pictures wide and high, each one mirrored
    uint32_t Compression = StoreCompression::Jpeg;
    uint32_t Quality = 85;
    uint16_t Bits = 8;
    bool IsGrey = false; ///< one sample per pixel, whatever the picture has
    bool IsBgr = false;  ///< raw colour pixels with blue first
    uint32_t NumOfZ = 1;
    uint32_t NumOfT = 1;
    uint32_t NumOfLambdas = 1;
    uint32_t NumOfChannels = 1; ///< above 1: grey channels, each of one colour of the picture
    uint32_t NumOfStacks = 1;
    StackStorage::E Storage = StackStorage::BinaryStore; ///< or TiffStore, or InDocument, which has one level
    uint32_t RowsPerStrip = 0;                           ///< in TIFF: strips of so many rows; 0: tiles
    bool IsBigTiff = false;
    bool HasXml = true;                  ///< of a TIFF store; without, there is one frame
    bool HasEachTileItsOwnBytes = false; ///< false: equal tiles of a grown slide share their bytes in the store
};

/// The rows of a strip that a stack in a document has unless somebody asks for others: JPEG takes a single strip, all
/// else has strips as high as tiles.
uint32_t UsualRowsPerStrip(const CSlideOptions& options);

/// The compression of TIFF directories that goes with that of a store; a number that has none is taken as it is.
uint16_t TiffCompressionOf(uint32_t storeCompression);

/// The document of a slide that shows the picture, with real encoded tiles. The tiles of a grown slide that are equal
/// are encoded once; no more than a few pictures are in memory, however large the slide. Frames differ: Z is out of
/// focus, T moves, lambda darkens. Throws CSampleError if the options contradict each other or the slide is larger
/// than a document can tell. The tiles are made while the document is written, by one thread.
/// `tell`, if it is there, is called for each stack and may say more of it, as with StackFromPicture.
Document SlideFromPicture(const CPicture& picture, const CSlideOptions& options,
                          const std::function<void(Stack&)>& tell = {});

/// One stack of such a slide; the stacks lie side by side in the order of their IDs. Throws as SlideFromPicture.
/// What is said of the stack later must leave its pixels, levels, tiles and the numbers of its frames as they are.
Stack StackFromPicture(const CPicture& picture, const CSlideOptions& options, uint32_t id);

/// The whole picture in 8-bit RGB, small enough to be looked at before the slide is opened: at most 256 pixels wide and
/// high.
CPicture ThumbnailOf(const CPicture& picture);

/// The picture of one frame at full size, from which the tiles of that frame are cut.
CPicture FrameOf(const CPicture& picture, const CSlideOptions& options, const CIndexes& at);

} // namespace SampleDocuments
