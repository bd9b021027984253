#pragma once

#include <boost/filesystem/directory.hpp>
#include <boost/filesystem/path.hpp>

/// What copying and listing of trees refuse, since it would never end, or end badly.

namespace Zan::Orv::Core::Service::Internal {

/// A directory that is being walked through, and through `above` those on the way to it.
struct WalkedDirectory
{
    boost::filesystem::path const& path;
    WalkedDirectory const* above;
};

/// Without this, links that lead upwards would be followed until the host has had enough: 40 deep, and two of them in
/// one directory would make 2^40 ways.
/// \throws boost::filesystem::filesystem_error `too_many_symbolic_link_levels`, when the entry is a link to a directory
///     on the way to it.
void RefuseToGoRound(boost::filesystem::directory_entry const& entry, WalkedDirectory const& innermost);

/// \throws boost::filesystem::filesystem_error `file_exists`, when the target is the entry itself, which would be emptied
///     or removed first; `not_supported` for a pipe, since opening it would be waiting for a writer.
void RefuseToCopy(boost::filesystem::directory_entry const& entry, boost::filesystem::path const& target);

} // namespace Zan::Orv::Core::Service::Internal
