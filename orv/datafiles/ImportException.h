#pragma once

#include "orv/Export.h"
#include "orv/foundation/Exception.h"

#include <string>

namespace Zan::Orv::Core::Service {

/// A line of a text file that can not be imported. For the program that reads the file: the library itself
/// does not throw it. A value, as any exception.
class ORV_API ImportException : public Exception
{
public:
    /// The text is `message`, " at line " and the number.
    ImportException(int lineNo, std::string const& message);
    ImportException(ImportException const&) = default;
    ImportException& operator=(ImportException const&) = default;
    ~ImportException() override;

    /// The number that the constructor was given.
    int GetLineNo() const { return lineNo_; }

private:
    int lineNo_;
};

} // namespace Zan::Orv::Core::Service
