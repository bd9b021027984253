#pragma once

#include "orv/serialization/internal/StreamBytes.h"

#include <boost/endian/conversion.hpp>

#include <type_traits>

/// Integers as bytes on streams, the most significant one first, on any host.

namespace Zan::Orv::Core::Service::Internal {

/// A signed integer seen as its unsigned sibling, in place.
template<class Signed>
std::make_unsigned_t<Signed>& AsUnsigned(Signed& value)
{
    return reinterpret_cast<std::make_unsigned_t<Signed>&>(value);
}

template<class Unsigned>
void WriteBigEndian(std::ostream& stream, Unsigned value)
{
    boost::endian::native_to_big_inplace(value);
    WriteBytes(stream, reinterpret_cast<char const*>(&value), sizeof value);
}

/// False, and `value` unchanged, when not all bytes came.
template<class Unsigned>
bool ReadBigEndian(std::istream& stream, Unsigned& value)
{
    Unsigned read;
    if (!ReadBytes(stream, reinterpret_cast<char*>(&read), sizeof read))
        return false;
    value = boost::endian::big_to_native(read);
    return true;
}

} // namespace Zan::Orv::Core::Service::Internal
