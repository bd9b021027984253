#include "orv/foundation/Numerics.h"

#include "orv/foundation/internal/NumberText.h"

namespace Zan::Orv::Core::Service {

std::string IEEEToString(double value)
{
    char buffer[Internal::MaxIEEEText];
    return std::string(buffer, Internal::WriteIEEE(buffer, value));
}

double IEEEFromString(std::string const& text)
{
    return Internal::ReadIEEE(text);
}

} // namespace Zan::Orv::Core::Service
