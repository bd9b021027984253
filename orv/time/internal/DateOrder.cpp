#include "orv/time/internal/DateOrder.h"

#include "orv/platform/LocaleOrder.h"

#include <string>

namespace Zan::Orv::Core::Service::Internal {

namespace {

// What a code writes, as letters in order; empty for a code that is no date.
std::string_view PartsOfCode(char code)
{
    switch (code)
    {
    case 'd':
    case 'e': return "d";
    case 'm':
    case 'b':
    case 'B':
    case 'h': return "m";
    case 'y':
    case 'Y':
    case 'G':
    case 'g': return "y";
    case 'D': return "mdy";
    case 'F': return "ymd";
    default: return {};
    }
}

} // namespace

std::time_base::dateorder OrderOfPattern(std::string_view pattern)
{
    std::string order;
    for (std::size_t at = pattern.find('%'); at != std::string_view::npos; at = pattern.find('%', at))
    {
        at = pattern.find_first_not_of("EO_-^#0", at + 1); // modifiers and flags
        if (at == std::string_view::npos)
            break;
        for (char const part : PartsOfCode(pattern[at]))
        {
            if (order.find(part) == std::string::npos)
                order += part;
        }
        ++at;
    }
    if (order == "dmy")
        return std::time_base::dmy;
    if (order == "mdy")
        return std::time_base::mdy;
    if (order == "ymd")
        return std::time_base::ymd;
    if (order == "ydm")
        return std::time_base::ydm;
    return std::time_base::no_order;
}

std::time_base::dateorder UserDateOrder(std::locale const& locale)
{
    auto const order = std::use_facet<std::time_get<char>>(locale).date_order();
    return order != std::time_base::no_order ? order : OrderOfPattern(Platform::UserDatePattern());
}

} // namespace Zan::Orv::Core::Service::Internal
