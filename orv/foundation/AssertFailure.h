#pragma once

#include "orv/Export.h"

namespace Zan::Orv::Core::Service {

/// Reports a failed assertion and does not return: sends "ASSERTION FAILURE: message (location)" to the
/// calling thread's log as an error and throws `std::runtime_error` with the same text. Either argument may
/// be null and is then left out with its punctuation.
///
/// The exception is no `Exception` on purpose: code that handles the library's failures does not swallow a
/// broken assertion.
[[noreturn]] ORV_API void AssertFailure(char const* message, char const* location);

} // namespace Zan::Orv::Core::Service
