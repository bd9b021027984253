#include "orv/serialization/ISerializerImpl.h"

namespace Zan::Orv::Core::Service {

ISerializerImpl::~ISerializerImpl() = default;

IExhaustible::~IExhaustible() = default;

} // namespace Zan::Orv::Core::Service
