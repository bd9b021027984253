#include "orv/time/TimeStringResolver.h"

#include "orv/time/ParseTime.h"
#include "orv/time/Time.h"
#include "orv/time/TimeString.h"

namespace Zan::Orv::Core::Service {

ITimeStringResolver::~ITimeStringResolver() = default;

Time TimeStringResolver::getTime(TimeString const& time)
{
    return ParseTime(time.GetString(), true);
}

} // namespace Zan::Orv::Core::Service
