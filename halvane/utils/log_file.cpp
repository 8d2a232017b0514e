#include <array>
#include <cerrno>
#include <charconv>
#include <fcntl.h>
#include <limits>
#include <optional>
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
    return numberedName(path, count).size() <= kMaxNumberedName;
}

// Frees number 1: the oldest goes, the others move up by one.
void shiftNumberedFiles(const std::string& path, int count) {
    ::unlink(numberedName(path, count - 1).c_str());
    for (int i = count - 2; i >= 1; --i) {
        std::rename(numberedName(path, i).c_str(), numberedName(path, i + 1).c_str());
    }
}

HalvaneStatus createFolders(const std::string& path) {
    const auto slash = path.rfind('/');
    if (slash == std::string::npos) return kStatusOK;
    if (slash > kMaxFolder) return kStatusBadPath;
    for (auto end = path.find('/', 1); end != std::string::npos; end = path.find('/', end + 1)) {
        // One that cannot be made shows when the file is opened.
        ::mkdir(path.substr(0, end).c_str(), kFolderMode);
    }
    return kStatusOK;
}

// A file or nothing: what may be renamed away. Not a device, which other programs need in place.
bool isReplaceable(const std::string& path) {
    struct stat status {};
    return ::lstat(path.c_str(), &status) == 0 ? S_ISREG(status.st_mode) : errno == ENOENT;
}

void copyFile(const std::string& from, const std::string& to) {
    std::FILE* const source = std::fopen(from.c_str(), "re");
    if (source == nullptr) return;
    if (std::FILE* const copy = std::fopen(to.c_str(), "we")) {
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

HalvaneStatus LogFile::open(std::string path) {
    close();
    if (path.empty()) return kStatusBadPath;
    path_ = std::move(path);
    if (const HalvaneStatus status = createFolders(path_); status != kStatusOK) return status;
    openFile();
    return isOpen() ? kStatusOK : kStatusCannotOpen;
}

// Always for appending: what another program wrote there meanwhile is never overwritten. Without a
// buffer, so that a line is in the file when the program crashes.
void LogFile::openFile() {
    // A pipe that nobody reads is refused, not waited for.
    descriptor_ =
        ::open(path_.c_str(), O_WRONLY | O_CREAT | O_APPEND | O_CLOEXEC | O_NOCTTY | O_NONBLOCK,
               kFileMode);
    if (descriptor_ < 0) return;
    ::fcntl(descriptor_, F_SETFL, O_APPEND);
    struct stat status {};
    isRegular_ = ::fstat(descriptor_, &status) == 0 && S_ISREG(status.st_mode);
    size_ = isRegular_ ? static_cast<std::uint64_t>(status.st_size) : 0;
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

HalvaneStatus LogFile::check() const {
    if (!isOpen()) return kStatusUnsupported;
    const bool fit = (rollMaxSize_ == 0 || numberedNamesFit(path_, rollCount_)) &&
                     numberedNamesFit(backupPath_, backupCount_);
    return fit ? kStatusOK : kStatusBadPath;
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
        return;
    }
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
