#pragma once

namespace Zan::Orv::Core::Service {

/// \{
/// A duration is a count of milliseconds. There is no duration class; these are the units.
inline constexpr long long MILLISECOND = 1;
inline constexpr long long SECOND = 1000;
inline constexpr long long MINUTE = 60 * SECOND;
inline constexpr long long HOUR = 60 * MINUTE;
inline constexpr long long DAY = 24 * HOUR;
inline constexpr long long WEEK = 7 * DAY;
/// \}

} // namespace Zan::Orv::Core::Service
