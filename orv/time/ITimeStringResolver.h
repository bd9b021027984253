#pragma once

#include "orv/Export.h"

namespace Zan::Orv::Core::Service {

class Time;
class TimeString;

/// Turns a text into the moment that it stands for. What its caller allows to several threads depends on the one that
/// is given.
class ORV_API ITimeStringResolver
{
public:
    ITimeStringResolver() = default;
    ITimeStringResolver(ITimeStringResolver const&) = default;
    ITimeStringResolver& operator=(ITimeStringResolver const&) = default;
    virtual ~ITimeStringResolver();

    /// The moment. May throw for a text that has none.
    virtual Time getTime(TimeString const& time) = 0;
};

} // namespace Zan::Orv::Core::Service
