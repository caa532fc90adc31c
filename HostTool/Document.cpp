#include "HostTool/Document.h"

#include "HostTool/HostError.h"
#include "HostTool/Text.h"

#include <array>
#include <cerrno>
#include <charconv>
#include <cstring>

namespace HostTool
{

std::string TextOf(const CPosition& position)
{
    return "channel " + std::to_string(position.Channel) + ", z " + std::to_string(position.Z) + ", t " +
           std::to_string(position.T) + ", lambda " + std::to_string(position.Lambda);
}

CImage::CImage(const CDocument& document, AC_HIMAGE image)
    : _Document(document), _Handle(image, {document.Host().ReleaseImage.Address()})
{
}

CMN_RECT CImage::Size() const
{
    CMN_RECT rect{};
    _Document.Require(_Document.Host().GetImageSize(_Handle.get(), &rect), "cannot tell the size of a tile");
    return rect;
}

size_t CImage::ReadInto(ByteBuffer& buffer) const
{
    // The size is always asked for first: to a buffer that is too large the plug-in does not tell it for every tile.
    CMN_RECT whole{};
    UINT64 size = 0;
    const auto& read = _Document.Host().GetImageBody;
    _Document.Require(read(_Handle.get(), &whole, nullptr, 0, &size), "cannot read a tile");
    if (size > buffer.size())
        buffer.resize(size);
    UINT64 sizeRead = size;
    _Document.Require(read(_Handle.get(), &whole, buffer.data(), size, &sizeRead), "cannot read a tile");
    return size;
}

ByteBuffer CImage::Body() const
{
    ByteBuffer bytes;
    ReadInto(bytes); // which makes it as large as the image
    return bytes;
}

std::optional<uint64_t> CImage::BytesPerRawPixel() const
{
    // A part of an image is served of raw ones only, so asking for one pixel tells both.
    CMN_RECT onePixel{0, 0, 1, 1};
    UINT64 size = 0;
    if (_Document.Host().GetImageBody(_Handle.get(), &onePixel, nullptr, 0, &size) != AC_RESULT_SUCCESS)
        return std::nullopt;
    return size;
}

ByteBuffer CImage::JpegTables() const
{
    const CPluginHost& host = _Document.Host();
    AC_HPROPSET set = nullptr;
    if (host.GetFrameProperty(_Handle.get(), L"JpegTables", nullptr, &set) != AC_RESULT_SUCCESS)
        return {};
    AC_VALUE start{};
    AC_VALUE size{};
    int numOfValues = 0;
    // The tables are bytes: their type says text for want of a better one.
    if (host.GetPropertyValue(set, L"bufPtr", &start, 1, &numOfValues) != AC_RESULT_SUCCESS || numOfValues != 1 ||
        start.nType != AC_VT_STRING || !start.value.pszString ||
        host.GetPropertyValue(set, L"bufSize", &size, 1, &numOfValues) != AC_RESULT_SUCCESS || numOfValues != 1 ||
        size.nType != AC_VT_INTEGER || size.value.nInteger <= 0)
        return {};
    const auto* bytes = reinterpret_cast<const uint8_t*>(start.value.pszString);
    return {bytes, bytes + size.value.nInteger};
}

std::optional<double> CImage::AxisPosition(const wchar_t* axis) const
{
    std::wstring name = axis;
    AC_PARAM_ELEMENT element{L"axisName", name.data()};
    const AC_PARAMS parameters{1, &element};
    AC_HPROPSET set = nullptr;
    if (_Document.Host().GetFrameProperty(_Handle.get(), L"AxisPosition", &parameters, &set) != AC_RESULT_SUCCESS)
        return std::nullopt;
    return CPropertySet(_Document.Host(), set).Number(L"position");
}

CArea::CArea(const CDocument& document, AC_HAREA area)
    : _Document(document), _Handle(area, {document.Host().ReleaseArea.Address()})
{
}

CMN_RECT CArea::Position() const
{
    CMN_RECT rect{};
    _Document.Require(_Document.Host().GetAreaPosition(_Handle.get(), &rect), "cannot tell where an area lies");
    return rect;
}

AC_Result CArea::ImageAt(const CPosition& position, AC_HIMAGE& image) const
{
    std::array<AC_AXIS_INFO, 3> axes{
        {{AC_AT_Z, position.Z}, {AC_AT_TIME, position.T}, {AC_AT_LAMBDA, position.Lambda}}};
    return _Document.Host().GetImage(_Handle.get(), std::to_wstring(position.Channel).c_str(), axes.data(),
                                     static_cast<int>(axes.size()), &image);
}

Presence CArea::PresenceAt(const CPosition& position) const
{
    AC_HIMAGE image = nullptr;
    const AC_Result result = ImageAt(position, image);
    if (result == AC_RESULT_INVALID_PARAM)
        return Presence::NoSuchPlace;
    _Document.Require(result, "cannot find a tile");
    return image ? Presence::Stored : Presence::Absent;
}

std::optional<CImage> CArea::Image(const CPosition& position) const
{
    AC_HIMAGE image = nullptr;
    const AC_Result result = ImageAt(position, image);
    if (result == AC_RESULT_INVALID_PARAM)
        throw CHostError(ExitCode::WrongUsage, _Document.Path().string() + ": there is no " + TextOf(position) +
                                                   "; 'zel info' tells what there is");
    _Document.Require(result, "cannot find a tile");
    return image ? std::optional<CImage>(std::in_place, _Document, image) : std::nullopt;
}

std::optional<CPropertySet> CArea::Ask(const wchar_t* key, const AC_PARAMS* parameters, AC_Result* result) const
{
    AC_HPROPSET set = nullptr;
    const AC_Result answer = _Document.Host().GetAreaProperty(_Handle.get(), key, parameters, &set);
    if (result)
        *result = answer;
    if (answer != AC_RESULT_SUCCESS)
        return std::nullopt;
    return std::optional<CPropertySet>(std::in_place, _Document.Host(), set);
}

std::optional<CPropertySet> CArea::Properties(const wchar_t* key, AC_Result* result) const
{
    return Ask(key, nullptr, result);
}

std::optional<CPropertySet> CArea::Properties(const wchar_t* key, const wchar_t* parameter, std::wstring value,
                                              AC_Result* result) const
{
    AC_PARAM_ELEMENT element{parameter, value.data()};
    const AC_PARAMS parameters{1, &element};
    return Ask(key, &parameters, result);
}

std::vector<std::array<int, 3>> CArea::LookUpTable(uint32_t channel) const
{
    std::wstring name = std::to_wstring(channel);
    int size = 0;
    const auto& getLut = _Document.Host().GetLUT;
    if (getLut(_Handle.get(), name.data(), nullptr, nullptr, nullptr, 0, &size) != AC_RESULT_SUCCESS || size <= 0)
        return {};
    const auto count = static_cast<size_t>(size);
    std::vector<int> red(count);
    std::vector<int> green(count);
    std::vector<int> blue(count);
    if (getLut(_Handle.get(), name.data(), red.data(), green.data(), blue.data(), size, &size) != AC_RESULT_SUCCESS)
        return {};
    std::vector<std::array<int, 3>> table(count);
    for (size_t i = 0; i < count; ++i)
        table[i] = {red[i], green[i], blue[i]};
    return table;
}

CGroup::CGroup(const CDocument& document, int number, int handleNumber, AC_HGROUP group)
    : _Document(document), _Number(number), _HandleNumber(handleNumber),
      _Handle(group, {document.Host().ReleaseGroup.Address()})
{
}

std::string CGroup::Where(int level) const
{
    return "group " + std::to_string(_Number) + ", level " + std::to_string(level);
}

int CGroup::NumOfLevels() const
{
    int numOfLevels = 0;
    _Document.Require(_Document.Host().GetNumOfLevels(_Handle.get(), &numOfLevels),
                      "cannot tell the levels of group " + std::to_string(_Number));
    return numOfLevels;
}

std::optional<CMN_RECT> CGroup::LevelRect(int level) const
{
    CMN_RECT rect{};
    const AC_Result result = _Document.Host().GetLevelImageSize(_Handle.get(), level, &rect);
    if (result == AC_RESULT_PROPERTY_NOT_FOUND)
        return std::nullopt;
    _Document.Require(result, "cannot tell the size of " + Where(level));
    return rect;
}

std::optional<CMN_RECT> CGroup::PictureRect(int level) const
{
    std::wstring group = std::to_wstring(_HandleNumber);
    std::wstring levelText = std::to_wstring(level);
    std::array<AC_PARAM_ELEMENT, 2> parameters{{{L"groupId", group.data()}, {L"levelId", levelText.data()}}};
    const auto bytes = _Document.CustomData(L"CroppedLevelImageSize", parameters);
    std::array<int32_t, 4> numbers{};
    if (!bytes || bytes->size() != sizeof(numbers))
        return std::nullopt;
    std::memcpy(numbers.data(), bytes->data(), sizeof(numbers));
    for (const int32_t number : numbers)
        if (number < 0)
            return std::nullopt;
    return CMN_RECT{static_cast<UINT64>(numbers[0]), static_cast<UINT64>(numbers[1]), static_cast<UINT64>(numbers[2]),
                    static_cast<UINT64>(numbers[3])};
}

CGrid CGroup::Grid(int level) const
{
    INT32 numOfAreas = 0;
    _Document.Require(_Document.Host().GetNumOfArea(_Handle.get(), level, &numOfAreas),
                      "cannot tell the tile grid of " + Where(level));
    if (numOfAreas <= 0)
        return {};
    // The interface tells rows times columns only. Areas are numbered row by row, so the first one that lies lower than
    // area 0 is the number of columns.
    const UINT64 top = Area(level, 0).Position().y;
    uint64_t inFirstRow = 0;
    auto notInFirstRow = static_cast<uint64_t>(numOfAreas);
    while (notInFirstRow - inFirstRow > 1)
    {
        const uint64_t middle = inFirstRow + (notInFirstRow - inFirstRow) / 2;
        (Area(level, middle).Position().y == top ? inFirstRow : notInFirstRow) = middle;
    }
    return {notInFirstRow, static_cast<uint64_t>(numOfAreas) / notInFirstRow};
}

CArea CGroup::Area(int level, uint64_t areaID) const
{
    AC_HAREA area = nullptr;
    _Document.Require(_Document.Host().GetArea(_Handle.get(), level, areaID, &area),
                      "cannot find area " + std::to_string(areaID) + " of " + Where(level));
    return {_Document, area};
}

int CGroup::FirstLevel() const
{
    const int numOfLevels = NumOfLevels();
    int level = 0;
    while (level + 1 < numOfLevels && !LevelRect(level))
        ++level;
    return level;
}

CArea CGroup::FirstArea() const
{
    return Area(FirstLevel(), 0);
}

std::optional<std::string> CGroup::CustomText(std::wstring name, const AC_PARAM* parameters) const
{
    const auto& get = _Document.Host().GetGroupCustomData;
    UINT64 size = 0;
    if (get(_Handle.get(), name.data(), parameters, nullptr, 0, &size) != AC_RESULT_SUCCESS || size == 0)
        return std::nullopt;
    std::string text(size, '\0');
    if (get(_Handle.get(), name.data(), parameters, reinterpret_cast<BYTE*>(text.data()), size, &size) !=
        AC_RESULT_SUCCESS)
        return std::nullopt;
    return text;
}

std::optional<std::string> CGroup::DisplayProperty(std::wstring name) const
{
    return CustomText(std::move(name), nullptr);
}

std::optional<double> CGroup::ExposureTime(uint32_t channel) const
{
    std::wstring text = std::to_wstring(channel);
    AC_PARAM_ELEMENT element{L"channelId", text.data()};
    const AC_PARAM parameters{1, &element};
    const auto time = CustomText(L"ZEL_GroupExposureTime", &parameters);
    if (!time)
        return std::nullopt;
    const std::string number = time->substr(0, time->find('\0'));
    double value = 0;
    const auto [end, error] = std::from_chars(number.data(), number.data() + number.size(), value);
    const bool isNumber = error == std::errc() && end == number.data() + number.size();
    return isNumber ? std::optional(value) : std::nullopt;
}

CDocument::CDocument(const CPluginHost& host, const std::filesystem::path& path)
    : _Host(host), _Path(std::filesystem::absolute(path))
{
    AC_HIMG_DOC document = nullptr;
    // The format's rules refuse a name without a folder, so the plug-in always gets the whole one.
    Require(host.Open(ToWide(_Path.string()).c_str(), AC_OM_READ, &document), "cannot open");
    _Handle = CHandle(document, {host.Close.Address()});
}

CDocument::CDocument(const CPluginHost& host, std::filesystem::path path, AC_HIMG_DOC handle,
                     std::vector<CStackOfGroup> groups)
    : _Host(host), _Path(std::move(path)), _Handle(handle, {host.Close.Address()}), _Groups(std::move(groups))
{
}

bool CDocument::CanBeRead(int number) const
{
    return _Groups.empty() || !_Groups[static_cast<size_t>(number)].IsMissing;
}

int CDocument::HandleNumberOf(int number) const
{
    int before = 0;
    for (int other = 0; other < number; ++other)
        before += CanBeRead(other) ? 1 : 0;
    return before;
}

CHostError CDocument::MissingGroup(int number) const
{
    const std::string stack = std::to_string(_Groups[static_cast<size_t>(number)].StackID);
    return {ExitCode::MissingFile, _Path.string() + ": the tile store of stack " + stack + ", group " +
                                       std::to_string(number) + ", is missing; put the folder " +
                                       (SideFolderOf(_Path) / ("stack" + stack)).string() +
                                       " back beside the document"};
}

std::vector<int> CDocument::ReadableGroups() const
{
    std::vector<int> numbers;
    const int numOfGroups = NumOfGroups();
    for (int number = 0; number < numOfGroups; ++number)
        if (CanBeRead(number))
            numbers.push_back(number);
    return numbers;
}

std::vector<CHostError> CDocument::MissingGroups() const
{
    std::vector<CHostError> missing;
    for (size_t number = 0; number < _Groups.size(); ++number)
        if (_Groups[number].IsMissing)
            missing.push_back(MissingGroup(static_cast<int>(number)));
    return missing;
}

int CDocument::NumOfGroups() const
{
    if (!_Groups.empty())
        return static_cast<int>(_Groups.size());
    INT32 numOfGroups = 0;
    Require(_Host.GetNumOfGroups(_Handle.get(), &numOfGroups), "cannot tell the groups");
    return numOfGroups;
}

CGroup CDocument::Group(int number) const
{
    if (number >= 0 && static_cast<size_t>(number) < _Groups.size() && !CanBeRead(number))
        throw MissingGroup(number);
    AC_HGROUP group = nullptr;
    const int handleNumber = HandleNumberOf(number);
    Require(_Host.GetGroup(_Handle.get(), handleNumber, &group), "cannot find group " + std::to_string(number));
    return {*this, number, handleNumber, group};
}

std::optional<std::string> CDocument::FormatVersion() const
{
    CMN_VERSION_INFO version{};
    if (_Host.GetFileVersion(_Handle.get(), &version) != AC_RESULT_SUCCESS)
        return std::nullopt;
    std::string text = std::to_string(version.product.unMajor) + "." + std::to_string(version.product.unMinor);
    if (version.base.unMajor != 0 || version.base.unMinor != 0)
        text = std::to_string(version.base.unMajor) + "." + std::to_string(version.base.unMinor) + "." + text;
    return text;
}

std::optional<ByteBuffer> CDocument::CustomData(std::wstring key, std::span<AC_PARAM_ELEMENT> parameters) const
{
    const AC_PARAMS list{static_cast<INT32>(parameters.size()), parameters.data()};
    UINT64 size = 0;
    if (_Host.GetCustomData(_Handle.get(), key.data(), &list, nullptr, 0, &size) != AC_RESULT_SUCCESS)
        return std::nullopt;
    ByteBuffer bytes(size);
    if (_Host.GetCustomData(_Handle.get(), key.data(), &list, bytes.data(), bytes.size(), &size) != AC_RESULT_SUCCESS)
        return std::nullopt;
    return bytes;
}

std::optional<ByteBuffer> CDocument::Thumbnail() const
{
    UINT size = 0;
    const AC_Result result = _Host.GetThumbnailData(_Handle.get(), nullptr, 0, &size);
    if (result == AC_RESULT_PROPERTY_NOT_FOUND)
        return std::nullopt;
    Require(result, "cannot read the thumbnail");
    ByteBuffer bytes(size);
    Require(_Host.GetThumbnailData(_Handle.get(), bytes.data(), size, &size), "cannot read the thumbnail");
    return bytes;
}

std::optional<ByteBuffer> CDocument::Overview() const
{
    auto bytes = CustomData(L"SlideImage", {});
    return bytes && !bytes->empty() ? std::move(bytes) : std::nullopt;
}

void CDocument::Require(AC_Result result, const std::string& what) const
{
    const int reason = errno;
    if (result != AC_RESULT_SUCCESS)
        throw FailedCall(_Path, what, result, reason);
}

} // namespace HostTool
