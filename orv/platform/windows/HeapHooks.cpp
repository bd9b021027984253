#include "orv/platform/HeapHooks.h"

#include "orv/platform/windows/WindowsHeaders.h"

#include <cstring>
#include <dbghelp.h>
#include <tlhelp32.h>

namespace Zan::Orv::Core::Service::Platform {

namespace {

HeapObserver observer;

// The real functions. Written once, before the first slot changes, and never cleared.
decltype(&::HeapAlloc) realHeapAlloc = nullptr;
decltype(&::HeapFree) realHeapFree = nullptr;

// The observer opens files and more, of which the caller of the heap must see nothing in the last error.
LPVOID WINAPI WatchedHeapAlloc(HANDLE heap, DWORD flags, SIZE_T size)
{
    LPVOID const block = realHeapAlloc(heap, flags, size);
    DWORD const error = ::GetLastError();
    observer.allocated(size, block);
    ::SetLastError(error);
    return block;
}

BOOL WINAPI WatchedHeapFree(HANDLE heap, DWORD flags, LPVOID block)
{
    DWORD const error = ::GetLastError();
    observer.released(block);
    ::SetLastError(error);
    return realHeapFree(heap, flags, block);
}

template<class Function>
HeapFunction Watch(char const* name, Function& real, Function replacement)
{
    if (real == nullptr)
    {
        FARPROC const found = ::GetProcAddress(::GetModuleHandleA("Kernel32.dll"), name);
        std::memcpy(&real, &found, sizeof real);
    }
    return {name, reinterpret_cast<std::uintptr_t>(real), reinterpret_cast<std::uintptr_t>(replacement)};
}

bool Write(std::uintptr_t slot, std::uintptr_t value)
{
    return ::WriteProcessMemory(::GetCurrentProcess(), reinterpret_cast<void*>(slot), &value, sizeof value,
                                nullptr) != 0;
}

} // namespace

bool ForEachModule(std::function<void(ModuleImage const&)> const& visit)
{
    HANDLE const snapshot = ::CreateToolhelp32Snapshot(TH32CS_SNAPMODULE, 0);
    if (snapshot == INVALID_HANDLE_VALUE)
        return false;
    MODULEENTRY32 entry = {};
    entry.dwSize = sizeof entry;
    for (BOOL more = ::Module32First(snapshot, &entry); more; more = ::Module32Next(snapshot, &entry))
    {
        auto const base = reinterpret_cast<std::uintptr_t>(entry.modBaseAddr);
        ModuleSegment const whole = {
            base, {reinterpret_cast<std::byte const*>(entry.modBaseAddr), entry.modBaseSize}, false};
        ULONG size = 0;
        void const* const directory =
            ::ImageDirectoryEntryToData(entry.modBaseAddr, TRUE, IMAGE_DIRECTORY_ENTRY_IMPORT, &size);
        ModuleImage module;
        module.format = ModuleFormat::PortableExecutable;
        module.base = base;
        module.segments = {&whole, 1};
        module.directory = reinterpret_cast<std::uintptr_t>(directory);
        module.directorySize = size;
        visit(module);
    }
    ::CloseHandle(snapshot);
    return true;
}

void WriteSlot(ModuleImage const&, std::uintptr_t slot, std::uintptr_t value)
{
    if (Write(slot, value) || ::GetLastError() != ERROR_NOACCESS)
        return;
    auto* const address = reinterpret_cast<void*>(slot);
    DWORD before = 0;
    if (!::VirtualProtect(address, sizeof value, PAGE_WRITECOPY, &before))
        return;
    Write(slot, value);
    ::VirtualProtect(address, sizeof value, before, &before);
}

std::span<HeapFunction const> WatchHeap(HeapObserver const& newObserver)
{
    if (observer.allocated == nullptr)
        observer = newObserver;
    static std::array const functions = {
        Watch("HeapAlloc", realHeapAlloc, &WatchedHeapAlloc),
        Watch("HeapFree", realHeapFree, &WatchedHeapFree),
    };
    return functions;
}

} // namespace Zan::Orv::Core::Service::Platform
