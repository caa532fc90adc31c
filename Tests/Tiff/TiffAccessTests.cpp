// A file as libtiff reads it: its directories, its tags, and where the library's messages go.

#include "CommonImageAccess/TiffAccess.h"

#include "CommonImageAccess/Bmp.h"
#include "CommonImageAccess/TiffCompression.h"
#include "CommonUtil/Text.h"
#include "Tests/Support/ChildProcess.h"
#include "Tests/Tiff/TiffFile.h"
#include "Tests/Tiff/TiffSlide.h"

#include <atomic>

using namespace TiffOfTest;

namespace
{

// Tags.

TEST_F(TiffFile, TellsTheValueOfATag)
{
    Write({CTiffDirectory(7, 5)});
    EXPECT_EQ(WidthOf(Opened().get()), 7u);
}

TEST_F(TiffFile, WithoutAMandatoryTagFails)
{
    Write({CTiffDirectory(7, 5).Drop(TIFFTAG_SAMPLEFORMAT)});
    EXPECT_FAILED_ASSERTION(CIA::TIFFGetField<const char*>(Opened().get(), TIFFTAG_IMAGEDESCRIPTION));
}

TEST_F(TiffFile, WithoutAnOptionalTagDoesNotFail)
{
    Write({CTiffDirectory(7, 5)});
    const char* text = nullptr;
    errno = EBADFD;
    EXPECT_FALSE(CIA::TIFFGetField_mayFail(Opened().get(), TIFFTAG_IMAGEDESCRIPTION, &text));
    EXPECT_EQ(errno, EBADFD);
}

TEST_F(TiffFile, IsFoundByANameThatIsNotLatin)
{
    Write({CTiffDirectory(7, 5)}, "Schnitt \xC3\xA4 \xE5\x88\x87.tif");
    EXPECT_TRUE(CIA::TIFFOpenW(Name("Schnitt \xC3\xA4 \xE5\x88\x87.tif"), "r"));
}

TEST_F(TiffFile, ThatIsNoneHasNoHandleAndLeavesErrno)
{
    WriteBytes(BytesOf("no TIFF at all"));
    errno = EBADFD;
    EXPECT_FALSE(Opened());
    EXPECT_FALSE(CIA::TIFFOpenW(Name("nothing.tif"), "r"));
    EXPECT_EQ(errno, EBADFD);
}

TEST_F(TiffFile, IsNotAPipeToWaitAt)
{
    ASSERT_EQ(mkfifo(Utf16ToUtf8(Name("pipe.tif")).c_str(), 0600), 0);
    EXPECT_EQ(TestSupport::RunInChild([&] { return CIA::TIFFOpenW(Name("pipe.tif"), "r") ? 1 : 0; }, 10),
              TestSupport::ExitedWith(0));
}

TEST_F(TiffFile, WhosePictureCannotBeDecodedHasAReasonAlsoWhereLibTiffTellsNone)
{
    Write({CTiffDirectory(8, 8).Compression(COMPRESSION_JPEG).Data({BytesOf("no picture")})});
    std::array<unsigned char, 1000> room{};
    CIA::CByteArray buffer(room.data(), room.size());
    EXPECT_EQ(Make24BitBMPBufferTiff(Opened().get(), buffer), EIO);
    EXPECT_EQ(buffer.Size, 0u);
}

// Directories.

TEST_F(TiffFile, StandsOnTheDirectoryItIsSetTo)
{
    Write(Chain(3));
    CIA::CTiffImageDoc file(Name());
    for (const uint32_t directory : {2u, 0u, 1u, 1u, 0u, 2u})
        EXPECT_EQ(WidthOf(file.SetDirectory(directory)), directory + 1);
}

TEST_F(TiffFile, IsOpenedOnce)
{
    Write(Chain(1));
    CIA::CTiffImageDoc file(Name());
    TIFF* tif = file.TiffFilePtr();
    EXPECT_NE(tif, nullptr);
    EXPECT_EQ(file.TiffFilePtr(), tif);
    EXPECT_EQ(file.SetDirectory(0), tif);
}

TEST_F(TiffFile, ThatCannotBeOpenedIsTriedAgain)
{
    CIA::CTiffImageDoc file(Name());
    EXPECT_EQ(file.TiffFilePtr(), nullptr);
    Write(Chain(1));
    EXPECT_NE(file.TiffFilePtr(), nullptr);
}

TEST_F(TiffFile, IsClosedWithItsOwner)
{
    Write(Chain(1));
    const size_t before = TestSupport::NumOfOpenFiles();
    {
        CIA::CTiffImageDoc file(Name());
        file.TiffFilePtr();
        EXPECT_EQ(TestSupport::NumOfOpenFiles(), before + 1);
    }
    EXPECT_EQ(TestSupport::NumOfOpenFiles(), before);
}

TEST_F(TiffFile, WithoutTheDirectoryFailsAndCanBeSetToAnother)
{
    Write(Chain(3));
    CIA::CTiffImageDoc file(Name());
    for (const uint32_t missing : {3u, 4u, 65535u, 65536u, 0xFFFFFFFFu})
        EXPECT_FAILED_ASSERTION(file.SetDirectory(missing)) << missing;
    EXPECT_EQ(WidthOf(file.SetDirectory(1)), 2u);
    EXPECT_EQ(WidthOf(file.SetDirectory(2)), 3u);
}

TEST_F(TiffFile, IsSetToADirectoryBehindOneThatCannotBeRead)
{
    std::vector<CTiffDirectory> directories = Chain(4);
    directories[1].Drop(TIFFTAG_IMAGEWIDTH);
    Write(directories);
    for (const std::vector<uint32_t>& order : {std::vector{2u, 3u}, {3u, 2u, 0u}, {0u, 2u, 2u, 3u}})
    {
        CIA::CTiffImageDoc file(Name());
        for (const uint32_t directory : order)
        {
            EXPECT_EQ(WidthOf(file.SetDirectory(directory)), directory + 1);
            EXPECT_FAILED_ASSERTION(file.SetDirectory(1));
            EXPECT_EQ(WidthOf(file.SetDirectory(directory)), directory + 1);
        }
        EXPECT_FAILED_ASSERTION(file.SetDirectory(4));
    }
}

TEST_F(TiffFile, KeepsErrnoWhileItIsSetToADirectory)
{
    Write(Chain(3));
    CIA::CTiffImageDoc file(Name());
    errno = EBADFD;
    file.SetDirectory(2);
    EXPECT_EQ(errno, EBADFD);
    EXPECT_FAILED_ASSERTION(file.SetDirectory(7));
    EXPECT_EQ(errno, EBADFD);
}

// Compression.

struct CompressionRow : Row
{
    uint16_t Code;
    CIA::PixelFrameCompressionType::E Type;
};

class TiffCompression : public TiffFile, public testing::WithParamInterface<CompressionRow>
{
};

TEST_P(TiffCompression, HasATypeOfItsOwn)
{
    Write({CTiffDirectory(7, 5).Compression(GetParam().Code).Data({{1, 2, 3}})});
    EXPECT_EQ(CIA::GetPixelFrameCompressionTypeOfCurrentTiffIfd(Opened().get()), GetParam().Type);
}

using CIA::PixelFrameCompressionType;
INSTANTIATE_TEST_SUITE_P(Served, TiffCompression,
                         testing::Values(CompressionRow{{"None"}, 1, PixelFrameCompressionType::None},
                                         CompressionRow{{"Jpeg"}, 6, PixelFrameCompressionType::Jpeg},
                                         CompressionRow{{"Jpeg7"}, 7, PixelFrameCompressionType::Jpeg7},
                                         CompressionRow{{"J2k"}, 34712, PixelFrameCompressionType::J2k}),
                         NameOfRow());

class TiffCompressionDeathTest : public TiffFile, public testing::WithParamInterface<uint16_t>
{
};

TEST_P(TiffCompressionDeathTest, ThatIsNotServedEndsTheProcess)
{
    Write({CTiffDirectory(7, 5).Compression(GetParam()).Data({{1, 2, 3}})});
    const CIA::CTiffHandle tif = Opened();
    ASSERT_TRUE(tif);
    EXPECT_ENDS_THE_PROCESS(CIA::GetPixelFrameCompressionTypeOfCurrentTiffIfd(tif.get()), ABORT_WAS_CALLED);
}

INSTANTIATE_TEST_SUITE_P(Codes, TiffCompressionDeathTest,
                         testing::Values<uint16_t>(2, 3, 4, 5, 8, 32766, 32771, 32773, 32809, 32895, 32896, 32897,
                                                   32898, 32908, 32909, 32946, 32947, 34661, 34676, 34677, 12345));

// Messages.

/// What is written onto standard error by way of streams or beside them.
std::string StandardErrorOf(const std::function<void()>& function)
{
    testing::internal::CaptureStderr();
    function();
    return testing::internal::GetCapturedStderr();
}

TEST_F(TiffFile, ThatIsDamagedIsToldToTheLogAndNotToStandardError)
{
    WriteBytes(BytesOf("no TIFF at all"), "damaged.tif");
    Write({CTiffDirectory(7, 5).Set(TIFFTAG_ORIENTATION, TiffType::Short, {1, 1})});
    std::string log;
    const std::string standardError = StandardErrorOf(
        [&]
        {
            log = TestSupport::LogOf(
                [&]
                {
                    CIA::TIFFOpenW(Name("damaged.tif"), "r");
                    CIA::TIFFOpenW(Name(), "r"); // two values of one are worth a warning
                });
        });
    EXPECT_EQ(standardError, "");
    EXPECT_THAT(log, HasSubstr("Not a TIFF"));
    EXPECT_THAT(log, HasSubstr("Orientation"));
}

std::atomic<int> messagesToTheHost = 0;
void HostsHandler(const char*, const char*, va_list)
{
    ++messagesToTheHost;
}
void HostsHandlerExt(thandle_t, const char*, const char*, va_list)
{
    ++messagesToTheHost;
}

/// The host's own handlers for all its TIFF files, from construction to end.
class HandlersOfTheHost
{
public:
    HandlersOfTheHost()
        : _error(TIFFSetErrorHandler(HostsHandler)), _errorExt(TIFFSetErrorHandlerExt(HostsHandlerExt)),
          _warning(TIFFSetWarningHandler(HostsHandler)), _warningExt(TIFFSetWarningHandlerExt(HostsHandlerExt))
    {
        messagesToTheHost = 0;
    }
    ~HandlersOfTheHost()
    {
        TIFFSetErrorHandler(_error);
        TIFFSetErrorHandlerExt(_errorExt);
        TIFFSetWarningHandler(_warning);
        TIFFSetWarningHandlerExt(_warningExt);
    }
    HandlersOfTheHost(const HandlersOfTheHost&) = delete;
    HandlersOfTheHost& operator=(const HandlersOfTheHost&) = delete;

    static bool AreThere()
    {
        const TIFFErrorHandler error = TIFFSetErrorHandler(HostsHandler);
        const TIFFErrorHandlerExt errorExt = TIFFSetErrorHandlerExt(HostsHandlerExt);
        const TIFFErrorHandler warning = TIFFSetWarningHandler(HostsHandler);
        const TIFFErrorHandlerExt warningExt = TIFFSetWarningHandlerExt(HostsHandlerExt);
        return error == HostsHandler && errorExt == HostsHandlerExt && warning == HostsHandler &&
               warningExt == HostsHandlerExt;
    }

private:
    TIFFErrorHandler _error;
    TIFFErrorHandlerExt _errorExt;
    TIFFErrorHandler _warning;
    TIFFErrorHandlerExt _warningExt;
};

class MessagesOfTiff : public TiffSlide
{
};

TEST_F(MessagesOfTiff, LeaveTheHandlersOfTheHostAlone)
{
    const HandlersOfTheHost handlers;
    Document damaged = DocumentOf(Stack(1).Size(16, 16).Tiles(16, 16).InDocument(),
                                  [](auto& d) {
                                      d.Set(TIFFTAG_TILEOFFSETS, 4, {0x7FFFFF00}).Set(TIFFTAG_ORIENTATION, 3, {1, 1});
                                  });
    const std::string standardError =
        StandardErrorOf([&] { EXPECT_EQ(ResultOfReading(std::move(damaged)), AC_RESULT_SUCCESS); });
    EXPECT_EQ(standardError, "");
    EXPECT_EQ(messagesToTheHost, 0);
    EXPECT_TRUE(HandlersOfTheHost::AreThere());
}

TEST_F(MessagesOfTiff, OfTheHostsOwnFilesStillReachTheHost)
{
    const HandlersOfTheHost handlers;
    Open(Stack(1).Size(16, 16).Tiles(16, 16).InTiffStore());
    EXPECT_EQ(messagesToTheHost, 0);
    EXPECT_EQ(TIFFOpen(Folder().Name("nothing.tif").c_str(), "r"), nullptr);
    EXPECT_GT(messagesToTheHost, 0);
}

} // namespace
