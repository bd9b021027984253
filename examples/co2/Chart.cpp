#include "Study.h"

#include <ostream>

namespace {

constexpr double left = 70, right = 930, top = 90, bottom = 500;
constexpr int firstYear = 1958, lastYear = 2002, lowest = 310, highest = 375;

double X(Orv::Time const& time)
{
    static Orv::Time const origin(firstYear, 1, 1, 0, 0, 0, 0);
    static Orv::Time const end(lastYear, 1, 1, 0, 0, 0, 0);
    return left + (right - left) * static_cast<double>(time - origin) / static_cast<double>(end - origin);
}

double Y(double value)
{
    return bottom - (bottom - top) * (value - lowest) / (highest - lowest);
}

void DrawAxes(std::ostream& svg)
{
    for (int value = lowest; value <= highest; value += 10)
        svg << "<path stroke='#e3e7eb' d='M" << left << ' ' << Y(value) << "H" << right << "'/><text x='"
            << left - 10 << "' y='" << Y(value) + 4 << "' text-anchor='end'>" << value << "</text>\n";
    for (int year = 1960; year <= lastYear; year += 5)
        svg << "<text x='" << X(Orv::Time(year, 1, 1, 0, 0, 0, 0)) << "' y='" << bottom + 22
            << "' text-anchor='middle'>" << year << "</text>\n";
    svg << "<path stroke='#7a8793' d='M" << left << ' ' << bottom << "H" << right << "'/>\n";
}

} // namespace

void DrawChart(std::ostream& svg, Study const& study)
{
    svg << "<svg xmlns='http://www.w3.org/2000/svg' viewBox='0 0 960 560' font-family='Helvetica, Arial, "
           "sans-serif' "
           "font-size='13' fill='#44515c'>\n<rect width='960' height='560' fill='#ffffff'/>\n"
        << "<text x='" << left
        << "' y='40' font-size='22' fill='#1d2730'>Carbon dioxide at Mauna Loa</text>\n"
        << "<text x='" << left
        << "' y='64'>parts per million: <tspan fill='#5b9bd5'>weekly</tspan> and as <tspan fill='#c0392b' "
           "font-weight='bold'>means of the years</tspan></text>\n";
    DrawAxes(svg);

    // Lines break where the record does.
    svg << "<path fill='none' stroke='#5b9bd5' stroke-width='1.1' d='";
    bool drawing = false;
    for (Week const& week : study.weeks)
    {
        bool const hasValue = !Orv::IsNullValue(week.value);
        if (hasValue)
            svg << (drawing ? 'L' : 'M') << X(week.end) << ' ' << Y(week.value);
        drawing = hasValue;
    }
    svg << "'/>\n<polyline fill='none' stroke='#c0392b' stroke-width='2' points='";
    for (Year const& year : study.years)
    {
        Orv::Time middle = year.period.Begin();
        middle += year.period.Duration() / 2;
        svg << X(middle) << ',' << Y(year.point) << ' ';
    }
    svg << "'/>\n<text x='" << right
        << "' y='545' text-anchor='end' font-size='11' fill='#7a8793'>Keeling, C. D. and "
           "Whorf, T. P. (2004), Carbon Dioxide Information Analysis Center</text>\n</svg>\n";
}
