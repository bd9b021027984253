#include "orv/platform/Environment.h"

#include <cstring>
#include <memory>
#include <stdlib.h>

namespace Zan::Orv::Core::Service::Platform {

namespace {

// The runtime takes an argument that is too long for the end of the process.
bool IsTooLong(std::size_t length)
{
    return length >= _MAX_ENV;
}

} // namespace

std::string EnvironmentVariable(std::string const& name)
{
    if (IsTooLong(name.size()))
        return {};
#if defined(_MSC_VER) || defined(_UCRT)
    char* copy = nullptr;
    std::size_t size = 0;
    int const error = ::_dupenv_s(&copy, &size, name.c_str());
    std::unique_ptr<char, decltype(&::free)> const owner(copy, &::free);
    return error == 0 && copy != nullptr ? copy : "";
#else
    char const* const value = ::getenv(name.c_str()); // the older runtime makes no private copies
    return value != nullptr ? value : "";
#endif
}

void ChangeEnvironment(std::string const& assignment)
{
    char const* const sign = std::strchr(assignment.c_str(), '=');
    if (sign == nullptr || IsTooLong(static_cast<std::size_t>(sign - assignment.c_str())) ||
        IsTooLong(std::strlen(sign + 1)))
        return;
    // Never released: the environment may go on pointing at the text.
    char* const text = new char[assignment.size() + 1]();
    assignment.copy(text, assignment.size());
    static_cast<void>(::_putenv(text));
}

} // namespace Zan::Orv::Core::Service::Platform
