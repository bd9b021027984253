#pragma once

#include <cstddef>
#include <cstdint>
#include <map>
#include <utility>
#include <vector>

/// Who is who in a document. Graphs of many objects spend most of their time here, so both tables are flat where they can
/// be. What a document chooses is not hashed: it could choose what falls together.

namespace Zan::Orv::Core::Service::Internal {

/// The identities of the objects that were written, by their addresses.
class IdentityTable
{
public:
    /// The identity of an object, 0 for one that was not written yet.
    int Find(void const* object) const
    {
        if (slots_.empty())
            return 0;
        return slots_[Locate(object)].id;
    }

    /// Adds an object that is not there.
    void Add(void const* object, int id)
    {
        if (2 * (used_ + 1) > slots_.size())
            Grow();
        slots_[Locate(object)] = {object, id};
        ++used_;
    }

private:
    struct Slot
    {
        void const* object = nullptr;
        int id = 0; // 0 in an empty slot
    };

    // The object's slot, or the empty one where it belongs. The multiplier is 2^64 by the golden ratio.
    std::size_t Locate(void const* object) const
    {
        auto const address = static_cast<std::uint64_t>(reinterpret_cast<std::uintptr_t>(object));
        std::size_t const mask = slots_.size() - 1;
        auto slot = static_cast<std::size_t>((address * 0x9E3779B97F4A7C15u) >> 32) & mask;
        while (slots_[slot].id != 0 && slots_[slot].object != object)
            slot = (slot + 1) & mask;
        return slot;
    }

    void Grow()
    {
        std::vector<Slot> const old =
            std::exchange(slots_, std::vector<Slot>(slots_.empty() ? 16 : 2 * slots_.size()));
        for (Slot const& slot : old)
        {
            if (slot.id != 0)
                slots_[Locate(slot.object)] = slot;
        }
    }

    std::vector<Slot> slots_; // a power of two of them, at most half in use
    std::size_t used_ = 0;
};

/// The objects that were read, by their identities. Documents number them from 1 on, but a document may say anything.
template<class Pointer>
class ObjectTable
{
public:
    void Set(int id, Pointer const& object)
    {
        auto const next = static_cast<long long>(inOrder_.size()) + 1;
        if (id == next)
            inOrder_.push_back(object);
        else if (id >= 1 && id < next)
            inOrder_[static_cast<std::size_t>(id - 1)] = object;
        else
            others_.insert_or_assign(others_.end(), id, object); // they mostly rise
    }

    /// Null for an identity that was not read.
    Pointer Find(int id) const
    {
        if (id >= 1 && static_cast<std::size_t>(id) <= inOrder_.size())
            return inOrder_[static_cast<std::size_t>(id - 1)];
        auto const found = others_.find(id);
        return found == others_.end() ? Pointer() : found->second;
    }

private:
    std::vector<Pointer> inOrder_;
    std::map<int, Pointer> others_;
};

} // namespace Zan::Orv::Core::Service::Internal
