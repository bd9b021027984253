#include "orv/instrumentation/internal/RelocationSlots.h"

#include <algorithm>

namespace Zan::Orv::Core::Service::Internal {

namespace {

// An entry of the dynamic section, and the tags that matter here.
struct DynamicEntry
{
    std::int64_t tag;
    std::uint64_t value;
};
enum : std::int64_t
{
    EndOfEntries = 0,
    SizeOfCallTable = 2,
    StringTable = 5,
    SymbolTable = 6,
    TableWithAddends = 7,
    SizeOfTableWithAddends = 8,
    Table = 17,
    SizeOfTable = 18,
    ShapeOfCallTable = 20,
    CallTable = 23
};

struct Symbol
{
    std::uint32_t name;
    std::uint8_t info;
    std::uint8_t visibility;
    std::uint16_t section; // 0: defined in another module
    std::uint64_t value;
    std::uint64_t size;
};

// What the two shapes of a relocation begin with. One of them has an addend behind it.
struct Relocation
{
    std::uint64_t offset;
    std::uint64_t info; // the symbol in the upper half, the type in the lower
};
constexpr std::size_t sizeWithAddend = sizeof(Relocation) + 8;

struct RelocationTable
{
    std::uint64_t address = 0;
    std::uint64_t size = 0;
    std::size_t step = sizeof(Relocation);
};

class Walk
{
public:
    Walk(Platform::ModuleImage const& module, SlotVisitor const& visit)
        : module_(module), visit_(visit), reader_(module)
    {
        withAddends_.step = sizeWithAddend;
        ReadDirectory();
    }

    void Run() const
    {
        for (RelocationTable const& table : {withAddends_, plain_, calls_})
            VisitTable(table);
    }

private:
    void ReadDirectory()
    {
        DynamicEntry entry;
        for (std::size_t at = 0; at < module_.directorySize; at += sizeof entry)
        {
            if (!reader_.Read(module_.directory + at, entry) || entry.tag == EndOfEntries)
                return;
            switch (entry.tag)
            {
            case TableWithAddends: withAddends_.address = entry.value; break;
            case SizeOfTableWithAddends: withAddends_.size = entry.value; break;
            case Table: plain_.address = entry.value; break;
            case SizeOfTable: plain_.size = entry.value; break;
            case CallTable: calls_.address = entry.value; break;
            case SizeOfCallTable: calls_.size = entry.value; break;
            case ShapeOfCallTable:
                calls_.step = entry.value == TableWithAddends ? sizeWithAddend : sizeof(Relocation);
                break;
            case SymbolTable: symbols_ = entry.value; break;
            case StringTable: strings_ = entry.value; break;
            default: break;
            }
        }
    }

    void VisitTable(RelocationTable const& table) const
    {
        std::span<std::byte const> const bytes = reader_.From(Resolve(table.address));
        std::byte const* at = bytes.data();
        for (auto rest = std::min<std::uint64_t>(bytes.size(), table.size); rest >= table.step;
             rest -= table.step)
        {
            Relocation relocation;
            std::memcpy(&relocation, at, sizeof relocation);
            at += table.step;
            auto const type = static_cast<std::uint32_t>(relocation.info);
            if (type == module_.dataSlot || type == module_.callSlot)
                VisitSlot(relocation, type);
        }
    }

    void VisitSlot(Relocation const& relocation, std::uint32_t type) const
    {
        Slot slot;
        slot.address = module_.base + relocation.offset;
        if (slot.address % sizeof(slot.value) != 0 || !reader_.Read(slot.address, slot.value))
            return;
        if (type == module_.callSlot && reader_.IsExecutable(slot.value))
            slot.unboundName = NameOfImport(relocation.info >> 32);
        visit_(slot);
    }

    // Empty for a function of the module itself, whose slot points into the module for good.
    std::string_view NameOfImport(std::uint64_t index) const
    {
        Symbol symbol;
        if (!reader_.Read(Resolve(symbols_) + index * sizeof symbol, symbol) || symbol.section != 0)
            return {};
        return reader_.Text(Resolve(strings_) + symbol.name);
    }

    // Some loaders turn the addresses in the dynamic section into those in memory, others leave them.
    std::uintptr_t Resolve(std::uint64_t address) const
    {
        return reader_.From(address).empty() ? module_.base + address : address;
    }

    Platform::ModuleImage const& module_;
    SlotVisitor const& visit_;
    ModuleReader reader_;
    RelocationTable withAddends_, plain_, calls_;
    std::uint64_t symbols_ = 0;
    std::uint64_t strings_ = 0;
};

} // namespace

void ForEachRelocationSlot(Platform::ModuleImage const& module, SlotVisitor const& visit)
{
    Walk(module, visit).Run();
}

} // namespace Zan::Orv::Core::Service::Internal
