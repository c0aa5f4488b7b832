// The Linux profile-string engine against Wine's GetPrivateProfileStringA and
// WritePrivateProfileStringA, over seeded generated files. It runs when PARVANE_INI_PROBE names
// the Windows build's ini_probe.exe (the Windows pass of scripts/test sets it, with a scratch
// Wine prefix); elsewhere it is skipped.
#include "platform/platform.h"
#include "support/temp_till.h"

#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <fcntl.h>
#include <fstream>
#include <gtest/gtest.h>
#include <optional>
#include <random>
#include <sys/stat.h>
#include <vector>

namespace fs = std::filesystem;

namespace {

constexpr int kCases = 320;
constexpr unsigned kSeed = 20251122;

using Text = std::optional<std::string>;

struct Call {
    char op = 'R'; // R reads (section, key, default, size); W writes (section, key, value)
    Text section, key, third;
    unsigned long size = 4096;
};

struct Case {
    std::string bytes;
    std::vector<Call> calls; // reads, one write, the same reads again
};

class Generator {
public:
    explicit Generator(unsigned seed) : random_(seed) {}

    Case next() {
        Case made;
        const char* const breaks[] = {"\n", "\r\n", "\r"};
        const std::string lineBreak = breaks[pick(3)];
        std::vector<std::string> lines;
        for (int i = pick(3) == 0 ? pick(3) : 0; i > 0; --i) {
            lines.push_back(keyLine()); // keys before the first section
        }
        for (int s = 1 + pick(5); s > 0; --s) {
            lines.push_back(header());
            for (int k = pick(7); k > 0; --k) {
                lines.push_back(bodyLine());
            }
        }
        for (std::size_t i = 0; i < lines.size(); ++i) {
            made.bytes += lines[i];
            if (i + 1 < lines.size() || pick(2) == 0) {
                made.bytes += lineBreak;
            }
        }
        std::vector<Call> reads;
        for (int r = 0; r < 6; ++r) {
            reads.push_back({'R', padded(anyCase(name(kSections))), padded(anyCase(name(kKeys))),
                             pick(5) == 0 ? Text() : Text("DEF  "),
                             pick(8) == 0 ? 1ul + pick(8) : 4096ul});
        }
        reads.push_back({'R', Text(), Text(), Text(""), 4096});
        reads.push_back({'R', anyCase(name(kSections)), Text(), Text(""), 4096});
        made.calls = reads;
        made.calls.push_back(write());
        made.calls.insert(made.calls.end(), reads.begin(), reads.end());
        return made;
    }

private:
    const std::vector<std::string> kSections = {"Main", "Comms Port", "Caf\xE9", "x", "Dup"};
    const std::vector<std::string> kKeys = {"Host", "Port", "Time Out", "\xE9t\xE9", "k", "Dup"};
    const std::vector<std::string> kValues = {
        "",  "v",   "  padded  ", "\"quoted\"", "'single'", "\"mixed'", "\"",
        "'", "a;b", "x = y",      "\xA3 5",     "\" in \"", "''"};

    int pick(int count) { return std::uniform_int_distribution<int>(0, count - 1)(random_); }
    std::string name(const std::vector<std::string>& pool) { return pool[pick(pool.size())]; }
    std::string blanks() { return std::string(pick(3) == 0 ? pick(3) : 0, pick(2) ? ' ' : '\t'); }
    std::string padded(const std::string& text) { return blanks() + text + blanks(); }

    // Wine matches names by folding ASCII letters only, where Windows folds "\xE9" and "\xC9"
    // too; so accented letters keep their case here and only ASCII letters change.
    std::string anyCase(std::string text) {
        const int how = pick(3);
        for (char& c : text) {
            c = how == 1 && c >= 'a' && c <= 'z'   ? static_cast<char>(c - 32)
                : how == 2 && c >= 'A' && c <= 'Z' ? static_cast<char>(c + 32)
                                                   : c;
        }
        return text;
    }

    std::string value() {
        return pick(10) == 0 ? std::string(200 + pick(3000), static_cast<char>('a' + pick(26)))
                             : name(kValues);
    }

    std::string header() {
        std::string line = blanks() + "[" + padded(anyCase(name(kSections))) + "]";
        return pick(6) == 0 ? line + " trailing" : line;
    }

    std::string keyLine() {
        return blanks() + anyCase(name(kKeys)) + blanks() + "=" + blanks() + value() + blanks();
    }

    std::string bodyLine() {
        const int kind = pick(10);
        return kind == 0   ? ""
               : kind == 1 ? blanks() + ";" + anyCase(name(kKeys)) + "=commented"
               : kind == 2 ? blanks() + anyCase(name(kKeys)) // no "="
                           : keyLine();
    }

    Call write() {
        Call call{'W', anyCase(name(kSections)), anyCase(name(kKeys)), value(), 0};
        const int what = pick(7);
        if (what == 0) {
            call.third.reset(); // deletes the key
        } else if (what == 1) {
            call.key.reset(); // deletes the section
        }
        return call;
    }

    std::mt19937 random_;
};

std::string hex(const std::string& bytes) {
    std::string out = bytes.empty() ? "-" : "";
    char pair[3];
    for (const char c : bytes) {
        std::snprintf(pair, sizeof pair, "%02x", static_cast<unsigned char>(c));
        out += pair;
    }
    return out;
}

const char* pointer(const Text& text) {
    return text ? text->c_str() : nullptr;
}

// The result line ini_probe writes for one call, made here through the Linux engine.
std::string linuxResult(const Call& call, const std::string& file) {
    if (call.op == 'W') {
        return platform::writePrivateProfileString(pointer(call.section), pointer(call.key),
                                                   pointer(call.third), file)
                   ? "1"
                   : "0";
    }
    std::vector<char> buffer(call.size + 1, '#');
    const unsigned long count =
        platform::getPrivateProfileString(pointer(call.section), pointer(call.key),
                                          pointer(call.third), buffer.data(), call.size, file);
    return std::to_string(count) + " " + hex(std::string(buffer.data(), count));
}

// Wine cuts a quoted value to the buffer before it takes the quotes off, so a value that fits
// once unquoted comes back one character short; the Linux engine unquotes first, as the callers'
// fixed buffers are sized for the unquoted text.
bool wineCutBeforeUnquoting(const Call& call, const std::string& native, const std::string& wine) {
    const std::string fitted = std::to_string(call.size - 1) + " ";
    const std::string shorter = std::to_string(call.size - 2) + " ";
    return call.op == 'R' && native.starts_with(fitted) && wine.starts_with(shorter) &&
           native.substr(fitted.size()).starts_with(wine.substr(shorter.size()));
}

std::string describe(const Call& call) {
    const auto show = [](const Text& t) { return t ? "\"" + *t + "\"" : std::string("null"); };
    return std::string(1, call.op) + "(" + show(call.section) + ", " + show(call.key) + ", " +
           show(call.third) + (call.op == 'R' ? ", " + std::to_string(call.size) : "") + ")";
}

} // namespace

TEST(ProfileStringsUnderWine, GeneratedFilesReadAndWriteAlikeThroughBothEngines) {
    const char* probe = std::getenv("PARVANE_INI_PROBE");
    if (probe == nullptr) {
        GTEST_SKIP() << "PARVANE_INI_PROBE does not name the Windows build's ini_probe.exe";
    }
    TempTill till;
    const fs::path wineFolder = till.root() / "wine";
    fs::create_directories(wineFolder);
    Generator generator(kSeed);
    std::vector<Case> cases;
    std::ofstream requests(till.root() / "requests.txt", std::ios::binary);
    const auto field = [](const Text& text) { return text ? hex(*text) : "~"; };
    for (int n = 0; n < kCases; ++n) {
        cases.push_back(generator.next());
        const std::string name = "case" + std::to_string(n) + ".ini";
        // Every other file is an hour old, so the Linux engine serves its reads from the copy it
        // parsed first; the others were written just now and are read afresh on every call.
        const fs::path file = till.plant("cases/" + name, cases.back().bytes);
        if (n % 2 == 1) {
            const timespec hourAgo[2] = {{::time(nullptr) - 3600, 0}, {::time(nullptr) - 3600, 7}};
            ::utimensat(AT_FDCWD, file.c_str(), hourAgo, 0);
        }
        std::ofstream(wineFolder / name, std::ios::binary) << cases.back().bytes;
        for (const Call& call : cases.back().calls) {
            requests << call.op << ' ' << hex(platform::windowsPath((wineFolder / name).string()))
                     << ' ' << field(call.section) << ' ' << field(call.key) << ' '
                     << field(call.third) << ' ' << call.size << '\n';
        }
    }
    requests.close();
    const std::string command =
        "wine '" + std::string(probe) + "' '" +
        platform::windowsPath((till.root() / "requests.txt").string()) + "' '" +
        platform::windowsPath((till.root() / "results.txt").string()) + "' >/dev/null 2>&1";
    ASSERT_EQ(std::system(command.c_str()), 0) << command;

    std::ifstream results(till.root() / "results.txt", std::ios::binary);
    int disagreements = 0;
    int wineDeviations = 0;
    for (int n = 0; n < kCases; ++n) {
        const std::string file = "c:\\cases\\case" + std::to_string(n) + ".ini";
        for (const Call& call : cases[n].calls) {
            std::string wine;
            ASSERT_TRUE(std::getline(results, wine)) << "the probe stopped at case " << n;
            const std::string native = linuxResult(call, file);
            if (wine != native && wineCutBeforeUnquoting(call, native, wine)) {
                ++wineDeviations;
            } else if (wine != native && ++disagreements <= 10) {
                ADD_FAILURE() << "case " << n << ", " << describe(call) << "\nLinux: " << native
                              << "\nWine:  " << wine << "\nfile: " << hex(cases[n].bytes);
            }
        }
    }
    EXPECT_EQ(disagreements, 0);
    std::printf("%d generated cases compared, %d calls cut by Wine before unquoting\n", kCases,
                wineDeviations);
}
