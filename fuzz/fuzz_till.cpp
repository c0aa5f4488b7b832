#include "fuzz_till.h"

#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <iterator>
#include <system_error>
#include <unistd.h>

namespace fs = std::filesystem;

namespace fuzzing {

const fs::path& tillRoot() {
    static const fs::path root = [] {
        // scripts/fuzz names a folder it removes afterwards, even when a crash skips atexit.
        std::error_code error;
        const char* given = std::getenv("PARVANE_FUZZ_TILL");
        fs::path base = given != nullptr && *given != '\0'    ? fs::path(given)
                        : fs::is_directory("/dev/shm", error) ? fs::path("/dev/shm")
                                                              : fs::temp_directory_path();
        fs::path folder = base / ("parvane-fuzz-" + std::to_string(::getpid()));
        fs::create_directories(folder / "drive_c");
        ::setenv("PARVANE_ROOT", folder.c_str(), 1);
        // The folder goes when the process ends normally; a crash leaves it for inspection.
        std::atexit([] {
            std::error_code ignored;
            fs::remove_all(tillRoot(), ignored);
        });
        return folder;
    }();
    return root;
}

fs::path tillFile(const std::string& relative) {
    fs::path file = tillRoot() / "drive_c" / relative;
    fs::create_directories(file.parent_path());
    return file;
}

void writeBytes(const fs::path& file, std::string_view bytes) {
    std::ofstream out(file, std::ios::binary | std::ios::trunc);
    out.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
}

std::string readBytes(const fs::path& file) {
    std::ifstream in(file, std::ios::binary);
    return {std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()};
}

Parts splitInput(const std::uint8_t* data, std::size_t size, std::size_t count) {
    std::string_view input(reinterpret_cast<const char*>(data), size);
    Parts parts;
    for (std::size_t i = 0; i < count; ++i) {
        const std::size_t end = input.find('\n');
        parts.lines.emplace_back(input.substr(0, end));
        input = end == std::string_view::npos ? std::string_view() : input.substr(end + 1);
    }
    parts.rest = std::string(input);
    return parts;
}

void fail(const std::string& what) {
    std::fprintf(stderr, "property broken: %s\n", what.c_str());
    std::abort();
}

} // namespace fuzzing
