#include "orv/serialization/XMLInputSerializer.h"

#include "orv/foundation/Exception.h"
#include "orv/foundation/internal/NumberText.h"
#include "orv/serialization/internal/DecimalText.h"
#include "orv/serialization/internal/XMLParser.h"
#include "orv/serialization/internal/XMLTree.h"

#include <deque>
#include <string_view>

namespace Zan::Orv::Core::Service {

// The walk through the tree: the element that is being read, and for it and each of those around it what was
// found last, from where the next of the same tag is looked for.
class XMLInputSerializer::Cursor
{
public:
    using Node = Internal::XMLTree::Node;
    static constexpr Node none = Internal::XMLTree::none;

    Cursor(std::istream& stream, std::string const& rootTag)
    {
        Internal::ParseXML(stream, tree_);
        Node const root = tree_.Root();
        std::string const found = root == none ? std::string() : tree_.TextOf(tree_.NameOf(root));
        if (found != rootTag)
            throw SerializeException("Root element tag mismatch: Expected '" + rootTag + "' but found '" +
                                     found + "'.");
        Enter(root);
    }

    Internal::XMLTree const& Tree() const { return tree_; }

    void Enter(Node element) { levels_.push_back({element, none, nullptr, 0}); }

    void Leave(char const* tag)
    {
        if (levels_.size() == 1)
            throw SerializeException(std::string("Nothing is open that the end of '") + tag +
                                     "' could close.");
        levels_.pop_back();
    }

    Node Find(char const* tag, std::size_t index)
    {
        Level& level = levels_.back();
        bool const goOn = level.lastTag == tag && index >= level.lastIndex;
        Node node = goOn ? level.lastChild : tree_.FirstChild(level.element);
        std::size_t remaining = goOn ? index - level.lastIndex : index;
        Internal::XMLTree::Name const name = tree_.FindName(tag);
        for (; node != none; node = tree_.NextSibling(node))
        {
            if (tree_.NameOf(node) == name && remaining-- == 0)
                break;
        }
        level.lastChild = node;
        level.lastTag = tag;
        level.lastIndex = index;
        return node;
    }

    // A field that the document lacks is added to it: as an array it is empty, as a pointer null.
    Node FindOrAppend(char const* tag, std::size_t index)
    {
        Node const found = Find(tag, index);
        return found != none ? found : tree_.AppendNull(levels_.back().element, tag);
    }

    // False when there is no such element or no text in it.
    bool FindText(char const* tag, std::size_t index, std::string_view& text)
    {
        Node const element = Find(tag, index);
        return element != none && tree_.GetText(element, text);
    }

private:
    struct Level
    {
        Node element;
        Node lastChild;
        char const* lastTag; // known by its address alone
        std::size_t lastIndex;
    };

    Internal::XMLTree tree_;
    std::deque<Level> levels_;
};

XMLInputSerializer::XMLInputSerializer(std::istream& stream, std::string const& rootTag)
    : cursor_(std::make_unique<Cursor>(stream, rootTag))
{}

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
    std::string_view text;
    if (cursor_->FindText(tag, index, text))
        value = Internal::ReadDecimal<T>(text);
}

template<class T>
void XMLInputSerializer::ReadNumber(char const* tag, std::size_t index, T& value)
{
    std::string_view text;
    if (cursor_->FindText(tag, index, text))
        value = static_cast<T>(Internal::ReadIEEE(text));
}

void XMLInputSerializer::Scalar(char const* tag, std::size_t index, std::string& value)
{
    std::string_view text;
    if (cursor_->FindText(tag, index, text))
        value = text;
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
    std::string_view text;
    if (!cursor_->FindText(tag, index, text))
        return;
    if (text != "true" && text != "false")
        throw SerializeException("Invalid boolean value: '" + std::string(text) + "' in tag '" + tag + "'.");
    value = text == "true";
}

void XMLInputSerializer::StartArray(char const* tag, std::size_t index, std::size_t& count)
{
    auto const element = cursor_->FindOrAppend(tag, index);
    count = cursor_->Tree().CountChildren(element);
    cursor_->Enter(element);
}

void XMLInputSerializer::EndArray(char const* tag)
{
    cursor_->Leave(tag);
}

void XMLInputSerializer::StartObject(char const* tag, std::size_t index, std::string& className, int& id)
{
    auto const element = cursor_->FindOrAppend(tag, index);
    id = cursor_->Tree().IdOf(element);
    className = cursor_->Tree().ClassOf(element);
    cursor_->Enter(element);
}

void XMLInputSerializer::EndObject(char const* tag)
{
    EndArray(tag);
}

} // namespace Zan::Orv::Core::Service
