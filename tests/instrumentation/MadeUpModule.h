#pragma once

#include "orv/instrumentation/internal/HeapRedirection.h"

#include <cstring>
#include <vector>

namespace Zan::Orv::Core::Service::Tests {

/// A module of two segments, data and code, whose bytes end where their memory ends.
struct MadeUpModule
{
    static constexpr std::uintptr_t base = 0x7f0000000000;
    static constexpr std::uintptr_t code = base + 0x10000;

    std::vector<std::byte> data;
    std::vector<std::byte> instructions = std::vector<std::byte>(64);
    Platform::ModuleImage image;

    explicit MadeUpModule(std::size_t size) : data(size) { image.base = base; }

    template<class Value>
    void Put(std::size_t offset, Value value)
    {
        std::memcpy(&data.at(offset + sizeof value - 1) - (sizeof value - 1), &value, sizeof value);
    }
    void PutText(std::size_t offset, char const* text)
    {
        std::memcpy(&data.at(offset), text, std::strlen(text));
    }

    /// What is found. Nothing outside of the module may be a slot.
    std::vector<Internal::Slot> Slots()
    {
        Platform::ModuleSegment const segments[] = {{base, data, false}, {code, instructions, true}};
        image.segments = segments;
        std::vector<Internal::Slot> slots;
        Internal::ForEachSlot(image, [&](Internal::Slot const& slot) { slots.push_back(slot); });
        image.segments = {};
        return slots;
    }

    /// Walks with each word of the tables replaced by values that lead astray, and cut at each length.
    template<class Word>
    void WalkDamaged()
    {
        std::vector<std::byte> const whole = data;
        Word const astray[] = {0,
                               1,
                               static_cast<Word>(-1),
                               static_cast<Word>(-8),
                               static_cast<Word>(base),
                               static_cast<Word>(whole.size() - 1),
                               static_cast<Word>(Word{1} << (8 * sizeof(Word) - 1))};
        for (std::size_t at = 0; at + sizeof(Word) <= whole.size(); at += sizeof(Word))
            for (Word const word : astray)
            {
                Put(at, word);
                Slots();
                data = whole;
            }
        for (std::size_t size = 0; size < whole.size(); ++size)
        {
            data = std::vector<std::byte>(whole.begin(), whole.begin() + static_cast<std::ptrdiff_t>(size));
            Slots();
        }
        data = whole;
    }
};

} // namespace Zan::Orv::Core::Service::Tests
