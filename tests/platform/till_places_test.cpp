// Permissions and places a run must keep right on the Linux till: a copy keeps its source's
// permissions, the registry store stays private, a relative till root is made absolute, and a
// killed writer's temporary file does not stay for ever.
#include "platform/platform.h"
#include "platform/posix/atomic_file.h"
#include "support/scoped_environment.h"
#include "support/temp_till.h"

#include <filesystem>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

namespace fs = std::filesystem;

namespace {

unsigned modeOf(const fs::path& file) {
    struct stat info {};
    ::stat(file.c_str(), &info);
    return info.st_mode & 0777;
}

// The id of a process that has ended: a child started and reaped.
pid_t endedProcess() {
    const pid_t child = ::fork();
    if (child == 0) {
        ::_exit(0);
    }
    ::waitpid(child, nullptr, 0);
    return child;
}

} // namespace

TEST(TillPlaces, PermissionsTravelWithCopiesAndTheRegistryStaysPrivate) {
    TempTill till;
    const fs::path live = till.plant("keys/cxkeyfile_live.txt", "secret");
    ::chmod(live.c_str(), 0600);
    till.plant("keys/cxkeyfile.txt", "old");
    platform::copyFileOver("c:\\keys\\cxkeyfile_live.txt", "c:\\keys\\cxkeyfile.txt");
    EXPECT_EQ(modeOf(till.driveC() / "keys" / "cxkeyfile.txt"), 0600u);

    platform::RegKey key = 0;
    ASSERT_EQ(platform::regCreateKey("SOFTWARE\\Tessaly", key), platform::kErrorSuccess);
    platform::regCloseKey(key);
    const fs::path registry = till.root() / "registry.db";
    ::chmod(registry.c_str(), 0644);
    // Another program's write makes this process open the file afresh.
    fs::last_write_time(registry, fs::last_write_time(registry) - std::chrono::seconds(5));
    ASSERT_EQ(platform::regOpenKey("SOFTWARE\\Tessaly", key), platform::kErrorSuccess);
    platform::regCloseKey(key);
    EXPECT_EQ(modeOf(registry), 0600u);
}

TEST(TillPlaces, ARelativeRootIsMadeAbsoluteAndAKilledWritersTemporaryGoes) {
    TempTill till;
    const fs::path folder = till.root().parent_path();
    const fs::path previous = fs::current_path();
    fs::current_path(folder);
    {
        const ScopedEnvironment root("PARVANE_ROOT", till.root().filename().string());
        EXPECT_EQ(platform::hostPath("c:\\x.ini"), (till.driveC() / "x.ini").string());
        fs::current_path("/");
        EXPECT_EQ(platform::hostPath("c:\\x.ini"), (till.driveC() / "x.ini").string());
    }
    fs::current_path(previous);

    const fs::path file = till.plant("x.ini", "old");
    const fs::path stale =
        till.plant(".x.ini.new-" + std::to_string(endedProcess()) + "-0", "half");
    const fs::path live = till.plant(".x.ini.new-" + std::to_string(::getpid()) + "-99", "mine");
    platform::posix::replaceFile(file, "new");
    EXPECT_FALSE(fs::exists(stale));
    EXPECT_TRUE(fs::exists(live)) << "a living writer's temporary file is its own";
}
