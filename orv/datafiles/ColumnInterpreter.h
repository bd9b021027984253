#pragma once

#include "orv/Export.h"

#include <cstdint>
#include <string>

namespace Zan::Orv::Core::Service {

/// How the measurements of a column are to be understood: where they were taken. What has more to say about
/// them derives from this. A plain value.
class ORV_API ColumnInterpreter
{
public:
    /// The place of a measurement, from the surface down.
    enum class MeasurementsAt : std::int32_t
    {
        Unknown = 0,
        Surface = 1,  ///< at surface conditions, or in the open air
        Wellhead = 2, ///< at the top of the tubing
        Downhole = 3, ///< by a gauge in the well
        Reservoir = 4 ///< in the rock, at reservoir conditions
    };

    /// For measurements at this place.
    explicit ColumnInterpreter(MeasurementsAt where) : where_(where) {}
    ColumnInterpreter(ColumnInterpreter const&) = default;
    ColumnInterpreter& operator=(ColumnInterpreter const&) = default;
    virtual ~ColumnInterpreter();

    /// Where the measurements were taken.
    MeasurementsAt GetMeasurementsAt() const { return where_; }

private:
    MeasurementsAt where_;
};

/// Measurements at the surface, with a text that means what the program wants, such as the name of a station.
class ORV_API SurfaceMeasurement : public ColumnInterpreter
{
public:
    /// `text` is kept as it is.
    explicit SurfaceMeasurement(std::string const& text);
    SurfaceMeasurement(SurfaceMeasurement const&) = default;
    SurfaceMeasurement(SurfaceMeasurement&&) = default;
    SurfaceMeasurement& operator=(SurfaceMeasurement const&) = default;
    SurfaceMeasurement& operator=(SurfaceMeasurement&&) = default;
    ~SurfaceMeasurement() override;

    /// The text that the constructor was given.
    std::string const& GetText() const { return text_; }

private:
    std::string text_;
};

} // namespace Zan::Orv::Core::Service
