#include "orv/time/internal/UserLocale.h"

#include "orv/platform/LocaleEnvironment.h"

#include <ctime>
#include <iterator>
#include <memory>
#include <sstream>
#include <string_view>

namespace Zan::Orv::Core::Service::Internal {

namespace {

std::string Designator(std::locale const& locale, int hour)
{
    std::tm fields{};
    fields.tm_hour = hour;
    std::ostringstream stream;
    stream.imbue(locale); // some libraries take the words from the stream's locale
    std::use_facet<std::time_put<char>>(locale).put(std::ostreambuf_iterator<char>(stream), stream, ' ',
                                                    &fields, 'p');
    return stream.str();
}

// What the environment says of the user's locale: every variable that `std::locale("")` looks at, and LANGUAGE. One look
// at all variables is much faster than asking for each of the fourteen.
void AppendLocaleVariables(std::string& text)
{
    char const* const* variable = Platform::EnvironmentVariables();
    for (; variable != nullptr && *variable != nullptr; ++variable)
    {
        std::string_view const entry = *variable;
        if (entry.substr(0, 3) == "LC_" || entry.substr(0, 4) == "LANG")
            text.append(entry).push_back('\n');
    }
}

struct Kept
{
    std::string environment;
    UserLocale user;
};

} // namespace

UserLocale const& GetUserLocale()
{
    thread_local std::unique_ptr<Kept> kept;
    thread_local std::string environment;

    environment.clear();
    AppendLocaleVariables(environment);
    if (kept == nullptr || kept->environment != environment)
    {
        std::locale const locale("");
        kept = std::make_unique<Kept>(
            Kept{environment, {locale, Designator(locale, 1), Designator(locale, 13)}});
    }
    return kept->user;
}

} // namespace Zan::Orv::Core::Service::Internal
