#include <algorithm>
#include <array>
#include <cerrno>
#include <charconv>
#include <cstdio>
#include <fcntl.h>
#include <memory>
#include <string_view>
#include <sys/stat.h>
#include <system_error>
#include <unistd.h>
#include <utility>

#include "halvane/platform/os/file_internal.h"
#include "halvane/platform/os/write_signal_internal.h"
#include "halvane/utils/log/rotation_internal.h"

namespace halvane::logging {

namespace {

constexpr std::size_t kMaxNumberedName = 1024;
constexpr std::size_t kCopyPiece = 4096;
constexpr mode_t kPermissions = 07777;
constexpr mode_t kOwnersOnly = 0600;

struct FileCloser {
    void operator()(std::FILE* file) const { std::fclose(file); }
};
using File = std::unique_ptr<std::FILE, FileCloser>;

bool isThere(const std::string& path) {
    struct stat status {};
    return ::lstat(path.c_str(), &status) == 0 || errno != ENOENT;
}

// Returns the lowest number without a file; `count` if all numbers below are taken.
int firstGap(const std::string& path, int count) {
    int number = 1;
    while (number < count && isThere(numberedName(path, number))) ++number;
    return number;
}

// Returns whether the name is the path or one of its numbered names.
bool isNumberedName(const std::string& name, const std::string& path) {
    if (!name.starts_with(path)) return false;
    std::string_view rest = std::string_view(name).substr(path.size());
    if (rest.empty()) return true;
    if (rest.front() != '.') return false;
    rest.remove_prefix(1);
    unsigned number = 0;
    const char* const end = rest.data() + rest.size();
    const auto [stop, error] = std::from_chars(rest.data(), end, number);
    return error == std::errc() && stop == end && number <= kMaxKeptFiles;
}

std::string unfinishedCopyOf(const std::string& path) {
    return numberedName(path, 0);
}

// Returns a stream that owns the file; null if there is no file or no stream.
File streamOf(FileDescriptor file, const char* mode) {
    File stream(file ? ::fdopen(file.number(), mode) : nullptr);
    if (stream) file.release();
    return stream;
}

// Returns 0, or the errno value of a failed write.
int copyAndClose(std::FILE* source, File copy) {
    std::array<char, kCopyPiece> piece;
    std::size_t length = 0;
    int error = 0;
    while (error == 0 && (length = std::fread(piece.data(), 1, piece.size(), source)) > 0) {
        if (std::fwrite(piece.data(), 1, length, copy.get()) != length) error = errno;
    }
    const bool isClosed = std::fclose(copy.release()) == 0;
    return error == 0 && !isClosed ? errno : error;
}

// Creates the file and writes as much as possible to it. Returns false if it cannot be created.
bool copyTo(const std::string& path, std::FILE* source, const FileHeritage& heritage) {
    File copy = streamOf(createHeir(path, O_WRONLY | O_CLOEXEC, heritage), "w");
    if (!copy) return false;
    WriteSignalBlock block;
    const int error = copyAndClose(source, std::move(copy));
    if (error != 0) block.takeBackSignal(error);
    return true;
}

}  // namespace

bool isReplaceable(const std::string& path) {
    struct stat status {};
    return ::lstat(path.c_str(), &status) == 0 ? S_ISREG(status.st_mode) : errno == ENOENT;
}

std::string numberedName(const std::string& path, int number) {
    return path + "." + std::to_string(number);
}

bool numberedNamesFit(const std::string& path, int count) {
    return numberedName(path, std::max(count - 1, 1)).size() <= kMaxNumberedName;
}

bool numberedNamesCollide(const std::string& path, const std::string& other) {
    return !other.empty() && (isNumberedName(path, other) || isNumberedName(other, path));
}

void shiftNumberedFiles(const std::string& path, int count) {
    if (!isThere(path)) return;
    const int gap = firstGap(path, count);
    if (gap >= count) ::unlink(numberedName(path, count - 1).c_str());
    for (int i = std::min(gap, count - 1) - 1; i >= 1; --i) {
        std::rename(numberedName(path, i).c_str(), numberedName(path, i + 1).c_str());
    }
    std::rename(path.c_str(), numberedName(path, 1).c_str());
}

std::optional<FileHeritage> heritageOf(int descriptor) {
    struct stat status {};
    if (::fstat(descriptor, &status) != 0 || !S_ISREG(status.st_mode)) return std::nullopt;
    return FileHeritage{status.st_mode & kPermissions, status.st_uid, status.st_gid};
}

// Sets the mode last: a change of owner removes bits from it, and nobody has access before.
FileDescriptor createHeir(const std::string& path, int flags, const FileHeritage& heritage) {
    FileDescriptor file = aboveStandardStreams(FileDescriptor(
        ::open(path.c_str(), flags | O_CREAT | O_EXCL, heritage.mode & kOwnersOnly)));
    if (!file) return file;
    if (::fchown(file.number(), heritage.owner, heritage.group) != 0) {
        // A process that cannot give a file away may still set one of its own groups.
        [[maybe_unused]] const int kept =
            ::fchown(file.number(), static_cast<uid_t>(-1), heritage.group);
    }
    ::fchmod(file.number(), heritage.mode);
    return file;
}

void copyLogFile(const std::string& from, const std::string& to) {
    const std::string unfinished = unfinishedCopyOf(to);
    if (isThere(to) || !isReplaceable(unfinished)) return;
    const File source = streamOf(
        aboveStandardStreams(FileDescriptor(::open(from.c_str(), O_RDONLY | O_CLOEXEC))), "r");
    if (!source) return;
    const auto heritage = heritageOf(::fileno(source.get()));
    if (!heritage) return;
    ::unlink(unfinished.c_str());
    // An incomplete copy stays too, since the log file will be removed in time.
    if (copyTo(unfinished, source.get(), *heritage)) {
        std::rename(unfinished.c_str(), to.c_str());
    }
}

}  // namespace halvane::logging
