#pragma once

#include <string_view>

namespace Zan::Orv::Core::Service::Internal {

/// The pieces of a free-form date: 1 to 3 the components, 4 hour, 5 minute, 6 second, 7 the fraction with its point,
/// 8 the designator. `took` is false for a piece that the text does not have.
struct DateGroups
{
    std::string_view group[9];
    bool took[9];
};

/// Takes a free-form date apart. The language and the groups are those of the expression
///
///     \s*(\d+|[[:alpha:]]+)\s*(?:[-/.,]?)\s*?(\d+|[[:alpha:]]+)\s*(?:[-/.,]?)\s*?(\d+|[[:alpha:]]+)\s*
///     (?:(\d+)[:.](\d+)(?:[:.](\d+)(?:(\.\d+))?)?\s*([[:alpha:]]+)?)?\s*
///
/// on one line, matched against the whole text; but in time and memory that grow with the text and no more. False when it
/// does not match.
bool MatchDate(std::string_view text, DateGroups& groups);

} // namespace Zan::Orv::Core::Service::Internal
