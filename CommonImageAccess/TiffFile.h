#pragma once
#include "CommonImageAccess/TiffChain.h"
#include "CommonUtil/PlatformCalls.h"

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <tiffio.h>
#include <vector>

namespace CIA
{

/// A file as libtiff reads it. libtiff takes a read that fails for one that has found nothing, and goes on with fewer
/// directories, or with a directory that lacks a tag; only here can the two be told apart.
class CTiffFile
{
public:
    /// Opens the file; one that cannot be opened is told by IsOpen and errno.
    explicit CTiffFile(const std::wstring& name);

    bool IsOpen() const { return _file != nullptr; }
    /// True when bytes that the file had when it was opened could not be read since the last ForgetFailure, or bytes
    /// were asked for that it did not have and might have now. Then a handle of it is good for nothing any more.
    bool HasFailed() const { return _hasFailed; }
    void ForgetFailure() { _hasFailed = false; }
    /// For what was not found: tells by HasFailed that it might be there now.
    void FailIfSizeHasChanged() { _hasFailed = _hasFailed || HasOtherSizeNow(); }

    uint64_t Size() const { return _size; } ///< as it was when the file was opened
    /// How many bytes could be read at an offset; fewer than wanted where the file ends or cannot be read.
    uint64_t ReadAt(uint64_t offset, unsigned char* bytes, uint64_t size);

    /// Lets libtiff open it and read the header, yet no directory: null when it is no TIFF. The handle takes `file`
    /// over and closes it in the end.
    static TIFF* OpenAsTiff(std::unique_ptr<CTiffFile>& file, const std::string& name, const char* mode,
                            TIFFOpenOptions* options);
    /// The file of a handle that was opened by OpenAsTiff.
    static CTiffFile& Of(TIFF* tif);

    /// Its directories. For a file that libtiff has opened.
    CTiffChain& Chain();
    /// Lets libtiff read a directory of the chain, so that the file's handle stands on it; false when it cannot.
    bool GoToDirectory(TIFF* tif, CDirectoryForLibtiff directory);

private:
    struct CloseStream
    {
        void operator()(std::FILE* stream) const { PAL_CloseFile(stream); }
    };

    /// What libtiff reads.
    uint64_t Read(unsigned char* bytes, uint64_t size);
    uint64_t ReadDirectoryShown(unsigned char* bytes, uint64_t size);
    bool HasOtherSizeNow() const;

    // What libtiff calls.
    static tmsize_t ReadProc(thandle_t file, void* bytes, tmsize_t size);
    static tmsize_t WriteProc(thandle_t file, void* bytes, tmsize_t size);
    static toff_t SeekProc(thandle_t file, toff_t offset, int whence);
    static int CloseProc(thandle_t file);
    static toff_t SizeProc(thandle_t file);

    std::unique_ptr<std::FILE, CloseStream> _file;
    uint64_t _size = 0;
    uint64_t _offset = 0;
    bool _hasFailed = false;
    std::optional<CTiffChain> _chain;
    std::vector<unsigned char> _directoryShown;   ///< where no file has anything, until libtiff has read it
    std::optional<uint64_t> _numOfBytesForValues; ///< that libtiff may still read while it is set to a directory
};

} // namespace CIA
