#pragma once

#include "HostTool/ByteBuffer.h"
#include "HostTool/HostError.h"
#include "HostTool/PropertySet.h"

#include <array>
#include <span>

namespace HostTool
{

/// Where an image stands among those of one area.
struct CPosition
{
    uint32_t Channel = 0;
    int64_t Z = 0;
    int64_t T = 0;
    int64_t Lambda = 0;
};

/// "channel 0, z 3, t 0, lambda 0"
std::string TextOf(const CPosition& position);

/// Whether there is an image at a position of an area, and whether there could be one.
enum class Presence
{
    Stored,     ///< there is one
    Absent,     ///< the position is a valid one, nothing is stored there
    NoSuchPlace ///< the group has no such channel or position
};

/// The tile grid of a level. Columns and rows are counted from 0, from the upper left tile that exists.
struct CGrid
{
    uint64_t Cols = 0;
    uint64_t Rows = 0;
    uint64_t AreaID(uint64_t col, uint64_t row) const { return row * Cols + col; }
    bool operator==(const CGrid&) const = default;
};

class CDocument;

/// One stored tile. Valid as long as its document is open.
class CImage
{
public:
    CImage(const CDocument& document, AC_HIMAGE image);

    /// The rectangle, in pixels of its level.
    CMN_RECT Size() const;
    /// All its bytes as they are stored. Throws CHostError if they can't be read.
    ByteBuffer Body() const;
    /// The same into a buffer that serves many tiles and grows where it must; answers the number of bytes.
    size_t ReadInto(ByteBuffer& buffer) const;
    /// Bytes of one pixel if the image is raw; nothing if it is compressed.
    std::optional<uint64_t> BytesPerRawPixel() const;
    /// The tables that its JPEG stream keeps apart, as a stream of their own; empty if there are none.
    ByteBuffer JpegTables() const;
    /// Where the image lies on an axis ("ZSTACK", "TIMELAPSE" in ms, "LAMBDA"); nothing if the group has no such axis.
    std::optional<double> AxisPosition(const wchar_t* axis) const;

private:
    const CDocument& _Document;
    CHandle _Handle;
};

/// One position in the tile grid of a level. Valid as long as its document is open.
class CArea
{
public:
    CArea(const CDocument& document, AC_HAREA area);

    CMN_RECT Position() const;
    /// Throws CHostError for a failure that is none of the three.
    Presence PresenceAt(const CPosition& position) const;
    /// The image, or nothing if none is stored there. Throws CHostError if the group has no such position.
    std::optional<CImage> Image(const CPosition& position) const;

    /// A property set of the area, its level, its group or its document. Nothing if the document doesn't tell, or the
    /// plug-in doesn't serve the key. `result` gets what the plug-in answered.
    std::optional<CPropertySet> Properties(const wchar_t* key, AC_Result* result = nullptr) const;
    std::optional<CPropertySet> Properties(const wchar_t* key, const wchar_t* parameter, std::wstring value,
                                           AC_Result* result = nullptr) const;
    /// The colours that the values of a grey channel are shown in, red, green and blue from 0 to 255; empty if it has
    /// none.
    std::vector<std::array<int, 3>> LookUpTable(uint32_t channel) const;

private:
    AC_Result ImageAt(const CPosition& position, AC_HIMAGE& image) const;
    std::optional<CPropertySet> Ask(const wchar_t* key, const AC_PARAMS* parameters, AC_Result* result) const;

    const CDocument& _Document;
    CHandle _Handle;
};

/// One image of the document with its pyramid. Valid as long as its document is open.
class CGroup
{
public:
    /// `handleNumber` is the number that the handle's own document gives the group.
    CGroup(const CDocument& document, int number, int handleNumber, AC_HGROUP group);

    int Number() const { return _Number; }
    int NumOfLevels() const;
    /// The rectangle of a level's whole tiles; nothing if the document has no data for this level.
    std::optional<CMN_RECT> LevelRect(int level) const;
    /// The picture within LevelRect, without the parts of the edge tiles beyond it; nothing if the plug-in doesn't
    /// tell.
    std::optional<CMN_RECT> PictureRect(int level) const;
    CGrid Grid(int level) const;
    CArea Area(int level, uint64_t areaID) const;
    /// The finest level that has data.
    int FirstLevel() const;
    /// The first area of the finest level that has data: the one to be asked for properties of the group or document.
    CArea FirstArea() const;
    /// One display property of the group, as L"ZEL_GroupFrameOrigin"; nothing if the document doesn't tell.
    std::optional<std::string> DisplayProperty(std::wstring name) const;
    /// The exposure time of a channel in microseconds; nothing if the plug-in doesn't know it.
    std::optional<double> ExposureTime(uint32_t channel) const;

private:
    std::string Where(int level) const;
    std::optional<std::string> CustomText(std::wstring name, const AC_PARAM* parameters) const;

    const CDocument& _Document;
    int _Number;
    int _HandleNumber;
    CHandle _Handle;
};

/// The stack that a group shows, and whether its tile store is missing.
struct CStackOfGroup
{
    uint32_t StackID = 0;
    bool IsMissing = false;
};

/// An opened document; closed at the end of its scope.
class CDocument
{
public:
    /// Throws CHostError if it can't be opened.
    CDocument(const CPluginHost& host, const std::filesystem::path& path);

    /// Takes a handle that `host` opened, of a document of which only some groups can be read.
    CDocument(const CPluginHost& host, std::filesystem::path path, AC_HIMG_DOC handle,
              std::vector<CStackOfGroup> groups);

    const std::filesystem::path& Path() const { return _Path; }
    /// With those that can't be read.
    int NumOfGroups() const;
    /// The numbers of the groups that can be read: usually all.
    std::vector<int> ReadableGroups() const;
    /// What is to be said of the others: that their tile store is missing.
    std::vector<CHostError> MissingGroups() const;
    /// Throws CHostError if there is no such group, or it can't be read.
    CGroup Group(int number) const;
    /// The version of its format, as "2.1"; nothing if the plug-in doesn't tell.
    std::optional<std::string> FormatVersion() const;
    /// One item of custom data; nothing if the plug-in doesn't serve it.
    std::optional<ByteBuffer> CustomData(std::wstring key, std::span<AC_PARAM_ELEMENT> parameters) const;
    /// The thumbnail as a BMP file; nothing if there is none. Throws CHostError for a failure of another kind.
    std::optional<ByteBuffer> Thumbnail() const;
    /// The picture of the whole slide, as it is stored; nothing if there is none.
    std::optional<ByteBuffer> Overview() const;

    const CPluginHost& Host() const { return _Host; }
    /// Throws CHostError, saying what was being done, unless `result` is a success.
    void Require(AC_Result result, const std::string& what) const;

private:
    bool CanBeRead(int number) const;
    CHostError MissingGroup(int number) const;
    int HandleNumberOf(int number) const;

    const CPluginHost& _Host;
    std::filesystem::path _Path;
    CHandle _Handle;
    std::vector<CStackOfGroup> _Groups; ///< empty: all can be read
};

} // namespace HostTool
