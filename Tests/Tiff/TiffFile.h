#pragma once
#include "CommonImageAccess/TiffAccess.h"
#include "SampleDocuments/TiffDirectory.h"
#include "Tests/Support/TemporaryFolder.h"

#include <gtest/gtest.h>

namespace TiffOfTest
{

using namespace SampleDocuments;

/// A file of TIFF directories, which no document belongs to.
class TiffFile : public testing::Test
{
protected:
    void Write(const std::vector<CTiffDirectory>& directories, const char* name = "file.tif")
    {
        WriteBytes(TiffFileOf(directories), name);
    }
    void WriteBytes(const ByteString& bytes, const char* name = "file.tif")
    {
        _folder.Write(name, {reinterpret_cast<const char*>(bytes.data()), bytes.size()});
    }
    std::wstring Name(const char* name = "file.tif") const { return _folder.WideName(name); }

    /// Directories whose widths count from 1.
    static std::vector<CTiffDirectory> Chain(uint32_t numOfDirectories)
    {
        std::vector<CTiffDirectory> directories;
        for (uint32_t width = 1; width <= numOfDirectories; ++width)
            directories.emplace_back(width, 1);
        return directories;
    }
    static uint32_t WidthOf(TIFF* tif) { return CIA::TIFFGetField<uint32_t>(tif, TIFFTAG_IMAGEWIDTH); }
    CIA::CTiffHandle Opened() const { return CIA::TIFFOpenW(Name(), "r"); }

private:
    TestSupport::TemporaryFolder _folder;
};

} // namespace TiffOfTest
