#pragma once

#include "orv/foundation/Environment.h"

#include <string>
#include <utility>

namespace Zan::Orv::Core::Service::Tests {

/// Sets an environment variable, or removes it by an empty value, and puts back what was there.
class ScopedEnvironment
{
public:
    ScopedEnvironment(std::string name, std::string const& value)
        : name_(std::move(name)), before_(GetEnvVariable(name_))
    {
        SetEnvVariable(name_, value);
    }
    ScopedEnvironment(ScopedEnvironment const&) = delete;
    ScopedEnvironment& operator=(ScopedEnvironment const&) = delete;
    ~ScopedEnvironment() { SetEnvVariable(name_, before_); }

private:
    std::string name_;
    std::string before_;
};

} // namespace Zan::Orv::Core::Service::Tests
