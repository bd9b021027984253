#pragma once

#include <locale>
#include <string>

namespace Zan::Orv::Core::Service::Internal {

/// The user's locale, `std::locale("")`, as the environment names it at this moment, and its two designators. Making a
/// locale takes longer than reading a thousand dates, so each thread keeps its last one for as long as the environment
/// says the same.
struct UserLocale
{
    std::locale locale;
    std::string morning;
    std::string afternoon;
};

/// \throws std::runtime_error the standard library's, when the environment names an unknown locale.
UserLocale const& GetUserLocale();

} // namespace Zan::Orv::Core::Service::Internal
