// The operating-system seam. Everything above this header sees Windows behaviour: Windows paths,
// HKEY_LOCAL_MACHINE, profile strings, hidden processes. The win32 build forwards each call to
// the Windows function of the same purpose; the posix build reproduces that function's behaviour
// over a till folder (see README.md, "The Linux till").
//
// All text is Windows-1252 bytes. Failures the Windows function reports through its result are
// reported the same way here; faults Windows cannot have (a damaged registry database, a missing
// till root) throw std::runtime_error with a readable description, which the caller's own error
// trap turns into its failure text.
#pragma once

#include <chrono>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace platform {

// ---- Paths -------------------------------------------------------------------------------

// The host path of a Windows path ("c:\tessaly\lumora\x.ini"). Identity on Windows.
std::string hostPath(const std::string& windowsPath);

// The Windows path of a host path (the inverse of hostPath for paths inside the till).
std::string windowsPath(const std::string& hostPath);

// The folder of the running executable as a Windows path, ending in "\".
std::string programFolder();

// ---- Registry (HKEY_LOCAL_MACHINE only) -------------------------------------------------------

// Win32 status codes, as the registry functions return them.
constexpr long kErrorSuccess = 0;
constexpr long kErrorFileNotFound = 2;
constexpr long kErrorAccessDenied = 5;
constexpr long kErrorInvalidHandle = 6;
constexpr long kErrorInvalidParameter = 87;
constexpr long kErrorBadPathname = 161;
constexpr long kErrorMoreData = 234;

// Registry value types.
constexpr std::uint32_t kRegNone = 0;
constexpr std::uint32_t kRegSz = 1;
constexpr std::uint32_t kRegExpandSz = 2;
constexpr std::uint32_t kRegBinary = 3;
constexpr std::uint32_t kRegDword = 4;
constexpr std::uint32_t kRegMultiSz = 7;

using RegKey = std::uintptr_t; // 0 is never a valid open key

// RegOpenKeyA on HKEY_LOCAL_MACHINE: opens an existing key, never creates one. An empty path
// opens the hive itself; a trailing "\" is ignored; a leading "\" gives kErrorBadPathname.
long regOpenKey(const std::string& subKey, RegKey& key);

// RegCreateKeyExA on HKEY_LOCAL_MACHINE: opens the key, creating it and its missing parents.
long regCreateKey(const std::string& subKey, RegKey& key);

// RegQueryValueExA: with data == nullptr only *type and *size are set. With a buffer, *size is
// its capacity on entry and the stored length on return; a buffer too small gives
// kErrorMoreData. A missing value gives kErrorFileNotFound. The type is reported, not checked.
long regQueryValue(RegKey key, const std::string& valueName, std::uint32_t* type,
                   unsigned char* data, std::uint32_t* size);

// RegSetValueExA: stores exactly `size` bytes of `data` with the given type.
long regSetValue(RegKey key, const std::string& valueName, std::uint32_t type,
                 const unsigned char* data, std::uint32_t size);

// RegCloseKey.
long regCloseKey(RegKey key);

// Why values under the key could not be written now (a read-only or locked registry, a key
// without write access), or "" when they can or the key does not exist. Nothing is written.
std::string registryWriteFault(const std::string& subKey);

// Reads between the two calls (they nest) see the registry as one snapshot and share one lock:
// reading the 89 settings takes it once instead of hundreds of times. A write in between ends the
// snapshot early; the reads after it see the registry as it then is. Windows keeps its registry
// in memory and needs no such thing.
void beginRegistryReads();
void endRegistryReads();

// ---- One configuration run at a time, never cut short with the device manager down ------------

// Takes this till's run lock without waiting: false when another process holds it. The lock
// belongs to the operating system, which lets go of it when the process ends, however it ends.
// Throws a described std::runtime_error when the lock cannot be made at all.
bool takeRunLock();
void releaseRunLock();

// Requests to end the program that arrive between the two calls (SIGTERM, SIGINT and SIGHUP;
// a console's Ctrl+C, Ctrl+Break or close) are held, and acted on by the second call: a run told
// to end while the device manager is stopped ends only once it has been started again.
void holdTerminationRequests();
void releaseTerminationRequests();

class HeldTermination {
public:
    HeldTermination() { holdTerminationRequests(); }
    ~HeldTermination() { releaseTerminationRequests(); }
    HeldTermination(const HeldTermination&) = delete;
    HeldTermination& operator=(const HeldTermination&) = delete;
};

// ---- Profile strings (INI files) --------------------------------------------------------------

// The text a reader gets back for a value written as `written`: outer blanks gone, then one pair
// of enclosing quotes.
std::string profileValueAsRead(std::string_view written);

// GetPrivateProfileStringA. A null section lists the section names, a null key the key names
// of the section (each ended by a NUL, the list by a second NUL). A null default is "".
// Returns the number of characters copied, not counting the terminating NUL.
unsigned long getPrivateProfileString(const char* section, const char* key,
                                      const char* defaultValue, char* buffer, unsigned long size,
                                      const std::string& fileName);

// WritePrivateProfileStringA. A null value deletes the key, a null key the whole section.
// Returns false on failure.
bool writePrivateProfileString(const char* section, const char* key, const char* value,
                               const std::string& fileName);

// ---- Files -----------------------------------------------------------------------------------

struct FoundFile {
    std::string name; // the entry's name as stored, without its folder
    bool isFolder = false;
    std::uint64_t size = 0;
    std::chrono::system_clock::time_point lastWrite;
};

// FindFirstFileA/FindNextFileA over one folder: every entry whose name matches the pattern the
// way Windows matches it ("*" and "?", case-insensitive, "*.*" matching every name). The
// pattern is the last component of `windowsPattern` ("c:\x\*.txt"). "." and ".." are left out.
// A folder that does not exist gives an empty list.
std::vector<FoundFile> findFiles(const std::string& windowsPattern);

struct FileTimes {
    std::chrono::system_clock::time_point creation;
    std::chrono::system_clock::time_point lastAccess;
    std::chrono::system_clock::time_point lastWrite;
};

// CreateFileA (read access, read and write sharing) followed by GetFileTime. Throws when the
// file cannot be opened.
FileTimes getFileTimes(const std::string& windowsPath);

// CopyFileA over an existing file, made crash-safe: the copy is written beside the target, flushed
// and renamed over it, so the target is always the old file or the whole new one. Throws a
// described std::runtime_error (or std::system_error) when the copy cannot be made; the target is
// then as it was.
void copyFileOver(const std::string& windowsSource, const std::string& windowsTarget);

// Makes the file hold exactly `bytes`, crash-safe in the same way: written beside it, flushed and
// renamed over it. Throws as copyFileOver does; the file is then as it was.
void replaceFileContents(const std::string& windowsFile, std::string_view bytes);

// SetFileAttributesA. Only the read-only bit (1) has an effect on Linux. False on failure.
bool setFileAttributes(const std::string& windowsPath, std::uint32_t attributes);

// ---- Processes -------------------------------------------------------------------------------

// Starts a command line with a hidden window, without a command interpreter, and returns the
// process id. The first token (or a double-quoted first part) names the program. Throws a
// described std::runtime_error when the program cannot be started.
std::uint32_t startHidden(const std::string& commandLine);

// OpenProcess(SYNCHRONIZE) + WaitForSingleObject(INFINITE) + CloseHandle: waits with no time-out
// for the process to end. An id that names no live process of ours returns at once.
void waitForProcess(std::uint32_t processId);

// ShellExecuteA(nullptr, "open", file, parameters, ...): starts the file's handler with the
// parameter string as its arguments and does not wait. Returns a value above 32 on success, as
// ShellExecute does.
std::intptr_t shellOpen(const std::string& windowsFile, const std::string& parameters = "");

// GetComputerNameA. Empty when the name cannot be read.
std::string computerName();

// ---- Locale ------------------------------------------------------------------------------------

// The abbreviated name of a month (1 to 12) in the user's locale, in Windows-1252: the user
// locale's on Windows; on Linux that of LC_TIME as the environment sets it (LC_ALL, LC_TIME,
// LANG). English where no locale is set, and where the name cannot be written in Windows-1252.
std::string abbreviatedMonthName(int month);

} // namespace platform
