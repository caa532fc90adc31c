// Writes the seeds of all targets: a folder for each below the one that is named, made by the sample writer, so that
// the seeds follow the format and none has to be kept.

#include "Fuzzing/Seeds/SampleSlides.h"
#include "SampleDocuments/Codecs.h"

#include <cstdio>
#include <exception>
#include <filesystem>
#include <fstream>

using namespace Fuzzing;
using namespace SampleDocuments;

namespace
{

class CSeedFolder
{
public:
    CSeedFolder(const std::filesystem::path& folder, const char* target) : _folder(folder / target)
    {
        std::filesystem::create_directories(_folder);
    }

    void Write(const std::string& name, const ByteString& bytes) const
    {
        std::ofstream stream(_folder / name, std::ios::binary);
        stream.exceptions(std::ios::failbit | std::ios::badbit);
        stream.write(reinterpret_cast<const char*>(bytes.data()), static_cast<std::streamsize>(bytes.size()));
    }

private:
    std::filesystem::path _folder;
};

ByteString BytesOfFile(const std::filesystem::path& file)
{
    std::ifstream stream(file, std::ios::binary);
    const std::string bytes(std::istreambuf_iterator<char>(stream), {});
    return {bytes.begin(), bytes.end()};
}

void WriteDocuments(const std::filesystem::path& folder)
{
    const CSeedFolder seeds(folder, "document");
    for (CSampleSlide& slide : SampleSlides())
        seeds.Write(slide.Name, slide.Made.ToBytes());
}

/// The stores of stacks, as they lie beside documents.
void WriteStores(const CSeedFolder& seeds, const std::vector<std::pair<const char*, Stack>>& stacks,
                 const std::filesystem::path& scratch)
{
    for (const auto& [name, stack] : stacks)
    {
        Document document = Document().With(stack);
        const std::filesystem::path file = document.WriteTo(scratch / "slide.zel");
        seeds.Write(name, BytesOfFile(document.StorePath(file, stack.Id())));
    }
}

void WriteBinaryStores(const std::filesystem::path& folder, const std::filesystem::path& scratch)
{
    WriteStores(CSeedFolder(folder, "store"),
                {{"grey", StackOfBinaryStore()},
                 {"grey16", StackOfBinaryStore().Raw(ComponentType::Uint16)},
                 {"colour", StackOfBinaryStore().Raw(ComponentType::Uint8, 3)},
                 {"jpeg", StackOfBinaryStore().Jpeg()},
                 {"png", StackOfBinaryStore().Png()},
                 {"j2k", StackOfBinaryStore().J2k()},
                 {"list-first", StackOfBinaryStore().ChunkListBeforeBodies()}},
                scratch);
}

void WriteTiffStores(const std::filesystem::path& folder, const std::filesystem::path& scratch)
{
    WriteStores(CSeedFolder(folder, "tiff-store"),
                {{"tiles", StackOfTiffStore()},
                 {"strips", StackOfTiffStore().InTiffStore(8)},
                 {"big", StackOfTiffStore().BigTiff()},
                 {"plain", Stack(1).Size(40, 30).Tiles(16, 16).Levels(2).InTiffStore().WithoutXml()},
                 {"jpeg", StackOfTiffStore().TiffCompression(7)}},
                scratch);
}

void WriteDirectories(const std::filesystem::path& folder)
{
    const CSeedFolder seeds(folder, "directories");
    const auto write = [&](const char* name, const Stack& stack)
    { seeds.Write(name, Document().With(stack).ToBytes()); };
    write("tiles", StackOfDirectories());
    write("strips", StackOfDirectories().InDocument(8));
    write("one-strip", StackOfDirectories().InDocument(Stack::OneStrip));
    write("jpeg", StackOfDirectories().InDocument(8).TiffCompression(7));
    seeds.Write(
        "jpeg-first",
        Document().With(StackOfDirectories()).FirstDirectory(DrawPicture(9, 7), FirstDirectoryKind::Jpeg).ToBytes());
}

void WriteRegions(const std::filesystem::path& folder)
{
    const CSeedFolder seeds(folder, "regions");
    const auto write = [&](const char* name, const Regions& regions) { seeds.Write(name, regions.ToBlob().Value()); };
    write("xml", Regions({Rectangle("cell", {1, 2}, {3, 4}), Dot("spot", {5, 5})}));
    write("xml-of-each", Regions(RegionOfEachClass()));
    write("tree", Regions({Rectangle("cell", {1, 2}, {3, 4}), Dot("spot", {5, 5})}).AsTree());
    write("tree-of-each", Regions(RegionOfEachClass()).AsTree());
}

void WriteJpegStrips(const std::filesystem::path& folder)
{
    const CSeedFolder seeds(folder, "jpeg-strip");
    const ByteString jpeg = EncodeJpeg(DrawPicture(16, 8), 85);
    for (const unsigned stripId : {0u, 1u, 9u})
    {
        ByteString seed = {static_cast<uint8_t>(stripId), 8, 0, 0, 0, 2, 0xFF, 0xD8}; // height, tables of 2 bytes
        seed.insert(seed.end(), jpeg.begin(), jpeg.end());
        seeds.Write("strip" + std::to_string(stripId), seed);
    }
}

/// UTF-16, little-endian, with its mark.
ByteString Utf16Of(std::string_view text)
{
    ByteString bytes = {0xFF, 0xFE};
    for (const char character : text)
    {
        bytes.push_back(static_cast<uint8_t>(character));
        bytes.push_back(0);
    }
    return bytes;
}

void WriteTexts(const std::filesystem::path& folder)
{
    const CSeedFolder profiles(folder, "profile");
    profiles.Write("number", Utf16Of("; of a reader\r\n[Reader]\r\nThreads = 4\r\nName=x\r\n"));
    profiles.Write("sections", Utf16Of("[First]\nKey=text\n\n[Second]\nOther = text \n"));
    const CSeedFolder lz4(folder, "lz4");
    lz4.Write("literals", {100, 0, 0, 0, 0x40, 'a', 'b', 'c', 'd'});
    lz4.Write("match", {100, 0, 0, 0, 0x14, 'a', 1, 0, 0x50, 'b', 'c', 'd', 'e', 'f'});
    const CSeedFolder texts(folder, "text");
    const auto write = [&](const char* name, std::string_view text)
    {
        ByteString seed = {0, 0, 0, 0, 0, 0, 0xF8, 0x3F, 1, '.'}; // 1.5, and a part of one byte
        Append(seed, text);
        texts.Write(name, seed);
    };
    write("length", "10^-6m^1");
    write("time", "10^0s^1");
    write("path", "folder/slide.zel");
    write("utf8", "\xC3\xA9\xE2\x82\xAC\xF0\x9F\x98\x80");
    write("version", "1.2.3 build 4");
}

} // namespace

int main(int argc, char** argv)
{
    if (argc != 2)
    {
        std::fputs("usage: FuzzSeeds FOLDER\nWrites the seeds of all fuzz targets into FOLDER.\n", stderr);
        return 2;
    }
    try
    {
        const std::filesystem::path folder = argv[1];
        const std::filesystem::path scratch = folder / "scratch";
        std::filesystem::create_directories(scratch);
        WriteDocuments(folder);
        WriteBinaryStores(folder, scratch);
        WriteTiffStores(folder, scratch);
        WriteDirectories(folder);
        WriteRegions(folder);
        WriteJpegStrips(folder);
        WriteTexts(folder);
        std::filesystem::remove_all(scratch);
        return 0;
    }
    catch (const std::exception& exception)
    {
        std::fprintf(stderr, "FuzzSeeds: %s\n", exception.what());
        return 1;
    }
}
