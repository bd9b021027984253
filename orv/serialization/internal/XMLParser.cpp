#include "orv/serialization/internal/XMLParser.h"

#include "orv/foundation/Exception.h"
#include "orv/serialization/internal/XMLText.h"
#include "orv/serialization/internal/XMLTree.h"

#include <cstddef>
#include <istream>
#include <new>
#include <string>
#include <utility>
#include <xercesc/framework/MemoryManager.hpp>
#include <xercesc/framework/XMLAttr.hpp>
#include <xercesc/framework/XMLDocumentHandler.hpp>
#include <xercesc/framework/XMLElementDecl.hpp>
#include <xercesc/parsers/SAXParser.hpp>
#include <xercesc/sax/ErrorHandler.hpp>
#include <xercesc/sax/HandlerBase.hpp>
#include <xercesc/sax/InputSource.hpp>
#include <xercesc/sax/SAXException.hpp>
#include <xercesc/sax/SAXParseException.hpp>
#include <xercesc/util/BinInputStream.hpp>
#include <xercesc/util/OutOfMemoryException.hpp>
#include <xercesc/util/PlatformUtils.hpp>
#include <xercesc/util/RefVectorOf.hpp>
#include <xercesc/util/SecurityManager.hpp>
#include <xercesc/util/XMLEntityResolver.hpp>
#include <xercesc/util/XMLResourceIdentifier.hpp>
#include <xercesc/validators/DTD/DTDElementDecl.hpp>
#include <xercesc/validators/DTD/DTDEntityDecl.hpp>

namespace Zan::Orv::Core::Service::Internal {

namespace {

// What a document may ask of its own entities. Together they bound what a small document can grow to.
constexpr XMLSize_t maxExpansions = 1000;
constexpr XMLSize_t maxEntityLength = 10000;

constexpr std::size_t maxMessage = 1023;

std::u16string_view View(XMLCh const* text)
{
    static_assert(sizeof(XMLCh) == sizeof(char16_t));
    return text == nullptr ? std::u16string_view() : reinterpret_cast<char16_t const*>(text);
}

std::string Text(XMLCh const* text)
{
    std::string result;
    AssignUTF8(result, View(text));
    return result;
}

// The parser library counts its users, but not safely between threads. The first reader starts it, and it
// stays.
class ParserLibrary
{
public:
    static void Start() { static ParserLibrary const library; }

private:
    ParserLibrary() { xercesc::XMLPlatformUtils::Initialize(); }
};

// What one document is parsed with. When memory runs short, the parser leaves everything as it stands and frees
// nothing, so the blocks are kept in a list.
class ParserMemory : public xercesc::MemoryManager
{
public:
    ParserMemory() = default;
    ~ParserMemory() override
    {
        while (first_ != nullptr)
            ::operator delete(std::exchange(first_, first_->next));
    }

    void* allocate(XMLSize_t size) override
    {
        void* const memory = ::operator new(sizeof(Block) + size, std::nothrow);
        if (memory == nullptr)
            throw xercesc::OutOfMemoryException();
        auto* const block = new (memory) Block{nullptr, first_};
        if (first_ != nullptr)
            first_->previous = block;
        first_ = block;
        return block + 1;
    }

    void deallocate(void* memory) override
    {
        if (memory == nullptr)
            return;
        Block* const block = static_cast<Block*>(memory) - 1;
        (block->previous != nullptr ? block->previous->next : first_) = block->next;
        if (block->next != nullptr)
            block->next->previous = block->previous;
        ::operator delete(block);
    }

    xercesc::MemoryManager* getExceptionMemoryManager() override { return this; }

private:
    struct alignas(std::max_align_t) Block
    {
        Block* previous;
        Block* next;
    };

    Block* first_ = nullptr;
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
    StreamInputSource(std::istream& stream, ParserMemory& memory) : InputSource(&memory), stream_(stream) {}

    xercesc::BinInputStream* makeStream() const override
    {
        return new (getMemoryManager()) BinStreamInputStream(stream_);
    }

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
        throw SerializeException(Text(e.getMessage()).substr(0, maxMessage));
    }
};

// Nothing but the stream is ever opened.
class EntityRefuser : public xercesc::XMLEntityResolver
{
public:
    xercesc::InputSource* resolveEntity(xercesc::XMLResourceIdentifier* resource) override
    {
        throw SerializeException("External entity refused: '" + Text(resource->getSystemId()) +
                                 "'. A document is read from its stream alone.");
    }
};

// Hands the document on to the tree. An entity reference is a node of its own, and what it stands for lies
// within that: no field is looked for there.
class TreeBuilder : public xercesc::XMLDocumentHandler
{
public:
    explicit TreeBuilder(XMLTree& tree) : tree_(tree) {}

    void startElement(xercesc::XMLElementDecl const& declaration, unsigned int, XMLCh const*,
                      xercesc::RefVectorOf<xercesc::XMLAttr> const& attributes, XMLSize_t const count,
                      bool const isEmpty, bool const) override
    {
        if (entityDepth_ != 0)
            return;
        tree_.StartElement(View(declaration.getFullName()));
        for (XMLSize_t i = 0; i < count; ++i)
        {
            xercesc::XMLAttr const& attribute = *attributes.elementAt(i);
            std::u16string_view const name = View(attribute.getQName());
            if (name == u"class")
                tree_.SetClass(View(attribute.getValue()));
            else if (name == u"id")
                tree_.SetId(View(attribute.getValue()));
        }
        if (isEmpty)
            tree_.EndElement();
    }

    void endElement(xercesc::XMLElementDecl const&, unsigned int, bool const, XMLCh const*) override
    {
        if (entityDepth_ == 0)
            tree_.EndElement();
    }

    void docCharacters(XMLCh const* const text, XMLSize_t const length, bool const isCData) override
    {
        if (entityDepth_ != 0)
            return;
        if (isCData)
            tree_.EndTextRun();
        else
            tree_.AddText({reinterpret_cast<char16_t const*>(text), length});
    }

    void ignorableWhitespace(XMLCh const* const text, XMLSize_t const length, bool const isCData) override
    {
        docCharacters(text, length, isCData);
    }

    void docComment(XMLCh const* const) override { EndTextRun(); }
    void docPI(XMLCh const* const, XMLCh const* const) override { EndTextRun(); }

    void startEntityReference(xercesc::XMLEntityDecl const&) override
    {
        EndTextRun();
        ++entityDepth_;
    }
    void endEntityReference(xercesc::XMLEntityDecl const&) override { --entityDepth_; }

    void startDocument() override {}
    void endDocument() override {}
    void resetDocument() override {}
    void XMLDecl(XMLCh const* const, XMLCh const* const, XMLCh const* const, XMLCh const* const) override {}

private:
    void EndTextRun()
    {
        if (entityDepth_ == 0)
            tree_.EndTextRun();
    }

    XMLTree& tree_;
    std::size_t entityDepth_ = 0;
};

class Parser : public xercesc::SAXParser
{
public:
    Parser(XMLTree& tree, ParserMemory& memory) : SAXParser(nullptr, &memory), builder_(tree)
    {
        limits_.setEntityExpansionLimit(maxExpansions);
        setSecurityManager(&limits_);
        setXMLEntityResolver(&refuser_);
        setDisableDefaultEntityResolution(true);
        setDTDHandler(&declarations_); // without one the parser does not call entityDecl
        installAdvDocHandler(&builder_);
    }

    // The parser counts what the text of a document expands, but not what its declarations do: there, nothing
    // that expands is let pass.
    void entityDecl(xercesc::DTDEntityDecl const& entity, bool const isParameter,
                    bool const isIgnored) override
    {
        if (isParameter)
            throw SerializeException("Parameter entity refused: '" + Text(entity.getName()) + "'.");
        if (entity.getValueLen() > maxEntityLength)
            throw SerializeException("Entity refused: '" + Text(entity.getName()) + "' has more than " +
                                     std::to_string(maxEntityLength) + " characters.");
        SAXParser::entityDecl(entity, isParameter, isIgnored);
    }

    void startAttList(xercesc::DTDElementDecl const& element) override
    {
        throw SerializeException("Attribute declarations refused: those of '" + Text(element.getFullName()) +
                                 "'.");
    }

private:
    xercesc::SecurityManager limits_;
    xercesc::HandlerBase declarations_;
    EntityRefuser refuser_;
    TreeBuilder builder_;
};

} // namespace

void ParseXML(std::istream& stream, XMLTree& tree)
{
    ParserMemory memory; // outlives the failures that are caught here
    try
    {
        ParserLibrary::Start();
        Parser parser(tree, memory);
        InputErrorHandler handler;
        StreamInputSource const source(stream, memory);
        parser.setErrorHandler(&handler);
        parser.parse(source);
    }
    catch (xercesc::XMLException const& e)
    {
        throw SerializeException(Text(e.getMessage()));
    }
    catch (xercesc::SAXException const& e)
    {
        throw SerializeException(Text(e.getMessage()));
    }
    catch (std::exception const& e)
    {
        throw SerializeException(e.what());
    }
    catch (...)
    {
        throw SerializeException("Unknown error occurred while deserializing.");
    }
}

} // namespace Zan::Orv::Core::Service::Internal
