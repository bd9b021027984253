#include "orv/time/Time.h"
#include "orv/time/TimeFormat.h"
#include "orv/time/TimeOffset.h"
#include "orv/time/TimePeriod.h"

#include <exception>
#include <iostream>

using namespace Zan::Orv::Core::Service;

int main()
{
    // The ends of three months. Counted from the start, none of them drifts.
    Time const start(2000, 1, 31, 0, 0, 0, 0);
    for (int months = 1; months <= 3; ++months)
    {
        Time end = start;
        end += TimeOffset(0, months, 0, 0, 0, 0, 0);
        std::cout << end << '\n';
    }

    // Calendar arithmetic: a month is as long as it is there.
    TimeOffset const month(0, 1, 0, 0, 0, 0, 0);
    Time report = start;
    report += month;
    std::cout << report << '\n';

    // Exact arithmetic: a number is a count of milliseconds.
    report += 36 * HOUR;
    std::cout << report << '\n';
    std::cout << (report - start) / DAY << " whole days since the start\n";

    // A half-open interval: the end belongs to the next one.
    TimePeriod const february(Time(2000, 2, 1, 0, 0, 0, 0), month);
    std::cout << february << ", " << february.Duration() / DAY << " days\n";
    std::cout << std::boolalpha << february.Contains(february.End()) << '\n';

    // Text in a form of one's own.
    TimeFormat const format("%d/%m/%Y %H:%M");
    std::cout << format(report) << '\n';

    try
    {
        Time(2001, 2, 29, 0, 0, 0, 0);
    }
    catch (std::exception const& e)
    {
        std::cout << e.what() << '\n';
    }
}
