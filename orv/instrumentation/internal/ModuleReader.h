#pragma once

#include "orv/platform/HeapHooks.h"

#include <cstring>
#include <functional>
#include <string_view>

namespace Zan::Orv::Core::Service::Internal {

/// A place in a module's memory through which it calls, or reads the address of, a function of another.
struct Slot
{
    std::uintptr_t address = 0;
    std::uintptr_t value = 0;

    /// The function's name where the slot is not bound yet: it points to the module's own stub, which looks
    /// the function up at the first call. Empty for all others.
    std::string_view unboundName;
};

using SlotVisitor = std::function<void(Slot const&)>;

/// Reads a module's memory by address, and nothing outside of its segments: whatever stands in its tables,
/// the answer is a value or none.
class ModuleReader
{
public:
    explicit ModuleReader(Platform::ModuleImage const& module) : segments_(module.segments) {}

    /// The bytes from `address` to the end of its segment, or none.
    std::span<std::byte const> From(std::uintptr_t address) const
    {
        Platform::ModuleSegment const* const segment = Find(address);
        return segment != nullptr ? segment->bytes.subspan(address - segment->address)
                                  : std::span<std::byte const>();
    }

    template<class Value>
    bool Read(std::uintptr_t address, Value& value) const
    {
        std::span<std::byte const> const bytes = From(address);
        if (bytes.size() < sizeof value)
            return false;
        std::memcpy(&value, bytes.data(), sizeof value);
        return true;
    }

    /// The text that ends before the next zero, or an empty one where there is none.
    std::string_view Text(std::uintptr_t address) const
    {
        std::span<std::byte const> const bytes = From(address);
        if (bytes.empty())
            return {};
        auto const* const begin = reinterpret_cast<char const*>(bytes.data());
        auto const* const end = static_cast<char const*>(std::memchr(begin, 0, bytes.size()));
        return end != nullptr ? std::string_view(begin, static_cast<std::size_t>(end - begin))
                              : std::string_view();
    }

    bool IsExecutable(std::uintptr_t address) const
    {
        Platform::ModuleSegment const* const segment = Find(address);
        return segment != nullptr && segment->executable;
    }

private:
    Platform::ModuleSegment const* Find(std::uintptr_t address) const
    {
        for (Platform::ModuleSegment const& segment : segments_)
            if (address - segment.address < segment.bytes.size()) // below it, the difference wraps
                return &segment;
        return nullptr;
    }

    std::span<Platform::ModuleSegment const> segments_;
};

} // namespace Zan::Orv::Core::Service::Internal
