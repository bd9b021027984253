#include "orv/datafiles/ImportException.h"

namespace Zan::Orv::Core::Service {

ImportException::ImportException(int lineNo, std::string const& message)
    : Exception(message + " at line " + std::to_string(lineNo)), lineNo_(lineNo)
{}

ImportException::~ImportException() = default;

} // namespace Zan::Orv::Core::Service
