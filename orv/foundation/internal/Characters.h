#pragma once

/// The classes of ASCII characters, whatever the locale is. An `int` may be the end of a stream, which is none of them.

namespace Zan::Orv::Core::Service::Internal {

constexpr bool IsSpace(int c)
{
    return c == ' ' || (c >= '\t' && c <= '\r');
}

constexpr bool IsDigit(int c)
{
    return c >= '0' && c <= '9';
}

constexpr bool IsLetter(int c)
{
    return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z');
}

} // namespace Zan::Orv::Core::Service::Internal
