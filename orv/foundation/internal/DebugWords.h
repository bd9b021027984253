#pragma once

#include <cstddef>
#include <istream>
#include <set>
#include <sstream>
#include <string>

namespace Zan::Orv::Core::Service::Internal {

/// Adds the words of a stream, up to its end, to a set of debug flags.
inline void ReadDebugWords(std::istream& stream, std::set<std::string>& words)
{
    for (std::string word; stream >> word;)
        words.insert(word);
}

/// The flags that a value of the environment variable sets. A value that is shorter than 16 characters sets
/// none, which the users of short flags know: they put blanks behind them.
inline std::set<std::string> DebugWordsOfEnvironment(std::string const& value)
{
    constexpr std::size_t shortest = 16;
    std::set<std::string> words;
    if (value.size() >= shortest)
    {
        std::istringstream stream(value);
        ReadDebugWords(stream, words);
    }
    return words;
}

} // namespace Zan::Orv::Core::Service::Internal
