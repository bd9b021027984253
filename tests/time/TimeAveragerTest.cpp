#include "orv/time/TimeAverager.h"
#include "orv/foundation/Numerics.h"
#include "orv/time/Time.h"
#include "tests/support/ExpectThrow.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <bit>
#include <cstdint>
#include <limits>
#include <map>
#include <random>
#include <tuple>
#include <utility>
#include <vector>

namespace Zan::Orv::Core::Service::Tests {
namespace {

using Sample = TimeAverager::TimeSampleStyle;
using Average = TimeAverager::TimeAverageStyle;
constexpr double null = NullValue;

Time At(long long milliseconds)
{
    Time time(2000, 1, 1, 0, 0, 0, 0);
    return time += milliseconds;
}

// The rules one by one, over a plain map. Slow, and free of cleverness.
class Model
{
public:
    void addSamplePoint(Time const& time, double value) { samples_[time] = value; }

    double getPointValue(Time const& t, Sample style) const
    {
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
        if (style == Sample::Nearest)
            return t - a->first < b->first - t ? a->second : b->second;
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
        if (hasA && hasB)
            return getPointValue(t, Sample::Nearest);
        return hasA ? a->second : hasB ? b->second : null;
    }

    double getAverageValue(Time const& from, Time const& to, Average style) const
    {
        if (style == Average::Point)
            return PointMean(from, to);
        if (style == Average::Cumulative)
            return from == to ? 0.0 : Increase(from, to);
        if (from == to)
            return getPointValue(from, style == Average::Forward ? Sample::Forward : Sample::Backward);
        return samples_.empty() ? null : StepMean(from, to, style == Average::Forward);
    }

private:
    using Position = std::map<Time, double>::const_iterator;

    bool IsOutside(Time const& t) const
    {
        return samples_.empty() || t < samples_.begin()->first || t > samples_.rbegin()->first;
    }

    static double Duration(long long milliseconds) { return static_cast<double>(milliseconds) / 1000000.0; }

    Position BeforeOrAt(Time const& from) const
    {
        auto const it = samples_.lower_bound(from);
        return it == samples_.begin() ? it : std::prev(it);
    }

    // Both step functions: each step has the value of the sample before or behind it.
    double StepMean(Time const& from, Time const& to, bool forward) const
    {
        auto it = forward ? BeforeOrAt(from) : samples_.lower_bound(from);
        if (it == samples_.end())
            return null;
        Time current = from;
        double before = it->second;
        if (forward || it == samples_.begin())
        {
            current = std::max(it->first, from);
            ++it;
        }
        double sum = 0.0;
        bool seen = false;
        for (; it != samples_.end() && current < to; ++it)
        {
            Time const next = std::min(it->first, to);
            double const value = forward ? before : it->second;
            if (!IsNullValue(value))
            {
                sum += Duration(next - current) * value;
                seen = true;
            }
            current = next;
            before = it->second;
        }
        if (!seen)
            return null;
        return Duration(to - from) > 0.0 ? sum / Duration(to - from) : 0.0;
    }

    double PointMean(Time const& from, Time const& to) const
    {
        double sum = 0.0;
        int count = 0;
        for (auto it = samples_.lower_bound(from); it != samples_.end() && it->first < to; ++it)
            if (!IsNullValue(it->second))
            {
                sum += it->second;
                ++count;
            }
        return count > 0 ? sum / count : null;
    }

    double Increase(Time const& from, Time const& to) const
    {
        double previous = getPointValue(from, Sample::Linear);
        if (IsNullValue(previous))
            return null;
        double sum = 0.0;
        bool seen = false;
        Time current = from;
        for (auto it = std::next(BeforeOrAt(from)); it != samples_.end() && current < to; ++it)
        {
            bool const cut = it->first > to;
            double const value = cut ? getPointValue(to, Sample::Linear) : it->second;
            if (!IsNullValue(value))
            {
                sum += value - previous;
                seen = true;
            }
            current = cut ? to : it->first;
            previous = value;
        }
        return seen ? sum : null;
    }

    std::map<Time, double> samples_;
};

// Every answer about a moment and an interval, to the last bit; all nulls are one.
template<class Series>
std::array<std::uint64_t, 9> Answers(Series const& series, Time const& t, Time const& from, Time const& to)
{
    auto const bits = [](double value) {
        return std::bit_cast<std::uint64_t>(IsNullValue(value) ? null : value);
    };
    std::array<std::uint64_t, 9> all{};
    for (std::size_t i = 0; i < 4; ++i)
    {
        all[i] = bits(series.getPointValue(t, static_cast<Sample>(i)));
        all[i + 4] = bits(series.getAverageValue(from, to, static_cast<Average>(i)));
    }
    all[8] = bits(series.getNearestPointValue(t, from, to));
    return all;
}

TimeAverager TwoSamples()
{
    TimeAverager averager;
    averager.addSamplePoint(At(0), 1.0);
    averager.addSamplePoint(At(10), 2.0);
    return averager;
}

TEST(TimeAverager, RefusesUnknownStyles)
{
    TimeAverager const averager = TwoSamples();
    for (int const wild : {-1, 4})
    {
        auto const style = static_cast<Sample>(wild);
        EXPECT_TRUE(Throws<std::invalid_argument>([&] { averager.getPointValue(At(10), style); },
                                                  "Unknown sample type"));
        EXPECT_TRUE(IsNullValue(averager.getPointValue(At(11), style)));
        for (long long const to : {-5, 0, 5})
            EXPECT_TRUE(Throws<std::invalid_argument>(
                [&] { averager.getAverageValue(At(0), At(to), static_cast<Average>(wild)); },
                "Unknown average type"));
    }
}

TEST(TimeAverager, CopiesAreDeep)
{
    TimeAverager first = TwoSamples();
    TimeAverager const second(first);
    TimeAverager third;
    TimeAverager const& alias = third = first;
    third = alias;
    first.addSamplePoint(At(5), 5.0);
    EXPECT_EQ(first.getPointValue(At(5), Sample::Linear), 5.0);
    EXPECT_EQ(second.getPointValue(At(5), Sample::Linear), 1.5);
    EXPECT_EQ(third.getPointValue(At(5), Sample::Linear), 1.5);
}

double AnyValue(std::mt19937_64& random)
{
    double const special[] = {null, null, null, -0.0, 1e300, std::numeric_limits<double>::denorm_min()};
    auto const kind = random() % 16;
    return kind < 6 ? special[kind] : static_cast<double>(random() % 2000001) / 7000.0 - 100.0;
}

TEST(TimeAverager, AgreesWithTheRules)
{
    unsigned const seed = 37;
    std::mt19937_64 random(seed);
    for (int round = 0; round < 604; ++round)
    {
        // The last rounds cross the borders of any blocks inside: in order, in reverse, shuffled and
        // interlocked.
        bool const isLong = round >= 600;
        std::size_t const count = isLong ? 5000 : random() % 14;
        long long const unit = round % 3 == 0 ? 2 : round % 3 == 1 ? 7 * HOUR + 11 : 1667 * DAY;
        auto const anyTime = [&] { return isLong ? random() % 16000 : (random() % 52) * 100; };
        std::vector<long long> order(count);
        for (std::size_t i = 0; i < count; ++i)
            order[i] = static_cast<long long>(isLong ? i * 3 : anyTime());
        if (round == 601)
            std::reverse(order.begin(), order.end());
        if (round == 602)
            std::shuffle(order.begin(), order.end(), random);
        if (round == 603)
            std::stable_partition(order.begin(), order.end(), [](long long time) { return time % 2 != 0; });

        auto const at = [&](long long time) { return isLong ? At(time) : At(time * unit / 200); };
        TimeAverager averager;
        Model model;
        for (std::size_t i = 0; i < count; ++i)
            for (std::size_t const k : {i, random() % (i + 1)}) // each, and one again of those before
            {
                double const value = AnyValue(random);
                averager.addSamplePoint(at(order[k]), value);
                model.addSamplePoint(at(order[k]), value);
            }
        for (int query = isLong ? -3 : 0; query < (isLong ? 15003 : 12); ++query)
        {
            auto const any = [&] { return at(static_cast<long long>(anyTime())); };
            Time const t = isLong ? At(query) : any();
            bool const isNear = isLong && query % 97 != 0; // long intervals cost the model too much
            Time from = isNear ? At(query - query % 5) : any();
            Time to = isNear ? At(query + query % 7) : any();
            if (query == 0)
                from = to = t;
            if (query == 1)
                std::tie(from, to) = std::pair(Time(), Time::MaxTime());
            ASSERT_EQ(Answers(averager, t, from, to), Answers(model, t, from, to))
                << t << ", " << from << " to " << to << ", round " << round << ", seed " << seed;
        }
    }
}

} // namespace
} // namespace Zan::Orv::Core::Service::Tests
