// An environment variable set for one scope and put back as it was afterwards.
#pragma once

#include <cstdlib>
#include <optional>
#include <string>

class ScopedEnvironment {
public:
    // `value` empty: the variable is removed for the scope.
    ScopedEnvironment(std::string name, const std::optional<std::string>& value)
        : name_(std::move(name)) {
        if (const char* before = std::getenv(name_.c_str())) {
            before_ = before;
        }
        set(value);
    }
    ~ScopedEnvironment() { set(before_); }
    ScopedEnvironment(const ScopedEnvironment&) = delete;
    ScopedEnvironment& operator=(const ScopedEnvironment&) = delete;

private:
    void set(const std::optional<std::string>& value) const {
#ifdef _WIN32
        _putenv_s(name_.c_str(), value ? value->c_str() : "");
#else
        if (value) {
            setenv(name_.c_str(), value->c_str(), 1);
        } else {
            unsetenv(name_.c_str());
        }
#endif
    }

    std::string name_;
    std::optional<std::string> before_;
};
