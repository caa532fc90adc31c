#include "CommonImageAccess/TiffFile.h"

#include <algorithm>
#include <cerrno>
#include <limits>
#include <unistd.h>

namespace CIA
{

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
    TIFF* tif = TIFFClientOpenExt(name.c_str(), mode, file.get(), ReadProc, WriteProc, SeekProc, CloseProc, SizeProc,
                                  nullptr, nullptr, options);
    if (tif)
        static_cast<void>(file.release()); // CloseProc has it now
    return tif;
}

CTiffFile& CTiffFile::Of(TIFF* tif)
{
    return *static_cast<CTiffFile*>(TIFFClientdata(tif));
}

tmsize_t CTiffFile::Read(unsigned char* bytes, uint64_t size)
{
    const uint64_t wanted = _offset < _size ? std::min(size, _size - _offset) : 0;
    uint64_t numOfBytes = 0;
    while (numOfBytes < wanted)
    {
        const ssize_t numOfBytesRead = pread(fileno(_file.get()), bytes + numOfBytes, wanted - numOfBytes,
                                             static_cast<off_t>(_offset + numOfBytes));
        if (numOfBytesRead > 0)
            numOfBytes += static_cast<uint64_t>(numOfBytesRead);
        else if (numOfBytesRead == 0 || errno != EINTR)
            break;
    }
    _offset += numOfBytes;
    _numOfBytesRead += numOfBytes;
    _hasFailed = _hasFailed || numOfBytes < wanted || (wanted < size && HasOtherSizeNow());
    // Never -1: libtiff 4.5 adds what it got to where it goes on, and would clear a byte before its buffer.
    return static_cast<tmsize_t>(numOfBytes);
}

bool CTiffFile::HasOtherSizeNow() const
{
    struct stat status = {};
    return fstat(fileno(_file.get()), &status) != 0 || static_cast<uint64_t>(status.st_size) != _size;
}

tmsize_t CTiffFile::ReadProc(thandle_t file, void* bytes, tmsize_t size)
{
    return size < 0
               ? 0
               : static_cast<CTiffFile*>(file)->Read(static_cast<unsigned char*>(bytes), static_cast<uint64_t>(size));
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
