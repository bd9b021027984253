#pragma once

#include <iosfwd>

namespace Zan::Orv::Core::Service::Internal {

class XMLTree;

/// Parses a whole document from a stream into an empty tree.
/// \throws SerializeException with the parser's words for anything that goes wrong.
void ParseXML(std::istream& stream, XMLTree& tree);

} // namespace Zan::Orv::Core::Service::Internal
