#pragma once
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <tiffio.h>
#include <utility>

namespace CIA
{

struct CTiffCloser
{
    void operator()(TIFF* tif) const; ///< keeps errno
};
/// An open TIFF file. What libtiff has to say about it goes to the log, by handlers of this handle alone: the host may
/// use libtiff too.
using CTiffHandle = std::unique_ptr<TIFF, CTiffCloser>;

// libtiff's own calls with the checks that the readers rely on. A mandatory tag that is missing, or a directory that is
// not there, is a failed assertion.

/// A handle that stands on directory 0. Null when the file cannot be opened as TIFF, or this directory cannot be read;
/// errno is kept. Asserts that a file that is there can be read: one that cannot is no TIFF without directories.
CTiffHandle TIFFOpenW(const std::wstring& name, const char* mode);
/// Asserts that all of the chain could be read, that there is a directory, and that their number fits 16 bits. Keeps
/// errno. For handles of TIFFOpenW.
uint32_t TIFFNumberOfDirectories(TIFF* tif);

// The bytes of a tile or strip as they are stored: how many were read, -1 where the file has none or not enough. A file
// that cannot be read is a failed assertion. Keep errno. For handles of TIFFOpenW.
tmsize_t TIFFReadRawTile(TIFF* tif, uint32_t tile, void* buffer, tmsize_t size);
tmsize_t TIFFReadRawStrip(TIFF* tif, uint32_t strip, void* buffer, tmsize_t size);

// Handles of TIFFOpenW know the tags that TiffEntries.cpp lists, and no others.

/// The value of an optional tag; false when the directory has none. Keeps errno.
template <typename... Arguments>
bool TIFFGetField_mayFail(TIFF* tif, uint32_t tag, Arguments*... arguments);
/// The value of a mandatory tag.
template <typename T>
T TIFFGetField(TIFF* tif, uint32_t tag);

/// A file that is read through libtiff, opened at the first need. A file that cannot be opened is tried again at the
/// next.
class CTiffImageDoc
{
public:
    explicit CTiffImageDoc(std::wstring fileName) : _FileName(std::move(fileName)) {}

    /// The handle, standing on whatever directory it was set to last; null when the file is no TIFF.
    TIFF* TiffFilePtr();
    /// The handle, standing on the directory of that number from 0. Asserts that the file is a TIFF and has it. Every
    /// reader moves the handle: whoever reads sets it first, and reads with nothing between. Keeps errno.
    TIFF* SetDirectory(uint32_t dir);
    /// The same where it may fail: false when the file is no TIFF, does not have the directory or cannot be read. One
    /// that could not be read is opened anew by the next call. Keeps errno.
    bool TrySetDirectory(uint32_t dir);

private:
    CTiffHandle _TiffFilePtr;
    std::wstring _FileName;
    std::optional<uint32_t> _CurrentDirectory;
};

} // namespace CIA

#include "CommonUtil/Assertion.h"
#include "CommonUtil/ErrnoKeeper.h"

template <typename... Arguments>
bool CIA::TIFFGetField_mayFail(TIFF* tif, uint32_t tag, Arguments*... arguments)
{
    const CommonUtil::CErrnoKeeper errnoKeeper;
    const int result = ::TIFFGetField(tif, tag, arguments...);
    ZEL_ASSERT(result == 0 || result == 1);
    return result == 1;
}

template <typename T>
T CIA::TIFFGetField(TIFF* tif, uint32_t tag)
{
    T value{};
    ZEL_ASSERT(TIFFGetField_mayFail(tif, tag, &value));
    return value;
}
