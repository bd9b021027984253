#pragma once

#include "orv/Export.h"
#include "orv/serialization/ISerializable.h"
#include "orv/time/Time.h"

#include <cstddef>
#include <iosfwd>
#include <string>

namespace Zan::Orv::Core::Service {

class TimeOffset;

/// A half-open interval of time: it holds its begin and excludes its end. The end never lies before the
/// begin; where it would, it is lifted to it, and the period is empty there. A plain value,
/// which can be a key of unordered containers.
class ORV_API TimePeriod : public ISerializable
{
public:
    /// Empty, at `Time::MinTime()`.
    TimePeriod() = default;
    /// From `begin` to `end`, which is lifted to `begin` where it lies before.
    TimePeriod(Time const& begin, Time const& end);
    /// From `begin` to `begin` plus `offset`.
    /// \throws what `Time::operator+=` does.
    TimePeriod(Time const& begin, TimeOffset const& offset);
    TimePeriod(TimePeriod const&) = default;
    TimePeriod& operator=(TimePeriod const&) = default;
    ~TimePeriod() override = default;

    /// The first moment.
    Time Begin() const { return begin_; }
    /// The first moment behind it.
    Time End() const { return end_; }
    /// True when begin and end are equal.
    bool Empty() const { return begin_ == end_; }

    /// In milliseconds.
    long long Duration() const { return end_ - begin_; }
    /// The calendar distance from begin to end.
    TimeOffset Offset() const;

    /// An empty period contains nothing.
    bool Contains(Time const& time) const;
    /// An empty `period` is contained when its moment is.
    bool Contains(TimePeriod const& period) const;
    /// Periods that only touch do not intersect.
    bool Intersects(TimePeriod const& period) const;

    /// What both share; for periods that do not overlap, the empty period at the later begin.
    TimePeriod Intersection(TimePeriod const& period) const;
    /// The interval of both together when they intersect, otherwise the default period: disjoint periods have
    /// no single interval.
    TimePeriod Union(TimePeriod const& period) const;
    /// Both ends moved by `offset`, each by itself, so that clamping months may change the length.
    /// \throws what `Time::operator+=` does.
    TimePeriod Shift(TimeOffset const& offset) const;

    bool operator==(TimePeriod const& other) const;
    bool operator!=(TimePeriod const& other) const;

    /// The values "begin" and "end". What is read is not checked.
    void Serialize(Serializer& serializer) override;

private:
    Time begin_;
    Time end_;
};

/// "2000-01-01 00:00:00.000/2000-02-01 00:00:00.000"
ORV_API std::ostream& operator<<(std::ostream& stream, TimePeriod const& period);

/// Reads that form, with any character between the two. `period` changes only on success.
/// \throws what reading a `Time` does.
ORV_API std::istream& operator>>(std::istream& stream, TimePeriod& period);

} // namespace Zan::Orv::Core::Service

/// For unordered containers. By both ends.
template<>
struct ORV_API std::hash<Zan::Orv::Core::Service::TimePeriod>
{
    std::size_t operator()(Zan::Orv::Core::Service::TimePeriod const& period) const noexcept;
};
