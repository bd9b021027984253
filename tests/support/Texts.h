#pragma once

#include <cstddef>
#include <fstream>
#include <iterator>
#include <sstream>
#include <string>

/// Texts that are long, or hard to type.

namespace Zan::Orv::Core::Service::Tests {

/// What is in a file, byte for byte.
inline std::string ReadFile(std::string const& path)
{
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

/// The bytes of a text such as "00 FF".
inline std::string FromHex(std::string const& text)
{
    std::istringstream words(text);
    words >> std::hex;
    std::string bytes;
    for (int byte = 0; words >> byte;)
        bytes += static_cast<char>(byte);
    return bytes;
}

inline std::string Repeat(std::size_t count, std::string const& text)
{
    std::string result;
    for (std::size_t i = 0; i < count; ++i)
        result += text;
    return result;
}

} // namespace Zan::Orv::Core::Service::Tests
