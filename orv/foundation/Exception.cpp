#include "orv/foundation/Exception.h"

namespace Zan::Orv::Core::Service {

Exception::Exception(std::string const& message) : std::runtime_error(message)
{}
Exception::~Exception() = default;

ServiceException::ServiceException(std::string const& message) : Exception(message)
{}
ServiceException::~ServiceException() = default;

DirectoryException::DirectoryException(std::string const& message) : Exception(message)
{}
DirectoryException::~DirectoryException() = default;

SerializeException::SerializeException(std::string const& message) : Exception(message)
{}
SerializeException::~SerializeException() = default;

TimeException::TimeException(std::string const& message) : Exception(message)
{}
TimeException::~TimeException() = default;

} // namespace Zan::Orv::Core::Service
