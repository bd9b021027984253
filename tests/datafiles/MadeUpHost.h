#pragma once

#include "orv/platform/SharedFile.h"

#include <algorithm>
#include <array>
#include <string>

// A host that is made up, with one file of any size: every call of it is noted, and failures can be ordered. For the one
// source of a program that has BufferedBinaryFileReader compiled in, with what is here in the place of the platform.

namespace Zan::Orv::Core::Service {
namespace Tests {

struct Host
{
    long long size = 0;
    long long position = 0;
    int failingSeeks = 0; // how many of the next ones fail
    int failingReads = 0;
    int openFiles = 0;
    std::string calls;
};

inline Host host;

/// The file repeats these bytes. Their number is a prime, so that no two blocks are alike.
inline std::array<char, 65'521> const pattern = [] {
    std::array<char, 65'521> bytes;
    for (unsigned long long i = 0; i < bytes.size(); ++i)
        bytes[i] = static_cast<char>((i * 0x9E3779B97F4A7C15u) >> 56);
    return bytes;
}();

inline void CopyBytes(char* to, long long position, long long count)
{
    auto const period = static_cast<long long>(pattern.size());
    while (count > 0)
    {
        long long const run = std::min(count, period - position % period);
        to = std::copy_n(pattern.data() + position % period, run, to);
        position += run;
        count -= run;
    }
}

} // namespace Tests

namespace Platform {

using Tests::host;

std::FILE* OpenSharedFile(char const*)
{
    ++host.openFiles;
    return reinterpret_cast<std::FILE*>(&host);
}

void CloseSharedFile(std::FILE*)
{
    --host.openFiles;
}

bool SeekSharedFile(std::FILE*, long long position, bool fromEnd)
{
    host.calls += " seek " + (fromEnd ? "end" : std::to_string(position));
    host.position = fromEnd ? host.size : position;
    return host.failingSeeks-- <= 0;
}

long long TellSharedFile(std::FILE*)
{
    return host.position;
}

bool ReadSharedFile(std::FILE*, char* to, std::size_t count)
{
    host.calls += " read " + std::to_string(count);
    auto const wanted = static_cast<long long>(count);
    long long const came = std::min(wanted, host.size - host.position);
    Tests::CopyBytes(to, host.position, came);
    host.position += std::max(came, 0LL);
    return came == wanted && host.failingReads-- <= 0;
}

} // namespace Platform
} // namespace Zan::Orv::Core::Service
