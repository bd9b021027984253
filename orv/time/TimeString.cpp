#include "orv/time/TimeString.h"

#include "orv/serialization/Serializer.h"
#include "orv/time/Time.h"

#include <sstream>

namespace Zan::Orv::Core::Service {

TimeString::TimeString(Time const& time)
{
    std::ostringstream stream;
    stream << time;
    text_ = stream.str();
}

void TimeString::Serialize(Serializer& serializer)
{
    serializer.Serialize(text_, "time_string");
}

} // namespace Zan::Orv::Core::Service

std::size_t std::hash<Zan::Orv::Core::Service::TimeString>::operator()(
    Zan::Orv::Core::Service::TimeString const& time) const
{
    return std::hash<std::string>()(time.GetString());
}
