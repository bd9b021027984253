#include "orv/time/TimeAverager.h"
#include "orv/foundation/Numerics.h"
#include "tests/support/ExpectThrow.h"
#include "tests/time/Times.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <bit>
#include <cstdint>
#include <limits>
#include <map>
#include <numeric>
#include <random>
#include <utility>
#include <vector>

namespace Zan::Orv::Core::Service::Tests {
namespace {

using Sample = TimeAverager::TimeSampleStyle;
using Average = TimeAverager::TimeAverageStyle;
constexpr double null = NullValue;

// The rules one by one, over a plain map. Slow, and free of cleverness.
class Model
{
public:
    void addSamplePoint(Time const& time, double value) { samples_[time] = value; }

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

TEST(TimeAverager, RefusesUnknownStyles)
{
    TimeAverager averager;
    averager.addSamplePoint(At(10), 2.0);
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
    TimeAverager first;
    first.addSamplePoint(At(0), 1.0);
    TimeAverager second(first);
    TimeAverager third;
    TimeAverager const& alias = third = first;
    third = alias;
    first.addSamplePoint(At(0), 5.0);
    for (auto const& [averager, value] : {std::pair(&first, 5.0), {&second, 1.0}, {&third, 1.0}})
        EXPECT_EQ(averager->getPointValue(At(0), Sample::Linear), value);
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
        long long const unit = isLong || round % 3 == 0 ? 2 : round % 3 == 1 ? 7 * HOUR + 11 : 1667 * DAY;
        auto const at = [&](long long time) { return At(time * unit / 2); };
        auto const anyTime = [&] { return static_cast<long long>(random() % (isLong ? 16000 : 52)); };
        std::vector<long long> order(count);
        for (std::size_t i = 0; i < count; ++i)
            order[i] = isLong ? static_cast<long long>(i) * 3 : anyTime();
        if (round == 601)
            std::reverse(order.begin(), order.end());
        if (round == 602)
            std::shuffle(order.begin(), order.end(), random);
        if (round == 603)
            std::stable_partition(order.begin(), order.end(), [](long long time) { return time % 2 != 0; });

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
            bool const isNear = isLong && query % 97 != 0; // long intervals cost the model too much
            Time const t = isLong ? At(query) : at(anyTime());
            Time const from = query == 1 ? Time::MinTime() : at(isNear ? query - query % 5 : anyTime());
            Time const to = query == 1 ? Time::MaxTime() : at(isNear ? query + query % 7 : anyTime());
            ASSERT_EQ(Answers(averager, t, from, to), Answers(model, t, from, to))
                << t << ", " << from << " to " << to << ", round " << round << ", seed " << seed;
        }
    }
}

} // namespace
} // namespace Zan::Orv::Core::Service::Tests
