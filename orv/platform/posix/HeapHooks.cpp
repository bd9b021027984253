#include "orv/platform/HeapHooks.h"

#include <atomic>
#include <cerrno>
#include <cstdlib>
#include <dlfcn.h>
#include <link.h>
#include <sys/mman.h>
#include <unistd.h>

namespace Zan::Orv::Core::Service::Platform {

namespace {

static_assert(sizeof(void*) == 8, "the tables of modules are read in their 64-bit shapes");

#if defined(__aarch64__)
constexpr std::uint32_t dataSlot = R_AARCH64_GLOB_DAT;
constexpr std::uint32_t callSlot = R_AARCH64_JUMP_SLOT;
#else
constexpr std::uint32_t dataSlot = R_X86_64_GLOB_DAT;
constexpr std::uint32_t callSlot = R_X86_64_JUMP_SLOT;
#endif

std::uintptr_t PageOf(std::uintptr_t address)
{
    static auto const pageSize = static_cast<std::uintptr_t>(::sysconf(_SC_PAGESIZE));
    return address & ~(pageSize - 1);
}

// The loader calls this for each module.
int VisitModule(dl_phdr_info* info, std::size_t, void* visit)
{
    std::array<ModuleSegment, 32> segments; // linkers make four or five
    std::size_t count = 0;
    ModuleImage module;
    module.base = info->dlpi_addr;
    module.dataSlot = dataSlot;
    module.callSlot = callSlot;
    for (std::size_t i = 0; i < info->dlpi_phnum; ++i)
    {
        ElfW(Phdr) const& header = info->dlpi_phdr[i];
        std::uintptr_t const address = info->dlpi_addr + header.p_vaddr;
        if (header.p_type == PT_LOAD && (header.p_flags & PF_R) != 0 && count < segments.size())
        {
            auto const* const bytes = reinterpret_cast<std::byte const*>(address);
            segments[count++] = {address, {bytes, header.p_memsz}, (header.p_flags & PF_X) != 0};
        }
        else if (header.p_type == PT_DYNAMIC)
        {
            module.directory = address;
            module.directorySize = header.p_memsz;
        }
        else if (header.p_type == PT_GNU_RELRO)
        {
            // Rounded as the loader does.
            module.sealedBegin = PageOf(address);
            module.sealedEnd = PageOf(address + header.p_memsz);
        }
    }
    module.segments = {segments.data(), count};
    (*static_cast<std::function<void(ModuleImage const&)> const*>(visit))(module);
    return 0;
}

// Set once, before the first slot changes. Threads that come through a slot see both or none.
std::atomic<void (*)(std::size_t, void*) noexcept> tellAllocated = nullptr;
std::atomic<void (*)(void*) noexcept> tellReleased = nullptr;

// The function that the slots of calls are bound to. A program that is linked to fixed addresses may give out
// the address of its own stub in its place; calling that would lead through a slot again.
void* FindFunction(char const* name)
{
    void* const function = ::dlsym(RTLD_DEFAULT, name);
    Dl_info place;
    void* entry = nullptr;
    bool const known = ::dladdr1(function, &place, &entry, RTLD_DL_SYMENT) != 0 && entry != nullptr;
    bool const isStub = known && static_cast<ElfW(Sym) const*>(entry)->st_shndx == SHN_UNDEF;
    return isStub ? ::dlsym(RTLD_NEXT, name) : function;
}

// The real functions, found when the library is loaded: any thread may come through a slot, at any time.
auto const realMalloc = reinterpret_cast<decltype(&::malloc)>(FindFunction("malloc"));
auto const realFree = reinterpret_cast<decltype(&::free)>(FindFunction("free"));
auto const realCalloc = reinterpret_cast<decltype(&::calloc)>(FindFunction("calloc"));
auto const realRealloc = reinterpret_cast<decltype(&::realloc)>(FindFunction("realloc"));
auto const realAlignedAlloc = reinterpret_cast<decltype(&::aligned_alloc)>(FindFunction("aligned_alloc"));
auto const realPosixMemalign = reinterpret_cast<decltype(&::posix_memalign)>(FindFunction("posix_memalign"));

// The observer opens files and more, of which the caller of the heap must see nothing in errno.
void TellAllocated(std::size_t size, void* block)
{
    int const error = errno;
    if (auto const tell = tellAllocated.load(std::memory_order_acquire))
        tell(size, block);
    errno = error;
}

void TellReleased(void* block)
{
    int const error = errno;
    if (auto const tell = tellReleased.load(std::memory_order_acquire))
        tell(block);
    errno = error;
}

void* Malloc(std::size_t size) noexcept
{
    void* const block = realMalloc(size);
    TellAllocated(size, block);
    return block;
}

void Free(void* block) noexcept
{
    TellReleased(block);
    realFree(block);
}

void* Calloc(std::size_t count, std::size_t size) noexcept
{
    void* const block = realCalloc(count, size);
    TellAllocated(count * size, block);
    return block;
}

// Whether the old block is released is known only afterwards: one that could not be resized lives on. A size
// of 0 releases it and gives none.
void* Realloc(void* block, std::size_t size) noexcept
{
    void* const result = realRealloc(block, size);
    bool const releasedOnly = result == nullptr && size == 0 && block != nullptr;
    if (result != nullptr || releasedOnly)
        TellReleased(block);
    if (!releasedOnly)
        TellAllocated(size, result);
    return result;
}

void* AlignedAlloc(std::size_t alignment, std::size_t size) noexcept
{
    void* const block = realAlignedAlloc(alignment, size);
    TellAllocated(size, block);
    return block;
}

int PosixMemalign(void** block, std::size_t alignment, std::size_t size) noexcept
{
    int const error = realPosixMemalign(block, alignment, size);
    TellAllocated(size, error == 0 ? *block : nullptr);
    return error;
}

template<class Function>
HeapFunction Watch(char const* name, Function real, Function replacement)
{
    return {name, reinterpret_cast<std::uintptr_t>(real), reinterpret_cast<std::uintptr_t>(replacement)};
}

} // namespace

bool ForEachModule(std::function<void(ModuleImage const&)> const& visit)
{
    ::dl_iterate_phdr(VisitModule, const_cast<std::function<void(ModuleImage const&)>*>(&visit));
    return true;
}

void WriteSlot(ModuleImage const& module, std::uintptr_t slot, std::uintptr_t value)
{
    void* const page = reinterpret_cast<void*>(PageOf(slot));
    bool const sealed = module.sealedBegin <= slot && slot < module.sealedEnd;
    if (sealed && ::mprotect(page, sizeof(value), PROT_READ | PROT_WRITE) != 0)
        return;
    // In one piece: other threads may be calling through it.
    std::atomic_ref(*reinterpret_cast<std::uintptr_t*>(slot)).store(value, std::memory_order_release);
    if (sealed)
        ::mprotect(page, sizeof(value), PROT_READ);
}

std::span<HeapFunction const> WatchHeap(HeapObserver const& observer)
{
    tellReleased.store(observer.released, std::memory_order_release);
    tellAllocated.store(observer.allocated, std::memory_order_release);
    static std::array const functions = {
        Watch("malloc", realMalloc, &Malloc),
        Watch("free", realFree, &Free),
        Watch("calloc", realCalloc, &Calloc),
        Watch("realloc", realRealloc, &Realloc),
        Watch("aligned_alloc", realAlignedAlloc, &AlignedAlloc),
        Watch("posix_memalign", realPosixMemalign, &PosixMemalign),
    };
    return functions;
}

} // namespace Zan::Orv::Core::Service::Platform
