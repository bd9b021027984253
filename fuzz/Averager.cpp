#include "orv/time/TimeAverager.h"

#include "fuzz/Input.h"
#include "orv/foundation/Numerics.h"

#include <algorithm>
#include <array>
#include <bit>
#include <iterator>
#include <limits>
#include <map>
#include <numeric>
#include <vector>

namespace Zan::Orv::Core::Service::Fuzz {

namespace {

using Sample = TimeAverager::TimeSampleStyle;
using Average = TimeAverager::TimeAverageStyle;
constexpr double null = NullValue;

// The rules one by one, over a plain map. Slow, and free of cleverness.
class Model
{
public:
    void addSamplePoint(Time const& time, double value) { samples_[time] = value; }
    std::map<Time, double> const& getSamples() const { return samples_; }

    double getPointValue(Time const& t, Sample style) const
    {
        if (style == Sample::Nearest)
            return getNearestPointValue(t, Time::MinTime(), Time::MaxTime());
        if (IsOutside(t))
            return null;
        auto const b = samples_.lower_bound(t);
        if (style == Sample::Forward)
            return t < samples_.rbegin()->first ? std::prev(samples_.upper_bound(t))->second : null;
        if (style == Sample::Backward)
            return b == samples_.begin() ? null : b->second;
        if (b->first == t)
            return b->second;
        auto const a = std::prev(b);
        if (IsNullValue(a->second) || IsNullValue(b->second))
            return null;
        auto const part = static_cast<double>(t - b->first) / static_cast<double>(a->first - b->first);
        return (a->second - b->second) * part + b->second;
    }

    double getNearestPointValue(Time const& t, Time const& from, Time const& to) const
    {
        if (IsOutside(t) || t < from || t > to || (t == to && from != t))
            return null;
        auto const b = samples_.lower_bound(t);
        if (b->first == t)
            return b->second;
        auto const a = std::prev(b);
        bool const hasA = a->first >= from;
        bool const hasB = b->first < to;
        if (hasA && (!hasB || t - a->first < b->first - t))
            return a->second;
        return hasB ? b->second : null;
    }

    double getAverageValue(Time const& from, Time const& to, Average style) const
    {
        bool const isForward = style == Average::Forward;
        bool const isIncrease = style == Average::Cumulative;
        if (style == Average::Point)
            return PointMean(from, to);
        if (from == to)
            return isIncrease ? 0.0 : getPointValue(from, isForward ? Sample::Forward : Sample::Backward);

        // Along the stretches between neighbours, as far as they lie within the interval. One that ends where the
        // interval begins is looked at as well.
        double previous = getPointValue(from, Sample::Linear);
        if (isIncrease && IsNullValue(previous))
            return null;
        double sum = 0.0;
        bool seen = false;
        for (auto b = samples_.lower_bound(from); b != samples_.end(); ++b)
        {
            if (b == samples_.begin())
                continue;
            auto const a = std::prev(b);
            Time const begin = std::max(a->first, from);
            Time const end = std::min(b->first, to);
            if (begin >= to)
                break;
            double const step = isForward ? a->second : b->second;
            double const value = isIncrease ? getPointValue(end, Sample::Linear) : step;
            if (!IsNullValue(value))
            {
                sum += isIncrease ? value - previous : Duration(end - begin) * value;
                seen = true;
            }
            previous = value;
        }
        return seen ? sum / (isIncrease ? 1.0 : Duration(to - from)) : null;
    }

private:
    bool IsOutside(Time const& t) const
    {
        return samples_.empty() || t < samples_.begin()->first || t > samples_.rbegin()->first;
    }

    static double Duration(long long milliseconds) { return static_cast<double>(milliseconds) / 1000000.0; }

    double PointMean(Time const& from, Time const& to) const
    {
        std::vector<double> values;
        for (auto it = samples_.lower_bound(from); it != samples_.end() && it->first < to; ++it)
            if (!IsNullValue(it->second))
                values.push_back(it->second);
        double const sum = std::accumulate(values.begin(), values.end(), 0.0);
        return values.empty() ? null : sum / static_cast<double>(values.size());
    }

    std::map<Time, double> samples_;
};

std::uint64_t Bits(double value)
{
    return std::bit_cast<std::uint64_t>(IsNullValue(value) ? null : value);
}

// Every answer about a moment and an interval, to the last bit; all nulls are one.
template<class Series>
std::array<std::uint64_t, 9> Answers(Series const& series, Time const& t, Time const& from, Time const& to)
{
    std::array<std::uint64_t, 9> all{};
    for (std::size_t i = 0; i < 4; ++i)
    {
        all[i] = Bits(series.getPointValue(t, static_cast<Sample>(i)));
        all[i + 4] = Bits(series.getAverageValue(from, to, static_cast<Average>(i)));
    }
    all[8] = Bits(series.getNearestPointValue(t, from, to));
    return all;
}

double Value(Input& input)
{
    double const special[] = {null, -0.0, 1e290, std::numeric_limits<double>::denorm_min()};
    unsigned const kind = input.Below(12);
    return kind < 4 ? special[kind] : input.Number<std::int16_t>() / 7.0;
}

} // namespace

// Samples and questions in any order, against the rules.
void Run(Input& input)
{
    long long const units[] = {1, 7 * HOUR + 11, 6 * DAY}; // none leaves the calendar
    long long const unit = units[input.Below(3)];
    auto const at = [unit](long long count) { return Time(2000, 1, 1, 0, 0, 0, 0) += count * unit; };
    auto const anyTime = [&] { return at(input.Number<std::int16_t>()); };
    TimeAverager averager;
    Model model;
    auto const add = [&](Time const& time, double value) {
        averager.addSamplePoint(time, value);
        model.addSamplePoint(time, value);
    };
    for (int step = 0; step < 24 && !input.IsEmpty(); ++step)
        switch (input.Below(4))
        {
        case 0: // many at once, forward or back: enough to fill what is stored together
        {
            long long const first = input.Number<std::int16_t>();
            long long const stride = input.Number<std::int8_t>();
            int const count = input.Number<std::uint8_t>() * 5;
            double const value = Value(input);
            for (int i = 0; i < count; ++i)
                add(at(first + i * stride), i % 100 == 99 ? null : value + i);
            break;
        }
        case 1:
        {
            Time const time = anyTime();
            add(time, Value(input));
            break;
        }
        default:
        {
            bool const isAll = input.Below(8) == 7;
            Time const time = anyTime();
            Time const from = isAll ? Time::MinTime() : anyTime();
            Time const to = isAll ? Time::MaxTime() : anyTime();
            Require(Answers(averager, time, from, to) == Answers(model, time, from, to),
                    "the answers are those of the rules");
        }
        }

    auto const isSame = [](auto const& a, auto const& b) {
        return a.first == b.first && Bits(a.second) == Bits(b.second);
    };
    auto const samples = averager.getSamples();
    auto const& expected = model.getSamples();
    Require(std::equal(samples.begin(), samples.end(), expected.begin(), expected.end(), isSame),
            "the samples are each there once and in order");
}

} // namespace Zan::Orv::Core::Service::Fuzz
