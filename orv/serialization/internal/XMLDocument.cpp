#include "orv/serialization/internal/XMLDocument.h"

#include "orv/foundation/Exception.h"
#include "orv/serialization/internal/XMLText.h"

#include <istream>
#include <string>
#include <xercesc/dom/DOM.hpp>
#include <xercesc/framework/XMLBuffer.hpp>
#include <xercesc/parsers/XercesDOMParser.hpp>
#include <xercesc/sax/ErrorHandler.hpp>
#include <xercesc/sax/InputSource.hpp>
#include <xercesc/sax/SAXException.hpp>
#include <xercesc/sax/SAXParseException.hpp>
#include <xercesc/util/BinInputStream.hpp>
#include <xercesc/util/PlatformUtils.hpp>
#include <xercesc/util/SecurityManager.hpp>
#include <xercesc/util/XMLEntityResolver.hpp>
#include <xercesc/util/XMLResourceIdentifier.hpp>
#include <xercesc/validators/DTD/DTDEntityDecl.hpp>

namespace Zan::Orv::Core::Service::Internal
{

namespace
{

// What a document may ask of its own entities. Together they bound what a small document can grow to.
constexpr XMLSize_t maxExpansions = 1000;
constexpr XMLSize_t maxEntityLength = 10000;

constexpr std::size_t maxMessage = 1023;

// The parser library counts its users, but not safely between threads. The first reader starts it, and it
// stays.
class ParserLibrary
{
public:
    static void Start() { static ParserLibrary const library; }

private:
    ParserLibrary()
    {
        try {
            xercesc::XMLPlatformUtils::Initialize();
        } catch (xercesc::XMLException const& e) {
            throw SerializeException(FromXML(e.getMessage()));
        }
    }
};

class BinStreamInputStream : public xercesc::BinInputStream
{
public:
    explicit BinStreamInputStream(std::istream& stream) : stream_(stream) {}

    XMLFilePos curPos() const override { return static_cast<XMLFilePos>(stream_.tellg()); }

    XMLSize_t readBytes(XMLByte* const toFill, XMLSize_t const maxToRead) override
    {
        stream_.read(reinterpret_cast<char*>(toFill), static_cast<std::streamsize>(maxToRead));
        return static_cast<XMLSize_t>(stream_.gcount());
    }

    XMLCh const* getContentType() const override { return nullptr; }

private:
    std::istream& stream_;
};

class StreamInputSource : public xercesc::InputSource
{
public:
    explicit StreamInputSource(std::istream& stream)
        : InputSource(xercesc::XMLPlatformUtils::fgMemoryManager), stream_(stream)
    {
    }

    xercesc::BinInputStream* makeStream() const override { return new BinStreamInputStream(stream_); }

private:
    std::istream& stream_;
};

// A warning is as fatal as an error: a document that is not quite right is not read.
class InputErrorHandler : public xercesc::ErrorHandler
{
public:
    void warning(xercesc::SAXParseException const& e) override { Throw(e); }
    void error(xercesc::SAXParseException const& e) override { Throw(e); }
    void fatalError(xercesc::SAXParseException const& e) override { Throw(e); }
    void resetErrors() override {}

private:
    [[noreturn]] static void Throw(xercesc::SAXParseException const& e)
    {
        throw SerializeException(FromXML(e.getMessage()).substr(0, maxMessage));
    }
};

// Nothing but the stream is ever opened.
class EntityRefuser : public xercesc::XMLEntityResolver
{
public:
    xercesc::InputSource* resolveEntity(xercesc::XMLResourceIdentifier* resource) override
    {
        throw SerializeException("External entity refused: '" + FromXML(resource->getSystemId()) +
                                 "'. A document is read from its stream alone.");
    }
};

class Parser : public xercesc::XercesDOMParser
{
public:
    Parser()
    {
        limits_.setEntityExpansionLimit(maxExpansions);
        setSecurityManager(&limits_);
        setXMLEntityResolver(&refuser_);
        setDisableDefaultEntityResolution(true);
    }

    void entityDecl(xercesc::DTDEntityDecl const& entity, bool const isParameter,
                    bool const isIgnored) override
    {
        if (entity.getValueLen() > maxEntityLength)
            throw SerializeException("Entity refused: '" + FromXML(entity.getName()) + "' has more than " +
                                     std::to_string(maxEntityLength) + " characters.");
        XercesDOMParser::entityDecl(entity, isParameter, isIgnored);
    }

private:
    xercesc::SecurityManager limits_;
    EntityRefuser refuser_;
};

xercesc::DOMDocument* Parse(std::istream& stream)
{
    ParserLibrary::Start();
    Parser parser;
    InputErrorHandler handler;
    StreamInputSource const source(stream);
    try {
        parser.setErrorHandler(&handler);
        parser.parse(source);
    } catch (xercesc::XMLException const& e) {
        throw SerializeException(FromXML(e.getMessage()));
    } catch (xercesc::SAXException const& e) {
        throw SerializeException(FromXML(e.getMessage()));
    } catch (xercesc::DOMException const& e) {
        throw SerializeException(FromXML(e.getMessage()));
    } catch (std::exception const& e) {
        throw SerializeException(e.what());
    } catch (...) {
        throw SerializeException("Unknown error occurred while deserializing.");
    }
    return parser.adoptDocument();
}

} // namespace

std::u16string_view ViewXML(XMLCh const* text)
{
    static_assert(sizeof(XMLCh) == sizeof(char16_t));
    return text == nullptr ? std::u16string_view() : reinterpret_cast<char16_t const*>(text);
}

std::string FromXML(XMLCh const* text)
{
    std::string result;
    AssignUTF8(result, ViewXML(text));
    return result;
}

XMLDocument::XMLDocument(std::istream& stream) : document_(Parse(stream))
{
}

XMLDocument::~XMLDocument()
{
    document_->release();
}

xercesc::DOMElement* XMLDocument::Root() const
{
    return document_->getDocumentElement();
}

xercesc::DOMElement* XMLDocument::Append(xercesc::DOMElement& parent, std::u16string const& tag)
{
    try {
        auto* const element = document_->createElement(reinterpret_cast<XMLCh const*>(tag.c_str()));
        parent.appendChild(element);
        return element;
    } catch (xercesc::DOMException const& e) {
        throw SerializeException(FromXML(e.getMessage()));
    }
}

} // namespace Zan::Orv::Core::Service::Internal
