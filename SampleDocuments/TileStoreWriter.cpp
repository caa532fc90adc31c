#include "SampleDocuments/StoreHeaders.h"

#include <unistd.h>

namespace SampleDocuments
{

CTileStoreWriter::CTileStoreWriter(const std::filesystem::path& path, CStoreVolumeHeader header,
                                   const CStoreAdditionalHeader& additional)
    : _Path(path), _Header(std::move(header)), _Additional(additional),
      _End(SizeOfStoreVolumeHeader + SizeOfStoreAdditionalHeader)
{
    std::error_code error;
    if (path.has_parent_path())
        std::filesystem::create_directories(path.parent_path(), error);
    _File.reset(std::fopen(path.c_str(), "w+b"));
    if (!_File)
        throw CSampleError(path.string() + ": can't be made; check the folder and the rights");
}

CTileStoreWriter::~CTileStoreWriter()
{
    if (_IsFinished)
        return;
    _File.reset();
    std::error_code error;
    std::filesystem::remove(_Path, error);
}

void CTileStoreWriter::WriteAt(uint64_t offset, std::span<const uint8_t> bytes)
{
    if (bytes.empty())
        return;
    if (static_cast<uint64_t>(ftello(_File.get())) != offset)
        fseeko(_File.get(), static_cast<off_t>(offset), SEEK_SET);
    if (std::fwrite(bytes.data(), 1, bytes.size(), _File.get()) != bytes.size())
        throw CSampleError(_Path.string() + ": writing failed; is there room on disk?");
}

void CTileStoreWriter::AddRecord(std::span<const int32_t> elements, CBody body)
{
    if (_NumOfTiles > 0 && elements.size() != _NumOfElements)
        throw CSampleError(_Path.string() + ": all records of a store must have the same number of elements");
    _NumOfElements = elements.size();
    AppendRecord(_Records, static_cast<uint32_t>(elements.size()), elements, body.Offset, body.Size, 0);
    ++_NumOfTiles;
}

void CTileStoreWriter::Add(std::span<const int32_t> elements, std::span<const uint8_t> body)
{
    WriteAt(_End, body);
    AddRecord(elements, {_End, static_cast<uint32_t>(body.size())});
    _End += body.size();
}

void CTileStoreWriter::AddHole(std::span<const int32_t> elements, uint32_t size)
{
    AddRecord(elements, {_End, size});
    _End += size;
}

bool CTileStoreWriter::AddShared(std::span<const int32_t> elements, uint64_t key)
{
    const auto found = _Shared.find(key);
    if (found == _Shared.end())
        return false;
    AddRecord(elements, found->second);
    return true;
}

void CTileStoreWriter::AddKeyed(std::span<const int32_t> elements, uint64_t key, std::span<const uint8_t> body)
{
    _Shared[key] = {_End, static_cast<uint32_t>(body.size())};
    Add(elements, body);
}

bool CTileStoreWriter::AddCopy(std::span<const int32_t> elements, uint64_t key)
{
    const auto found = _Shared.find(key);
    if (found == _Shared.end())
        return false;
    ByteString body(found->second.Size);
    fseeko(_File.get(), static_cast<off_t>(found->second.Offset), SEEK_SET);
    if (std::fread(body.data(), 1, body.size(), _File.get()) != body.size())
        throw CSampleError(_Path.string() + ": reading back a tile failed");
    fseeko(_File.get(), static_cast<off_t>(_End), SEEK_SET);
    Add(elements, body);
    return true;
}

void CTileStoreWriter::Finish()
{
    const uint64_t chunkList = _End;
    WriteAt(chunkList, _Records);
    ByteString headers = BytesOf(_Header, _NumOfElements, chunkList, _NumOfTiles);
    Append(headers, std::span<const uint8_t>(BytesOf(_Additional)));
    WriteAt(0, headers);
    // Holes at the end of a store without records would leave the file shorter than it claims to be.
    const uint64_t size = chunkList + _Records.size();
    if (std::fflush(_File.get()) != 0 || ftruncate(fileno(_File.get()), static_cast<off_t>(size)) != 0)
        throw CSampleError(_Path.string() + ": writing failed; is there room on disk?");
    _File.reset();
    _IsFinished = true;
}

} // namespace SampleDocuments
