// Runs profile-string calls through the Windows functions for a native test that compares them
// with the Linux engine. Usage: ini_probe REQUESTS RESULTS. Each request line is
//   R <file> <section> <key> <default> <size>   or   W <file> <section> <key> <value>
// with every field hex-encoded, "-" for the empty text and "~" for a null pointer. Each result line
// is the count and the hex of the bytes copied (R), or 1 or 0 (W).
#include <cstdio>
#include <fstream>
#include <optional>
#include <sstream>
#include <string>
#include <vector>
#include <windows.h>

namespace {

std::optional<std::string> decode(const std::string& field) {
    if (field == "~") {
        return std::nullopt;
    }
    std::string bytes;
    if (field == "-") {
        return bytes;
    }
    for (std::size_t i = 0; i + 1 < field.size(); i += 2) {
        bytes.push_back(static_cast<char>(std::stoi(field.substr(i, 2), nullptr, 16)));
    }
    return bytes;
}

std::string encode(const char* bytes, std::size_t size) {
    std::string hex = size == 0 ? "-" : "";
    char pair[3];
    for (std::size_t i = 0; i < size; ++i) {
        std::snprintf(pair, sizeof pair, "%02x", static_cast<unsigned char>(bytes[i]));
        hex += pair;
    }
    return hex;
}

const char* pointer(const std::optional<std::string>& text) {
    return text ? text->c_str() : nullptr;
}

} // namespace

int main(int argc, char** argv) {
    if (argc != 3) {
        std::fprintf(stderr, "usage: ini_probe REQUESTS RESULTS\n");
        return 2;
    }
    std::ifstream requests(argv[1], std::ios::binary);
    std::ofstream results(argv[2], std::ios::binary);
    for (std::string line; std::getline(requests, line);) {
        std::istringstream fields(line);
        std::string op, file, section, key, third, size;
        fields >> op >> file >> section >> key >> third >> size;
        const auto path = decode(file).value_or("");
        if (op == "R") {
            std::vector<char> buffer(std::stoul(size) + 1, '#');
            const DWORD count = GetPrivateProfileStringA(
                pointer(decode(section)), pointer(decode(key)), pointer(decode(third)),
                buffer.data(), static_cast<DWORD>(std::stoul(size)), path.c_str());
            results << count << ' ' << encode(buffer.data(), count) << '\n';
        } else {
            results << (WritePrivateProfileStringA(pointer(decode(section)), pointer(decode(key)),
                                                   pointer(decode(third)), path.c_str())
                            ? 1
                            : 0)
                    << '\n';
        }
    }
    return 0;
}
