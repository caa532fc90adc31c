#pragma once
#include <cstdint>
#include <memory>
#include <string>
#include <tiffio.h>

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

/// Null when the file cannot be opened as TIFF; errno is kept.
CTiffHandle TIFFOpenW(const std::wstring& name, const char* mode);
/// Asserts that there is a directory of that number. Keeps errno.
void TIFFSetDirectory(TIFF* tif, uint16_t dir);
/// Asserts that there is a directory. Keeps errno.
uint16_t TIFFNumberOfDirectories(TIFF* tif);

template <typename... Arguments>
bool TIFFGetField_mayFail(TIFF* tif, uint32_t tag, Arguments*... arguments);
/// The value of a mandatory tag.
template <typename T>
T TIFFGetField(TIFF* tif, uint32_t tag);

/// Opens the file at the first need and keeps the handle; a file that cannot be opened is tried again at the next.
class CTiffImageDoc
{
public:
    explicit CTiffImageDoc(const std::wstring& fileName) : _FileName(fileName) {}
    /// Null when the file is no TIFF. Its current directory is moved by every reader: whoever reads sets it first, and
    /// reads with nothing between.
    TIFF* TiffFilePtr();

private:
    CTiffHandle _TiffFilePtr;
    std::wstring _FileName;
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
