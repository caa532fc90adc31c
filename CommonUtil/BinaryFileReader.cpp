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
    m_fp.reset(OpenFileToRead(_FileName));
    _CurrentOffset = 0;
    _Window.clear();
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
        AssertRead(ReadFromFile(static_cast<Byte*>(item), size, _CurrentOffset) == size);
    else
    {
        if (!IsInWindow(_CurrentOffset, size))
            MoveWindowTo(_CurrentOffset);
        AssertRead(IsInWindow(_CurrentOffset, size));
        std::memcpy(item, _Window.data() + (_CurrentOffset - _OffsetOfWindow), size);
    }
    _CurrentOffset += size;
}

void CBinaryFileReader::AssertRead(bool isRead)
{
    _hasFailed = _hasFailed || !isRead;
    ZEL_ASSERT(isRead);
}

bool CBinaryFileReader::IsInWindow(uint64_t offset, size_t size) const
{
    return offset >= _OffsetOfWindow && offset - _OffsetOfWindow <= _Window.size() &&
           size <= _Window.size() - (offset - _OffsetOfWindow);
}

void CBinaryFileReader::MoveWindowTo(uint64_t offset)
{
    _Window.resize(static_cast<size_t>(std::min<uint64_t>(WindowSize, _FileSize - offset)));
    // Fewer bytes than asked for will do, as long as the item that is wanted is among them.
    _Window.resize(ReadFromFile(_Window.data(), _Window.size(), offset));
    _OffsetOfWindow = offset;
}

size_t CBinaryFileReader::ReadFromFile(Byte* bytes, size_t size, uint64_t offset) const
{
    // Whatever ends the reading early becomes a failed assertion, so errno is kept for reasons that the boundary knows.
    const CErrnoKeeper errnoKeeper;
    size_t numOfBytes = 0;
    while (numOfBytes < size)
    {
        const ssize_t numOfBytesRead =
            pread(fileno(m_fp.get()), bytes + numOfBytes, size - numOfBytes, static_cast<off_t>(offset + numOfBytes));
        if (numOfBytesRead > 0)
            numOfBytes += static_cast<size_t>(numOfBytesRead);
        else if (numOfBytesRead == 0 || errno != EINTR)
            break;
    }
    return numOfBytes;
}

} // namespace CommonUtil
