#include "tools/halvane/output/whole_file.h"

// <filesystem> includes what declares its namespace first.
// IWYU pragma: no_include <chrono>
#include <cerrno>
#include <cstddef>
#include <cstdio>
#include <cstdlib>
#include <fcntl.h>
#include <filesystem>
#include <sys/stat.h>
#include <system_error>
#include <unistd.h>
#include <utility>

namespace halvane::tool {

namespace {

namespace fs = std::filesystem;

std::string fault(const std::string& path, int error) {
    return path + ": " + std::generic_category().message(error);
}

class Descriptor {
  public:
    explicit Descriptor(int number) : number_(number) {}
    Descriptor(const Descriptor&) = delete;
    Descriptor& operator=(const Descriptor&) = delete;
    ~Descriptor() {
        if (number_ >= 0) ::close(number_);
    }

    int number() const { return number_; }
    // Closing tells of writes that failed late.
    bool close() { return ::close(std::exchange(number_, -1)) == 0; }

  private:
    int number_;
};

bool writeAll(int descriptor, std::string_view text) {
    while (!text.empty()) {
        const ssize_t count = ::write(descriptor, text.data(), text.size());
        if (count < 0 && errno != EINTR) return false;
        if (count > 0) text.remove_prefix(static_cast<std::size_t>(count));
    }
    return true;
}

// A file that goes unless it got its name.
class TemporaryFile {
  public:
    explicit TemporaryFile(const std::string& path)
        : name_(path + ".XXXXXX"), descriptor_(::mkostemp(name_.data(), O_CLOEXEC)) {}
    TemporaryFile(const TemporaryFile&) = delete;
    TemporaryFile& operator=(const TemporaryFile&) = delete;
    ~TemporaryFile() {
        if (isThere_ && descriptorWasOpen_) ::unlink(name_.c_str());
    }

    bool write(std::string_view text) {
        if (descriptor_.number() < 0) return false;
        descriptorWasOpen_ = true;
        return ::fchmod(descriptor_.number(), usualMode()) == 0 &&
               writeAll(descriptor_.number(), text) && ::fsync(descriptor_.number()) == 0 &&
               descriptor_.close();
    }

    bool rename(const std::string& path, IfThere ifThere) {
        // A name that appeared meanwhile stays, where the file system can tell.
        const bool isDone = ifThere == IfThere::Keep
                                ? ::renameat2(AT_FDCWD, name_.c_str(), AT_FDCWD, path.c_str(),
                                              RENAME_NOREPLACE) == 0 ||
                                      ((errno == EINVAL || errno == ENOSYS) &&
                                       ::rename(name_.c_str(), path.c_str()) == 0)
                                : ::rename(name_.c_str(), path.c_str()) == 0;
        isThere_ = !isDone;
        return isDone;
    }

  private:
    // That of a file that is made by open().
    static mode_t usualMode() {
        constexpr mode_t kAll = 0666;
        const mode_t mask = ::umask(0);
        ::umask(mask);
        return kAll & ~mask;
    }

    std::string name_;
    Descriptor descriptor_;
    bool descriptorWasOpen_ = false;
    bool isThere_ = true;
};

std::optional<std::string> writeThrough(const std::string& path, std::string_view text) {
    Descriptor descriptor(::open(path.c_str(), O_WRONLY | O_CLOEXEC));
    const bool isDone =
        descriptor.number() >= 0 && writeAll(descriptor.number(), text) && descriptor.close();
    return isDone ? std::nullopt : std::optional(fault(path, errno));
}

bool isOtherThanFile(const fs::file_status& status) {
    return fs::exists(status) && !fs::is_regular_file(status);
}

}  // namespace

std::optional<std::string> hindranceOf(const std::string& path, IfThere ifThere) {
    std::error_code error;
    const fs::file_status status = fs::status(path, error);
    if (fs::is_directory(status)) return fault(path, EISDIR);
    if (fs::is_regular_file(status) && ifThere == IfThere::Keep) return fault(path, EEXIST);
    return std::nullopt;
}

std::optional<std::string> writeWholeFile(const std::string& path, std::string_view text,
                                          IfThere ifThere) {
    if (auto hindrance = hindranceOf(path, ifThere)) return hindrance;
    std::error_code error;
    if (isOtherThanFile(fs::status(path, error))) return writeThrough(path, text);
    // A link keeps pointing to the file.
    const fs::path target = fs::exists(path, error) ? fs::canonical(path, error) : fs::path(path);
    if (error) return fault(path, error.value());
    TemporaryFile file(target.string());
    if (!file.write(text) || !file.rename(target.string(), ifThere)) return fault(path, errno);
    return std::nullopt;
}

}  // namespace halvane::tool
