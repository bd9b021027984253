#pragma once

#include "orv/Export.h"
#include "orv/time/Time.h"

#include <memory>

namespace Zan::Orv::Core::Service {

class SampleSeries;
class TimePeriod;

/// A series of samples in time, and what it says about a moment or an interval. A sample can mean different
/// things, so the caller says how it is to be read.
///
///     TimeAverager rate;
///     rate.addSamplePoint(Time(2000, 1, 1, 0, 0, 0, 0), 120.0);
///     rate.addSamplePoint(Time(2000, 1, 11, 0, 0, 0, 0), 80.0);
///     double const mean = rate.getAverageValue(begin, end, TimeAverager::TimeAverageStyle::Forward);
///
/// Where the data say nothing, the answer is `NullValue`: ask `IsNullValue`. A sample may itself be null,
/// which makes a gap. Samples come in any order; in order of time is the fastest. A sample takes 16 bytes.
///
/// A value: copies are deep. Reading one from several threads is safe while nobody adds to it.
class ORV_API TimeAverager
{
public:
    /// How samples make a function of time.
    enum class TimeSampleStyle
    {
        Forward =
            0, ///< a sample holds from its time up to the next one; from the first up to before the last
        Backward =
            1, ///< a sample holds from the one before up to its time; from after the first up to the last
        Linear = 2, ///< straight lines between neighbours; from the first to the last
        Nearest = 3 ///< the closest sample, the later of two; from the first to the last
    };

    /// How an interval becomes a number.
    enum class TimeAverageStyle
    {
        Forward = 0,   ///< time-weighted mean of the forward steps
        Backward = 1,  ///< time-weighted mean of the backward steps
        Point = 2,     ///< plain mean of the samples, `from` included and `to` excluded
        Cumulative = 3 ///< increase of a running total; a sum and no mean
    };

    TimeAverager();
    TimeAverager(TimeAverager const& other);
    TimeAverager& operator=(TimeAverager const& other);
    virtual ~TimeAverager();

    /// Adds a sample, or replaces the one at the same time. A null value is stored.
    void addSamplePoint(Time const& time, double value);

    /// The value at one moment. Null outside the range of the style, and next to a null sample where it needs
    /// two.
    /// \throws std::invalid_argument "Unknown sample type" for another style, within the sampled range.
    double getPointValue(Time const& time, TimeSampleStyle style) const;

    /// The value of one interval, taken as it is: reversed bounds give null.
    ///
    /// The weighted means divide by the whole interval. Time outside the samples and time in a gap adds
    /// nothing to the sum, and so pulls the mean towards zero; without any value at all they are null. For
    /// equal bounds they are the point value of the style. The last sample of the forward reading holds for
    /// no time.
    ///
    /// The cumulative increase starts at the linear value at `from`, is null where that is, and ends at the
    /// last sample at the latest. A gap inside makes it null. It is 0 for equal bounds.
    /// \throws std::invalid_argument "Unknown average type" for another style.
    double getAverageValue(Time const& from, Time const& to, TimeAverageStyle style) const;

    /// The sample nearest to `time` among those from `from` up to before `to`; the later of two. Null when
    /// `time` lies outside the interval or the samples, or neither neighbour lies inside.
    double getNearestPointValue(Time const& time, Time const& from, Time const& to) const;

private:
    double getForwardPointValue(Time const& time) const;
    double getBackwardPointValue(Time const& time) const;
    double getLinearPointValue(Time const& time) const;
    double getNearestPointValue(Time const& time) const;

    double getForwardAverageValue(Time const& from, Time const& to) const;
    double getBackwardAverageValue(Time const& from, Time const& to) const;
    double getPointAverageValue(Time const& from, Time const& to) const;
    double getCumulativeAverageValue(Time const& from, Time const& to) const;

    bool OutOfRange(Time const& time) const { return time < firstTime_ || time > lastTime_; }

    std::unique_ptr<SampleSeries> samples_;
    Time firstTime_;
    Time lastTime_;
};

} // namespace Zan::Orv::Core::Service
