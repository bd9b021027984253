#include "orv/datafiles/ColumnInterpreter.h"

namespace Zan::Orv::Core::Service {

ColumnInterpreter::~ColumnInterpreter() = default;

SurfaceMeasurement::SurfaceMeasurement(std::string const& text)
    : ColumnInterpreter(MeasurementsAt::Surface), text_(text)
{}

SurfaceMeasurement::~SurfaceMeasurement() = default;

} // namespace Zan::Orv::Core::Service
