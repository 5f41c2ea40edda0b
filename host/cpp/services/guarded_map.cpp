#include "services/guarded_map.h"

#include <array>
#include <atomic>
#include <cerrno>
#include <csignal>
#include <cstdint>
#include <mutex>
#include <sys/mman.h>
#include <unistd.h>

namespace host {

namespace {

/// What the handler looks at. `begin` 0: free. Written ahead of `begin`, so that the handler sees it whole.
struct Mapping {
    std::atomic<std::uintptr_t> begin{0};
    std::atomic<std::size_t> size{0};
    std::atomic<bool> torn{false};
};

struct Watch {
    std::array<Mapping, 256> mappings;
    std::mutex mutex; ///< of whoever begins and ends mappings; the handler takes none
    int count = 0;
    struct sigaction before {}; ///< of SIGBUS
    std::uintptr_t pageSize = 0;
};
Watch watch; // NOLINT: a handler of signals has nothing else to look at

static_assert(std::atomic<std::uintptr_t>::is_always_lock_free);

} // namespace

static Mapping* find(std::uintptr_t address) {
    for (Mapping& mapping : watch.mappings) {
        const std::uintptr_t begin = mapping.begin.load(std::memory_order_acquire);
        if (begin && address >= begin && address - begin < mapping.size) return &mapping;
    }
    return nullptr;
}

/// Zeros from the page of `address` to the mapping's end.
static bool replaceRest(Mapping& mapping, std::uintptr_t address) {
    const std::uintptr_t page = address & ~(watch.pageSize - 1);
    const std::size_t rest = mapping.begin + mapping.size - page;
    void* const at = reinterpret_cast<void*>(page); // NOLINT: the address of a fault is a number
    const bool done =
        ::mmap(at, rest, PROT_READ, MAP_PRIVATE | MAP_ANONYMOUS | MAP_FIXED, -1, 0) != MAP_FAILED;
    if (done) mapping.torn = true;
    return done;
}

static void passOn(int signal, siginfo_t* info, void* context) {
    const struct sigaction& before = watch.before;
    if (before.sa_flags & SA_SIGINFO) return before.sa_sigaction(signal, info, context);
    if (before.sa_handler != SIG_DFL && before.sa_handler != SIG_IGN) return before.sa_handler(signal);
    // The fault comes again behind this, and ends the process.
    std::signal(signal, SIG_DFL);
}

static void onFault(int signal, siginfo_t* info, void* context) {
    const int savedError = errno;
    const auto address = reinterpret_cast<std::uintptr_t>(info->si_addr);
    Mapping* const mapping = find(address);
    if (!mapping || !replaceRest(*mapping, address)) passOn(signal, info, context);
    errno = savedError;
}

static bool install() {
    watch.pageSize = static_cast<std::uintptr_t>(::sysconf(_SC_PAGESIZE));
    struct sigaction action {};
    action.sa_sigaction = onFault;
    action.sa_flags = SA_SIGINFO | SA_ONSTACK;
    sigemptyset(&action.sa_mask);
    return ::sigaction(SIGBUS, &action, &watch.before) == 0;
}

static bool add(std::uintptr_t begin, std::size_t size) {
    const std::lock_guard lock(watch.mutex);
    for (Mapping& mapping : watch.mappings) {
        if (mapping.begin) continue;
        if (watch.count == 0 && !install()) return false;
        ++watch.count;
        mapping.size = size;
        mapping.torn = false;
        mapping.begin.store(begin, std::memory_order_release);
        return true;
    }
    return false;
}

void* mapGuarded(int descriptor, std::size_t size) {
    void* const memory = ::mmap(nullptr, size, PROT_READ, MAP_PRIVATE, descriptor, 0);
    if (memory == MAP_FAILED) return nullptr;
    if (add(reinterpret_cast<std::uintptr_t>(memory), size)) return memory;
    ::munmap(memory, size);
    return nullptr;
}

void unmapGuarded(void* memory, std::size_t size) {
    const std::lock_guard lock(watch.mutex);
    if (Mapping* const mapping = find(reinterpret_cast<std::uintptr_t>(memory))) {
        mapping->begin = 0;
        if (--watch.count == 0) ::sigaction(SIGBUS, &watch.before, nullptr);
    }
    ::munmap(memory, size);
}

bool isTorn(const void* memory) {
    const Mapping* const mapping = find(reinterpret_cast<std::uintptr_t>(memory));
    return mapping && mapping->torn;
}

} // namespace host
