#pragma once

#include "orv/Export.h"

#include <stdexcept>
#include <string>

/// \file
/// The exceptions of the library, to be caught by subsystem or all together as `Exception`. Each carries its
/// text and nothing else; `what` returns the text that the constructor received. Moving one copies it, so
/// that no object is ever left without its words.

namespace Zan::Orv::Core::Service {

/// Common root. Never thrown by itself.
class ORV_API Exception : public std::runtime_error
{
public:
    Exception(Exception const&) = default;
    Exception& operator=(Exception const&) = default;
    ~Exception() override;

protected:
    /// `message` is what `what` returns.
    explicit Exception(std::string const& message);
};

/// A value that the service layer refuses.
class ORV_API ServiceException : public Exception
{
public:
    /// `message` is what `what` returns.
    explicit ServiceException(std::string const& message = "ServiceException");
    ServiceException(ServiceException const&) = default;
    ServiceException& operator=(ServiceException const&) = default;
    ~ServiceException() override;
};

/// A failure of `Directory`.
class ORV_API DirectoryException : public Exception
{
public:
    /// `message` is what `what` returns.
    explicit DirectoryException(std::string const& message);
    DirectoryException(DirectoryException const&) = default;
    DirectoryException& operator=(DirectoryException const&) = default;
    ~DirectoryException() override;
};

/// A failure of reading or writing a document.
class ORV_API SerializeException : public Exception
{
public:
    /// `message` is what `what` returns.
    explicit SerializeException(std::string const& message);
    SerializeException(SerializeException const&) = default;
    SerializeException& operator=(SerializeException const&) = default;
    ~SerializeException() override;
};

/// A failure of a time, an offset, a frequency or their texts.
class ORV_API TimeException : public Exception
{
public:
    /// `message` is what `what` returns.
    explicit TimeException(std::string const& message);
    TimeException(TimeException const&) = default;
    TimeException& operator=(TimeException const&) = default;
    ~TimeException() override;
};

} // namespace Zan::Orv::Core::Service
