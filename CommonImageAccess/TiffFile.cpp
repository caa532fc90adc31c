#include "CommonImageAccess/TiffFile.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <limits>
#include <unistd.h>
#include <utility>

namespace CIA
{

namespace
{

/// After the end of any file, so that what stands there hides nothing.
constexpr uint64_t OffsetOfDirectoryShown = uint64_t{1} << 62;
/// libtiff looks for the subsampling in the first JPEG stream of a directory, if need be to its end. The frame header
/// comes before it has read as much: long segments are skipped.
constexpr uint64_t SizeOfJpegLookedAt = 16 << 10;
/// Where strips of old JPEG lie is read twice.
constexpr uint64_t NumOfTimesThatValuesAreRead = 2;

} // namespace

CTiffFile::CTiffFile(const std::wstring& name) : _file(OpenFileToRead(name))
{
    struct stat status = {};
    if (_file && fstat(fileno(_file.get()), &status) != 0)
        _file.reset();
    _size = static_cast<uint64_t>(std::max<off_t>(status.st_size, 0));
}

TIFF* CTiffFile::OpenAsTiff(std::unique_ptr<CTiffFile>& file, const std::string& name, const char* mode,
                            TIFFOpenOptions* options)
{
    const std::string modeOfHeaderOnly = std::string(mode) + 'h';
    TIFF* tif = TIFFClientOpenExt(name.c_str(), modeOfHeaderOnly.c_str(), file.get(), ReadProc, WriteProc, SeekProc,
                                  CloseProc, SizeProc, nullptr, nullptr, options);
    if (tif)
        static_cast<void>(file.release()); // CloseProc has it now
    return tif;
}

CTiffFile& CTiffFile::Of(TIFF* tif)
{
    return *static_cast<CTiffFile*>(TIFFClientdata(tif));
}

CTiffChain& CTiffFile::Chain()
{
    if (!_chain)
        _chain.emplace(*this);
    return *_chain;
}

bool CTiffFile::GoToDirectory(TIFF* tif, CDirectoryForLibtiff directory)
{
    _directoryShown = std::move(directory.Bytes);
    _numOfBytesForValues = NumOfTimesThatValuesAreRead * directory.SizeOfValues + SizeOfJpegLookedAt;
    // One offset for all of them: at one that it does not know libtiff follows the chain of the file.
    const int isRead = TIFFSetSubDirectory(tif, OffsetOfDirectoryShown);
    _directoryShown.clear();
    _numOfBytesForValues.reset();
    return isRead == 1;
}

uint64_t CTiffFile::Read(unsigned char* bytes, uint64_t size)
{
    if (_offset >= OffsetOfDirectoryShown && !_directoryShown.empty())
        return ReadDirectoryShown(bytes, size);
    const uint64_t numOfBytes = ReadAt(_offset, bytes, std::min(size, _numOfBytesForValues.value_or(size)));
    if (_numOfBytesForValues)
        *_numOfBytesForValues -= numOfBytes;
    _offset += numOfBytes;
    return numOfBytes;
}

uint64_t CTiffFile::ReadDirectoryShown(unsigned char* bytes, uint64_t size)
{
    const uint64_t begin = std::min<uint64_t>(_offset - OffsetOfDirectoryShown, _directoryShown.size());
    const uint64_t numOfBytes = std::min(size, _directoryShown.size() - begin);
    std::memcpy(bytes, _directoryShown.data() + begin, numOfBytes);
    if (begin + numOfBytes == _directoryShown.size())
        _directoryShown.clear(); // values that claim to lie there as well do not
    _offset += numOfBytes;
    return numOfBytes;
}

uint64_t CTiffFile::ReadAt(uint64_t offset, unsigned char* bytes, uint64_t size)
{
    const uint64_t wanted = offset < _size ? std::min(size, _size - offset) : 0;
    uint64_t numOfBytes = 0;
    while (numOfBytes < wanted)
    {
        const ssize_t numOfBytesRead = pread(fileno(_file.get()), bytes + numOfBytes, wanted - numOfBytes,
                                             static_cast<off_t>(offset + numOfBytes));
        if (numOfBytesRead > 0)
            numOfBytes += static_cast<uint64_t>(numOfBytesRead);
        else if (numOfBytesRead == 0 || errno != EINTR)
            break;
    }
    _hasFailed = _hasFailed || numOfBytes < wanted || (wanted < size && HasOtherSizeNow());
    return numOfBytes;
}

bool CTiffFile::HasOtherSizeNow() const
{
    struct stat status = {};
    return fstat(fileno(_file.get()), &status) != 0 || static_cast<uint64_t>(status.st_size) != _size;
}

tmsize_t CTiffFile::ReadProc(thandle_t file, void* bytes, tmsize_t size)
{
    if (size < 0)
        return 0;
    // Never -1: libtiff 4.5 adds what it got to where it goes on, and would clear a byte before its buffer.
    return static_cast<tmsize_t>(
        static_cast<CTiffFile*>(file)->Read(static_cast<unsigned char*>(bytes), static_cast<uint64_t>(size)));
}

tmsize_t CTiffFile::WriteProc(thandle_t, void*, tmsize_t)
{
    return -1;
}

toff_t CTiffFile::SeekProc(thandle_t file, toff_t offset, int whence)
{
    constexpr toff_t Failed = ~toff_t{0};
    CTiffFile& self = *static_cast<CTiffFile*>(file);
    if (whence == SEEK_CUR)
        offset += self._offset;
    else if (whence == SEEK_END)
        offset += self._size;
    if (offset > static_cast<toff_t>(std::numeric_limits<off_t>::max()))
        return Failed;
    return self._offset = offset;
}

int CTiffFile::CloseProc(thandle_t file)
{
    const std::unique_ptr<CTiffFile> self(static_cast<CTiffFile*>(file));
    return 0;
}

toff_t CTiffFile::SizeProc(thandle_t file)
{
    return static_cast<CTiffFile*>(file)->_size;
}

} // namespace CIA
