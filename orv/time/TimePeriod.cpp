#include "orv/time/TimePeriod.h"

#include "orv/foundation/internal/Hash.h"
#include "orv/serialization/Serializer.h"
#include "orv/time/TimeOffset.h"

#include <algorithm>
#include <istream>
#include <ostream>

namespace Zan::Orv::Core::Service {

namespace {

Time Shifted(Time time, TimeOffset const& offset)
{
    time += offset;
    return time;
}

} // namespace

TimePeriod::TimePeriod(Time const& begin, Time const& end) : begin_(begin), end_(std::max(begin, end))
{}

TimePeriod::TimePeriod(Time const& begin, TimeOffset const& offset)
    : TimePeriod(begin, Shifted(begin, offset))
{}

TimeOffset TimePeriod::Offset() const
{
    return TimeOffset(end_, begin_);
}

bool TimePeriod::Contains(Time const& time) const
{
    return time >= begin_ && time < end_;
}

bool TimePeriod::Contains(TimePeriod const& period) const
{
    return Contains(period.begin_) && period.end_ <= end_;
}

bool TimePeriod::Intersects(TimePeriod const& period) const
{
    return period.end_ > begin_ && period.begin_ < end_;
}

TimePeriod TimePeriod::Intersection(TimePeriod const& period) const
{
    return TimePeriod(std::max(begin_, period.begin_), std::min(end_, period.end_));
}

TimePeriod TimePeriod::Union(TimePeriod const& period) const
{
    if (!Intersects(period))
        return TimePeriod();
    return TimePeriod(std::min(begin_, period.begin_), std::max(end_, period.end_));
}

TimePeriod TimePeriod::Shift(TimeOffset const& offset) const
{
    return TimePeriod(Shifted(begin_, offset), Shifted(end_, offset));
}

bool TimePeriod::operator==(TimePeriod const& other) const
{
    return begin_ == other.begin_ && end_ == other.end_;
}

bool TimePeriod::operator!=(TimePeriod const& other) const
{
    return !(*this == other);
}

void TimePeriod::Serialize(Serializer& serializer)
{
    serializer.Serialize(begin_, "begin");
    serializer.Serialize(end_, "end");
}

std::ostream& operator<<(std::ostream& stream, TimePeriod const& period)
{
    return stream << period.Begin() << '/' << period.End();
}

std::istream& operator>>(std::istream& stream, TimePeriod& period)
{
    Time begin;
    Time end;
    stream >> begin;
    stream.get();
    stream >> end;
    period = TimePeriod(begin, end);
    return stream;
}

} // namespace Zan::Orv::Core::Service

std::size_t std::hash<Zan::Orv::Core::Service::TimePeriod>::operator()(
    Zan::Orv::Core::Service::TimePeriod const& period) const noexcept
{
    std::hash<Zan::Orv::Core::Service::Time> const timeHash;
    return Zan::Orv::Core::Service::Internal::HashOf(timeHash(period.Begin()), timeHash(period.End()));
}
