#include "CommonUtil/BinaryFileReader.h"

#include "CommonUtil/Assertion.h"
#include "CommonUtil/ErrnoKeeper.h"
#include "CommonUtil/Log.h"
#include "CommonUtil/Numbers.h"
#include "CommonUtil/Text.h"

#include <algorithm>
#include <cstring>
#include <unistd.h>

namespace CommonUtil
{

namespace
{

constexpr size_t WindowSize = 16384;

} // namespace

CBinaryFileReader::CBinaryFileReader(const std::wstring& fileName, bool isFileBigEndian)
    : _FileName(Replace(fileName, L"\\", L"/")), _IsFileBigEndian(isFileBigEndian)
{
    errno = 0;
    ZEL_ASSERT(IsBigEndian() == isFileBigEndian);
    if (!OpenFile())
    {
        ZEL_LOG("Error in Opening file:");
        ZEL_WLOG(L"File=%S\n", _FileName.c_str());
        if (errno == 0)
            errno = ENOENT;
        StopOnUnexpectedErrorsV2();
        return;
    }
    FileSize_init(_FileSize);
}

CBinaryFileReader::~CBinaryFileReader()
{
    const CErrnoKeeper errnoKeeper;
    CloseFile();
}

bool CBinaryFileReader::OpenFile()
{
    ZEL_ASSERT(!m_fp);
    m_fp.reset(PAL_OpenFile(_FileName.c_str(), L"rb"));
    if (m_fp)
        return true;
    ZEL_ASSERT(errno != 0);
    return IsCommonUtilV2 ? returnErrV2(false, __FILE__, __LINE__) : false;
}

bool CBinaryFileReader::CloseFile()
{
    m_fp.reset();
    return true;
}

bool CBinaryFileReader::FileSize_init(uint64_t& size) const
{
    struct stat status = {};
    if (_wstat64(_FileName.c_str(), &status) != 0)
        return false;
    size = static_cast<uint64_t>(status.st_size);
    return true;
}

uint64_t CBinaryFileReader::GetCurrentOffset()
{
    ZEL_ASSERT(m_fp);
    return _CurrentOffset;
}

bool CBinaryFileReader::Seek(uint64_t offset, BfrSeekDirection::E direction)
{
    ZEL_ASSERT(offset < _FileSize);
    if (!m_fp)
        return false;
    switch (direction)
    {
    case BfrSeekDirection::CURRENT:
        if (offset > _FileSize - _CurrentOffset)
            return false;
        _CurrentOffset += offset;
        break;
    case BfrSeekDirection::BEGIN:
        _CurrentOffset = offset;
        break;
    default:
        FailAssertion(__FILE__, __LINE__);
    }
    return true;
}

bool CBinaryFileReader::ReadData(Byte* buffer, uint32_t numOfBytes, uint64_t offset)
{
    if (!buffer || numOfBytes == 0 || !m_fp)
        return false;
    if (offset != 0)
    {
        if (offset > _FileSize)
            return false;
        _CurrentOffset = offset;
    }
    ReadItem(buffer, numOfBytes);
    return true;
}

void CBinaryFileReader::ReadItem(void* item, size_t size)
{
    ZEL_ASSERT(m_fp);
    ZEL_ASSERT(size <= _FileSize - _CurrentOffset);
    if (size > WindowSize / 2)
        ReadFromFile(static_cast<Byte*>(item), size, _CurrentOffset);
    else
    {
        const bool isInWindow = _CurrentOffset >= _OffsetOfWindow &&
                                _CurrentOffset - _OffsetOfWindow <= _Window.size() &&
                                size <= _Window.size() - (_CurrentOffset - _OffsetOfWindow);
        if (!isInWindow)
            MoveWindowTo(_CurrentOffset);
        std::memcpy(item, _Window.data() + (_CurrentOffset - _OffsetOfWindow), size);
    }
    _CurrentOffset += size;
}

void CBinaryFileReader::MoveWindowTo(uint64_t offset)
{
    const auto size = static_cast<size_t>(std::min<uint64_t>(WindowSize, _FileSize - offset));
    _Window.clear(); // a read that fails half-way must not leave a window of bytes that never came
    std::vector<Byte> window(size);
    ReadFromFile(window.data(), size, offset);
    _Window = std::move(window);
    _OffsetOfWindow = offset;
}

void CBinaryFileReader::ReadFromFile(Byte* bytes, size_t size, uint64_t offset)
{
    const int file = fileno(m_fp.get());
    const int errnoBefore = errno;
    while (size > 0)
    {
        const ssize_t numOfBytesRead = pread(file, bytes, size, static_cast<off_t>(offset));
        if (numOfBytesRead < 0 && errno == EINTR)
        {
            errno = errnoBefore;
            continue;
        }
        // The size was tested, so none at all means that the file has shrunk since it was opened.
        ZEL_ASSERT(numOfBytesRead > 0);
        bytes += numOfBytesRead;
        size -= static_cast<size_t>(numOfBytesRead);
        offset += static_cast<uint64_t>(numOfBytesRead);
    }
}

} // namespace CommonUtil
