#pragma once
#include "CommonUtil/PlatformCalls.h"

#include <cstdint>
#include <memory>
#include <string>
#include <tiffio.h>

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

    uint64_t Size() const { return _size; } ///< as it was when the file was opened
    /// All that was read of it so far.
    uint64_t NumOfBytesRead() const { return _numOfBytesRead; }

    /// Lets libtiff open it: null when it is no TIFF. The handle takes `file` over and closes it in the end.
    static TIFF* OpenAsTiff(std::unique_ptr<CTiffFile>& file, const std::string& name, const char* mode,
                            TIFFOpenOptions* options);
    /// The file of a handle that was opened by OpenAsTiff.
    static CTiffFile& Of(TIFF* tif);

private:
    struct CloseStream
    {
        void operator()(std::FILE* stream) const { PAL_CloseFile(stream); }
    };

    tmsize_t Read(unsigned char* bytes, uint64_t size);
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
    uint64_t _numOfBytesRead = 0;
    bool _hasFailed = false;
};

} // namespace CIA
