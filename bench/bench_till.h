// Tills for the benchmarks: a temporary till folder named by PARVANE_ROOT while it lives, and the
// demo till made by scripts/demo-till once per program.
#pragma once

#include <filesystem>
#include <string>

class BenchTill {
public:
    BenchTill();
    ~BenchTill();
    BenchTill(const BenchTill&) = delete;
    BenchTill& operator=(const BenchTill&) = delete;

    const std::filesystem::path& root() const { return root_; }
    std::filesystem::path plant(const std::string& relative, const std::string& bytes) const;
    // Replaces the till's content by a fresh copy of the demo till.
    void becomeDemo() const;

private:
    std::filesystem::path root_;
};

// A file of the repository, whole.
std::string repositoryFile(const std::string& relative);

// An INI file of `lines` key lines, fifty to a section.
std::string bigIni(int lines);
