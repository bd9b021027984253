#include "orv/serialization/internal/XMLTree.h"

#include "orv/foundation/Exception.h"
#include "orv/serialization/internal/DecimalText.h"
#include "orv/serialization/internal/XMLText.h"

namespace Zan::Orv::Core::Service::Internal {

bool XMLTree::GetText(Node node, std::string_view& text) const
{
    Element const& element = nodes_[node];
    if (!element.hasText)
        return false;
    text = std::string_view(texts_).substr(element.textBegin, element.textEnd - element.textBegin);
    return true;
}

std::string_view XMLTree::ClassOf(Node node) const
{
    Name const className = nodes_[node].className;
    return className == none ? std::string_view() : TextOf(className);
}

XMLTree::Name XMLTree::FindName(std::string_view name) const
{
    auto const found = namesByText_.find(name);
    return found == namesByText_.end() ? none : found->second;
}

XMLTree::Name XMLTree::Intern(std::string_view name)
{
    auto const known = namesByText_.find(name);
    if (known != namesByText_.end())
        return known->second;
    auto const number = static_cast<Name>(names_.size());
    auto const added = namesByText_.emplace(name, number).first;
    names_.push_back(&added->first);
    return number;
}

XMLTree::Node XMLTree::Append(Node parent, Name name)
{
    if (nodes_.size() >= none)
        throw SerializeException("The document has more elements than can be read.");
    auto const node = static_cast<Node>(nodes_.size());
    nodes_.push_back({name});
    if (parent != none)
    {
        Element& around = nodes_[parent];
        if (around.firstChild == none)
            around.firstChild = node;
        else
            nodes_[around.lastChild].nextSibling = node;
        around.lastChild = node;
        ++around.children;
    }
    return node;
}

XMLTree::Node XMLTree::AppendNull(Node parent, std::string_view name)
{
    Node const node = Append(parent, Intern(name));
    nodes_[node].id = 0;
    return node;
}

void XMLTree::StartElement(std::u16string_view name)
{
    EndTextRun();
    AssignUTF8(buffer_, name);
    open_.push_back(Append(open_.empty() ? none : open_.back(), Intern(buffer_)));
}

void XMLTree::SetClass(std::u16string_view className)
{
    AssignUTF8(buffer_, className);
    nodes_[open_.back()].className = Intern(buffer_);
}

void XMLTree::SetId(std::u16string_view id)
{
    if (id.empty())
        return;
    AssignUTF8(buffer_, id);
    nodes_[open_.back()].id = ReadDecimal<int>(buffer_);
}

void XMLTree::AddText(std::u16string_view text)
{
    if (open_.empty() || text.empty())
        return;
    Element& element = nodes_[open_.back()];
    if (!inTextRun_)
    {
        if (element.hasText) // a text behind the first one
            return;
        element.hasText = true;
        element.textBegin = texts_.size();
        inTextRun_ = true;
    }
    if (pendingSurrogate_ != 0)
    {
        pair_.assign({pendingSurrogate_, text.front()});
        pendingSurrogate_ = 0;
        text.remove_prefix(1);
        AppendUTF8(texts_, pair_);
    }
    if (!text.empty() && text.back() >= 0xD800 && text.back() <= 0xDBFF)
    {
        pendingSurrogate_ = text.back();
        text.remove_suffix(1);
    }
    AppendUTF8(texts_, text);
    element.textEnd = texts_.size();
}

void XMLTree::EndTextRun()
{
    inTextRun_ = false;
}

void XMLTree::EndElement()
{
    EndTextRun();
    open_.pop_back();
}

} // namespace Zan::Orv::Core::Service::Internal
