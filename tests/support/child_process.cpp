// Forking is for the Linux build only.
#ifndef _WIN32
#include "support/child_process.h"

#include "platform/platform.h"

#include <csignal>
#include <cstdlib>
#include <sqlite3.h>
#include <stdexcept>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>

namespace {
int childReadyPipe = -1;
}

ChildProcess::ChildProcess(const std::function<int()>& body) {
    int fds[2];
    if (::pipe(fds) != 0) {
        throw std::runtime_error("pipe failed");
    }
    pid_ = ::fork();
    if (pid_ < 0) {
        throw std::runtime_error("fork failed");
    }
    if (pid_ == 0) {
        ::close(fds[0]);
        childReadyPipe = fds[1];
        int status = 99;
        try {
            status = body();
        } catch (...) {
            status = 98;
        }
        ::_exit(status);
    }
    ::close(fds[1]);
    readyPipe_ = fds[0];
}

ChildProcess::~ChildProcess() {
    if (!reaped_) {
        kill();
    }
    if (readyPipe_ >= 0) {
        ::close(readyPipe_);
    }
}

void ChildProcess::ready() {
    const char byte = 1;
    if (childReadyPipe >= 0 && ::write(childReadyPipe, &byte, 1) != 1) {
        ::_exit(97);
    }
}

bool ChildProcess::waitReady() {
    char byte = 0;
    return ::read(readyPipe_, &byte, 1) == 1;
}

void ChildProcess::signal(int number) {
    if (!reaped_) {
        ::kill(pid_, number);
    }
}

bool ChildProcess::kill() {
    if (reaped_) {
        return false;
    }
    const bool wasRunning = running();
    ::kill(pid_, SIGKILL);
    wait();
    return wasRunning;
}

int ChildProcess::wait() {
    if (reaped_) {
        return status_;
    }
    int status = 0;
    if (::waitpid(pid_, &status, 0) != pid_) {
        return -1;
    }
    reaped_ = true;
    status_ = WIFEXITED(status) ? WEXITSTATUS(status) : -WTERMSIG(status);
    return status_;
}

bool ChildProcess::running() {
    if (reaped_) {
        return false;
    }
    siginfo_t info{};
    info.si_pid = 0;
    return ::waitid(P_PID, static_cast<id_t>(pid_), &info, WEXITED | WNOHANG | WNOWAIT) == 0 &&
           info.si_pid == 0;
}

std::chrono::microseconds randomDelay(std::mt19937& random, std::chrono::microseconds longest) {
    std::uniform_int_distribution<long long> pick(0, std::max<long long>(longest.count() - 1, 0));
    return std::chrono::microseconds(pick(random));
}
ChildProcess anotherRunHoldingTheTill() {
    return ChildProcess([] {
        if (!platform::takeRunLock()) {
            return 1;
        }
        ChildProcess::ready();
        ::pause();
        return 0;
    });
}
ChildProcess anotherProgramLockingTheRegistry(const std::filesystem::path& database,
                                              const char* begin) {
    return ChildProcess([database, begin] {
        sqlite3* db = nullptr;
        if (sqlite3_open(database.c_str(), &db) != SQLITE_OK ||
            sqlite3_exec(db, begin, nullptr, nullptr, nullptr) != SQLITE_OK) {
            return 1;
        }
        ChildProcess::ready();
        ::pause();
        return 0;
    });
}
#endif
