// Hidden processes on Linux: the command line is split by the Windows rules, the program is found
// the way CreateProcess finds it and started with no shell, its output going nowhere, as a hidden
// window's would.
#include "platform/command_line.h"
#include "platform/cp1252.h"
#include "platform/platform.h"
#include "platform/recorder.h"

#include <cerrno>
#include <climits>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <optional>
#include <poll.h>
#include <signal.h>
#include <spawn.h>
#include <stdexcept>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

extern char** environ;

namespace platform {
namespace {

// Waits for a process that is not our child to end: pidfd_open gives a descriptor that becomes
// readable when it does. Where the kernel lacks pidfd_open, the process is looked for every 50 ms.
void waitForOtherProcess(pid_t pid) {
    const int descriptor = static_cast<int>(::syscall(SYS_pidfd_open, pid, 0));
    if (descriptor < 0) {
        const bool noPidfd = errno == ENOSYS;
        while (noPidfd && (::kill(pid, 0) == 0 || errno == EPERM)) {
            ::usleep(50000);
        }
        return;
    }
    pollfd ended{descriptor, POLLIN, 0};
    while (::poll(&ended, 1, -1) < 0 && errno == EINTR) {
    }
    ::close(descriptor);
}

// ShellExecute's results: above 32 is success; these are the failures it can report here.
constexpr std::intptr_t kShellStarted = 42;
constexpr std::intptr_t kShellFileNotFound = 2;
constexpr std::intptr_t kShellAccessDenied = 5;
constexpr std::intptr_t kShellNoAssociation = 31;

bool isRegularFile(const std::string& host) {
    struct stat info {};
    return ::stat(host.c_str(), &info) == 0 && !S_ISDIR(info.st_mode);
}

bool namesAFolder(const std::string& program) {
    return program.find_first_of("\\/") != std::string::npos ||
           (program.size() >= 2 && program[1] == ':');
}

bool hasExtension(const std::string& program) {
    const std::size_t slash = program.find_last_of("\\/:");
    const std::size_t dot = program.rfind('.');
    return dot != std::string::npos && (slash == std::string::npos || dot > slash);
}

// The program as named, else with ".exe" when it has no extension of its own. `mapped` turns
// a candidate name into a host path.
template <typename Map>
std::optional<std::string> existing(const std::string& program, Map mapped) {
    if (std::string host = mapped(program); isRegularFile(host)) {
        return host;
    }
    if (!hasExtension(program)) {
        if (std::string host = mapped(program + ".exe"); isRegularFile(host)) {
            return host;
        }
    }
    return std::nullopt;
}

std::optional<std::string> onHostPath(const std::string& program) {
    const char* path = std::getenv("PATH");
    std::string folders = path != nullptr ? path : "";
    for (std::size_t start = 0; start <= folders.size();) {
        std::size_t end = folders.find(':', start);
        if (end == std::string::npos) {
            end = folders.size();
        }
        const std::string folder = folders.substr(start, end - start);
        start = end + 1;
        if (folder.empty()) {
            continue;
        }
        auto found =
            existing(program, [&](const std::string& name) { return folder + "/" + name; });
        if (found) {
            return found;
        }
    }
    return std::nullopt;
}

// CreateProcess looks for a bare program name in the program's own folder, then the current
// folder, then along PATH.
std::string findProgram(const std::string& program) {
    std::optional<std::string> found;
    if (namesAFolder(program)) {
        found = existing(program, hostPath);
    } else {
        const std::string own = programFolder();
        found = existing(program, [&](const std::string& name) { return hostPath(own + name); });
        if (!found) {
            found = existing(program, hostPath);
        }
        if (!found) {
            found = onHostPath(program);
        }
    }
    if (!found) {
        throw std::runtime_error(std::strerror(ENOENT));
    }
    return *found;
}

std::vector<char*> argvOf(std::vector<std::string>& words) {
    std::vector<char*> argv;
    for (std::string& word : words) {
        argv.push_back(word.data());
    }
    argv.push_back(nullptr);
    return argv;
}

class SpawnSetup {
public:
    SpawnSetup() {
        posix_spawn_file_actions_init(&actions_);
        posix_spawn_file_actions_addopen(&actions_, 0, "/dev/null", O_RDONLY, 0);
        posix_spawn_file_actions_addopen(&actions_, 1, "/dev/null", O_WRONLY, 0);
        posix_spawn_file_actions_adddup2(&actions_, 1, 2);
        posix_spawnattr_init(&attributes_);
        // The tool starts with the signal state of a fresh process, whatever the UI changed.
        sigset_t none;
        sigemptyset(&none);
        sigset_t defaults;
        sigemptyset(&defaults);
        sigaddset(&defaults, SIGPIPE);
        sigaddset(&defaults, SIGCHLD);
        posix_spawnattr_setsigmask(&attributes_, &none);
        posix_spawnattr_setsigdefault(&attributes_, &defaults);
        posix_spawnattr_setflags(&attributes_, POSIX_SPAWN_SETSIGMASK | POSIX_SPAWN_SETSIGDEF);
    }
    ~SpawnSetup() {
        posix_spawnattr_destroy(&attributes_);
        posix_spawn_file_actions_destroy(&actions_);
    }
    SpawnSetup(const SpawnSetup&) = delete;
    SpawnSetup& operator=(const SpawnSetup&) = delete;

    // glibc reports a failed exec as the result of the spawn, so a program that cannot run is
    // a failed start here, never a child that ends at once.
    int spawn(const std::string& program, std::vector<std::string> words, pid_t& pid) {
        std::vector<char*> argv = argvOf(words);
        return posix_spawn(&pid, program.c_str(), &actions_, &attributes_, argv.data(), environ);
    }

private:
    posix_spawn_file_actions_t actions_;
    posix_spawnattr_t attributes_;
};

// Between fork and exec only async-signal-safe calls are made.
[[noreturn]] void execQuietly(const char* program, char* const* argv, int reportFd) {
    const int null = ::open("/dev/null", O_RDWR);
    if (null >= 0) {
        ::dup2(null, 0);
        ::dup2(null, 1);
        ::dup2(null, 2);
    }
    struct sigaction fresh {};
    fresh.sa_handler = SIG_DFL;
    ::sigaction(SIGPIPE, &fresh, nullptr);
    ::sigaction(SIGCHLD, &fresh, nullptr);
    sigset_t none;
    sigemptyset(&none);
    ::sigprocmask(SIG_SETMASK, &none, nullptr);
    ::execve(program, argv, environ);
    const int error = errno;
    [[maybe_unused]] const ssize_t written = ::write(reportFd, &error, sizeof error);
    ::_exit(127);
}

// Starts a process that nobody waits for: a middle child starts it and ends at once, so it is
// adopted by init, which reaps it; it leaves no zombie behind. The exec's error comes back
// through a close-on-exec pipe, which reads empty when the exec worked.
int spawnDetached(const std::string& program, std::vector<std::string> words) {
    std::vector<char*> argv = argvOf(words);
    int report[2];
    if (::pipe2(report, O_CLOEXEC) != 0) {
        return errno;
    }
    const pid_t middle = ::fork();
    if (middle == 0) {
        ::setsid();
        const pid_t grandchild = ::fork();
        if (grandchild == 0) {
            execQuietly(program.c_str(), argv.data(), report[1]);
        }
        const int error = grandchild < 0 ? errno : 0;
        if (error != 0) {
            [[maybe_unused]] const ssize_t written = ::write(report[1], &error, sizeof error);
        }
        ::_exit(0);
    }
    const int forkError = middle < 0 ? errno : 0;
    ::close(report[1]);
    if (middle > 0) {
        while (::waitpid(middle, nullptr, 0) < 0 && errno == EINTR) {
        }
    }
    int error = forkError;
    if (error == 0) {
        ssize_t got;
        while ((got = ::read(report[0], &error, sizeof error)) < 0 && errno == EINTR) {
        }
        if (got != static_cast<ssize_t>(sizeof error)) {
            error = 0;
        }
    }
    ::close(report[0]);
    return error;
}

std::intptr_t shellResult(int error) {
    switch (error) {
    case 0:
        return kShellStarted;
    case ENOENT:
        return kShellFileNotFound;
    case EACCES:
    case EPERM:
        return kShellAccessDenied;
    default:
        return kShellNoAssociation;
    }
}

} // namespace

std::uint32_t startHidden(const std::string& commandLine) {
    if (Recorder* recorder = activeRecorder()) {
        if (const auto stoodIn = recorder->processStarting(commandLine)) {
            return *stoodIn;
        }
    }
    std::vector<std::string> words = splitCommandLine(commandLine);
    if (words.empty() || words.front().empty()) {
        throw std::runtime_error("cannot start [" + commandLine + "]: no program is named");
    }
    const std::string program = words.front();
    try {
        words.front() = findProgram(program);
        pid_t pid = 0;
        if (const int error = SpawnSetup().spawn(words.front(), words, pid); error != 0) {
            throw std::runtime_error(std::strerror(error));
        }
        return static_cast<std::uint32_t>(pid);
    } catch (const std::exception& e) {
        throw std::runtime_error("cannot start " + program + ": " + e.what());
    }
}

void waitForProcess(std::uint32_t processId) {
    // 0 and ids beyond pid_t would make waitpid wait for a whole process group.
    if (processId == 0 || processId > static_cast<std::uint32_t>(INT_MAX)) {
        return;
    }
    const auto pid = static_cast<pid_t>(processId);
    int reaped = 0;
    while ((reaped = ::waitpid(pid, nullptr, 0)) < 0 && errno == EINTR) {
    }
    if (reaped >= 0 || errno != ECHILD) {
        return;
    }
    // Not our child, or already reaped: a live process is waited for all the same, as a Windows
    // process handle is; an id that names none returns at once.
    waitForOtherProcess(pid);
}

std::intptr_t shellOpen(const std::string& windowsFile, const std::string& parameters) {
    if (Recorder* recorder = activeRecorder()) {
        if (const auto stoodIn = recorder->shellOpening(windowsFile, parameters)) {
            return *stoodIn;
        }
    }
    try {
        const char* scriptHost = std::getenv("PARVANE_SCRIPT_HOST");
        if (scriptHost == nullptr || *scriptHost == '\0') {
            return kShellNoAssociation;
        }
        const std::string file = hostPath(windowsFile);
        if (!isRegularFile(file)) {
            return kShellFileNotFound;
        }
        const std::string host = scriptHost;
        const std::optional<std::string> program = host.find('/') != std::string::npos
                                                       ? std::optional<std::string>(host)
                                                       : onHostPath(host);
        if (!program) {
            return kShellFileNotFound;
        }
        std::vector<std::string> words{*program, file};
        for (std::string& argument : splitArguments(parameters)) {
            words.push_back(std::move(argument));
        }
        return shellResult(spawnDetached(*program, std::move(words)));
    } catch (const std::exception&) {
        // No till to find the file in: the file is not found.
        return kShellFileNotFound;
    }
}

std::string computerName() {
    char buffer[HOST_NAME_MAX + 1] = {};
    if (::gethostname(buffer, sizeof buffer - 1) != 0) {
        return "";
    }
    std::string name(buffer);
    name = name.substr(0, name.find('.'));
    // GetComputerNameA gives the NetBIOS name: upper case and at most 15 characters.
    constexpr std::size_t kNetBiosLength = 15;
    return cp1252::toUpper(name.substr(0, kNetBiosLength));
}

} // namespace platform
