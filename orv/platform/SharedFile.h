#pragma once

#include <cstddef>
#include <cstdio>

namespace Zan::Orv::Core::Service::Platform {

/// A file for binary reading, which other programs may read and write meanwhile. Null when there is none, or
/// a folder in its place; no wait for the other end of a pipe. The stream has no buffer of its own.
std::FILE* OpenSharedFile(char const* name);

void CloseSharedFile(std::FILE* file);

/// Moves to `position` from the start, or from the end with `fromEnd`, and forgets what failed before. False
/// on failure.
bool SeekSharedFile(std::FILE* file, long long position, bool fromEnd = false);

/// Where the stream stands, or a negative number.
long long TellSharedFile(std::FILE* file);

/// One read of `count` bytes. False when fewer came.
bool ReadSharedFile(std::FILE* file, char* to, std::size_t count);

} // namespace Zan::Orv::Core::Service::Platform
