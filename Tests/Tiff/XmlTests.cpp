// The five XML calls, and what they do not let a text do.

#include "CommonImageAccess/XmlFunctions.h"

#include "CommonUtil/Text.h"
#include "Tests/Support/Assertion.h"
#include "Tests/Support/ChildProcess.h"
#include "Tests/Support/Log.h"
#include "Tests/Support/TemporaryFolder.h"

#include <atomic>
#include <cerrno>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/resource.h>
#include <thread>

using namespace CIA;
using testing::HasSubstr;

namespace
{

const std::wstring Plain = L"<a><b n='1'/><c/><b n='2'/>text<x:b xmlns:x='u' n='3'/></a>";

xercesc::DOMElement& RootOf(const CXmlParser& parser)
{
    return *parser->getDocument()->getDocumentElement();
}

TEST(Xml, HasARootUnderItsDocument)
{
    const CXmlParser parser = XmlDocument(Plain);
    EXPECT_EQ(ChildXmlTag(*parser->getDocument(), "a"), &RootOf(parser));
    EXPECT_EQ(ChildXmlTag(*parser->getDocument(), "b"), nullptr);
}

TEST(Xml, GivesTheFirstChildOfAName)
{
    const CXmlParser parser = XmlDocument(Plain);
    EXPECT_EQ(Attribute(*ChildXmlTag(RootOf(parser), "b"), "n"), L"1");
    EXPECT_EQ(ChildXmlTag(RootOf(parser), "d"), nullptr);
}

TEST(Xml, GivesAllChildrenOfANameInTheirOrder)
{
    const CXmlParser parser = XmlDocument(Plain);
    const auto children = ChildXmlTags(RootOf(parser), "b");
    ASSERT_EQ(children.size(), 2u);
    EXPECT_EQ(Attribute(*children[1], "n"), L"2");
    EXPECT_TRUE(ChildXmlTags(RootOf(parser), "d").empty());
}

TEST(Xml, TakesAPrefixForAPartOfTheName)
{
    const CXmlParser parser = XmlDocument(Plain);
    EXPECT_EQ(Attribute(*ChildXmlTag(RootOf(parser), "x:b"), "n"), L"3");
}

TEST(Xml, NeedsNoDeclarationOfAPrefix)
{
    const CXmlParser parser = XmlDocument(L"<OME><OME:Image/></OME>");
    EXPECT_NE(ChildXmlTag(RootOf(parser), "OME:Image"), nullptr);
}

TEST(Xml, FailsForAnAttributeThatHasToBeThere)
{
    const CXmlParser parser = XmlDocument(L"<a n='' m='x'/>");
    EXPECT_EQ(Attribute(RootOf(parser), "m"), L"x");
    EXPECT_EQ(Attribute(RootOf(parser), "n"), L"");
    EXPECT_FAILED_ASSERTION(Attribute(RootOf(parser), "o"));
}

TEST(Xml, GivesAnEmptyTextForAnAttributeThatNeedNotBeThere)
{
    const CXmlParser parser = XmlDocument(L"<a m='x'/>");
    EXPECT_EQ(AttributeIfExists(RootOf(parser), "m"), L"x");
    EXPECT_EQ(AttributeIfExists(RootOf(parser), "o"), L"");
}

TEST(Xml, KnowsTheFiveEntitiesAndNumbers)
{
    const CXmlParser parser = XmlDocument(L"<a n='&lt;&gt;&amp;&quot;&apos;&#65;&#x42;'/>");
    EXPECT_EQ(Attribute(RootOf(parser), "n"), L"<>&\"'AB");
}

TEST(Xml, IsUtf8WhateverItSays)
{
    const CXmlParser parser = XmlDocument(L"<?xml version='1.0' encoding='ISO-8859-1'?><a n='\u00e4\u5207'/>");
    EXPECT_EQ(Attribute(RootOf(parser), "n"), L"\u00e4\u5207");
}

TEST(Xml, LeavesErrno)
{
    errno = EBADFD;
    XmlDocument(Plain);
    EXPECT_EQ(errno, EBADFD);
    EXPECT_FAILED_ASSERTION(XmlDocument(L"<a>"));
    EXPECT_EQ(errno, EBADFD);
}

TEST(Xml, ThatIsNotWellFormedFailsAndIsLoggedByItsLine)
{
    const std::string log = TestSupport::LogOf([] { EXPECT_FAILED_ASSERTION(XmlDocument(L"<a>\n<b>\n</a>")); });
    EXPECT_THAT(log, HasSubstr("Error: XML cannot be read: line 3: "));
}

TEST(Xml, OfNoElementFails)
{
    for (const wchar_t* text : {L"", L" ", L"text", L"<!-- a -->", L"<a", L"<a/><b/>", L"<a n=1/>", L"<a n='1' n='2'/>",
                                L"<a>&nothing;</a>", L"<a>\x1</a>", L"<?xml version='9.9'?>"})
        EXPECT_FAILED_ASSERTION(XmlDocument(text)) << text;
}

TEST(Xml, OfWrongCharactersFailsOrIsRead)
{
    for (const std::wstring& text :
         {std::wstring(L"<a n='\xD800'/>"), std::wstring(L"<a n='\xFFFF'/>"),
          std::wstring(L"<a n='") + static_cast<wchar_t>(0x110000) + L"'/>", std::wstring(L"<a n='\0'/>", 9)})
        TestSupport::AssertionOf([&] { XmlDocument(text); });
}

// What a text may not do.

std::wstring Laughs(const std::wstring& entityOfFirst)
{
    std::wstring text = L"<!DOCTYPE a [<!ENTITY l0 \"" + entityOfFirst + L"\">";
    for (int i = 1; i < 10; ++i)
    {
        text += L"<!ENTITY l" + std::to_wstring(i) + L" \"";
        for (int n = 0; n < 10; ++n)
            text += L"&l" + std::to_wstring(i - 1) + L";";
        text += L"\">";
    }
    return text + L"]><a>&l9;</a>";
}

std::wstring Quadratic()
{
    std::wstring text = L"<!DOCTYPE a [<!ENTITY l \"" + std::wstring(50000, L'x') + L"\">]><a>";
    for (int n = 0; n < 50000; ++n)
        text += L"&l;";
    return text + L"</a>";
}

struct CBomb
{
    const char* Name;
    std::wstring Text;
};

struct NameOfBomb
{
    template <typename Info>
    std::string operator()(const Info& info) const
    {
        return info.param.Name;
    }
};

class XmlBomb : public testing::TestWithParam<CBomb>
{
};

/// What a process that parses one may take.
[[maybe_unused]] constexpr rlim_t ModestMemory = 64 << 20;

/// Parses in a process that has a few megabytes and seconds; true when the text was refused.
bool IsRefusedWithinBounds(const std::wstring& text)
{
    XmlDocument(L"<a/>"); // the library is started before memory is counted
    return TestSupport::RunInChild(
               [&text]
               {
#ifndef __SANITIZE_ADDRESS__ // whose own memory would be counted
                   rlimit limit{};
                   getrlimit(RLIMIT_DATA, &limit);
                   limit.rlim_cur = ModestMemory;
                   setrlimit(RLIMIT_DATA, &limit);
#endif
                   return TestSupport::AssertionOf([&] { XmlDocument(text); }).empty() ? 1 : 0;
               },
               10) == TestSupport::ExitedWith(0);
}

TEST_P(XmlBomb, IsRefusedWithinBounds)
{
    EXPECT_TRUE(IsRefusedWithinBounds(GetParam().Text));
}

INSTANTIATE_TEST_SUITE_P(
    Classic, XmlBomb,
    testing::Values(
        CBomb{"BillionLaughs", Laughs(L"ha")},
        CBomb{"BillionLaughsInAnAttribute",
              L"<!DOCTYPE a [<!ENTITY l0 \"ha\"><!ENTITY l1 \"&l0;&l0;\">]><a n='&l1;'/>"},
        CBomb{"QuadraticBlowUp", Quadratic()}, CBomb{"EntityOfItself", L"<!DOCTYPE a [<!ENTITY l \"&l;\">]><a>&l;</a>"},
        CBomb{"ParameterEntities", L"<!DOCTYPE a [<!ENTITY % x \"<!ENTITY y 'z'>\"> %x; %x;]><a>&y;</a>"},
        CBomb{"ExternalEntity", L"<!DOCTYPE a [<!ENTITY l SYSTEM \"file:///etc/passwd\">]><a>&l;</a>"},
        CBomb{"ExternalParameterEntity", L"<!DOCTYPE a [<!ENTITY % l SYSTEM \"file:///etc/passwd\"> %l;]><a/>"},
        CBomb{"EndlessFile", L"<!DOCTYPE a [<!ENTITY l SYSTEM \"file:///dev/zero\">]><a>&l;</a>"},
        CBomb{"ExternalType", L"<!DOCTYPE a SYSTEM \"file:///dev/zero\"><a/>"},
        CBomb{"PublicType", L"<!DOCTYPE a PUBLIC \"-//x//y\" \"http://127.0.0.1:9/a.dtd\"><a/>"},
        CBomb{"TagsThatNeverEnd", std::wstring(3000000, L'<') + L'>'}, CBomb{"EmptyType", L"<!DOCTYPE a><a/>"},
        CBomb{"DefaultAttributes", L"<!DOCTYPE a [<!ATTLIST a n CDATA \"x\">]><a/>"}),
    NameOfBomb());

TEST(Xml, WithADocumentTypeFailsByName)
{
    const std::string log = TestSupport::LogOf([] { EXPECT_FAILED_ASSERTION(XmlDocument(L"<!DOCTYPE a><a/>")); });
    EXPECT_THAT(log, HasSubstr("Error: XML cannot be read: it declares a document type"));
}

/// An element with so many others, or attributes, of different names.
std::wstring ElementsOfDifferentNames(int number)
{
    std::wstring text = L"<a>";
    for (int n = 1; n < number; ++n)
        text += L"<e" + std::to_wstring(n) + L"/>";
    return text + L"</a>";
}
std::wstring AttributesOfDifferentNames(int number)
{
    std::wstring text = L"<a";
    for (int n = 0; n < number; ++n)
        text += L" n" + std::to_wstring(n) + L"=''";
    return text + L"/>";
}

TEST(Xml, HasAtMostAThousandDifferentNames)
{
    for (const auto& textOf : {ElementsOfDifferentNames, AttributesOfDifferentNames})
    {
        EXPECT_NE(XmlDocument(textOf(1000)), nullptr);
        const std::string log = TestSupport::LogOf([&] { EXPECT_FAILED_ASSERTION(XmlDocument(textOf(1001))); });
        EXPECT_THAT(log, HasSubstr("it has too many different names"));
    }
}

TEST(Xml, HasTagsOfAtMost64Kilobytes)
{
    const auto tagOf = [](size_t size) { return L"<a n='" + std::wstring(size - 9, L'x') + L"'/>"; };
    EXPECT_NE(XmlDocument(tagOf(60000)), nullptr);
    const std::string log = TestSupport::LogOf([&] { EXPECT_FAILED_ASSERTION(XmlDocument(tagOf(66000))); });
    EXPECT_THAT(log, HasSubstr("it has too long a tag"));
}

TEST(Xml, DoesNotFetchASchema)
{
    const TestSupport::TemporaryFolder folder;
    const std::wstring schema = L"file://" + folder.WideName("nothing.xsd");
    const CXmlParser parser = XmlDocument(L"<a xmlns:xsi='http://www.w3.org/2001/XMLSchema-instance' "
                                          L"xsi:noNamespaceSchemaLocation='" +
                                          schema + L"'/>");
    EXPECT_EQ(parser->getErrorCount(), 0u);
}

TEST(Xml, DoesNotFollowAnInclusion)
{
    const CXmlParser parser = XmlDocument(
        L"<a><xi:include xmlns:xi='http://www.w3.org/2001/XInclude' href='file:///etc/passwd' parse='text'/></a>");
    EXPECT_NE(ChildXmlTag(RootOf(parser), "xi:include"), nullptr);
}

TEST(Xml, MayBeNestedDeeply)
{
    constexpr size_t Depth = 100000;
    std::wstring text;
    for (size_t i = 0; i < Depth; ++i)
        text += L"<a>";
    EXPECT_FAILED_ASSERTION(XmlDocument(text));
    for (size_t i = 0; i < Depth; ++i)
        text += L"</a>";
    EXPECT_NE(XmlDocument(text), nullptr);
}

TEST(Xml, IsReadByManyThreadsAtOnce)
{
    // In a process of its own, where the library is not started yet.
    EXPECT_EQ(TestSupport::RunInChild(
                  []
                  {
                      std::atomic<int> numOfGood = 0;
                      std::vector<std::jthread> threads;
                      for (int i = 0; i < 8; ++i)
                          threads.emplace_back(
                              [&]
                              {
                                  for (int n = 0; n < 50; ++n)
                                      numOfGood += ChildXmlTags(RootOf(XmlDocument(Plain)), "b").size() == 2;
                              });
                      threads.clear();
                      return numOfGood == 8 * 50 ? 0 : 1;
                  }),
              TestSupport::ExitedWith(0));
}

} // namespace
