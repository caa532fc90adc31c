#include "SampleDocuments/Codecs.h"

#include <csetjmp>
#include <cstdio>
#include <cstdlib>
#include <jpeglib.h>
#include <memory>

namespace SampleDocuments
{

namespace
{

struct CJpegError
{
    jpeg_error_mgr Manager;
    std::jmp_buf Back;
    char Message[JMSG_LENGTH_MAX];
};

void Leave(j_common_ptr jpeg)
{
    auto* error = reinterpret_cast<CJpegError*>(jpeg->err);
    error->Manager.format_message(jpeg, error->Message);
    std::longjmp(error->Back, 1);
}

void Silence(j_common_ptr, int) {}

void Prepare(CJpegError& error)
{
    jpeg_std_error(&error.Manager);
    error.Manager.error_exit = Leave;
    error.Manager.emit_message = Silence;
}

struct CFree
{
    void operator()(unsigned char* memory) const { std::free(memory); }
};

// The functions below jump back out of the library: nothing with a destructor may live in them.

bool Compress(const uint8_t* rows, const CPicture& picture, int quality, CJpegError& error, unsigned char*& out,
              unsigned long& size)
{
    jpeg_compress_struct jpeg;
    jpeg.err = &error.Manager;
    if (setjmp(error.Back))
    {
        jpeg_destroy_compress(&jpeg);
        return false;
    }
    jpeg_create_compress(&jpeg);
    jpeg_mem_dest(&jpeg, &out, &size);
    jpeg.image_width = picture.Width();
    jpeg.image_height = picture.Height();
    jpeg.input_components = picture.Samples();
    jpeg.in_color_space = picture.Samples() == 3 ? JCS_RGB : JCS_GRAYSCALE;
    jpeg_set_defaults(&jpeg);
    jpeg_set_quality(&jpeg, quality, TRUE);
    jpeg_start_compress(&jpeg, TRUE);
    while (jpeg.next_scanline < jpeg.image_height)
    {
        JSAMPROW row = const_cast<JSAMPROW>(rows + size_t{jpeg.next_scanline} * picture.Width() * picture.Samples());
        jpeg_write_scanlines(&jpeg, &row, 1);
    }
    jpeg_finish_compress(&jpeg);
    jpeg_destroy_compress(&jpeg);
    return true;
}

bool Decompress(std::span<const uint8_t> bytes, CJpegError& error, ByteString& rows, CPicture& picture)
{
    jpeg_decompress_struct jpeg;
    jpeg.err = &error.Manager;
    if (setjmp(error.Back))
    {
        jpeg_destroy_decompress(&jpeg);
        return false;
    }
    jpeg_create_decompress(&jpeg);
    jpeg_mem_src(&jpeg, bytes.data(), static_cast<unsigned long>(bytes.size()));
    jpeg_read_header(&jpeg, TRUE);
    jpeg.out_color_space = jpeg.num_components == 1 ? JCS_GRAYSCALE : JCS_RGB;
    jpeg_start_decompress(&jpeg);
    const size_t rowSize = size_t{jpeg.output_width} * static_cast<unsigned>(jpeg.output_components);
    rows.resize(rowSize * jpeg.output_height);
    while (jpeg.output_scanline < jpeg.output_height)
    {
        JSAMPROW row = rows.data() + rowSize * jpeg.output_scanline;
        jpeg_read_scanlines(&jpeg, &row, 1);
    }
    picture =
        FromPackedRows(jpeg.output_width, jpeg.output_height, static_cast<uint16_t>(jpeg.output_components), 8, rows);
    jpeg_finish_decompress(&jpeg);
    jpeg_destroy_decompress(&jpeg);
    return true;
}

} // namespace

ByteString EncodeJpeg(const CPicture& picture, uint32_t quality)
{
    if (picture.Bits() != 8)
        throw CSampleError("JPEG holds 8 bits per sample; take raw, J2K or PNG for more");
    const ByteString rows = PackedRows(picture);
    CJpegError error;
    Prepare(error);
    unsigned char* out = nullptr;
    unsigned long size = 0;
    const bool isDone = Compress(rows.data(), picture, static_cast<int>(quality), error, out, size);
    const std::unique_ptr<unsigned char, CFree> owner(out);
    if (!isDone)
        throw CSampleError(std::string("JPEG: ") + error.Message);
    return ByteString(out, out + size);
}

CPicture DecodeJpeg(std::span<const uint8_t> bytes)
{
    CJpegError error;
    Prepare(error);
    ByteString rows;
    CPicture picture;
    if (!Decompress(bytes, error, rows, picture))
        throw CSampleError(std::string("is a damaged JPEG picture: ") + error.Message);
    return picture;
}

} // namespace SampleDocuments
