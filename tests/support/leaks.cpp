#include "support/leaks.h"

#include "support/double.h"
#include "support/pump.h"
#include "support/text.h"

#include <gtest/gtest.h>

#include <array>
#include <sstream>

namespace support {

namespace {

BOOL CALLBACK Note(HWND window, LPARAM where) {
    DWORD process = 0;
    GetWindowThreadProcessId(window, &process);
    if (process != GetCurrentProcessId()) return TRUE;
    std::array<wchar_t, 128> kind{};
    std::array<wchar_t, 128> text{};
    GetClassNameW(window, kind.data(), static_cast<int>(kind.size()));
    InternalGetWindowText(window, text.data(), static_cast<int>(text.size()));
    auto& windows = *reinterpret_cast<std::map<HWND, std::string>*>(where);
    windows[window] =
        Utf8(std::wstring_view(kind.data())) + " \"" + Utf8(std::wstring_view(text.data())) + '"';
    EnumChildWindows(window, Note, where);
    return TRUE;
}

/// Counts the blocks of the task allocator. It is never revoked, which COM refuses anyway as long
/// as a block that it saw is in use.
class Spy : public IMallocSpy {
public:
    [[nodiscard]] long Blocks() const { return blocks_; }

    STDMETHODIMP QueryInterface(REFIID iid, void** object) override {
        if (object == nullptr) return E_POINTER;
        const bool mine = iid == __uuidof(IUnknown) || iid == __uuidof(IMallocSpy);
        *object = mine ? this : nullptr;
        return mine ? S_OK : E_NOINTERFACE;
    }
    STDMETHODIMP_(ULONG) AddRef() override { return 1; }
    STDMETHODIMP_(ULONG) Release() override { return 1; }
    STDMETHODIMP_(SIZE_T) PreAlloc(SIZE_T size) override { return size; }
    STDMETHODIMP_(void*) PostAlloc(void* block) override {
        if (block != nullptr) InterlockedIncrement(&blocks_);
        return block;
    }
    STDMETHODIMP_(void*) PreFree(void* block, BOOL seen) override {
        if (block != nullptr && seen) InterlockedDecrement(&blocks_);
        return block;
    }
    STDMETHODIMP_(void) PostFree(BOOL) override {}
    STDMETHODIMP_(SIZE_T)
    PreRealloc(void* block, SIZE_T size, void** changed, BOOL) override {
        *changed = block;
        // A new size of no bytes frees the block, no block before makes one.
        growth_ = (block == nullptr ? 1 : 0) - (size == 0 ? 1 : 0);
        return size;
    }
    STDMETHODIMP_(void*) PostRealloc(void* block, BOOL seen) override {
        if (seen || growth_ > 0) InterlockedExchangeAdd(&blocks_, growth_);
        return block;
    }
    STDMETHODIMP_(void*) PreGetSize(void* block, BOOL) override { return block; }
    STDMETHODIMP_(SIZE_T) PostGetSize(SIZE_T size, BOOL) override { return size; }
    STDMETHODIMP_(void*) PreDidAlloc(void* block, BOOL) override { return block; }
    STDMETHODIMP_(int) PostDidAlloc(void*, BOOL, int actual) override { return actual; }
    STDMETHODIMP_(void) PreHeapMinimize() override {}
    STDMETHODIMP_(void) PostHeapMinimize() override {}

private:
    LONG blocks_ = 0;
    LONG growth_ = 0;
};

Spy& TheSpy() {
    static Spy* const spy = [] {
        // Automation keeps freed strings for reuse, unless it is asked not to.
        if (const HMODULE automation = GetModuleHandleW(L"oleaut32.dll")) {
            const auto address =
                reinterpret_cast<void*>(GetProcAddress(automation, "SetOaNoCache"));
            if (address != nullptr) reinterpret_cast<void(WINAPI*)()>(address)();
        }
        auto* made = new Spy;
        CoRegisterMallocSpy(made);
        return made;
    }();
    return *spy;
}

/// What all detectors say at one moment.
struct Reading {
    long doubles = LiveDoubles();
    WindowCensus windows = WindowCensus::Take();
    std::optional<ServerCounts> server;
    long task = TaskBlocks();
    HeapUse heap = HeapUse::Now();
};

}  // namespace

WindowCensus WindowCensus::Take() {
    WindowCensus census;
    const auto where = reinterpret_cast<LPARAM>(&census.windows_);
    EnumWindows(Note, where);
    for (HWND window = nullptr;
         (window = FindWindowExW(HWND_MESSAGE, window, nullptr, nullptr)) != nullptr;)
        Note(window, where);
    return census;
}

std::vector<std::string> WindowCensus::Since(const WindowCensus& before) const {
    std::vector<std::string> added;
    for (const auto& [window, text] : windows_)
        if (!before.windows_.contains(window)) added.push_back(text);
    return added;
}

long TaskBlocks() {
    return TheSpy().Blocks();
}

HeapUse HeapUse::Now() {
    HeapUse use;
    std::array<HANDLE, 64> heaps{};
    const DWORD count = GetProcessHeaps(static_cast<DWORD>(heaps.size()), heaps.data());
    for (DWORD index = 0; index < std::min<DWORD>(count, static_cast<DWORD>(heaps.size()));
         ++index) {
        PROCESS_HEAP_ENTRY entry{};
        HeapLock(heaps.at(index));
        while (HeapWalk(heaps.at(index), &entry)) {
            if ((entry.wFlags & PROCESS_HEAP_ENTRY_BUSY) == 0) continue;
            ++use.blocks;
            use.bytes += entry.cbData;
        }
        HeapUnlock(heaps.at(index));
    }
    return use;
}

std::vector<std::string> FindLeaks(const std::function<void()>& work, const Server* server,
                                   int rounds) {
    const auto run = [&work](int times) {
        for (int round = 0; round < times; ++round) {
            work();
            Pump();
            BuryDoubles();
        }
    };
    const auto read = [server] {
        Reading reading;
        if (server != nullptr) reading.server = server->Live();
        return reading;
    };
    TheSpy();
    constexpr int warmUp = 3;
    run(warmUp);
    const Reading before = read();
    run(rounds);
    const Reading after = read();

    std::vector<std::string> leaks;
    if (after.doubles > before.doubles)
        for (const std::string& label : LiveDoubleLabels()) leaks.push_back("double " + label);
    for (const std::string& window : after.windows.Since(before.windows))
        leaks.push_back("window " + window);
    if (after.server != before.server) {
        std::ostringstream line;
        line << "server: " << *after.server << " instead of " << *before.server;
        leaks.push_back(line.str());
    }
    if (const long grown = after.task - before.task; grown >= rounds)
        leaks.push_back(std::to_string(grown) + " task memory blocks");
    if (const long grown = after.heap.blocks - before.heap.blocks; grown >= rounds)
        leaks.push_back(std::to_string(grown) + " heap blocks, " +
                        std::to_string(after.heap.bytes - before.heap.bytes) + " bytes");
    return leaks;
}

void ExpectNoLeaks(const std::function<void()>& work, const Server* server, int rounds) {
    for (const std::string& leak : FindLeaks(work, server, rounds))
        ADD_FAILURE() << "left behind: " << leak;
}

}  // namespace support
