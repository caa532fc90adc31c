// The custom data of a document: the size of a level without the edges of its tiles, and the picture of the slide.

#include "CommonImageAccess/Handles.h"
#include "SampleDocuments/Tags.h"
#include "Tests/Properties/PropertySets.h"

using namespace SlideOfTest;

namespace
{

class DocumentCustomData : public Slide
{
protected:
    static constexpr UINT64 Untouched = 0xABCD;
    UINT64 Count = Untouched;

    AC_Result Ask(std::wstring key, Params params = {}, BYTE* buffer = nullptr, UINT64 size = 0)
    {
        Count = Untouched;
        return Call(_AC_GetCustomData, Doc(), key.data(), params.Get(), buffer, size, &Count);
    }
    std::array<int32_t, 4> Cropped(Params params)
    {
        std::array<int32_t, 4> rect{};
        EXPECT_EQ(Ask(L"CroppedLevelImageSize", std::move(params), reinterpret_cast<BYTE*>(rect.data()), sizeof rect),
                  AC_RESULT_SUCCESS);
        EXPECT_EQ(Count, sizeof rect);
        return rect;
    }
};

// ---- What there is ----

TEST_F(DocumentCustomData, AreTwo)
{
    Open(Stack(1));
    int count = 0;
    EXPECT_EQ(Call(_AC_GetSupportedCustomData, Doc(), nullptr, 0, &count), AC_RESULT_SUCCESS);
    EXPECT_EQ(count, 2);
}

TEST_F(DocumentCustomData, HaveNamesAndDescriptions)
{
    Open(Stack(1));
    std::array<AC_CUSTOM_DATA_INFO, 2> infos{};
    int count = 0;
    EXPECT_EQ(Call(_AC_GetSupportedCustomData, Doc(), infos.data(), 2, &count), AC_RESULT_SUCCESS);
    EXPECT_STREQ(infos[0].pszName, L"CroppedLevelImageSize");
    EXPECT_STREQ(infos[0].pszDescription, L"Level image size of cropped image");
    EXPECT_STREQ(infos[1].pszName, L"SlideImage");
    EXPECT_STREQ(infos[1].pszDescription, L"Overview image of the entire slide. Params: none");
}

TEST_F(DocumentCustomData, AreNotToldIntoTooSmallABuffer)
{
    Open(Stack(1));
    std::array<AC_CUSTOM_DATA_INFO, 2> infos{};
    int count = 0;
    EXPECT_EQ(Call(_AC_GetSupportedCustomData, Doc(), infos.data(), 1, &count), AC_RESULT_SUCCESS);
    EXPECT_EQ(count, 2);
    EXPECT_EQ(infos[0].pszName, nullptr);
}

TEST_F(DocumentCustomData, RefuseNullArguments)
{
    Open(Stack(1));
    std::wstring key = L"SlideImage";
    const AC_PARAMS none{};
    int count = 0;
    constexpr auto ofList = "params hImgDoc or numOfEles are NULL!";
    constexpr auto ofData = "Error: hImgDoc or key or params or numOfEles are NULL!";
    const auto messages = MessagesOf(
        [&]
        {
            EXPECT_EQ(_AC_GetSupportedCustomData(nullptr, nullptr, 0, &count), AC_RESULT_INVALID_PARAM);
            EXPECT_EQ(_AC_GetSupportedCustomData(Doc(), nullptr, 0, nullptr), AC_RESULT_INVALID_PARAM);
            EXPECT_EQ(_AC_GetCustomData(nullptr, key.data(), &none, nullptr, 0, &Count), AC_RESULT_INVALID_PARAM);
            EXPECT_EQ(_AC_GetCustomData(Doc(), nullptr, &none, nullptr, 0, &Count), AC_RESULT_INVALID_PARAM);
            EXPECT_EQ(_AC_GetCustomData(Doc(), key.data(), nullptr, nullptr, 0, &Count), AC_RESULT_INVALID_PARAM);
            EXPECT_EQ(_AC_GetCustomData(Doc(), key.data(), &none, nullptr, 0, nullptr), AC_RESULT_INVALID_PARAM);
        });
    EXPECT_THAT(messages, ElementsAre(ofList, ofList, ofData, ofData, ofData, ofData));
}

TEST_F(DocumentCustomData, RefuseAnUnknownKey)
{
    Open(Stack(1));
    AC_Result result = AC_RESULT_SUCCESS;
    EXPECT_THAT(MessagesOf([&] { result = Ask(L"Label"); }),
                ElementsAre("Only key values currently supported are 'SlideImage' and 'CroppedLevelImageSize'!"));
    EXPECT_EQ(result, AC_RESULT_INVALID_PARAM);
    EXPECT_EQ(Count, Untouched);
}

TEST_F(DocumentCustomData, RefuseABufferOfMoreThan32Bits)
{
    Open(Stack(1));
    BYTE byte = 0;
    EXPECT_EQ(Ask(L"SlideImage", {}, &byte, UINT64{1} << 32), AC_RESULT_FAILURE);
}

// ---- The cropped size of a level ----

Document TwoGroups()
{
    return Document()
        .With(Stack(1).Size(1000, 400).Tiles(256, 256).Levels(3))
        .With(Stack(2).Size(300, 200).Tiles(256, 256));
}

TEST_F(DocumentCustomData, CroppedSizeIsThatOfThePicture)
{
    Open(TwoGroups());
    EXPECT_THAT(Cropped({{L"groupId", L"0"}, {L"levelId", L"0"}}), ElementsAre(0, 0, 1000, 400));
    EXPECT_THAT(Cropped({{L"groupId", L"0"}, {L"levelId", L"1"}}), ElementsAre(0, 0, 500, 200));
    EXPECT_THAT(Cropped({{L"groupId", L"1"}, {L"levelId", L"0"}}), ElementsAre(0, 0, 300, 200));
}

TEST_F(DocumentCustomData, CroppedSizeTakesZeroForWhatIsNotInItsPlace)
{
    Open(TwoGroups());
    EXPECT_THAT(Cropped({{L"groupId", L"1"}}), ElementsAre(0, 0, 300, 200));
    EXPECT_THAT(Cropped({{L"levelId", L"1"}, {L"groupId", L"1"}}), ElementsAre(0, 0, 1000, 400));
    EXPECT_THAT(Cropped({{L"any", L"1"}}), ElementsAre(0, 0, 1000, 400));
    EXPECT_THAT(Cropped({{L"groupId", nullptr}}), ElementsAre(0, 0, 1000, 400));
    EXPECT_THAT(Cropped({{nullptr, L"1"}}), ElementsAre(0, 0, 1000, 400));
    EXPECT_THAT(Cropped({{L"groupId", L"one"}}), ElementsAre(0, 0, 1000, 400));
}

TEST_F(DocumentCustomData, CroppedSizeTakes16Bytes)
{
    Open(TwoGroups());
    EXPECT_EQ(Ask(L"CroppedLevelImageSize", {{L"groupId", L"0"}}), AC_RESULT_SUCCESS);
    EXPECT_EQ(Count, 16U);
}

TEST_F(DocumentCustomData, CroppedSizeLeavesTooSmallABufferAlone)
{
    Open(TwoGroups());
    std::array<BYTE, 15> buffer;
    buffer.fill(7);
    EXPECT_EQ(Ask(L"CroppedLevelImageSize", {{L"groupId", L"0"}}, buffer.data(), buffer.size()), AC_RESULT_SUCCESS);
    EXPECT_EQ(Count, 16U);
    EXPECT_THAT(buffer, testing::Each(7));
}

TEST_F(DocumentCustomData, RefuseANegativeNumberOfParameters)
{
    Open(TwoGroups());
    const AC_PARAMS params{-1, nullptr};
    UINT64 count = Untouched;
    std::wstring key = L"SlideImage";
    EXPECT_EQ(Call(_AC_GetCustomData, Doc(), key.data(), &params, nullptr, UINT64{0}, &count), AC_RESULT_INVALID_PARAM);
    EXPECT_EQ(count, Untouched);
}

TEST_F(DocumentCustomData, CroppedSizeNeedsParameters)
{
    Open(TwoGroups());
    AC_Result result = AC_RESULT_SUCCESS;
    EXPECT_THAT(MessagesOf([&] { result = Ask(L"CroppedLevelImageSize"); }),
                ElementsAre("'CroppedLevelImageSize' expects params!"));
    EXPECT_EQ(result, AC_RESULT_INVALID_PARAM);
}

TEST_F(DocumentCustomData, CroppedSizeOfAGroupOrLevelThatIsNotThereFailsAnAssertion)
{
    Open(TwoGroups());
    EXPECT_EQ(Ask(L"CroppedLevelImageSize", {{L"groupId", L"2"}}), AC_RESULT_FAILURE);
    EXPECT_EQ(Ask(L"CroppedLevelImageSize", {{L"groupId", L"4294967296"}}), AC_RESULT_FAILURE); // not cut to 0
    EXPECT_EQ(Ask(L"CroppedLevelImageSize", {{L"groupId", L"-1"}}), AC_RESULT_FAILURE);
    EXPECT_EQ(Ask(L"CroppedLevelImageSize", {{L"groupId", L"0"}, {L"levelId", L"3"}}), AC_RESULT_FAILURE);
}

// ---- The picture of the slide ----

const ByteString Picture = BytesOf("the bytes of a picture");

TEST_F(DocumentCustomData, SlideImageTellsItsSizeAndThenItsBytes)
{
    Open(Stack(1).Overview(Picture));
    EXPECT_EQ(Ask(L"SlideImage"), AC_RESULT_SUCCESS);
    EXPECT_EQ(Count, Picture.size());
    ByteString bytes(Count);
    EXPECT_EQ(Ask(L"SlideImage", {}, bytes.data(), bytes.size()), AC_RESULT_SUCCESS);
    EXPECT_EQ(bytes, Picture);
}

TEST_F(DocumentCustomData, SlideImageFitsIntoALargerBuffer)
{
    Open(Stack(1).Overview(Picture));
    ByteString bytes(Picture.size() + 1);
    EXPECT_EQ(Ask(L"SlideImage", {}, bytes.data(), bytes.size()), AC_RESULT_SUCCESS);
    EXPECT_EQ(Count, Picture.size());
    EXPECT_EQ(bytes.back(), 0);
}

TEST_F(DocumentCustomData, SlideImageLeavesTooSmallABufferAlone)
{
    Open(Stack(1).Overview(Picture));
    ByteString bytes(Picture.size() - 1, 7);
    EXPECT_EQ(Ask(L"SlideImage", {}, bytes.data(), bytes.size()), AC_RESULT_SUCCESS);
    EXPECT_EQ(Count, Picture.size());
    EXPECT_THAT(bytes, testing::Each(7));
}

TEST_F(DocumentCustomData, SlideImageMayBeMissing)
{
    Open(Stack(1));
    const auto messages = MessagesOf([&] { EXPECT_EQ(Ask(L"SlideImage"), AC_RESULT_SUCCESS); });
    EXPECT_EQ(Count, 0U);
    EXPECT_THAT(messages, Contains("Note: There is no blob (tag 2024) in the first multidim image!TO_DO: We should "
                                   "probably validate the other multidim images as it is not 100% clear that blob will "
                                   "NOT be present in other multidim images"));
}

TEST_F(DocumentCustomData, SlideImageIsTheFirstBlobOrNone)
{
    Open(Stack(1).FrameBlob(0, Blob(BlobId::Mask, 1, Picture)).FrameBlob(0, Blob(BlobId::MacroSlideImage, 1, Picture)));
    EXPECT_EQ(Ask(L"SlideImage"), AC_RESULT_SUCCESS);
    EXPECT_EQ(Count, 0U);
    EXPECT_EQ(static_cast<CIA::CImgDoc*>(Doc())->ReadChar(), 't') << "the file stands on the blob that it looked at";
}

TEST_F(DocumentCustomData, SlideImageTakesNoParameters)
{
    Open(Stack(1).Overview(Picture));
    AC_Result result = AC_RESULT_SUCCESS;
    EXPECT_THAT(MessagesOf(
                    [&] {
                        result = Ask(L"SlideImage", {{L"any", L"0"}});
                    }),
                ElementsAre("'SlideImage' does not expect any params!"));
    EXPECT_EQ(result, AC_RESULT_INVALID_PARAM);
}

TEST_F(DocumentCustomData, SlideImageOfADocumentWithoutStacksFailsAnAssertion)
{
    ASSERT_EQ(ResultOfOpening(Document()), AC_RESULT_SUCCESS);
    EXPECT_EQ(Ask(L"SlideImage"), AC_RESULT_FAILURE);
}

TEST_F(DocumentCustomData, SlideImageThatReachesBeyondTheFileFails)
{
    Open(Stack(1).FrameBlob(0, Blob(BlobId::MacroSlideImage, 1, Picture).BlobSize(1u << 20)));
    ByteString bytes(1u << 20);
    EXPECT_NE(Ask(L"SlideImage", {}, bytes.data(), bytes.size()), AC_RESULT_SUCCESS);
}

} // namespace
