#include "orv/serialization/XMLInputSerializer.h"

#include "orv/foundation/Exception.h"
#include "orv/foundation/internal/NumberText.h"
#include "orv/serialization/internal/XMLDocument.h"
#include "orv/serialization/internal/XMLText.h"

#include <algorithm>
#include <cstdint>
#include <deque>
#include <limits>
#include <type_traits>
#include <xercesc/dom/DOM.hpp>

namespace Zan::Orv::Core::Service
{

namespace
{

using xercesc::DOMElement;
using xercesc::DOMNode;

constexpr std::u16string_view idAttribute = u"id";
constexpr std::u16string_view classAttribute = u"class";

XMLCh const* AsXML(std::u16string_view literal)
{
    return reinterpret_cast<XMLCh const*>(literal.data());
}

// The decimal number at the head of a text, as far as it can matter: far outside of 32 bits it saturates. No
// digit at all is 0.
long long ParseInteger(std::string const& text)
{
    constexpr long long enough = std::numeric_limits<long long>::max() / 100;
    auto at = text.begin();
    while (at != text.end() && (*at == ' ' || (*at >= '\t' && *at <= '\r')))
        ++at;
    bool const negative = at != text.end() && *at == '-';
    if (negative || (at != text.end() && *at == '+'))
        ++at;
    long long value = 0;
    for (; at != text.end() && *at >= '0' && *at <= '9'; ++at)
        value = std::min(value * 10 + (*at - '0'), enough);
    return negative ? -value : value;
}

// Integers are read with 32 bits, as the stored form has always been read: a number beyond them gives the
// nearest one that fits, and then loses the bits that the target lacks. A negative number wraps in an
// unsigned target.
template<class T>
T ReadAs(std::string const& text)
{
    constexpr long long lowest = std::numeric_limits<std::int32_t>::min();
    constexpr long long highest = std::numeric_limits<std::int32_t>::max();
    constexpr long long highestUnsigned = std::numeric_limits<std::uint32_t>::max();

    long long const value = ParseInteger(text);
    if constexpr (std::is_same_v<T, unsigned long long>) {
        long long const magnitude = value < 0 ? -value : value;
        if (magnitude > highestUnsigned)
            return static_cast<T>(highestUnsigned);
        return static_cast<std::uint32_t>(value);
    } else if constexpr (std::is_same_v<T, unsigned int>)
        return static_cast<T>(std::clamp(value, lowest, highestUnsigned));
    else
        return static_cast<T>(std::clamp(value, lowest, highest));
}

} // namespace

// The walk through the tree: the element that is being read, and for it and each of those around it what was
// found last, from where the next of the same tag is looked for.
class XMLInputSerializer::Cursor
{
public:
    Cursor(std::istream& stream, std::string const& rootTag) : document_(stream)
    {
        DOMElement* const root = document_.Root();
        std::string const found = root == nullptr ? std::string() : Internal::FromXML(root->getTagName());
        if (found != rootTag)
            throw SerializeException("Root element tag mismatch: Expected '" + rootTag + "' but found '" +
                                     found + "'.");
        Enter(root);
    }

    void Enter(DOMElement* element) { levels_.push_back({element, nullptr, nullptr, 0}); }

    void Leave(char const* tag)
    {
        if (levels_.size() == 1)
            throw SerializeException(std::string("Nothing is open that the end of '") + tag +
                                     "' could close.");
        levels_.pop_back();
    }

    DOMElement* Find(char const* tag, std::size_t index)
    {
        Internal::AssignUTF16(tag_, tag);
        Level& level = levels_.back();
        bool const goOn = level.lastTag == tag && index >= level.lastIndex;
        DOMNode* node = goOn ? level.lastChild : level.element->getFirstChild();
        std::size_t remaining = goOn ? index - level.lastIndex : index;
        for (; node != nullptr; node = node->getNextSibling()) {
            if (node->getNodeType() == DOMNode::ELEMENT_NODE &&
                Internal::ViewXML(node->getNodeName()) == tag_ && remaining-- == 0)
                break;
        }
        level.lastChild = node;
        level.lastTag = tag;
        level.lastIndex = index;
        return static_cast<DOMElement*>(node);
    }

    DOMElement* FindOrAppend(char const* tag, std::size_t index, bool& appended)
    {
        DOMElement* const found = Find(tag, index);
        appended = found == nullptr;
        return appended ? document_.Append(*levels_.back().element, tag_) : found;
    }

    // The first text in the element, valid until the next call, or null when there is none.
    std::string const* FindText(char const* tag, std::size_t index)
    {
        DOMElement* const element = Find(tag, index);
        if (element == nullptr)
            return nullptr;
        DOMNode* node = element->getFirstChild();
        while (node != nullptr && node->getNodeType() != DOMNode::TEXT_NODE)
            node = node->getNextSibling();
        if (node == nullptr || node->getNodeValue() == nullptr)
            return nullptr;
        return &Convert(node->getNodeValue());
    }

    // Valid until the next call.
    std::string const& Convert(XMLCh const* text)
    {
        Internal::AssignUTF8(text_, Internal::ViewXML(text));
        return text_;
    }

private:
    struct Level {
        DOMElement* element;
        DOMNode* lastChild;
        char const* lastTag; // known by its address: comparing the text would cost as much as looking again
        std::size_t lastIndex;
    };

    Internal::XMLDocument document_;
    std::deque<Level> levels_;
    std::u16string tag_;
    std::string text_;
};

XMLInputSerializer::XMLInputSerializer(std::istream& stream, std::string const& rootTag)
    : cursor_(std::make_unique<Cursor>(stream, rootTag))
{
}

XMLInputSerializer::~XMLInputSerializer() = default;

bool XMLInputSerializer::IsReading() const
{
    return true;
}

bool XMLInputSerializer::IsWriting() const
{
    return false;
}

template<class T>
void XMLInputSerializer::ReadInteger(char const* tag, std::size_t index, T& value)
{
    if (std::string const* const text = cursor_->FindText(tag, index))
        value = ReadAs<T>(*text);
}

template<class T>
void XMLInputSerializer::ReadNumber(char const* tag, std::size_t index, T& value)
{
    if (std::string const* const text = cursor_->FindText(tag, index))
        value = static_cast<T>(Internal::ReadIEEE(*text));
}

void XMLInputSerializer::Scalar(char const* tag, std::size_t index, std::string& value)
{
    if (std::string const* const text = cursor_->FindText(tag, index))
        value = *text;
}

void XMLInputSerializer::Scalar(char const* tag, std::size_t index, double& value)
{
    ReadNumber(tag, index, value);
}

void XMLInputSerializer::Scalar(char const* tag, std::size_t index, float& value)
{
    ReadNumber(tag, index, value);
}

void XMLInputSerializer::Scalar(char const* tag, std::size_t index, unsigned long long& value)
{
    ReadInteger(tag, index, value);
}

void XMLInputSerializer::Scalar(char const* tag, std::size_t index, long long& value)
{
    ReadInteger(tag, index, value);
}

void XMLInputSerializer::Scalar(char const* tag, std::size_t index, unsigned int& value)
{
    ReadInteger(tag, index, value);
}

void XMLInputSerializer::Scalar(char const* tag, std::size_t index, int& value)
{
    ReadInteger(tag, index, value);
}

void XMLInputSerializer::Scalar(char const* tag, std::size_t index, unsigned short& value)
{
    ReadInteger(tag, index, value);
}

void XMLInputSerializer::Scalar(char const* tag, std::size_t index, short& value)
{
    ReadInteger(tag, index, value);
}

void XMLInputSerializer::Scalar(char const* tag, std::size_t index, unsigned char& value)
{
    ReadInteger(tag, index, value);
}

void XMLInputSerializer::Scalar(char const* tag, std::size_t index, signed char& value)
{
    ReadInteger(tag, index, value);
}

void XMLInputSerializer::Scalar(char const* tag, std::size_t index, bool& value)
{
    std::string const* const text = cursor_->FindText(tag, index);
    if (text == nullptr)
        return;
    if (*text != "true" && *text != "false")
        throw SerializeException("Invalid boolean value: '" + *text + "' in tag '" + tag + "'.");
    value = *text == "true";
}

void XMLInputSerializer::StartArray(char const* tag, std::size_t index, std::size_t& count)
{
    bool appended = false;
    DOMElement* const element = cursor_->FindOrAppend(tag, index, appended);
    count = 0;
    for (DOMNode const* node = element->getFirstChild(); node != nullptr; node = node->getNextSibling()) {
        if (node->getNodeType() == DOMNode::ELEMENT_NODE)
            ++count;
    }
    cursor_->Enter(element);
}

void XMLInputSerializer::EndArray(char const* tag)
{
    cursor_->Leave(tag);
}

void XMLInputSerializer::StartObject(char const* tag, std::size_t index, std::string& className, int& id)
{
    bool appended = false;
    DOMElement* const element = cursor_->FindOrAppend(tag, index, appended);
    if (appended) // a missing object reads as the null pointer
        element->setAttribute(AsXML(idAttribute), AsXML(u"0"));

    id = -1;
    className.clear();
    if (element->hasAttributes()) {
        std::string const& text = cursor_->Convert(element->getAttribute(AsXML(idAttribute)));
        if (!text.empty())
            id = ReadAs<int>(text);
        className = cursor_->Convert(element->getAttribute(AsXML(classAttribute)));
    }
    cursor_->Enter(element);
}

void XMLInputSerializer::EndObject(char const* tag)
{
    EndArray(tag);
}

} // namespace Zan::Orv::Core::Service
