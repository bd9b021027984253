#include "orv/time/TimeAverager.h"

#include "orv/foundation/Numerics.h"
#include "orv/time/internal/SampleSeries.h"

#include <algorithm>
#include <stdexcept>

namespace Zan::Orv::Core::Service {

namespace {

using Iterator = SampleSeries::Iterator;

// Samples keep their time as a count, and so do the rules. No two times differ in anything finer.
long long CountOf(Time const& time)
{
    return time - Time::MinTime();
}

// The unit of time in weighted sums. It cancels out of the means, but decides how they round.
double Weight(long long milliseconds)
{
    return static_cast<double>(milliseconds) / 1000000.0;
}

// A weighted sum over an interval, and the mean that it gives.
class WeightedSum
{
public:
    void Add(long long milliseconds, double value)
    {
        if (IsNullValue(value))
            return;
        sum_ += Weight(milliseconds) * value;
        seen_ = true;
    }

    // The whole interval divides, whatever part of it had values.
    double Mean(long long from, long long to) const
    {
        if (!seen_)
            return NullValue;
        double const weight = Weight(to - from);
        return weight > 0.0 ? sum_ / weight : 0.0;
    }

private:
    double sum_ = 0.0;
    bool seen_ = false;
};

// The sample at or before a moment, or the first one.
Iterator StepBack(SampleSeries const& samples, Iterator it)
{
    return it == samples.Begin() ? it : --it;
}

// What stands around a moment: a sample at that very time, or those before and after it as far as there are any.
struct Neighbours
{
    SampleSeries::Sample const* at = nullptr;
    SampleSeries::Sample const* earlier = nullptr;
    SampleSeries::Sample const* later = nullptr;
};

Neighbours FindNeighbours(SampleSeries const& samples, long long moment)
{
    Neighbours found;
    Iterator it = samples.LowerBound(moment);
    if (it == samples.End())
        return found;
    if (it->time == moment)
    {
        found.at = &*it;
        return found;
    }
    found.later = &*it;
    if (it != samples.Begin())
        found.earlier = &*--it;
    return found;
}

// The closer neighbour; the later one at equal distance.
double Closer(Neighbours const& around, long long moment)
{
    auto const& [at, earlier, later] = around;
    return moment - earlier->time < later->time - moment ? earlier->value : later->value;
}

} // namespace

TimeAverager::TimeAverager() : samples_(std::make_unique<SampleSeries>())
{}

TimeAverager::TimeAverager(TimeAverager const& other)
    : samples_(std::make_unique<SampleSeries>(*other.samples_)), firstTime_(other.firstTime_),
      lastTime_(other.lastTime_)
{}

TimeAverager& TimeAverager::operator=(TimeAverager const& other)
{
    if (this != &other)
    {
        samples_ = std::make_unique<SampleSeries>(*other.samples_);
        firstTime_ = other.firstTime_;
        lastTime_ = other.lastTime_;
    }
    return *this;
}

TimeAverager::~TimeAverager() = default;

void TimeAverager::addSamplePoint(Time const& time, double value)
{
    bool const isFirst = samples_->IsEmpty();
    samples_->Set(CountOf(time), value);
    if (isFirst || time < firstTime_)
        firstTime_ = time;
    if (isFirst || time > lastTime_)
        lastTime_ = time;
}

TimeAverager::SampleRange TimeAverager::getSamples() const
{
    return SampleRange(samples_.get());
}

TimeAverager::SampleIterator::value_type TimeAverager::SampleIterator::operator*() const
{
    SampleSeries::Sample const& sample = series_->InBlock(block_)[index_];
    return {Time::MinTime() += sample.time, sample.value};
}

TimeAverager::SampleIterator& TimeAverager::SampleIterator::operator++()
{
    if (++index_ == series_->InBlock(block_).size())
    {
        ++block_;
        index_ = 0;
    }
    return *this;
}

TimeAverager::SampleIterator TimeAverager::SampleRange::end() const
{
    return SampleIterator(series_, series_->BlockCount());
}

double TimeAverager::getPointValue(Time const& time, TimeSampleStyle style) const
{
    if (OutOfRange(time))
        return NullValue;
    switch (style)
    {
    case TimeSampleStyle::Forward: return getForwardPointValue(time);
    case TimeSampleStyle::Backward: return getBackwardPointValue(time);
    case TimeSampleStyle::Linear: return getLinearPointValue(time);
    case TimeSampleStyle::Nearest: return getNearestPointValue(time);
    }
    throw std::invalid_argument("Unknown sample type");
}

double TimeAverager::getForwardPointValue(Time const& time) const
{
    if (time < firstTime_ || time >= lastTime_)
        return NullValue;
    Iterator after = samples_->UpperBound(CountOf(time));
    // The end, which points nowhere, steps back into the last block.
    // NOLINTNEXTLINE(clang-analyzer-core.NullDereference)
    return after == samples_->Begin() ? NullValue : (--after)->value;
}

double TimeAverager::getBackwardPointValue(Time const& time) const
{
    if (time <= firstTime_ || time > lastTime_)
        return NullValue;
    Iterator const at = samples_->LowerBound(CountOf(time));
    return at == samples_->End() ? NullValue : at->value;
}

double TimeAverager::getLinearPointValue(Time const& time) const
{
    if (OutOfRange(time))
        return NullValue;
    long long const moment = CountOf(time);
    auto const [at, earlier, later] = FindNeighbours(*samples_, moment);
    if (at != nullptr)
        return at->value;
    if (earlier == nullptr || IsNullValue(earlier->value) || IsNullValue(later->value))
        return NullValue;
    return (earlier->value - later->value) * (static_cast<double>(moment - later->time) /
                                              static_cast<double>(earlier->time - later->time)) +
           later->value;
}

double TimeAverager::getNearestPointValue(Time const& time) const
{
    if (OutOfRange(time))
        return NullValue;
    long long const moment = CountOf(time);
    Neighbours const around = FindNeighbours(*samples_, moment);
    if (around.at != nullptr)
        return around.at->value;
    return around.earlier != nullptr ? Closer(around, moment) : NullValue;
}

double TimeAverager::getNearestPointValue(Time const& time, Time const& from, Time const& to) const
{
    if (OutOfRange(time) || time < from || time > to)
        return NullValue;
    if (time == to && from != time)
        return NullValue;
    long long const moment = CountOf(time);
    Neighbours const around = FindNeighbours(*samples_, moment);
    if (around.at != nullptr)
        return around.at->value;
    if (around.earlier == nullptr)
        return NullValue;

    bool const earlierInside = around.earlier->time >= CountOf(from);
    bool const laterInside = around.later->time < CountOf(to);
    if (earlierInside && laterInside)
        return Closer(around, moment);
    if (earlierInside)
        return around.earlier->value;
    return laterInside ? around.later->value : NullValue;
}

double TimeAverager::getAverageValue(Time const& from, Time const& to, TimeAverageStyle style) const
{
    switch (style)
    {
    case TimeAverageStyle::Forward:
        return from == to ? getForwardPointValue(from) : getForwardAverageValue(from, to);
    case TimeAverageStyle::Backward:
        return from == to ? getBackwardPointValue(from) : getBackwardAverageValue(from, to);
    case TimeAverageStyle::Point: return getPointAverageValue(from, to);
    case TimeAverageStyle::Cumulative: return from == to ? 0.0 : getCumulativeAverageValue(from, to);
    }
    throw std::invalid_argument("Unknown average type");
}

double TimeAverager::getForwardAverageValue(Time const& from, Time const& to) const
{
    if (samples_->IsEmpty())
        return NullValue;
    long long const begin = CountOf(from);
    long long const end = CountOf(to);
    Iterator const samplesEnd = samples_->End();

    Iterator it = StepBack(*samples_, samples_->LowerBound(begin));
    long long current = std::max(it->time, begin);
    double value = it->value;
    WeightedSum sum;
    while (++it != samplesEnd && current < end)
    {
        long long const next = std::min(it->time, end);
        sum.Add(next - current, value);
        current = next;
        value = it->value;
    }
    return sum.Mean(begin, end);
}

double TimeAverager::getBackwardAverageValue(Time const& from, Time const& to) const
{
    if (samples_->IsEmpty())
        return NullValue;
    long long const begin = CountOf(from);
    long long const end = CountOf(to);
    Iterator const samplesEnd = samples_->End();

    Iterator it = samples_->LowerBound(begin);
    long long current = begin;
    if (it == samples_->Begin())
    {
        // What the first sample says ends at its time; nothing is known before it.
        current = std::max(current, it->time);
        ++it;
    }
    WeightedSum sum;
    for (; it != samplesEnd && current < end; ++it)
    {
        long long const next = std::min(it->time, end);
        sum.Add(next - current, it->value);
        current = next;
    }
    return sum.Mean(begin, end);
}

double TimeAverager::getPointAverageValue(Time const& from, Time const& to) const
{
    long long const end = CountOf(to);
    double sum = 0.0;
    int count = 0;
    for (Iterator it = samples_->LowerBound(CountOf(from)); it != samples_->End() && it->time < end; ++it)
    {
        if (!IsNullValue(it->value))
        {
            sum += it->value;
            ++count;
        }
    }
    return count > 0 ? sum / count : NullValue;
}

double TimeAverager::getCumulativeAverageValue(Time const& from, Time const& to) const
{
    double previous = getLinearPointValue(from);
    if (IsNullValue(previous))
        return NullValue;
    long long const begin = CountOf(from);
    long long const end = CountOf(to);

    Iterator it = StepBack(*samples_, samples_->LowerBound(begin));
    long long current = begin;
    double sum = 0.0;
    bool seen = false;
    while (++it != samples_->End() && current < end)
    {
        long long const next = std::min(it->time, end);
        double const value = it->time > end ? getLinearPointValue(to) : it->value;
        if (!IsNullValue(value))
        {
            sum += value - previous;
            seen = true;
        }
        current = next;
        previous = value;
    }
    return seen ? sum : NullValue;
}

} // namespace Zan::Orv::Core::Service
