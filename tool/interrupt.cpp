#include "interrupt.h"

#include "services/temporary_files.h"

#include <csignal>
#include <sys/time.h>
#include <unistd.h>

namespace tool {

static constexpr int kBySignal = 128; ///< ahead of its number, in an exit status
static constexpr int kSignals[] = {SIGINT, SIGTERM, SIGHUP};

static volatile std::sig_atomic_t interrupted = 0;

static void endNow() {
    host::removeTemporaries();
    _exit(kBySignal + interrupted);
}

static void onSignal(int signal) {
    if (signal == SIGALRM) endNow();
    const bool isSecond = interrupted != 0;
    interrupted = signal;
    if (isSecond) endNow();
    constexpr suseconds_t patience = 700'000;
    const itimerval timer{{0, 0}, {0, patience}};
    setitimer(ITIMER_REAL, &timer, nullptr);
}

static bool isIgnored(int signal) {
    struct sigaction now {};
    return sigaction(signal, nullptr, &now) == 0 && now.sa_handler == SIG_IGN;
}

void watchInterrupt() {
    // Without SA_RESTART: a read that waits for a pipe ends, too.
    struct sigaction action {};
    action.sa_handler = onSignal;
    sigemptyset(&action.sa_mask);
    for (const int signal : kSignals) {
        sigaddset(&action.sa_mask, signal);
        sigaddset(&action.sa_mask, SIGALRM);
    }
    sigaction(SIGALRM, &action, nullptr);
    for (const int signal : kSignals)
        if (!isIgnored(signal)) sigaction(signal, &action, nullptr); // nohup means it
}

bool isInterrupted() {
    return interrupted != 0;
}

bool isTerminated() {
    return interrupted == SIGTERM || interrupted == SIGHUP;
}

int interruptedStatus(int status) {
    return interrupted ? kBySignal + interrupted : status;
}

} // namespace tool
