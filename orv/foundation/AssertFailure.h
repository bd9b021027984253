#pragma once

#include "orv/Export.h"

/// Calls `AssertFailure` with the condition's text and its place when `condition` is false:
///
///     ORV_ASSERT(rows > 0);    // "ASSERTION FAILURE: rows > 0 (Matrix.cpp:41)"
///
/// Checked in every build, with NDEBUG as well: the failure is an exception, which a program can survive. The
/// condition is evaluated once, and may do something. The whole is an expression of type `void`.
#define ORV_ASSERT(condition)                                                                                \
    ((condition) ? void()                                                                                    \
                 : ::Zan::Orv::Core::Service::AssertFailure(#condition, __FILE__ ":" ORV_TEXT_OF(__LINE__)))

/// \{
/// For `ORV_ASSERT` alone.
#define ORV_TEXT_OF(number) ORV_AS_TEXT(number)
#define ORV_AS_TEXT(number) #number
/// \}

namespace Zan::Orv::Core::Service {

/// Reports a failed assertion and does not return: sends "ASSERTION FAILURE: message (location)" to the
/// calling thread's log as an error and throws `std::runtime_error` with the same text. Either argument may
/// be null and is then left out with its punctuation.
///
/// The exception is no `Exception` on purpose: code that handles the library's failures does not swallow a
/// broken assertion. Safe on any thread.
[[noreturn]] ORV_API void AssertFailure(char const* message, char const* location);

} // namespace Zan::Orv::Core::Service
