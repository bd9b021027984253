#pragma once

#include "orv/Export.h"
#include "orv/time/ITimeStringResolver.h"

namespace Zan::Orv::Core::Service {

/// Reads the text as a date, two-digit years below 69 being of the 21st century. Knows no symbols and no offsets: for
/// these, write a resolver that calls the symbolic `ParseTime`. As safe between threads as the plain `ParseTime`.
class ORV_API TimeStringResolver : public ITimeStringResolver
{
public:
    /// \throws what the plain `ParseTime` does.
    Time getTime(TimeString const& time) override;
};

} // namespace Zan::Orv::Core::Service
