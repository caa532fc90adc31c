#include "HostTool/Export/TiffWriter.h"

#include "HostTool/Export/TiffFields.h"

#include <array>
#include <cmath>
#include <cstring>

namespace HostTool
{

namespace
{

constexpr uint64_t BytesOfHeader = 16; // of a BigTIFF file; in a classic one the second half is not looked at
constexpr size_t BytesOfBuffer = size_t{4} << 20;

enum FieldType : uint16_t
{
    Ascii = 2,
    Short = 3,
    Long = 4,
    Rational = 5,
    Undefined = 7,
    Ifd = 13,
    Long8 = 16,
    Ifd8 = 18
};

struct CEncodedField
{
    uint16_t Type = 0;
    uint64_t Count = 0;
    std::vector<uint8_t> Bytes;
};

// The machine is little-endian, as are the files.
template <typename Number>
void Put(std::vector<uint8_t>& bytes, Number number)
{
    const auto* start = reinterpret_cast<const uint8_t*>(&number);
    bytes.insert(bytes.end(), start, start + sizeof(number));
}

template <typename Number>
CEncodedField Encoded(FieldType type, const std::vector<Number>& numbers)
{
    CEncodedField field{type, numbers.size(), {}};
    field.Bytes.resize(numbers.size() * sizeof(Number));
    std::memcpy(field.Bytes.data(), numbers.data(), field.Bytes.size());
    return field;
}

struct CEncode
{
    bool IsBig;

    CEncodedField operator()(const std::vector<uint16_t>& numbers) const { return Encoded(Short, numbers); }
    CEncodedField operator()(const std::vector<uint32_t>& numbers) const { return Encoded(Long, numbers); }
    CEncodedField operator()(const std::vector<uint8_t>& bytes) const { return Encoded(Undefined, bytes); }
    CEncodedField operator()(const CTiffOffsets& offsets) const
    {
        return IsBig ? Encoded(Long8, offsets.Values)
                     : Encoded(Long, std::vector<uint32_t>(offsets.Values.begin(), offsets.Values.end()));
    }
    CEncodedField operator()(const CTiffRational& number) const
    {
        CEncodedField field = Encoded(Rational, std::vector<uint32_t>{number.Numerator, number.Denominator});
        field.Count = 1;
        return field;
    }
    CEncodedField operator()(const std::string& text) const
    {
        CEncodedField field{Ascii, text.size() + 1, {text.begin(), text.end()}};
        field.Bytes.push_back(0);
        return field;
    }
};

/// No less than what a directory takes in a BigTIFF file.
uint64_t MostBytesOf(const CTiffDirectory& directory)
{
    uint64_t bytes = 64;
    for (const auto& [tag, value] : directory.Fields())
        bytes += 32 + std::visit(CEncode{true}, value).Bytes.size();
    for (const CTiffDirectory& child : directory.Children)
        bytes += 16 + MostBytesOf(child);
    return bytes;
}

} // namespace

/// One directory as bytes, for the place where it will stand.
class CTiffWriter::CEncoder
{
public:
    CEncoder(bool isBig, uint64_t place) : _IsBig(isBig), _Place(place) {}

    void Add(uint16_t tag, const CEncodedField& field)
    {
        Put(_Entries, tag);
        Put(_Entries, field.Type);
        PutSize(_Entries, field.Count);
        const size_t room = _IsBig ? 8 : 4;
        std::vector<uint8_t> inPlace = field.Bytes;
        if (inPlace.size() > room)
        {
            inPlace.clear();
            Put(inPlace, _Place + _Values.size());
            _Values.insert(_Values.end(), field.Bytes.begin(), field.Bytes.end());
            _Values.resize((_Values.size() + 7) / 8 * 8);
        }
        inPlace.resize(room); // an offset is little-endian: its first bytes are all that a classic file holds
        _Entries.insert(_Entries.end(), inPlace.begin(), inPlace.end());
        ++_NumOfEntries;
    }
    /// The place of the directory itself, behind its values.
    uint64_t Place() const { return _Place + _Values.size(); }
    std::vector<uint8_t> Finish(uint64_t next) &&
    {
        if (_IsBig)
            Put(_Values, _NumOfEntries);
        else
            Put(_Values, static_cast<uint16_t>(_NumOfEntries));
        _Values.insert(_Values.end(), _Entries.begin(), _Entries.end());
        PutSize(_Values, next);
        return std::move(_Values);
    }

private:
    void PutSize(std::vector<uint8_t>& bytes, uint64_t number) const
    {
        if (_IsBig)
            Put(bytes, number);
        else
            Put(bytes, static_cast<uint32_t>(number));
    }

    bool _IsBig;
    uint64_t _Place;
    std::vector<uint8_t> _Values;
    std::vector<uint8_t> _Entries;
    uint64_t _NumOfEntries = 0;
};

CTiffRational RationalOf(double number)
{
    if (!(number > 0) || number > 4e9)
        return {};
    uint32_t denominator = 1;
    while (denominator < 1000000 && number * denominator * 10 < 4e9)
        denominator *= 10;
    return {static_cast<uint32_t>(std::llround(number * denominator)), denominator};
}

CTiffWriter::CTiffWriter(const std::filesystem::path& path, bool isBig)
    : _File(path, WritingOrder::BeginningLast), _IsBig(isBig)
{
    _Gathered.reserve(BytesOfBuffer);
    _BeingWritten.reserve(BytesOfBuffer);
    Write(std::vector<uint8_t>(BytesOfHeader));
}

CTiffWriter::~CTiffWriter()
{
    if (_Writing.valid())
        _Writing.wait();
}

void CTiffWriter::Write(std::span<const uint8_t> bytes)
{
    _Size += bytes.size();
    if (_Gathered.size() + bytes.size() > BytesOfBuffer)
        Flush();
    if (bytes.size() < BytesOfBuffer / 4)
    {
        _Gathered.insert(_Gathered.end(), bytes.begin(), bytes.end());
        return;
    }
    // What is large costs more to be copied than it gains by being gathered.
    Flush();
    WaitForWriting();
    _File.Write(bytes);
}

void CTiffWriter::WaitForWriting()
{
    if (_Writing.valid())
        _Writing.get();
}

void CTiffWriter::Flush()
{
    if (_Gathered.empty())
        return;
    WaitForWriting();
    std::swap(_Gathered, _BeingWritten);
    _Gathered.clear();
    _Writing = std::async(std::launch::async, [this] { _File.Write(_BeingWritten); });
}

uint64_t CTiffWriter::Append(std::span<const uint8_t> bytes)
{
    constexpr std::array<uint8_t, 1> padding{};
    if (_Size % 2 != 0)
        Write(padding); // readers may ask for even places
    const uint64_t place = _Size;
    Write(bytes);
    return place;
}

uint64_t CTiffWriter::WriteDirectory(const CTiffDirectory& directory, uint64_t next)
{
    CTiffOffsets children;
    for (const CTiffDirectory& child : directory.Children)
        children.Values.push_back(WriteDirectory(child, 0));
    Append(std::vector<uint8_t>((8 - _Size % 8) % 8));
    auto fields = directory.Fields();
    if (!children.Values.empty())
        fields[TiffTag::SubIfds] = children;
    CEncoder encoder(_IsBig, _Size);
    for (const auto& [tag, value] : fields)
    {
        CEncodedField field = std::visit(CEncode{_IsBig}, value);
        if (tag == TiffTag::SubIfds)
            field.Type = _IsBig ? Ifd8 : Ifd;
        encoder.Add(tag, field);
    }
    const uint64_t place = encoder.Place();
    Write(std::move(encoder).Finish(next));
    return place;
}

std::vector<uint64_t> CTiffWriter::Complete(const std::vector<CTiffDirectory>& directories)
{
    uint64_t mostBytes = _Size;
    for (const CTiffDirectory& directory : directories)
        mostBytes += MostBytesOf(directory);
    _IsBig = _IsBig || mostBytes > 0xFFFFFFFFU;
    // From the last one on, as each has to know where the next one is.
    std::vector<uint64_t> places(directories.size());
    uint64_t next = 0;
    for (size_t i = directories.size(); i-- > 0;)
        next = places[i] = WriteDirectory(directories[i], next);

    std::vector<uint8_t> header = {'I', 'I'};
    Put(header, uint16_t{_IsBig ? uint16_t{43} : uint16_t{42}});
    if (_IsBig)
    {
        Put(header, uint16_t{8});
        Put(header, uint16_t{0});
        Put(header, next);
    }
    else
    {
        Put(header, static_cast<uint32_t>(next));
    }
    Flush();
    WaitForWriting();
    std::fseek(_File.Stream(), 0, SEEK_SET);
    _File.Write(header);
    _File.Complete();
    return places;
}

} // namespace HostTool
