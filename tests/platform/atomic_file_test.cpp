#include "platform/posix/atomic_file.h"
#include "support/temp_till.h"

#include <csignal>
#include <filesystem>
#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <system_error>

namespace fs = std::filesystem;
using platform::posix::readFileBytes;
using platform::posix::replaceFile;

TEST(AtomicFile, ReplacesWholeOrNotAtAll) {
    TempTill till;
    const fs::path target = till.plant("real.ini", "old");
    const fs::path link = till.driveC() / "link.ini";
    fs::create_symlink(target, link);
    replaceFile(link, std::string("new\0bytes", 9));
    EXPECT_TRUE(fs::is_symlink(link));
    EXPECT_EQ(readFileBytes(target), std::string("new\0bytes", 9));

    const mode_t mask = ::umask(022);
    replaceFile(till.driveC() / "fresh.ini", "");
    ::umask(mask);
    EXPECT_EQ(readFileBytes(till.driveC() / "fresh.ini"), "");
    EXPECT_EQ(fs::status(till.driveC() / "fresh.ini").permissions(),
              fs::perms::owner_read | fs::perms::owner_write | fs::perms::group_read |
                  fs::perms::others_read);

    // A disk that fills up half-way: the original stays whole and the temporary file goes.
    std::signal(SIGXFSZ, SIG_IGN);
    rlimit saved{};
    ::getrlimit(RLIMIT_FSIZE, &saved);
    rlimit small = saved;
    small.rlim_cur = 4;
    ::setrlimit(RLIMIT_FSIZE, &small);
    EXPECT_THROW(replaceFile(target, "longer than four bytes"), std::system_error);
    ::setrlimit(RLIMIT_FSIZE, &saved);
    EXPECT_EQ(readFileBytes(target), std::string("new\0bytes", 9));

    EXPECT_EQ(std::distance(fs::directory_iterator(till.driveC()), {}), 3);
}
