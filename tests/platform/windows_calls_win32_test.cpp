// The Windows build's platform layer, where its result depends on how the Windows functions are
// called rather than on what they do.
#include "platform/platform.h"
#include "support/temp_till.h"

#include <gtest/gtest.h>
#include <windows.h>

namespace {

// Whether a value exists under a key as the 64-bit registry view names it.
bool inNativeView(const std::string& keyPath, const std::string& valueName) {
    HKEY key = nullptr;
    if (RegOpenKeyExA(HKEY_LOCAL_MACHINE, keyPath.c_str(), 0, KEY_READ | KEY_WOW64_64KEY, &key) !=
        ERROR_SUCCESS) {
        return false;
    }
    const bool found = RegQueryValueExA(key, valueName.c_str(), nullptr, nullptr, nullptr,
                                        nullptr) == ERROR_SUCCESS;
    RegCloseKey(key);
    return found;
}

} // namespace

TEST(WindowsRegistry, ValuesLandInTheViewOfThe32BitCardAddIn) {
    TempTill till;
    platform::RegKey key = 0;
    ASSERT_EQ(platform::regCreateKey("SOFTWARE\\Tessaly\\ccaddin\\", key), platform::kErrorSuccess);
    const std::string port = "COM3";
    ASSERT_EQ(platform::regSetValue(key, "Port", platform::kRegSz,
                                    reinterpret_cast<const unsigned char*>(port.data()), 4),
              platform::kErrorSuccess);
    platform::regCloseKey(key);

    EXPECT_TRUE(inNativeView("SOFTWARE\\WOW6432Node\\Tessaly\\ccaddin", "Port"));
    EXPECT_FALSE(inNativeView("SOFTWARE\\Tessaly\\ccaddin", "Port"));
    // Reopening sees the same view, so what the system writes it reads back.
    ASSERT_EQ(platform::regOpenKey("SOFTWARE\\TESSALY\\CCADDIN", key), platform::kErrorSuccess);
    std::uint32_t type = 0;
    std::uint32_t size = 0;
    EXPECT_EQ(platform::regQueryValue(key, "port", &type, nullptr, &size), platform::kErrorSuccess);
    EXPECT_EQ(type, platform::kRegSz);
    EXPECT_EQ(platform::regCloseKey(key), platform::kErrorSuccess);
    EXPECT_EQ(platform::regOpenKey("SOFTWARE\\Tessaly\\absent", key), platform::kErrorFileNotFound);
    EXPECT_EQ(key, 0u);
}

TEST(WindowsFiles, ProgramFolderSearchesAndTimesUseWindowsPaths) {
    TempTill till;
    const std::string folder = platform::programFolder();
    ASSERT_FALSE(folder.empty());
    EXPECT_EQ(folder.back(), '\\');
    EXPECT_EQ(platform::hostPath("c:\\x\\y.ini"), "c:\\x\\y.ini");
    EXPECT_EQ(platform::findFiles(folder + "platform_tests.exe").size(), 1u);

    till.plant("scan\\a.txt", "abc");
    till.plant("scan\\sub\\b.txt", "");
    const auto found = platform::findFiles("c:\\scan\\*.*");
    ASSERT_EQ(found.size(), 2u); // "." and ".." left out
    for (const auto& entry : found) {
        EXPECT_EQ(entry.isFolder, entry.name == "sub") << entry.name;
        EXPECT_EQ(entry.size, entry.name == "a.txt" ? 3u : 0u) << entry.name;
    }
    EXPECT_TRUE(platform::findFiles("c:\\no such folder\\*.*").empty());

    const auto times = platform::getFileTimes("c:\\scan\\a.txt");
    const auto age = std::chrono::system_clock::now() - times.lastWrite;
    EXPECT_LT(std::chrono::abs(age), std::chrono::minutes(5));
    EXPECT_THROW(platform::getFileTimes("c:\\scan\\missing.txt"), std::runtime_error);
    EXPECT_THROW(platform::getFileTimes("c:\\scan\\sub"), std::runtime_error);

    EXPECT_TRUE(platform::setFileAttributes("c:\\scan\\a.txt", FILE_ATTRIBUTE_READONLY));
    EXPECT_EQ(GetFileAttributesA("c:\\scan\\a.txt") & FILE_ATTRIBUTE_READONLY, 1u);
    EXPECT_TRUE(platform::setFileAttributes("c:\\scan\\a.txt", FILE_ATTRIBUTE_NORMAL));
    EXPECT_FALSE(platform::setFileAttributes("c:\\scan\\missing.txt", FILE_ATTRIBUTE_NORMAL));
}

TEST(WindowsProcesses, AHiddenStartGivesAnIdToWaitOnAndAMissingProgramADescription) {
    TempTill till;
    const std::uint32_t id = platform::startHidden("cmd /c echo x> c:\\started.txt");
    EXPECT_NE(id, 0u);
    platform::waitForProcess(id);
    EXPECT_EQ(readBytes(till.driveC() / "started.txt"), "x\r\n");
    try {
        platform::startHidden("c:\\no such folder\\tool.exe /x");
        ADD_FAILURE() << "a missing program started";
    } catch (const std::runtime_error& e) {
        EXPECT_FALSE(std::string(e.what()).empty());
    }
    EXPECT_FALSE(platform::computerName().empty());
}
