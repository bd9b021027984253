#pragma once

#include "orv/foundation/Numerics.h"
#include "orv/serialization/Serializer.h"
#include "orv/time/TimePeriod.h"

#include <iosfwd>
#include <vector>

/// What the program stores: one Serialize for each class serves XML and text, writing and reading.

namespace Orv = Zan::Orv::Core::Service;

/// One week of the record.
struct Week : Orv::ISerializable
{
    Orv::Time end;
    double value = Orv::NullValue; // parts per million, null where there is none

    void Serialize(Orv::Serializer& serializer) override
    {
        serializer.Serialize(end, "end");
        serializer.Serialize(value, "value");
    }
};

/// One year of the table.
struct Year : Orv::ISerializable
{
    Orv::TimePeriod period;
    double coverage = 0; // the share of the year for which a value holds
    double forward = Orv::NullValue;
    double backward = Orv::NullValue;
    double midYear = Orv::NullValue;
    double point = Orv::NullValue;

    void Serialize(Orv::Serializer& serializer) override
    {
        serializer.Serialize(period, "period");
        serializer.Serialize(coverage, "coverage");
        serializer.Serialize(forward, "forward");
        serializer.Serialize(backward, "backward");
        serializer.Serialize(midYear, "mid_year");
        serializer.Serialize(point, "point");
    }
};

/// The record and what was found in it.
struct Study : Orv::ISerializable
{
    std::vector<Week> weeks;
    std::vector<Year> years;
    double rise = Orv::NullValue;

    void Serialize(Orv::Serializer& serializer) override
    {
        serializer.Serialize(weeks, "weeks");
        serializer.Serialize(years, "years");
        serializer.Serialize(rise, "rise");
    }
};

/// Draws the weekly series and the yearly means as an SVG picture.
void DrawChart(std::ostream& svg, Study const& study);
