// What a document tells about itself, beside the property sets that hosts read; and the version of its format.

#include "CommonImageAccess/Handles.h"
#include "CommonUtil/Text.h"
#include "SampleDocuments/Tags.h"
#include "Tests/Properties/PropertySets.h"
#include "Tests/Support/Assertion.h"

using namespace SlideOfTest;

namespace
{

using Text = std::function<std::wstring(CIA::CImgDoc&)>;

struct PropertyRow : Row
{
    Text Ask;
    uint32_t Tag; ///< below the document's properties
    CNode Stored;
    std::wstring Answer;
};

class DocumentProperty : public Slide, public testing::WithParamInterface<PropertyRow>
{
protected:
    std::wstring Answer(Document document)
    {
        Open(std::move(document));
        return GetParam().Ask(CIA::Doc(Doc()));
    }
};

TEST_P(DocumentProperty, IsThatOfItsField)
{
    Document document;
    document.With(Stack(1));
    document.DocumentProperties().Put(GetParam().Stored);
    EXPECT_EQ(Answer(document), GetParam().Answer);
}

TEST_P(DocumentProperty, IsEmptyWithoutItsField)
{
    Document document;
    document.With(Stack(1));
    if (CNode& properties = document.DocumentProperties(); properties.FindChild(GetParam().Tag))
        properties.Drop(GetParam().Tag);
    EXPECT_EQ(Answer(document), L"");
}

TEST_P(DocumentProperty, IsEmptyWithoutASetOfProperties)
{
    Document document;
    document.With(Stack(1));
    document.Volume({Tag::Collection, Tag::CollectionProperties}).Drop(Tag::PropertySet);
    EXPECT_EQ(Answer(document), L"");
}

INSTANTIATE_TEST_SUITE_P(Fields, DocumentProperty,
                         testing::Values(PropertyRow{{"Description"},
                                                     [](auto& doc) { return doc.Description(); },
                                                     Tag::Note,
                                                     SampleDocuments::Text(Tag::Note, "note"),
                                                     L"note"},
                                         PropertyRow{{"CreationTime"},
                                                     [](auto& doc) { return doc.CreationTime(); },
                                                     Tag::DocumentTime,
                                                     Int64(Tag::DocumentTime, 86399, FieldCode::Int64TimeStamp),
                                                     L"1970-01-01T23:59:59+00:00"},
                                         PropertyRow{{"UpdateDateTime"},
                                                     [](auto& doc) { return doc.UpdateDateTime(); },
                                                     Tag::LastSavedTime,
                                                     Int64(Tag::LastSavedTime, 0, FieldCode::Int64TimeStamp),
                                                     L"1970-01-01T00:00:00+00:00"},
                                         PropertyRow{{"Author"},
                                                     [](auto& doc) { return doc.Author(); },
                                                     Tag::Author,
                                                     SampleDocuments::Text(Tag::Author, "Ada"),
                                                     L"Ada"},
                                         PropertyRow{{"CreatorSoftwareName"},
                                                     [](auto& doc) { return doc.CreatorSoftwareName(); },
                                                     Tag::CreatorName,
                                                     SampleDocuments::Text(Tag::CreatorName, "scanner"),
                                                     L"scanner"},
                                         PropertyRow{{"CreatorSoftwareBuildNumber"},
                                                     [](auto& doc) { return doc.CreatorSoftwareBuildNumber(); },
                                                     Tag::CreatorBuildNumber,
                                                     Int32(Tag::CreatorBuildNumber, -7),
                                                     L"-7"},
                                         PropertyRow{{"CreatorHardwareName"},
                                                     [](auto& doc) { return doc.CreatorHardwareName(); },
                                                     Tag::ProductName,
                                                     SampleDocuments::Text(Tag::ProductName, "XV 200"),
                                                     L"XV 200"},
                                         PropertyRow{{"CreatorHardwareVersion"},
                                                     [](auto& doc) { return doc.CreatorHardwareVersion(); },
                                                     Tag::ProductVersion,
                                                     SampleDocuments::Text(Tag::ProductVersion, "3"),
                                                     L"3"},
                                         PropertyRow{{"FamilyId"},
                                                     [](auto& doc) { return doc.FamilyId(); },
                                                     Tag::FamilyId,
                                                     SampleDocuments::Text(Tag::FamilyId, "{1}"),
                                                     L"{1}"}),
                         NameOfRow());

class DocumentProperties : public Slide
{
protected:
    CIA::CImgDoc& Asked() const { return CIA::Doc(Doc()); }
    void OpenWith(CDocumentProperties properties, int mode = AC_OM_READ)
    {
        Open(Document().With(Stack(1)).Properties(std::move(properties)), mode);
    }
};

TEST_F(DocumentProperties, TellNoVersionOfAProductWithoutName)
{
    OpenWith({.ProductName = {}, .ProductVersion = "3"});
    EXPECT_STREQ(Asked().CreatorHardwareVersion(), L"");
}

TEST_F(DocumentProperties, NeedTheCollectionsPropertiesForTheNameOfTheProductAlone)
{
    Open(Document().With(Stack(1)).WithoutProperties());
    EXPECT_FAILED_ASSERTION(Asked().CreatorHardwareName());
    EXPECT_STREQ(Asked().CreatorHardwareVersion(), L"");
    EXPECT_STREQ(Asked().Description(), L"");
    EXPECT_EQ(Asked().CreationTime(), L"");
    EXPECT_EQ(Asked().CreatorSoftwareVersion(), L"");
}

TEST_F(DocumentProperties, TellTheIdOfOlderDocuments)
{
    Open(Document().With(Stack(1)).PersistentId("{42}"));
    EXPECT_STREQ(Asked().DocPersistentID(), L"{42}");
    Open(Document().With(Stack(1)));
    EXPECT_STREQ(Asked().DocPersistentID(), L"");
}

struct SoftwareRow : Row
{
    std::optional<int32_t> Major;
    std::optional<int32_t> Minor;
    std::optional<int32_t> Sub;
    const wchar_t* Tolerant;
    const wchar_t* Strict;
};

class SoftwareVersion : public DocumentProperties, public testing::WithParamInterface<SoftwareRow>
{
};

TEST_P(SoftwareVersion, IsMadeOfThreeParts)
{
    const SoftwareRow& row = GetParam();
    const CDocumentProperties properties{
        .CreatorMajorVersion = row.Major, .CreatorMinorVersion = row.Minor, .CreatorSubVersion = row.Sub};
    OpenWith(properties, AC_OM_FORCE);
    EXPECT_EQ(Asked().CreatorSoftwareVersion(), row.Tolerant);
    OpenWith(properties, AC_OM_READ);
    EXPECT_EQ(Asked().CreatorSoftwareVersion(), row.Strict);
}

INSTANTIATE_TEST_SUITE_P(Parts, SoftwareVersion,
                         testing::Values(SoftwareRow{{"All"}, 1, 2, 3, L"1.2.3", L"1.2.3"},
                                         SoftwareRow{{"WithoutSub"}, 1, 2, {}, L"1.2.0", L""},
                                         SoftwareRow{{"WithoutMinor"}, 1, {}, 3, L"1.0.3", L""},
                                         SoftwareRow{{"WithoutMajor"}, {}, 2, 3, L"0.2.3", L""},
                                         SoftwareRow{{"None"}, {}, {}, {}, L"0.0.0", L""}),
                         NameOfRow());

// ---- The version of the format ----

struct VersionRow : Row
{
    std::vector<uint32_t> Numbers;
    AC_Result Result;
    CMN_VERSION_INFO Version;
};

class FormatVersion : public DocumentProperties, public testing::WithParamInterface<VersionRow>
{
};

TEST_P(FormatVersion, FillsTheProduct)
{
    Open(Document().With(Stack(1)).VersionNumber(GetParam().Numbers));
    CMN_VERSION_INFO version = {{9, 9}, {9, 9}};
    EXPECT_EQ(Call(_AC_GetFileVersion, Doc(), &version), GetParam().Result);
    EXPECT_EQ(version.base.unMajor, GetParam().Version.base.unMajor);
    EXPECT_EQ(version.base.unMinor, GetParam().Version.base.unMinor);
    EXPECT_EQ(version.product.unMajor, GetParam().Version.product.unMajor);
    EXPECT_EQ(version.product.unMinor, GetParam().Version.product.unMinor);
}

constexpr CMN_VERSION_INFO Untouched = {{9, 9}, {9, 9}};

INSTANTIATE_TEST_SUITE_P(
    Numbers, FormatVersion,
    testing::Values(VersionRow{{"Usual"}, {5, 12}, AC_RESULT_SUCCESS, {{0, 0}, {5, 12}}},
                    VersionRow{{"Zeros"}, {0, 0}, AC_RESULT_SUCCESS, {{0, 0}, {0, 0}}},
                    VersionRow{{"Largest"}, {0x7FFFFFFF, 1}, AC_RESULT_SUCCESS, {{0, 0}, {0x7FFFFFFF, 1}}},
                    VersionRow{{"BeyondIntegers"}, {0xFFFFFFFF, 1}, AC_RESULT_SUCCESS, {{0, 0}, {-1, 1}}},
                    VersionRow{{"OneNumber"}, {5}, AC_RESULT_FAILURE, Untouched},
                    VersionRow{{"ThreeNumbers"}, {5, 12, 1}, AC_RESULT_FAILURE, Untouched}),
    NameOfRow());

TEST_F(DocumentProperties, TellTheVersionOfTheFormatAsText)
{
    Open(Document().With(Stack(1)).VersionNumber({5, 12}));
    EXPECT_EQ(Asked().FileFormatVersion(), L"5 build 12");
}

TEST_F(DocumentProperties, NeedAVersionOfTheFormat)
{
    Document document;
    document.With(Stack(1));
    document.Volume({Tag::Collection}).Drop(Tag::VersionNumber);
    Open(document);
    CMN_VERSION_INFO version{};
    EXPECT_EQ(Call(_AC_GetFileVersion, Doc(), &version), AC_RESULT_FAILURE);
}

/// A document of no format, which tells a version as a test wants it.
class DocumentOfAnyVersion : public CIA::CImgDoc
{
public:
    explicit DocumentOfAnyVersion(std::wstring version)
        : CImgDoc(L"./no.zel", {L"zel"}, false, false), _version(std::move(version))
    {
    }
    CIA::ImgDocFormat Format() override { return CIA::eUnknown; }
    std::wstring FileFormatVersion() override { return _version; }
    bool BrixCustomProperty(const wchar_t*, const CommonUtil::CArrayStartAndSize<const AC_PARAM_ELEMENT>&,
                            CIA::CByteArray&) override
    {
        return false;
    }
    bool Thumbnail(CIA::CByteArray&) override { return false; }
    const wchar_t* DocPersistentID() override { return L""; }
    const wchar_t* Description() override { return L""; }
    std::wstring CreationTime() override { return L""; }
    const wchar_t* Author() override { return L""; }
    const wchar_t* CreatorSoftwareName() override { return L""; }
    std::wstring CreatorSoftwareVersion() override { return L""; }
    std::wstring CreatorSoftwareBuildNumber() override { return L""; }
    const wchar_t* CreatorHardwareName() override { return L""; }
    const wchar_t* CreatorHardwareVersion() override { return L""; }
    std::wstring UpdateDateTime() override { return L""; }
    const wchar_t* FamilyId() override { return L""; }

protected:
    bool ReadFileHeader() override { return true; }
    bool ReadFileMetaData() override { return true; }
    bool MultiDimImages_init(CIA::CMultiDimImages&) override { return false; }
    bool BrixCustomProperties_init(CIA::StringMap&) override { return false; }

private:
    std::wstring _version;
};

struct SplitRow : Row
{
    const wchar_t* Text;
    AC_Result Result;
    std::array<INT32, 4> Numbers; ///< base, then product
};

class VersionText : public testing::TestWithParam<SplitRow>
{
};

TEST_P(VersionText, IsAlignedToItsEnd)
{
    DocumentOfAnyVersion document(GetParam().Text);
    CMN_VERSION_INFO version = {{9, 9}, {9, 9}};
    EXPECT_EQ(Call(_AC_GetFileVersion, static_cast<CIA::CImgDoc*>(&document), &version), GetParam().Result);
    EXPECT_EQ((std::array<INT32, 4>{version.base.unMajor, version.base.unMinor, version.product.unMajor,
                                    version.product.unMinor}),
              GetParam().Numbers);
}

constexpr std::array<INT32, 4> Nines = {9, 9, 9, 9};

INSTANTIATE_TEST_SUITE_P(
    Texts, VersionText,
    testing::Values(SplitRow{{"OnePart"}, L"7", AC_RESULT_SUCCESS, {0, 0, 0, 7}},
                    SplitRow{{"TwoParts"}, L"2.1", AC_RESULT_SUCCESS, {0, 0, 2, 1}},
                    SplitRow{{"ThreeParts"}, L"1.2.3", AC_RESULT_SUCCESS, {0, 1, 2, 3}},
                    SplitRow{{"FourParts"}, L"1.2.3.4", AC_RESULT_SUCCESS, {1, 2, 3, 4}},
                    SplitRow{{"ThreePartsAndBuild"}, L"1.2.3 build 45", AC_RESULT_SUCCESS, {1, 2, 3, 45}},
                    SplitRow{{"OnePartAndBuild"}, L"5 build 12", AC_RESULT_SUCCESS, {0, 0, 5, 12}},
                    SplitRow{{"FiveParts"}, L"1.2.3.4.5", AC_RESULT_FAILURE, Nines},
                    SplitRow{{"FourPartsAndBuild"}, L"1.2.3.4 build 5", AC_RESULT_FAILURE, Nines},
                    SplitRow{{"TwoBuilds"}, L"1 build 2 build 3", AC_RESULT_FAILURE, Nines},
                    SplitRow{{"BuildWithoutNumber"}, L"1 build ", AC_RESULT_FAILURE, Nines},
                    SplitRow{{"BeyondAllIntegers"}, L"4294967296", AC_RESULT_FAILURE, Nines},
                    SplitRow{{"Letters"}, L"1.2b", AC_RESULT_FAILURE, Nines},
                    SplitRow{{"Negative"}, L"-1.2", AC_RESULT_FAILURE, Nines},
                    SplitRow{{"EmptyPart"}, L"1..2", AC_RESULT_FAILURE, Nines},
                    SplitRow{{"Empty"}, L"", AC_RESULT_FAILURE, Nines}),
    NameOfRow());

TEST_F(DocumentProperties, RefuseNullArguments)
{
    Open(Stack(1));
    CMN_VERSION_INFO version{};
    EXPECT_THAT(MessagesOf([&] { EXPECT_EQ(_AC_GetFileVersion(nullptr, &version), AC_RESULT_INVALID_PARAM); }),
                ElementsAre("params hImgDoc or version are NULL!"));
    EXPECT_EQ(_AC_GetFileVersion(Doc(), nullptr), AC_RESULT_INVALID_PARAM);
}

} // namespace
