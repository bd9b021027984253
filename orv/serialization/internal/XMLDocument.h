#pragma once

#include <iosfwd>
#include <string>
#include <string_view>
#include <xercesc/util/XercesDefs.hpp>

XERCES_CPP_NAMESPACE_BEGIN
class DOMDocument;
class DOMElement;
XERCES_CPP_NAMESPACE_END

namespace Zan::Orv::Core::Service::Internal
{

/// The parser's text as ours, and as a view. Null is empty.
std::u16string_view ViewXML(XMLCh const* text);
std::string FromXML(XMLCh const* text);

/// The tree of one document, parsed whole from a stream.
class XMLDocument
{
public:
    /// \throws SerializeException with the parser's words for anything that goes wrong.
    explicit XMLDocument(std::istream& stream);
    XMLDocument(XMLDocument const&) = delete;
    XMLDocument& operator=(XMLDocument const&) = delete;
    ~XMLDocument();

    xercesc::DOMElement* Root() const;

    /// Appends a new, empty element to `parent`.
    /// \throws SerializeException when `tag` is no XML name.
    xercesc::DOMElement* Append(xercesc::DOMElement& parent, std::u16string const& tag);

private:
    xercesc::DOMDocument* document_;
};

} // namespace Zan::Orv::Core::Service::Internal
