#include "CommonImageAccess/XmlFunctions.h"

#include "CommonImageAccess/XmlMemory.h"
#include "CommonUtil/Assertion.h"
#include "CommonUtil/ErrnoKeeper.h"
#include "CommonUtil/Log.h"

#include <set>
#include <unordered_set>
#include <xercesc/framework/MemBufInputSource.hpp>
#include <xercesc/sax/HandlerBase.hpp>
#include <xercesc/sax/SAXParseException.hpp>
#include <xercesc/util/PlatformUtils.hpp>
#include <xercesc/util/XMLString.hpp>

namespace CIA
{

using namespace CommonUtil;

namespace
{

/// A text in the parser's own characters, for the calls that take one.
class CXmlText
{
public:
    explicit CXmlText(const char* text) : _text(xercesc::XMLString::transcode(text)) {}
    ~CXmlText() { xercesc::XMLString::release(&_text); }
    CXmlText(const CXmlText&) = delete;
    CXmlText& operator=(const CXmlText&) = delete;
    operator const XMLCh*() const { return _text; }

private:
    XMLCh* _text;
};

/// Units are widened as they stand: a pair of surrogates stays a pair.
std::wstring Widened(const XMLCh* text)
{
    std::wstring wide;
    for (; text && *text; ++text)
        wide.push_back(static_cast<wchar_t>(*text));
    return wide;
}

[[noreturn]] void RefuseXml(const char* where, const std::string& why)
{
    ZEL_LOG("Error: XML cannot be read: %s%s", where, why.c_str());
    FailAssertion(__FILE__, __LINE__);
}

/// What a text is refused for, beside not being XML.
struct CXmlRefused
{
    const char* Why;
};

// The parser looks names up in lists: many different ones would cost it the square of their number. Metadata of images
// has some dozens of names, and tags of some hundred characters.
constexpr size_t MaxNumOfNames = 1000;
constexpr size_t MaxSizeOfTag = 65536;

/// A parser's memory, which it is built up on.
class CMemoryOfParser
{
protected:
    CXmlMemory _memory;
};

/// Refuses a document type where it is declared, before anything in it is read, and texts of too many names.
class CBoundedParser : private CMemoryOfParser, public xercesc::XercesDOMParser
{
public:
    CBoundedParser() : XercesDOMParser(nullptr, &_memory) {}

    /// For what is made for this parser alone. It lives as long as the parser.
    xercesc::MemoryManager* Memory() { return &_memory; }

    void startElement(const xercesc::XMLElementDecl& elementDecl, const unsigned int urlId,
                      const XMLCh* const elementPrefix, const xercesc::RefVectorOf<xercesc::XMLAttr>& attributes,
                      const XMLSize_t numOfAttributes, const bool isEmpty, const bool isRoot) override
    {
        _elements.insert(elementDecl.getId());
        for (XMLSize_t i = 0; i < numOfAttributes; ++i)
            _attributes.insert(attributes.elementAt(i)->getQName());
        if (_elements.size() > MaxNumOfNames || _attributes.size() > MaxNumOfNames)
            throw CXmlRefused{"it has too many different names"};
        XercesDOMParser::startElement(elementDecl, urlId, elementPrefix, attributes, numOfAttributes, isEmpty, isRoot);
    }
    void doctypeDecl(const xercesc::DTDElementDecl&, const XMLCh* const, const XMLCh* const, const bool,
                     const bool) override
    {
        throw CXmlRefused{"it declares a document type"};
    }

private:
    std::unordered_set<XMLSize_t> _elements;
    std::set<std::u16string> _attributes;
};

/// Tags are looked at before they are parsed: the attributes of one alone can be too many.
void AssertTagsAreShort(const std::string& text)
{
    size_t end = 0; // the next '>', looked for once for all the '<' before it
    for (size_t start = text.find('<'); start != std::string::npos; start = text.find('<', start + 1))
    {
        if (end <= start)
            end = std::min(text.find('>', start), text.size());
        if (text.compare(start, 2, "<!") != 0 && end - start > MaxSizeOfTag)
            RefuseXml("", "it has too long a tag");
    }
}

class CThrowErrors : public xercesc::HandlerBase
{
public:
    void error(const xercesc::SAXParseException& exception) override { throw xercesc::SAXParseException(exception); }
    void fatalError(const xercesc::SAXParseException& exception) override
    {
        throw xercesc::SAXParseException(exception);
    }
};

/// A share in the library, which counts who has started it and ends with the last one. Given back when this module is
/// unloaded; a host that uses the library itself has a share of its own.
class CXerces
{
public:
    CXerces() { xercesc::XMLPlatformUtils::Initialize(); }
    ~CXerces() { xercesc::XMLPlatformUtils::Terminate(); }
    CXerces(const CXerces&) = delete;
    CXerces& operator=(const CXerces&) = delete;
};

void StartXerces()
{
    static const CXerces xerces;
}

void Configure(xercesc::XercesDOMParser& parser, CThrowErrors& errorHandler)
{
    parser.setErrorHandler(&errorHandler);
    parser.setValidationScheme(xercesc::XercesDOMParser::Val_Never);
    parser.setDoNamespaces(false);
    parser.setDoSchema(false);
    parser.setLoadExternalDTD(false);
    parser.setLoadSchema(false);
    parser.setDisableDefaultEntityResolution(true);
}

} // namespace

CXmlParser XmlDocument(const std::wstring& text)
{
    const CErrnoKeeper errnoKeeper;
    StartXerces();
    const std::string utf8 = Utf16ToUtf8(text);
    AssertTagsAreShort(utf8);
    auto parser = std::make_unique<CBoundedParser>();
    // The source makes the stream that the parser reads, and forgets when it is let down.
    xercesc::MemBufInputSource source(reinterpret_cast<const XMLByte*>(utf8.data()), utf8.size(), "text", false,
                                      parser->Memory());
    source.setEncoding(CXmlText("UTF-8")); // whatever the text itself says it was
    CThrowErrors errorHandler;
    Configure(*parser, errorHandler);
    try
    {
        parser->parse(source);
    }
    catch (const CXmlRefused& refused)
    {
        RefuseXml("", refused.Why);
    }
    catch (const xercesc::SAXParseException& exception)
    {
        RefuseXml("line ",
                  std::to_string(exception.getLineNumber()) + ": " + Utf16ToUtf8(Widened(exception.getMessage())));
    }
    catch (const xercesc::XMLException& exception)
    {
        RefuseXml("", Utf16ToUtf8(Widened(exception.getMessage())));
    }
    parser->setErrorHandler(nullptr); // it ends with this call
    ZEL_ASSERT(parser->getDocument());
    return parser;
}

std::vector<xercesc::DOMElement*> ChildXmlTags(const xercesc::DOMNode& node, const char* name)
{
    const CXmlText wanted(name);
    std::vector<xercesc::DOMElement*> children;
    for (xercesc::DOMNode* child = node.getFirstChild(); child; child = child->getNextSibling())
        if (child->getNodeType() == xercesc::DOMNode::ELEMENT_NODE &&
            xercesc::XMLString::equals(child->getNodeName(), wanted))
            children.push_back(static_cast<xercesc::DOMElement*>(child));
    return children;
}

xercesc::DOMElement* ChildXmlTag(const xercesc::DOMNode& node, const char* name)
{
    const std::vector<xercesc::DOMElement*> children = ChildXmlTags(node, name);
    return children.empty() ? nullptr : children.front();
}

std::wstring Attribute(const xercesc::DOMElement& element, const char* name)
{
    ZEL_ASSERT(element.hasAttribute(CXmlText(name)));
    return AttributeIfExists(element, name);
}

std::wstring AttributeIfExists(const xercesc::DOMElement& element, const char* name)
{
    return Widened(element.getAttribute(CXmlText(name)));
}

} // namespace CIA
