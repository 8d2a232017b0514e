#include <algorithm>
#include <array>
#include <cerrno>
#include <charconv>
#include <csignal>
#include <fcntl.h>
#include <limits>
#include <optional>
#include <pthread.h>
#include <sys/stat.h>
#include <unistd.h>
#include <utility>

#include "halvane/utils/log_file_internal.h"

namespace halvane::logging {

namespace {

constexpr std::size_t kMaxFolder = 1024;
constexpr std::size_t kMaxNumberedName = 1024;
constexpr int kMaxKeptFiles = 10000;  // a rotation renames them all, with the lock held
constexpr std::size_t kCopyPiece = 4096;
constexpr mode_t kFolderMode = 0770;
constexpr mode_t kFileMode = 0666;  // less the process's umask
constexpr std::string_view kEndedText = "\nLOG ENDED, CONTINUES IN NEXT LOG FILE\n";

// Takes a decimal number off the front of `text`; absent where none stands there, or a larger one
// than `max`.
std::optional<std::uint64_t> takeNumber(std::string_view& text, std::uint64_t max) {
    std::uint64_t number = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    if (error != std::errc() || number > max) return std::nullopt;
    text.remove_prefix(static_cast<std::size_t>(end - text.data()));
    return number;
}

// Takes the "#<count>" that a value ends in.
std::optional<int> takeCount(std::string_view& text) {
    if (!text.starts_with('#')) return std::nullopt;
    text.remove_prefix(1);
    const auto count = takeNumber(text, kMaxKeptFiles);
    if (!count || !text.empty()) return std::nullopt;
    return static_cast<int>(*count);
}

// How many bytes the size's unit stands for; takes the unit.
std::uint64_t takeUnit(std::string_view& text) {
    static constexpr std::array<std::pair<char, std::uint64_t>, 3> kUnits = {
        {{'K', 1024}, {'M', 1048576}, {'B', 1}}};
    for (const auto& [letter, bytes] : kUnits) {
        if (!text.starts_with(letter)) continue;
        text.remove_prefix(1);
        return bytes;
    }
    return 1;
}

std::string numberedName(const std::string& path, int number) {
    return path + "." + std::to_string(number);
}

bool numberedNamesFit(const std::string& path, int count) {
    return numberedName(path, std::max(count - 1, 1)).size() <= kMaxNumberedName;
}

// Frees number 1: the oldest goes, the others move up by one.
void shiftNumberedFiles(const std::string& path, int count) {
    ::unlink(numberedName(path, count - 1).c_str());
    for (int i = count - 2; i >= 1; --i) {
        std::rename(numberedName(path, i).c_str(), numberedName(path, i + 1).c_str());
    }
}

// The file's numbered names, or the file itself, are among the other's.
bool isNumberedName(const std::string& name, const std::string& path) {
    if (!name.starts_with(path)) return false;
    std::string_view rest = std::string_view(name).substr(path.size());
    if (rest.empty()) return true;
    if (rest.front() != '.') return false;
    rest.remove_prefix(1);
    return takeNumber(rest, kMaxKeptFiles) && rest.empty();
}

bool numberedNamesCollide(const std::string& path, const std::string& other) {
    return !other.empty() && (isNumberedName(path, other) || isNumberedName(other, path));
}

std::size_t folderLength(const std::string& path) {
    const auto slash = path.rfind('/');
    return slash == std::string::npos ? 0 : slash;
}

// One that cannot be made shows when the file is opened.
void createFolders(const std::string& path) {
    for (auto end = path.find('/', 1); end != std::string::npos; end = path.find('/', end + 1)) {
        ::mkdir(path.substr(0, end).c_str(), kFolderMode);
    }
}

// Where a program has closed a standard stream, the file does not take its number: it would get
// what others write to that.
int aboveStandardStreams(int descriptor) {
    if (descriptor < 0 || descriptor > STDERR_FILENO) return descriptor;
    const int above = ::fcntl(descriptor, F_DUPFD_CLOEXEC, STDERR_FILENO + 1);
    ::close(descriptor);
    return above;
}

// While one lives, a pipe whose reader has gone is an error and not the end of the program.
class BrokenPipeSignalBlock {
  public:
    BrokenPipeSignalBlock() {
        sigemptyset(&signal_);
        sigaddset(&signal_, SIGPIPE);
        sigset_t pending;
        sigpending(&pending);
        wasPending_ = sigismember(&pending, SIGPIPE) == 1;
        pthread_sigmask(SIG_BLOCK, &signal_, &before_);
    }
    ~BrokenPipeSignalBlock() {
        const timespec atOnce{};
        if (!wasPending_) sigtimedwait(&signal_, nullptr, &atOnce);
        pthread_sigmask(SIG_SETMASK, &before_, nullptr);
    }
    BrokenPipeSignalBlock(const BrokenPipeSignalBlock&) = delete;
    BrokenPipeSignalBlock& operator=(const BrokenPipeSignalBlock&) = delete;

  private:
    sigset_t signal_;
    sigset_t before_;
    bool wasPending_;
};

// A file or nothing: what may be renamed away. Not a device, which other programs need in place.
bool isReplaceable(const std::string& path) {
    struct stat status {};
    return ::lstat(path.c_str(), &status) == 0 ? S_ISREG(status.st_mode) : errno == ENOENT;
}

// A file that is there already, for it could not be renamed, stays as it is.
void copyFile(const std::string& from, const std::string& to) {
    std::FILE* const source = std::fopen(from.c_str(), "re");
    if (source == nullptr) return;
    if (std::FILE* const copy = std::fopen(to.c_str(), "wxe")) {
        std::array<char, kCopyPiece> piece;
        std::size_t length = 0;
        while ((length = std::fread(piece.data(), 1, piece.size(), source)) > 0) {
            if (std::fwrite(piece.data(), 1, length, copy) != length) break;
        }
        std::fclose(copy);
    }
    std::fclose(source);
}

}  // namespace

LogFile::~LogFile() {
    close();
}

void LogFile::close() {
    if (descriptor_ >= 0) ::close(descriptor_);
    descriptor_ = -1;
    stream_ = nullptr;
}

void LogFile::useStream(std::FILE* stream) {
    close();
    path_.clear();
    stream_ = stream;
    std::setvbuf(stream_, nullptr, _IONBF, 0);
}

HalvaneStatus LogFile::setPath(std::string_view path) {
    path_ = path;
    return path_.empty() || folderLength(path_) > kMaxFolder ? kStatusBadPath : kStatusOK;
}

HalvaneStatus LogFile::open() {
    if (path_.empty() || numberedNamesCollide(path_, backupPath_)) return kStatusUnsupported;
    const bool fit = (rollMaxSize_ == 0 || numberedNamesFit(path_, rollCount_)) &&
                     numberedNamesFit(backupPath_, backupCount_);
    if (!fit) return kStatusBadPath;
    createFolders(path_);
    openFile();
    return isOpen() ? kStatusOK : kStatusCannotOpen;
}

// Always for appending: what another program wrote there meanwhile is never overwritten. Without a
// buffer, so that a line is in the file when the program crashes.
void LogFile::openFile() {
    // A pipe is not waited for, neither here for a reader nor later for a slow one.
    constexpr int kFlags = O_WRONLY | O_CREAT | O_APPEND | O_CLOEXEC | O_NOCTTY | O_NONBLOCK;
    descriptor_ = aboveStandardStreams(::open(path_.c_str(), kFlags, kFileMode));
    if (descriptor_ < 0) return;
    struct stat status {};
    ::fstat(descriptor_, &status);
    isRegular_ = S_ISREG(status.st_mode);
    isPipe_ = S_ISFIFO(status.st_mode);
    size_ = isRegular_ ? static_cast<std::uint64_t>(status.st_size) : 0;
    if (!isPipe_) ::fcntl(descriptor_, F_SETFL, O_APPEND);
}

HalvaneStatus LogFile::setRoll(std::string_view value) {
    const auto size = takeNumber(value, std::numeric_limits<std::uint64_t>::max());
    if (!size) return kStatusUnsupported;
    const std::uint64_t unit = takeUnit(value);
    const auto count = takeCount(value);
    if (!count || *size > std::numeric_limits<std::uint64_t>::max() / unit) {
        return kStatusUnsupported;
    }
    rollMaxSize_ = *size * unit;
    rollCount_ = *count;
    return kStatusOK;
}

HalvaneStatus LogFile::setBackup(std::string_view value) {
    const auto hash = value.rfind('#');
    if (hash == 0 || hash == std::string_view::npos) return kStatusUnsupported;
    std::string_view rest = value.substr(hash);
    const auto count = takeCount(rest);
    if (!count) return kStatusUnsupported;
    backupPath_ = value.substr(0, hash);
    backupCount_ = *count;
    return kStatusOK;
}

void LogFile::write(std::string_view text) {
    if (!path_.empty()) {
        if (!isOpen()) openFile();
        size_ += text.size();
        if (rollMaxSize_ > 0 && size_ > rollMaxSize_ && isOpen() && isRegular_) {
            rotate();
            size_ = text.size();
        }
    }
    if (isOpen()) put(text);
}

void LogFile::put(std::string_view text) {
    if (stream_ != nullptr) {
        std::fwrite(text.data(), 1, text.size(), stream_);
        std::fflush(stream_);
    } else if (isPipe_) {
        const BrokenPipeSignalBlock block;
        writeAll(text);
    } else {
        writeAll(text);
    }
}

void LogFile::writeAll(std::string_view text) {
    while (!text.empty()) {
        const ssize_t written = ::write(descriptor_, text.data(), text.size());
        if (written < 0 && errno == EINTR) continue;
        if (written <= 0) return;
        text.remove_prefix(static_cast<std::size_t>(written));
    }
}

void LogFile::backUp() {
    if (backupPath_.empty() || backupCount_ == 0 || !isReplaceable(backupPath_)) return;
    shiftNumberedFiles(backupPath_, backupCount_);
    std::rename(backupPath_.c_str(), numberedName(backupPath_, 1).c_str());
    copyFile(path_, backupPath_);
}

// Where the file cannot be renamed, it is appended to until it has grown by as much again.
void LogFile::rotate() {
    backUp();
    put(kEndedText);
    close();
    shiftNumberedFiles(path_, rollCount_);
    std::rename(path_.c_str(), numberedName(path_, 1).c_str());
    openFile();
}

}  // namespace halvane::logging
