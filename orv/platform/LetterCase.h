#pragma once

namespace Zan::Orv::Core::Service::Platform {

/// Whether `std::toupper` is known to change 'a' to 'z' into 'A' to 'Z' and no other byte, in the locale of the
/// calling thread. Costs little more than one call of it in the "C" locale. False where the host cannot tell.
bool OnlyASCIIHasCase();

} // namespace Zan::Orv::Core::Service::Platform
