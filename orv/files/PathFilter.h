#pragma once

#include "orv/Export.h"

namespace Zan::Orv::Core::Service {

class PathCacheEntry;

/// A question about the name of a file that is answered by yes or no. Filters are made by the `Create`
/// operations of the classes, held by `std::shared_ptr<PathFilter const>`, and combined into trees that share
/// their parts freely:
///
///     auto const results = OrFilter::Create(ExtensionFilter::Create(".sum", ".log"),
///                                           NumberedExtensionFilter::Create('x', 4));
///     auto const others = NotFilter::Create(results);
///     (*results)(PathCacheEntry("Run1.X0004")); // true
///
/// Case does not count: a filter folds its text when it is made, as the entry does. Asking compares strings
/// and allocates nothing. Filters do not change, so that any number of threads may ask the same one.
///
/// A tree is asked and freed by recursion: some thousands of filters inside of each other are fine, tens of
/// thousands may overflow the stack. No filter pointer may be null when it is asked; the factories take one
/// without a test.
class ORV_API PathFilter
{
public:
    PathFilter(PathFilter const&) = default;
    PathFilter& operator=(PathFilter const&) = default;
    virtual ~PathFilter();

    /// True when the filter accepts the name.
    virtual bool operator()(PathCacheEntry const& entry) const = 0;

protected:
    PathFilter() = default;
};

} // namespace Zan::Orv::Core::Service
