// testing/HandleCount.h: how many GDI objects, windows, menus, kernel handles and bytes of memory this process holds, in
// numbers that can be compared with an earlier count. Wine returns 0 for GetGuiResources and GetProcessHandleCount, so
// they are counted another way:
//   GDI objects     Handles are places in one table, free ones are taken again first. Bitmaps are made until one gets a
//                   place that was never taken before: so many were free, all others are in use.
//   windows, menus  every possible handle is asked whether it is one, and of this process.
//   kernel handles  the system's list of all handles.
//   bytes           what is taken of every heap.
#pragma once
#include <windows.h>
#include <winternl.h>

#include <algorithm>
#include <array>
#include <cstdint>
#include <vector>

namespace handles {

inline std::uint32_t GdiObjects() {
    static std::uint32_t highest = 0;  // of all places that were ever taken
    std::vector<HBITMAP> bitmaps;
    const auto takePlace = [&] {
        bitmaps.push_back(CreateBitmap(1, 1, 1, 1, nullptr));
        return static_cast<std::uint32_t>(reinterpret_cast<UINT_PTR>(bitmaps.back()) & 0xFFFFu);
    };
    if (highest == 0) {
        for (int place = 0; place < 1024; ++place) highest = std::max(highest, takePlace());
        for (const HBITMAP bitmap : bitmaps) DeleteObject(bitmap);
        bitmaps.clear();
    }
    std::uint32_t place = takePlace();
    while (place <= highest && bitmaps.size() < 0x4000) place = takePlace();
    const std::uint32_t taken = highest - static_cast<std::uint32_t>(bitmaps.size() - 1);
    highest = std::max(highest, place);
    for (const HBITMAP bitmap : bitmaps) DeleteObject(bitmap);
    return taken;
}

inline std::uint32_t UserObjects() {
    std::uint32_t count = 0;
    for (UINT_PTR number = 1; number < 0x10000; ++number) {
        const HWND window = reinterpret_cast<HWND>(number);
        DWORD process = 0;
        if (IsWindow(window) && GetWindowThreadProcessId(window, &process) && process == GetCurrentProcessId()) ++count;
        if (IsMenu(reinterpret_cast<HMENU>(number))) ++count;
    }
    return count;
}

inline std::uint32_t KernelHandles() {
    struct Entry {
        USHORT process, creator;
        UCHAR type, flags;
        USHORT handle;
        PVOID object;
        ULONG access;
    };
    std::vector<char> buffer(1u << 20);
    const auto handleInformation = static_cast<SYSTEM_INFORMATION_CLASS>(16);
    ULONG needed = 0;
    if (NtQuerySystemInformation(handleInformation, buffer.data(), static_cast<ULONG>(buffer.size()), &needed) != 0)
        return 0;
    const ULONG total = *reinterpret_cast<const ULONG*>(buffer.data());
    const auto* entries = reinterpret_cast<const Entry*>(buffer.data() + sizeof(PVOID));
    return static_cast<std::uint32_t>(std::count_if(entries, entries + total, [](const Entry& entry) {
        return entry.process == static_cast<USHORT>(GetCurrentProcessId());
    }));
}

// How many bytes are taken of all of the process's heaps.
inline std::size_t HeapBytes() {
    std::array<HANDLE, 64> heaps{};
    const DWORD count = std::min<DWORD>(GetProcessHeaps(static_cast<DWORD>(heaps.size()), heaps.data()),
                                        static_cast<DWORD>(heaps.size()));
    std::size_t bytes = 0;
    for (DWORD heap = 0; heap < count; ++heap) {
        HeapLock(heaps[heap]);
        PROCESS_HEAP_ENTRY entry{};
        while (HeapWalk(heaps[heap], &entry)) {
            if ((entry.wFlags & PROCESS_HEAP_ENTRY_BUSY) != 0) bytes += entry.cbData;
        }
        HeapUnlock(heaps[heap]);
    }
    return bytes;
}

}  // namespace handles
