// The run lock as a named mutex, and held console control events.
#include "platform/platform.h"

#include <stdexcept>
#include <windows.h>

namespace platform {
namespace {

HANDLE runMutex = nullptr;

volatile LONG heldEvent = -1;
int holdDepth = 0;

BOOL WINAPI remember(DWORD event) {
    InterlockedExchange(&heldEvent, static_cast<LONG>(event));
    // A console being closed waits for no one: Windows ends the process shortly after this
    // returns. Holding it here is all that can be done.
    return TRUE;
}

} // namespace

// One Windows machine is one till, so the name is machine-wide. A mutex whose holder died is
// handed over as abandoned, which is taking it all the same.
bool takeRunLock() {
    if (runMutex != nullptr) {
        return true;
    }
    HANDLE mutex = CreateMutexW(nullptr, FALSE, L"Global\\CorvixParvaneConfigurationRun");
    if (mutex == nullptr) {
        throw std::runtime_error("cannot make the run lock (error " +
                                 std::to_string(GetLastError()) + ")");
    }
    const DWORD waited = WaitForSingleObject(mutex, 0);
    if (waited != WAIT_OBJECT_0 && waited != WAIT_ABANDONED) {
        CloseHandle(mutex);
        return false;
    }
    runMutex = mutex;
    return true;
}

void releaseRunLock() {
    if (runMutex != nullptr) {
        ReleaseMutex(runMutex);
        CloseHandle(runMutex);
        runMutex = nullptr;
    }
}

void holdTerminationRequests() {
    if (holdDepth++ == 0) {
        InterlockedExchange(&heldEvent, -1);
        SetConsoleCtrlHandler(remember, TRUE);
    }
}

void releaseTerminationRequests() {
    if (holdDepth == 0 || --holdDepth > 0) {
        return;
    }
    SetConsoleCtrlHandler(remember, FALSE);
    if (InterlockedExchange(&heldEvent, -1) >= 0) {
        ExitProcess(static_cast<UINT>(STATUS_CONTROL_C_EXIT));
    }
}

} // namespace platform
