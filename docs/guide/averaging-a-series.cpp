#include "orv/foundation/Numerics.h"
#include "orv/time/TimeAverager.h"

#include <iostream>

using namespace Zan::Orv::Core::Service;
using Sample = TimeAverager::TimeSampleStyle;
using Average = TimeAverager::TimeAverageStyle;

int main()
{
    auto const day = [](int number) { return Time(2000, 1, number, 0, 0, 0, 0); };

    // A rate in m3/d, written down whenever it changed: each sample holds up to the next one.
    TimeAverager rate;
    rate.addSamplePoint(day(1), 120.0);
    rate.addSamplePoint(day(11), 80.0);
    rate.addSamplePoint(day(31), 0.0);
    std::cout << "on the 10th: " << rate.getPointValue(day(10), Sample::Forward) << '\n';
    std::cout << "mean by time: " << rate.getAverageValue(day(1), day(31), Average::Forward) << '\n';
    std::cout << "mean of samples: " << rate.getAverageValue(day(1), day(31), Average::Point) << '\n';

    // A meter that only counts up, in m3: what went through?
    TimeAverager meter;
    meter.addSamplePoint(day(1), 5000.0);
    meter.addSamplePoint(day(31), 7800.0);
    std::cout << "through in 15 days: " << meter.getAverageValue(day(1), day(16), Average::Cumulative)
              << '\n';

    // A gap counts as time without a rate, and pulls the mean down.
    rate.addSamplePoint(day(21), NullValue);
    std::cout << "with a gap: " << rate.getAverageValue(day(1), day(31), Average::Forward) << '\n';

    // Where the data say nothing, the answer is null, which equals nothing. Ask for it.
    double const before = rate.getPointValue(Time(1999, 1, 1, 0, 0, 0, 0), Sample::Forward);
    if (IsNullValue(before))
        std::cout << "nothing is known of 1999\n";
}
