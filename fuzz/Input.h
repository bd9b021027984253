#pragma once

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <new>
#include <stdexcept>
#include <string>
#include <string_view>

namespace Zan::Orv::Core::Service::Fuzz {

/// The bytes of a run, taken from the front. Behind their end everything is zero and empty.
class Input
{
public:
    Input(std::uint8_t const* data, std::size_t size) : rest_(reinterpret_cast<char const*>(data), size) {}

    bool IsEmpty() const { return rest_.empty(); }

    template<class T>
    T Number()
    {
        T number{};
        std::string_view const bytes = Take(sizeof number);
        if (!bytes.empty()) // which may stand nowhere
            std::memcpy(&number, bytes.data(), bytes.size());
        return number;
    }

    unsigned Below(unsigned limit) { return Number<std::uint8_t>() % limit; }
    bool Flag() { return Below(2) != 0; }

    /// Behind a byte that tells its length.
    std::string Text() { return std::string(Take(Number<std::uint8_t>())); }

    std::string Rest() { return std::string(Take(rest_.size())); }

private:
    std::string_view Take(std::size_t count)
    {
        std::string_view const taken = rest_.substr(0, count);
        rest_.remove_prefix(taken.size());
        return taken;
    }

    std::string_view rest_;
};

/// Ends the run as a fault, with its reason.
inline void Require(bool holds, char const* what)
{
    if (holds)
        return;
    std::fprintf(stderr, "Does not hold: %s\n", what);
    std::abort();
}

/// Runs what may fail. Memory that a document only claims to need is no failure but a fault.
template<class Action>
bool Succeeds(Action action)
{
    try
    {
        action();
        return true;
    }
    catch (std::bad_alloc const&)
    {
        Require(false, "asks for no more memory than the input is worth");
    }
    catch (std::length_error const&)
    {
        Require(false, "asks for no more memory than the input is worth");
    }
    catch (std::exception const&)
    {}
    return false;
}

/// The target.
void Run(Input& input);

} // namespace Zan::Orv::Core::Service::Fuzz
