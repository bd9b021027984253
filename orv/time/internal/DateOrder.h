#pragma once

#include <locale>
#include <string_view>

namespace Zan::Orv::Core::Service::Internal {

/// The order in which a pattern of strftime codes writes day, month and year; `no_order` when it does not write all three.
std::time_base::dateorder OrderOfPattern(std::string_view pattern);

/// The date order of the user's locale: what the standard library says of `locale`, and what the host says where that
/// says nothing.
std::time_base::dateorder UserDateOrder(std::locale const& locale);

} // namespace Zan::Orv::Core::Service::Internal
