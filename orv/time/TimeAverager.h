#pragma once

#include "orv/Export.h"
#include "orv/time/Time.h"

#include <cstddef>
#include <iterator>
#include <memory>
#include <string_view> // declares what is told to the ranges of C++20 at the end
#include <utility>

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
/// `getSamples` shows the samples themselves.
///
/// A value: copies are deep. Reading one from several threads is safe while nobody adds to it.
class ORV_API TimeAverager
{
public:
    class SampleIterator;
    class SampleRange;

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

    /// The samples as pairs of time and value, in order of time, null ones among them:
    ///
    ///     for (auto const& [time, value] : rate.getSamples())
    ///
    /// They are looked at in place: `addSamplePoint`, an assignment and the end of the averager make the range and its
    /// iterators invalid.
    SampleRange getSamples() const;

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

/// Walks forward, as often as wanted. Pairs are made on the way, so that there is nothing to keep a reference to: a
/// forward iterator for C++20, and an input iterator by the stricter words of C++17.
class ORV_API TimeAverager::SampleIterator
{
public:
    /// \{
    /// What the algorithms of the standard library ask of an iterator.
    using value_type = std::pair<Time, double>;
    using reference = value_type;
    using pointer = void;
    using difference_type = std::ptrdiff_t;
    using iterator_category = std::input_iterator_tag;
    using iterator_concept = std::forward_iterator_tag;
    /// \}

    /// Of no range.
    SampleIterator() = default;

    value_type operator*() const;

    /// \{
    /// Goes to the next sample in time.
    SampleIterator& operator++();
    SampleIterator operator++(int)
    {
        SampleIterator const before = *this;
        ++*this;
        return before;
    }
    /// \}

    bool operator==(SampleIterator const& other) const
    {
        return block_ == other.block_ && index_ == other.index_ && series_ == other.series_;
    }
    bool operator!=(SampleIterator const& other) const { return !(*this == other); }

private:
    friend class SampleRange;

    SampleIterator(SampleSeries const* series, std::size_t block) : series_(series), block_(block) {}

    SampleSeries const* series_ = nullptr;
    std::size_t block_ = 0; // the number of blocks at the end
    std::size_t index_ = 0; // in the block
};

/// What `getSamples` returns: light, and a view. Its iterators may outlive it.
class ORV_API TimeAverager::SampleRange
{
public:
    /// \{
    /// The samples do not change through it.
    using iterator = SampleIterator;
    using const_iterator = SampleIterator;
    /// \}

    /// \{
    /// From the first sample in time to behind the last.
    SampleIterator begin() const { return SampleIterator(series_, 0); }
    SampleIterator end() const;
    /// \}
    /// True when there is none.
    bool empty() const { return begin() == end(); }

private:
    friend class TimeAverager;

    explicit SampleRange(SampleSeries const* series) : series_(series) {}

    SampleSeries const* series_;
};

} // namespace Zan::Orv::Core::Service

#if defined(__cpp_lib_ranges)
template<>
inline constexpr bool std::ranges::enable_borrowed_range<Zan::Orv::Core::Service::TimeAverager::SampleRange> =
    true;
template<>
inline constexpr bool std::ranges::enable_view<Zan::Orv::Core::Service::TimeAverager::SampleRange> = true;
#endif
