#pragma once

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <exception>
#include <string>
#include <string_view>
#include <type_traits>
#include <typeinfo>

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

/// Whether an exception is one that a header names. Of std::exception itself nothing else is one.
template<class Named>
bool IsNamed(std::exception const& exception)
{
    if constexpr (std::is_same_v<Named, std::exception>)
        return typeid(exception) == typeid(std::exception);
    else
        return dynamic_cast<Named const*>(&exception) != nullptr;
}

/// Runs what may fail, by the exceptions that its header names and by no other: memory that a document only claims to
/// need is no failure but a fault.
template<class... Named, class Action>
bool Succeeds(Action action)
{
    try
    {
        action();
        return true;
    }
    catch (std::exception const& exception)
    {
        if (!(... || IsNamed<Named>(exception)))
            std::fprintf(stderr, "%s: %s\n", typeid(exception).name(), exception.what());
        Require((... || IsNamed<Named>(exception)), "only the exceptions that the header names come out");
    }
    return false;
}

/// The target.
void Run(Input& input);

} // namespace Zan::Orv::Core::Service::Fuzz
