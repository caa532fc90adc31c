// The 8 bytes at the start of a document, and what stands behind them.

#include "Tests/ZelLoader/Images/ZelSlide.h"

using namespace SlideOfTest;

namespace
{

class FileHeader : public ZelSlide
{
protected:
    Document Good() { return Document().With(Stack(1)); }
};

TEST_F(FileHeader, OfASoundDocumentIsThatOfATiffFile)
{
    EXPECT_EQ(Read(Good()).Format(), CIA::eZel);
    EXPECT_EQ(CIA::eZel, 6);
    EXPECT_EQ(CIA::eUnknown, 7);
}

class ByteOrderMark : public FileHeader, public testing::WithParamInterface<std::string>
{
};

TEST_P(ByteOrderMark, OtherThanLittleEndianIsRefused)
{
    Document document = Good();
    document.File().ByteOrder = GetParam();
    const TestSupport::LogReaderOfTest log;
    EXPECT_EQ(ResultOfOpening(std::move(document)), AC_RESULT_FAILURE);
    EXPECT_THAT(log.Errors(), ElementsAre(L"Error: Invalid File: Unexpected value in endian type field!"));
}

INSTANTIATE_TEST_SUITE_P(Marks, ByteOrderMark, testing::Values("MM", "IM", "MI", "ii", "PK"));

TEST_F(FileHeader, TellsOfItsErrorsByTheErrorCall)
{
    Document document = Good();
    document.File().ByteOrder = "MM";
    const TestSupport::LogReaderOfTest log;
    ResultOfOpening(std::move(document));
    for (const auto& line : log.Lines())
        if (line.IsError)
        {
            EXPECT_EQ(line.Type, PAL_LOGERROR_ERROR);
            EXPECT_THAT(line.File, HasSubstr("ZelImgDoc.cpp"));
        }
}

class FixedNumber : public FileHeader, public testing::WithParamInterface<int16_t>
{
};

TEST_P(FixedNumber, OtherThan42IsRefused)
{
    Document document = Good();
    document.File().FixedNum = GetParam();
    EXPECT_THAT(MessagesOfOpening(std::move(document)),
                Contains("Unexpected: fixedNum=" + std::to_string(GetParam()) + " instead of 42!"));
    EXPECT_EQ(Doc(), nullptr);
}

INSTANTIATE_TEST_SUITE_P(Numbers, FixedNumber, testing::Values(0, 43, 41, -42, 10752));

TEST_F(FileHeader, ThatIsRefusedIsAFailureWithoutAReason)
{
    Document document = Good();
    document.File().FixedNum = 43;
    EXPECT_EQ(ResultOfOpening(std::move(document)), AC_RESULT_FAILURE);
}

class FileThatIsTooShort : public FileHeader, public testing::WithParamInterface<size_t>
{
};

TEST_P(FileThatIsTooShort, IsAFailure)
{
    const ByteString bytes = Good().ToBytes();
    Folder().Write("slide.zel", {reinterpret_cast<const char*>(bytes.data()), GetParam()});
    EXPECT_EQ(ResultOfOpeningFile(FileName()), AC_RESULT_FAILURE);
    EXPECT_EQ(Doc(), nullptr);
}

INSTANTIATE_TEST_SUITE_P(NumOfBytes, FileThatIsTooShort, testing::Values(0, 1, 2, 3, 4, 7, 8, 9, 31, 32, 40));

TEST_F(FileHeader, WithoutARootBehindItIsAFailure)
{
    Document document = Good();
    document.Root().FixedNum(0);
    EXPECT_EQ(ResultOfOpening(std::move(document)), AC_RESULT_FAILURE);
}

TEST_F(FileHeader, NeedsAnImageCollectionBehindIt)
{
    Document document = Good();
    document.Root().Drop(2000);
    EXPECT_EQ(ResultOfOpening(std::move(document)), AC_RESULT_FAILURE);
}

// A file that cannot be opened is told by errno alone.

TEST(ZelImgDoc, OfAFileThatIsNotThereIsConstructedAndLeavesAReason)
{
    errno = 0;
    EXPECT_EQ(AssertionOf([] { Zel::CZelImgDoc(L"/no/such/file.zel", true); }), "");
    EXPECT_EQ(errno, ENOENT);
}

TEST(ZelImgDoc, OfAFileOfAnotherKindIsConstructedAndLeavesAReason)
{
    const TestSupport::TemporaryFolder folder;
    folder.Write("slide.tif", "II");
    errno = 0;
    EXPECT_EQ(AssertionOf([&] { Zel::CZelImgDoc(folder.WideName("slide.tif").c_str(), true); }), "");
    EXPECT_EQ(errno, EINVAL);
}

// The document as a TIFF file.

TEST_F(FileHeader, LetsTheDocumentBeReadAsATiffFile)
{
    Zel::CZelImgDoc& doc = Read(Document().With(Stack(1).InDocument()));
    TIFF* tif = doc.AsTiffFilePtr();
    ASSERT_NE(tif, nullptr);
    EXPECT_EQ(doc.AsTiffFilePtr(), tif);
    EXPECT_EQ(doc.AsTiffFilePtrSetTo(1), tif);
}

TEST_F(FileHeader, LetsATiffFileThatWasNotReadBeTriedAgain)
{
    Zel::CZelImgDoc& doc = Read(Document());
    const std::filesystem::path file = Folder().Path() / "slide.zel";
    const std::filesystem::path elsewhere = Folder().Path() / "elsewhere.zel";
    std::filesystem::rename(file, elsewhere);
    EXPECT_EQ(doc.AsTiffFilePtr(), nullptr);
    std::filesystem::rename(elsewhere, file);
    EXPECT_NE(doc.AsTiffFilePtr(), nullptr);
}

} // namespace
