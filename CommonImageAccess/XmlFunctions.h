#pragma once
#include <memory>
#include <string>
#include <vector>
#include <xercesc/dom/DOM.hpp>
#include <xercesc/parsers/XercesDOMParser.hpp>

namespace CIA
{

// The five XML calls that reading a TIFF store needs. They stand on Xerces-C and know nothing of a format, so that a
// host's own can take their place. Text is untrusted: a document type declaration is refused, so that no entity is ever
// expanded and nothing is fetched.

/// A parsed document; the parser owns its nodes.
using CXmlParser = std::unique_ptr<xercesc::XercesDOMParser>;

/// Parses a text. One that is not well-formed, or declares a document type, is logged and is a failed assertion. Xerces
/// is started at the first call, once for all threads.
CXmlParser XmlDocument(const std::wstring& text);

/// The first child element of that (qualified) name; null when there is none.
xercesc::DOMElement* ChildXmlTag(const xercesc::DOMNode& node, const char* name);
/// All child elements of that (qualified) name, in document order.
std::vector<xercesc::DOMElement*> ChildXmlTags(const xercesc::DOMNode& node, const char* name);
/// The value of an attribute; asserts that the element has it.
std::wstring Attribute(const xercesc::DOMElement& element, const char* name);
/// The value of an attribute, empty when the element has none of that name.
std::wstring AttributeIfExists(const xercesc::DOMElement& element, const char* name);

} // namespace CIA
