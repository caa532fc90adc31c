#include "Tests/Threads/Walk/PlatformWalk.h"

#include "Brix/PlatformAbstractionLayer.h"
#include "CommonImageAccess/Bmp.h"
#include "Tests/PlatformAbstractionLayer/ProfileFile.h"

#include <array>
#include <cstring>
#include <functional>
#include <memory>
#include <sstream>
#include <vector>

namespace ThreadsOfTest
{

namespace
{

constexpr const wchar_t* Text = L"caf\x00E9 \x5207";

struct CTiffCloser
{
    void operator()(TIFF* tiff) const { TIFFClose(tiff); }
};
using CTiff = std::unique_ptr<TIFF, CTiffCloser>;

void WritePicture(const std::string& name)
{
    const CTiff tiff(TIFFOpen(name.c_str(), "w"));
    constexpr uint32_t Width = 5;
    constexpr uint32_t Height = 3;
    TIFFSetField(tiff.get(), TIFFTAG_IMAGEWIDTH, Width);
    TIFFSetField(tiff.get(), TIFFTAG_IMAGELENGTH, Height);
    TIFFSetField(tiff.get(), TIFFTAG_BITSPERSAMPLE, 8);
    TIFFSetField(tiff.get(), TIFFTAG_SAMPLESPERPIXEL, 3);
    TIFFSetField(tiff.get(), TIFFTAG_PHOTOMETRIC, PHOTOMETRIC_RGB);
    TIFFSetField(tiff.get(), TIFFTAG_PLANARCONFIG, PLANARCONFIG_CONTIG);
    for (uint32_t row = 0; row < Height; ++row)
    {
        std::array<unsigned char, Width * 3> pixels{};
        pixels.fill(static_cast<unsigned char>(row + 1));
        TIFFWriteScanline(tiff.get(), pixels.data(), row, 0);
    }
}

/// Takes down what is answered, one answer a line.
class CAnswersOfPlatform
{
public:
    template <typename Answer>
    void Tell(const char* question, const Answer& answer)
    {
        _told << question << ": " << answer << '\n';
    }
    /// A text of wide characters, with the zeros that may be in it.
    void TellWide(const char* question, const std::vector<wchar_t>& text, uint32_t size)
    {
        _told << question << ':';
        for (uint32_t i = 0; i < std::min<size_t>(size, text.size()); ++i)
            _told << ' ' << static_cast<uint32_t>(text[i]);
        _told << '\n';
    }
    std::string Told() const { return _told.str(); }

private:
    std::ostringstream _told;
};

void AskTexts(CAnswersOfPlatform& answers)
{
    uint32_t size = 0;
    std::array<char, 20> utf8{};
    answers.Tell("to UTF-8", PAL_ConvertFromUnicode(Text, utf8.data(), utf8.size(), &size));
    answers.Tell("UTF-8", utf8.data());
    std::vector<wchar_t> wide(20);
    answers.Tell("from UTF-8",
                 PAL_ConvertToUnicode(utf8.data(), wide.data(), static_cast<uint32_t>(wide.size()), &size));
    answers.TellWide("wide", wide, size);
    std::wstring holder;
    answers.Tell("format", std::wcscmp(PAL_fmt_return_scstr(L"%d %s", holder), L"%d %S"));
    PAL_PutLogInfo(L"a thread was here", __FILE__, __LINE__);
    PAL_PutLogError(PAL_LOGERROR_WARNING, L"a thread warns", __FILE__, __LINE__);
}

void AskModules(CAnswersOfPlatform& answers)
{
    void* const library = PAL_LoadLibrary(L"libz.so.1");
    answers.Tell("library", library != nullptr);
    answers.Tell("function", PAL_GetProcAddress(library, "zlibVersion") != nullptr);
    answers.Tell("release", PAL_ReleaseLibrary(library));
    answers.Tell("no library", PAL_LoadLibrary(L"/no/such/library.so") != nullptr);
    uint32_t size = 0;
    std::vector<wchar_t> path(4096);
    for (void* const module : {static_cast<void*>(nullptr), PAL_GetCurrentModule()})
    {
        answers.Tell("path", PAL_GetModulePath(module, path.data(), static_cast<uint32_t>(path.size()), &size));
        answers.TellWide("path", path, size);
    }
}

void AskCodecs(CAnswersOfPlatform& answers)
{
    for (const wchar_t* name : {L"LZ4", L"NONE", L"OTHER"})
    {
        bool isSupported = false;
        answers.Tell("codec", PAL_IsSupportedDataCodec(name, &isSupported));
        answers.Tell("supported", isSupported);
        const std::string source(1000, 'a');
        long bound = 0;
        answers.Tell("bound", PAL_GetEncodeBound(name, static_cast<long>(source.size()), &bound));
        answers.Tell("bound", bound);
        std::vector<char> encoded(2000);
        int size = 0;
        answers.Tell("encode", PAL_Encode(name, source.data(), static_cast<int>(source.size()), encoded.data(),
                                          static_cast<int>(encoded.size()), &size));
        answers.Tell("encoded", std::string(encoded.data(), static_cast<size_t>(size)));
        std::vector<char> decoded(source.size());
        answers.Tell("decode",
                     PAL_Decode(name, encoded.data(), size, decoded.data(), static_cast<int>(decoded.size()), &size));
        answers.Tell("decoded", std::string(decoded.data(), static_cast<size_t>(size)));
    }
}

void AskProfile(CAnswersOfPlatform& answers, const std::wstring& file)
{
    std::vector<wchar_t> text(200);
    const auto room = static_cast<uint32_t>(text.size());
    uint32_t size = 0;
    int32_t number = 0;
    answers.Tell("sections", PAL_GetPrivateProfileSectionNames(text.data(), room, file.c_str(), &size));
    answers.TellWide("sections", text, size);
    answers.Tell("section", PAL_GetPrivateProfileSection(L"Second", text.data(), room, file.c_str(), &size));
    answers.TellWide("section", text, size);
    answers.Tell("value",
                 PAL_GetPrivateProfileString(L"First", L"Text", L"none", text.data(), room, file.c_str(), &size));
    answers.TellWide("value", text, size);
    answers.Tell("number", PAL_GetPrivateProfileInt(L"First", L"Number", 1, file.c_str(), &number));
    answers.Tell("number", number);
    answers.Tell("no number", PAL_GetPrivateProfileInt(L"First", L"Other", 7, file.c_str(), &number));
    answers.Tell("no number", number);
}

void AskFile(CAnswersOfPlatform& answers, const std::wstring& name)
{
    FILE* const file = PAL_OpenFile(name.c_str(), L"rb");
    answers.Tell("file", file != nullptr);
    if (!file)
        return;
    std::array<char, 20> bytes{};
    answers.Tell("read", std::fread(bytes.data(), 1, bytes.size() - 1, file));
    answers.Tell("bytes", bytes.data());
    answers.Tell("close", PAL_CloseFile(file));
}

void AskPicture(CAnswersOfPlatform& answers, const std::string& name)
{
    const CTiff tiff(TIFFOpen(name.c_str(), "r"));
    CIA::CByteArray buffer;
    answers.Tell("size of picture", Make24BitBMPBufferTiff(tiff.get(), buffer));
    answers.Tell("size of picture", buffer.Size);
    std::vector<unsigned char> bytes(buffer.Size);
    buffer = CIA::CByteArray(bytes.data(), buffer.Size);
    answers.Tell("picture", Make24BitBMPBufferTiff(tiff.get(), buffer));
    answers.Tell("picture", std::hash<std::string>()(std::string(bytes.begin(), bytes.end())));
}

} // namespace

CPlatformFiles::CPlatformFiles()
{
    _folder.Write("text", "a line");
    _folder.Write("profile.ini", "\xFF\xFE" + Utf16Of(L"[First]\nNumber=42\nText = some text \n[Second]\nA=1\nB=2\n"));
    WritePicture(_folder.Name("picture.tif"));
}

std::string CPlatformFiles::AskEverything() const
{
    CAnswersOfPlatform answers;
    AskTexts(answers);
    AskModules(answers);
    AskCodecs(answers);
    AskProfile(answers, _folder.WideName("profile.ini"));
    AskFile(answers, _folder.WideName("text"));
    AskFile(answers, _folder.WideName("no such file"));
    AskPicture(answers, _folder.Name("picture.tif"));
    return answers.Told();
}

} // namespace ThreadsOfTest
