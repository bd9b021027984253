#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <limits>
#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace Zan::Orv::Core::Service::Internal {

/// What a reader needs to know of an XML document, and no more: of each element its name, its children in
/// order, its first text, and the attributes "class" and "id". Flat arrays hold it, about as large as the
/// document.
///
/// The first text is what stands before the element's first child, comment, instruction, CDATA section or
/// entity reference, or between two of them if nothing stood before; in short, the first text node.
class XMLTree
{
public:
    using Node = std::uint32_t;
    using Name = std::uint32_t;
    static constexpr std::uint32_t none = std::numeric_limits<std::uint32_t>::max();

    Node Root() const { return nodes_.empty() ? none : 0; }
    Node FirstChild(Node node) const { return nodes_[node].firstChild; }
    Node NextSibling(Node node) const { return nodes_[node].nextSibling; }
    std::size_t CountChildren(Node node) const { return nodes_[node].children; }
    Name NameOf(Node node) const { return nodes_[node].name; }
    std::string const& TextOf(Name name) const { return *names_[name]; }

    /// False when the element has no text at all. The view is valid until the tree changes.
    bool GetText(Node node, std::string_view& text) const;

    /// The name of the class, empty without one.
    std::string_view ClassOf(Node node) const;
    /// The number of the attribute "id", -1 without one.
    int IdOf(Node node) const { return nodes_[node].id; }

    /// The number of a name, or `none` when no element has it.
    Name FindName(std::string_view name) const;

    /// Appends an empty element with the id 0.
    Node AppendNull(Node parent, std::string_view name);

    /// For the parser: elements in the order of the document.
    void StartElement(std::u16string_view name);
    void SetClass(std::u16string_view className);
    void SetId(std::u16string_view id);
    void AddText(std::u16string_view text);
    void EndTextRun();
    void EndElement();

private:
    struct Element
    {
        Name name;
        Name className = none;
        Node firstChild = none;
        Node lastChild = none;
        Node nextSibling = none;
        std::uint32_t children = 0;
        int id = -1;
        bool hasText = false;
        std::size_t textBegin = 0;
        std::size_t textEnd = 0;
    };

    Name Intern(std::string_view name);
    Node Append(Node parent, Name name);

    std::vector<Element> nodes_;
    std::vector<Node> open_;        // the elements around the parser's position
    bool inTextRun_ = false;        // of the innermost of them
    char16_t pendingSurrogate_ = 0; // the parser may deliver a pair in two pieces
    std::string texts_;
    std::string buffer_;
    std::u16string pair_;
    std::map<std::string, Name, std::less<>>
        namesByText_; // not hashed: a document could choose what falls together
    std::vector<std::string const*> names_;
};

} // namespace Zan::Orv::Core::Service::Internal
