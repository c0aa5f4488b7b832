// The run lock as an flock() on a file in the till folder, and held termination signals.
#include "platform/platform.h"
#include "platform/posix/till_root.h"

#include <cerrno>
#include <csignal>
#include <cstring>
#include <fcntl.h>
#include <iterator>
#include <stdexcept>
#include <sys/file.h>
#include <unistd.h>

namespace platform {
namespace {

int lockFile = -1;

constexpr int kHeldSignals[] = {SIGTERM, SIGINT, SIGHUP};
volatile std::sig_atomic_t heldSignal = 0;
int holdDepth = 0;
struct sigaction previous[3];

void remember(int signal) {
    heldSignal = signal;
}

} // namespace

bool takeRunLock() {
    if (lockFile >= 0) {
        return true;
    }
    const std::string path = (posix::tillRoot() / ".parvane-run.lock").string();
    // Close-on-exec: a tool the run starts must not keep the lock after the run has died.
    const int fd = ::open(path.c_str(), O_RDWR | O_CREAT | O_CLOEXEC, 0600);
    if (fd < 0) {
        throw std::runtime_error("cannot open the run lock " + path + ": " + std::strerror(errno));
    }
    if (::flock(fd, LOCK_EX | LOCK_NB) != 0) {
        ::close(fd);
        return false;
    }
    lockFile = fd;
    return true;
}

void releaseRunLock() {
    if (lockFile >= 0) {
        ::close(lockFile);
        lockFile = -1;
    }
}

void holdTerminationRequests() {
    if (holdDepth++ > 0) {
        return;
    }
    heldSignal = 0;
    struct sigaction hold {};
    hold.sa_handler = remember;
    sigemptyset(&hold.sa_mask);
    for (std::size_t i = 0; i < std::size(kHeldSignals); ++i) {
        ::sigaction(kHeldSignals[i], &hold, &previous[i]);
    }
}

// The program's own handling comes back first, then the held signal is raised again, so it
// ends the program (or reaches its handler) as if it had just arrived.
void releaseTerminationRequests() {
    if (holdDepth == 0 || --holdDepth > 0) {
        return;
    }
    for (std::size_t i = 0; i < std::size(kHeldSignals); ++i) {
        ::sigaction(kHeldSignals[i], &previous[i], nullptr);
    }
    if (const int signal = heldSignal; signal != 0) {
        heldSignal = 0;
        ::raise(signal);
    }
}

} // namespace platform
