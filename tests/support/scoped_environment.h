// An environment variable for the duration of a test.
#ifndef TESTS_SUPPORT_SCOPED_ENVIRONMENT_H
#define TESTS_SUPPORT_SCOPED_ENVIRONMENT_H

#include <cstdlib>
#include <optional>
#include <string>
#include <utility>

namespace halvane::testing {

// Sets a variable, or unsets it if `value` is absent, and restores the previous value at the end.
// No other thread may read the environment while one is made or destroyed.
class ScopedEnvironment {
  public:
    ScopedEnvironment(std::string name, const std::optional<std::string>& value)
        : name_(std::move(name)) {
        if (const char* before = std::getenv(name_.c_str())) before_ = before;
        set(value);
    }
    ScopedEnvironment(const ScopedEnvironment&) = delete;
    ScopedEnvironment& operator=(const ScopedEnvironment&) = delete;
    ~ScopedEnvironment() { set(before_); }

  private:
    void set(const std::optional<std::string>& value) const {
        if (value) {
            ::setenv(name_.c_str(), value->c_str(), 1);
        } else {
            ::unsetenv(name_.c_str());
        }
    }

    std::string name_;
    std::optional<std::string> before_;
};

}  // namespace halvane::testing

#endif
