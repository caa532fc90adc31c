#pragma once

#include "SampleDocuments/Bitmap.h"
#include "SampleDocuments/DocumentFile.h"
#include "SampleDocuments/Regions.h"
#include "SampleDocuments/Stack.h"

/// The writer of sample documents: slides and stacks as the microscope software leaves them, or with any kind of
/// damage. It shares no code with the reader, so that a mistake in one shows in the other.
///
/// A slide that a test can be read from:
///
///     using namespace SampleDocuments;
///
///     auto stack = Stack(1).Size(1000, 400).Tiles(256, 256).Level(0, Columns(-1, 3), Rows(0, 1))
///                          .Z(3).Channels({"DAPI", "FITC"}).Raw(ComponentType::Uint16);
///     auto slide = Document().With(stack).WriteTo(folder / "slide.zel");    // and _slide_/stack1/frame_t.kor
///     EXPECT_EQ(BytesRead, stack.TileBytes(0, -1, 1, {.Z = 2, .C = 1}));
///
/// Damage is done by name, before the document is written:
///
///     Document document;
///     document.With(Stack(1).Z(2));
///     document.Volume({2000, 2001, 2003}).Value(...);              // any field, by the tags on the way to it
///     document.Volume({2000, Nth(2001, 0)}).Drop(2005);            // without its properties
///     document.Frame(1, 1).Put(Volume(2018));                      // another tile store node in the second frame
///     document.Volume({2000}).OffsetOfFirstChild(document.Bytes());
///     document.Store(1).Header.NumberOfUsedChunks = 7;
///     document.Store(1).Tile({0, 0, 1, 0}).Size = 1u << 31;
///     document.WriteTo(folder / "damaged.zel");
///
/// What a host can ask of it besides pixels:
///
///     Document()
///         .With(Stack(1)
///                   .Channels({CChannel("DAPI", 0, 4096).With(Camera(300)), "FITC"})
///                   .Lens({.Name = "UPlan 20x", .Magnification = 20, .WorkingDistance = CMeasured(0.6, "10^-3m^1"),
///                          .ImmersionMedium = Immersion::Oil})
///                   .ChannelDevice(1, Revolver({.Aperture = 0.75}))
///                   .Exposure(1200)
///                   .FrameDevice(0, Camera({}, 12))
///                   .Stage(1500.5, -20).Experiment("growth").Sample("leaf", "third from the top")
///                   .LookUpTable(Ramp(256, {255, 0, 0})).StackLimits(10, 200)
///                   .Operator(3).Transparency(0.5)
///                   .LayerBlob(Regions({Rectangle("cell", {10, 20}, {30, 40})}))
///                   .Overview(EncodeJpeg(picture, 85)))
///         .FileBlob(Regions({Dot("spot", {5, 5})}).AsTree())
///         .Thumbnail(picture, {.Bits = 4})
///         .FirstDirectory(picture, FirstDirectoryKind::Jpeg);
///
/// Malformed, by name: the tags are those of Tag, the edits those of CNode.
///
///     document.StackProperties(1).Drop(Tag::StackName);
///     document.StackDevice(1, 0).Drop(Tag::Aperture);
///     document.StackProperties(1).Child(Tag::FrameOrigin).Length(8);            // one double where two are read
///
/// Stacks of millions of tiles are streamed: only the stores that were touched by Store() are made in memory.
///
///     Document().With(Stack(1).Size(256000, 256000).Tiles(256, 256).Jpeg().Contents(Holes(20480))).WriteTo(...)
namespace SampleDocuments
{

/// What a document tells about itself. What is not set is not written.
struct CDocumentProperties
{
    std::optional<std::string> Note = "Made by the sample writer";
    std::optional<int64_t> CreationTime = 1577836800;
    std::optional<int64_t> LastSavedTime = 1577840400;
    std::optional<std::string> Author = "Sample author";
    std::optional<std::string> CreatorName = "Sample writer";
    std::optional<std::string> ProductName = "Sample microscope";
    std::optional<std::string> ProductVersion = "1.0";
    std::optional<std::string> FamilyId = {};
    std::optional<int32_t> CreatorMajorVersion = 1;
    std::optional<int32_t> CreatorMinorVersion = 2;
    std::optional<int32_t> CreatorSubVersion = 3;
    std::optional<int32_t> CreatorBuildNumber = 4;
};

/// What a picture in the first directory is like.
struct FirstDirectoryKind
{
    enum E
    {
        Raw, ///< one uncompressed strip
        Jpeg ///< one strip that is a whole JPEG file
    };
};

/// A first directory that holds the picture in 8 bits.
CTiffDirectory FirstDirectoryOf(const CPicture& picture, FirstDirectoryKind::E kind);

/// A document: stacks, and all that stands around them in the tree. A plain value.
///
/// It is described first (With and the calls beside it) and edited then: the first call of a handle makes the tree,
/// and from then on the calls that describe throw CSampleError.
class Document
{
public:
    // Description.
    Document& With(Stack stack);
    Document& VersionNumber(std::vector<uint32_t> numbers); ///< {1, 1} if not called
    Document& Properties(CDocumentProperties properties);
    Document& WithoutProperties();
    Document& WithoutDisplayFlow();
    Document& DisplayOrder(std::vector<uint32_t> stackIds);  ///< that of the stacks if not called
    Document& Layers(DisplayLayers layers);                  ///< the display flow in all detail; wins over the stacks
    Document& Thumbnail(ByteString bitmapWithoutFileHeader); ///< of the newer layout
    Document& OldThumbnail(ByteString bitmapWithoutFileHeader);
    Document& Thumbnail(const CPicture& picture, const CBitmapOptions& options = {});
    Document& OldThumbnail(const CPicture& picture, const CBitmapOptions& options = {});
    Document& FileBlob(CNode blob); ///< of the whole document; several in the order of the calls
    Document& PersistentId(std::string id);
    Document& FirstDirectory(CTiffDirectory directory); ///< a small RGB picture if not called
    Document& FirstDirectory(const CPicture& picture, FirstDirectoryKind::E kind);
    Document& WithoutFirstDirectory();

    // Handles. References hold until a sibling comes or goes.
    CNode& Root() { return File().Root; }
    CNode& Volume(const Path& path) { return Root().At(path); } ///< any node, volume or not, by the tags on the way
    CNode& StackVolume(uint32_t stackId);                       ///< the node with tag 2001
    CNode& StackProperties(uint32_t stackId);                   ///< 2005 in it
    CNode& Frame(uint32_t stackId, size_t n = 0);               ///< its nth 2002, in the order of the file
    CNode& DimensionVolume(uint32_t stackId, size_t n);         ///< its nth 2007
    CNode& ChannelVolume(uint32_t stackId, size_t n);           ///< the nth 2008 of its channel dimension
    CNode& DisplayLayer(size_t n);                              ///< the nth 2012
    CNode& DocumentProperties();                                ///< 2109
    /// The properties (120114) of the nth device of a stack, of one of its channels, of one of its frames.
    CNode& StackDevice(uint32_t stackId, size_t n = 0);
    CNode& ChannelDevice(uint32_t stackId, size_t channel, size_t n = 0);
    CNode& FrameDevice(uint32_t stackId, size_t frame, size_t n = 0);
    CTileStore& Store(uint32_t stackId);                      ///< made in memory by the first call
    std::vector<CTiffDirectory>& TiffStore(uint32_t stackId); ///< the same for a TIFF store, written by hand then
    CDocumentFile& File();                                    ///< header, root, TIFF directories, tail
    const Stack& StackOf(uint32_t stackId) const;
    const std::vector<Stack>& Stacks() const { return _Stacks; }

    // Numbers that damage is made of.
    size_t Bytes();                                  ///< the size of the document file as it stands
    uint64_t OffsetOf(const Path& path);             ///< absolute, of the field header; 8 for the root
    uint64_t OffsetOfVolumeHeader(const Path& path); ///< absolute
    /// What a field in the volume at `from` has to say to point at the field at `to`.
    uint32_t OffsetWithin(const Path& from, const Path& to);

    /// The document file's bytes, without side folder.
    ByteString ToBytes();
    /// Writes the document and the stores of its stacks, in _name_/stack<ID>/ beside it. Answers the path.
    std::filesystem::path WriteTo(const std::filesystem::path& path);
    /// The file of a stack's store, for a document at that path.
    std::filesystem::path StorePath(const std::filesystem::path& document, uint32_t stackId) const;

private:
    void ThrowIfBuilt() const;
    CNode DisplayFlow() const;
    CNode PropertySet() const;
    CNode OldProperties() const;
    void AddStacks(CNode& collection, std::vector<CTiffDirectory>& directories) const;
    void WriteStore(const Stack& stack, const std::filesystem::path& path) const;

    std::vector<Stack> _Stacks;
    std::vector<uint32_t> _VersionNumber = {1, 1};
    std::optional<CDocumentProperties> _Properties = CDocumentProperties();
    bool _HasDisplayFlow = true;
    std::optional<std::vector<uint32_t>> _DisplayOrder;
    std::optional<DisplayLayers> _Layers;
    std::vector<CNode> _FileBlobs;
    std::optional<ByteString> _Thumbnail;
    std::optional<ByteString> _OldThumbnail;
    std::optional<std::string> _PersistentId;
    std::optional<CTiffDirectory> _FirstDirectory;
    bool _HasFirstDirectory = true;
    std::optional<CDocumentFile> _File;
    std::map<uint32_t, CTileStore> _Stores;
    std::map<uint32_t, std::vector<CTiffDirectory>> _TiffStores;
};

} // namespace SampleDocuments
