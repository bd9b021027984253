#pragma once

#include <regex>
#include <string>

namespace Zan::Orv::Core::Service::Internal {

/// An ECMAScript expression that somebody else wrote. The standard library compiles and matches by calling itself, and
/// tries one way after the other; here neither an expression nor a name takes more than a stack of 1 MiB holds, and the
/// time does not explode. Only where an expression refers back to what a group has found, no better way is known: it
/// takes its time, and names of up to 500 bytes.
class GivenExpression
{
public:
    /// \throws std::regex_error when it is none, when it has more than 4,000 characters, where "a{3}" counts as "aaa", and
    ///     when groups lie more than 500 deep.
    GivenExpression(std::string const& text, bool ignoreCase);

    /// True when the whole name fits. \throws std::regex_error for a name that is too long to refer back in.
    bool Matches(std::string const& name) const;
    /// True when a part of the name fits. \throws as Matches.
    bool IsFoundIn(std::string const& name) const;

private:
    void CheckLength(std::string const& name) const;

    std::regex regex_;
    bool refersBack_ = false;
};

} // namespace Zan::Orv::Core::Service::Internal
