// Running a piece of the program in a forked child, so that a test can kill it at any moment,
// limit what it may write, or take away its privileges, and then look at what it left behind.
#pragma once

#include <chrono>
#include <filesystem>
#include <functional>
#include <random>
#include <sys/types.h>

class ChildProcess {
public:
    // Forks; the child runs `body` and ends with its result as exit status, without running
    // the parent's exit handlers. `body` may call ready() first to say the interesting part
    // starts now.
    explicit ChildProcess(const std::function<int()>& body);
    ~ChildProcess();
    ChildProcess(const ChildProcess&) = delete;
    ChildProcess& operator=(const ChildProcess&) = delete;

    // In the child: tells the parent that the work it wants to interrupt begins.
    static void ready();

    // In the parent: blocks until the child called ready() (false when it ended first).
    bool waitReady();

    // Sends the signal and returns at once.
    void signal(int number);

    // SIGKILL, then reaps the child. Returns true when the child was still running.
    bool kill();

    // Waits for the end: the exit status, or -signal when a signal ended it.
    int wait();

    // True while the child has not ended (does not reap it).
    bool running();

private:
    pid_t pid_ = -1;
    int readyPipe_ = -1;
    bool reaped_ = false;
    int status_ = -1;
};

// A delay drawn evenly from [0, longest).
std::chrono::microseconds randomDelay(std::mt19937& random, std::chrono::microseconds longest);

// A child that holds the till's run lock until it is killed, as another configuration run would;
// the caller waits for it to be ready.
ChildProcess anotherRunHoldingTheTill();

// A child that holds the registry database in a transaction begun with `begin` ("BEGIN
// IMMEDIATE" keeps writers out, "BEGIN EXCLUSIVE" readers too) until it is killed, as another
// program could; the caller waits for it to be ready.
ChildProcess anotherProgramLockingTheRegistry(const std::filesystem::path& database,
                                              const char* begin);
