#include "orv/files/PathFilter.h"

namespace Zan::Orv::Core::Service {

PathFilter::~PathFilter() = default;

} // namespace Zan::Orv::Core::Service
