#include <algorithm>
#include <array>
#include <cerrno>
#include <charconv>
#include <fcntl.h>
#include <filesystem>
#include <limits>
#include <new>
#include <optional>
#include <string>
#include <sys/stat.h>
#include <system_error>
#include <unistd.h>
#include <utility>

#include "halvane/platform/os/file_internal.h"
#include "halvane/platform/os/up_time_internal.h"
#include "halvane/platform/os/write_signal_internal.h"
#include "halvane/utils/log/file_internal.h"
#include "halvane/utils/log/flush_internal.h"

namespace halvane::logging {

namespace {

constexpr std::size_t kMaxFolder = 1024;
constexpr std::uint64_t kMaxBuffer = std::uint64_t{16} * 1048576;
constexpr mode_t kFolderMode = 0770;
constexpr mode_t kFileMode = 0666;  // less the process's umask
constexpr std::string_view kEndedText = "\nLOG ENDED, CONTINUES IN NEXT LOG FILE\n";

// Removes a decimal number from the start of `text`; absent if there is none, or if it is above
// `max`.
std::optional<std::uint64_t> takeNumber(std::string_view& text, std::uint64_t max) {
    std::uint64_t number = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    if (error != std::errc() || number > max) return std::nullopt;
    text.remove_prefix(static_cast<std::size_t>(end - text.data()));
    return number;
}

// Removes the "#<count>" at the end of a value.
std::optional<int> takeCount(std::string_view& text) {
    if (!text.starts_with('#')) return std::nullopt;
    text.remove_prefix(1);
    const auto count = takeNumber(text, kMaxKeptFiles);
    if (!count || !text.empty()) return std::nullopt;
    return static_cast<int>(*count);
}

// Removes the size's unit and returns its number of bytes.
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

// Removes "<size>[K|M|B]" from the start of `text`, and returns the number of bytes.
std::optional<std::uint64_t> takeSize(std::string_view& text) {
    constexpr std::uint64_t kMax = std::numeric_limits<std::uint64_t>::max();
    const auto size = takeNumber(text, kMax);
    if (!size) return std::nullopt;
    const std::uint64_t unit = takeUnit(text);
    if (*size > kMax / unit) return std::nullopt;
    return *size * unit;
}

std::size_t folderLength(const std::string& path) {
    const auto slash = path.rfind('/');
    return slash == std::string::npos ? 0 : slash;
}

// A failure shows when the file is opened.
void createFolders(const std::string& path) {
    makeFolders(folderOf(path), kFolderMode);
}

// Returns the path in a form that does not depend on the program's working folder.
std::string absolutePath(const std::string& path) {
    if (path.starts_with('/')) return path;
    std::error_code error;
    const std::string folder = std::filesystem::current_path(error);
    return error ? path : folder + "/" + path;
}

bool isFolderOfThere(const std::string& path) {
    struct stat status {};
    return ::stat(folderOf(path).c_str(), &status) == 0 && S_ISDIR(status.st_mode);
}

}  // namespace

bool LookCount::take() {
    const std::uint64_t now = upTimeLastStep();
    if (now != step_) taken_ = 0;
    step_ = now;
    if (taken_ == kMostInAStep) return false;
    ++taken_;
    return true;
}

LogFile::~LogFile() {
    flush();
    removeBuffer(*this);
}

void LogFile::close() {
    file_ = FileDescriptor();
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
    if (path_.empty()) return kStatusUnsupported;
    const bool fit = (rollMaxSize_ == 0 || numberedNamesFit(path_, rollCount_)) &&
                     numberedNamesFit(backupPath_, backupCount_);
    path_ = absolutePath(path_);
    if (!backupPath_.empty()) backupPath_ = absolutePath(backupPath_);
    if (numberedNamesCollide(path_, backupPath_)) return kStatusUnsupported;
    if (!fit) return kStatusBadPath;
    createFolders(path_);
    if (!backupPath_.empty() && backupCount_ > 0 && !isFolderOfThere(backupPath_)) {
        return kStatusBadPath;
    }
    if (bufferSize_ > 0) {
        waiting_.reserve(bufferSize_);
        addBuffer(*this);
    }
    return openFile() ? kStatusOK : kStatusCannotOpen;
}

HalvaneStatus LogFile::reopen() {
    if (path_.empty()) return kStatusOK;
    if (file_) heritage_ = heritageOf(file_.number());
    createFolders(path_);
    return openFile() ? kStatusOK : kStatusCannotOpen;
}

// Opens the file for appending, so that text of other programs is never overwritten, and without a
// buffer, so that all lines are in the file if the program crashes. If the path cannot be opened,
// the old file stays open.
bool LogFile::openFile() {
    // The call does not wait for the reader of a pipe, and later writes do not wait for a slow one.
    constexpr int kFlags = O_WRONLY | O_APPEND | O_CLOEXEC | O_NOCTTY | O_NONBLOCK;
    FileDescriptor opened;
    if (heritage_) opened = createHeir(path_, kFlags, *heritage_);
    if (!opened) {
        opened = aboveStandardStreams(
            FileDescriptor(::open(path_.c_str(), kFlags | O_CREAT, kFileMode)));
    }
    if (!opened) return false;
    close();
    file_ = std::move(opened);
    struct stat status {};
    ::fstat(file_.number(), &status);
    device_ = status.st_dev;
    inode_ = status.st_ino;
    isRegular_ = S_ISREG(status.st_mode);
    isPipe_ = S_ISFIFO(status.st_mode);
    isSizeLimited_ = isFileSizeLimited();
    size_ = waiting_.size() + (isRegular_ ? static_cast<std::uint64_t>(status.st_size) : 0);
    if (!isPipe_) ::fcntl(file_.number(), F_SETFL, O_APPEND);
    return true;
}

// Updates facts about the file. Returns true if its path must be reopened.
bool LogFile::hasChanged() {
    isSizeLimited_ = isFileSizeLimited();
    return isElsewhere();
}

// Returns whether the path leads to no file or to another one: the file was renamed or removed.
bool LogFile::isElsewhere() const {
    if (!isRegular_) return false;
    struct stat status {};
    if (::stat(path_.c_str(), &status) != 0) return errno == ENOENT || errno == ENOTDIR;
    return status.st_dev != device_ || status.st_ino != inode_;
}

HalvaneStatus LogFile::setRoll(std::string_view value) {
    const auto size = takeSize(value);
    const auto count = takeCount(value);
    if (!size || !count) return kStatusUnsupported;
    rollMaxSize_ = *size;
    rollCount_ = *count;
    return kStatusOK;
}

HalvaneStatus LogFile::setBuffer(std::string_view value) {
    const auto size = takeSize(value);
    if (!size || !value.empty() || *size > kMaxBuffer) return kStatusUnsupported;
    bufferSize_ = static_cast<std::size_t>(*size);
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
    if (bufferSize_ > 0 && collect(text)) return;
    if (!path_.empty()) {
        followPath();
        count(text.size());
    }
    if (isOpen()) put(text);
}

// Collects text in the buffer. Returns false if the text is too long for it, with nothing waiting.
bool LogFile::collect(std::string_view text) {
    const auto fits = [&] { return text.size() <= bufferSize_ - waiting_.size(); };
    if (!fits() || mustRotateFor(text.size())) flush();
    if (!fits()) return !waiting_.empty();
    count(text.size());
    waiting_.append(text);
    if (!scheduleFlush()) flush();
    return true;
}

bool LogFile::flush() noexcept try {
    if (waiting_.empty()) return true;
    followPath();
    std::string_view text = waiting_;
    if (isOpen()) put(text);
    waiting_.erase(0, waiting_.size() - text.size());
    return waiting_.empty();
} catch (const std::bad_alloc&) {
    return false;
}

void LogFile::forget() {
    size_ -= waiting_.size();
    waiting_.clear();
}

// Reopens the path if it leads elsewhere.
void LogFile::followPath() {
    if (!isOpen() || (looks_.take() && hasChanged())) reopen();
}

bool LogFile::mustRotateFor(std::size_t length) const {
    return rollMaxSize_ > 0 && size_ + length > rollMaxSize_ && isOpen() && isRegular_;
}

// Counts bytes that are to be written, and rotates before them if they are too many.
void LogFile::count(std::size_t length) {
    if (!mustRotateFor(length)) {
        size_ += length;
        return;
    }
    rotate();
    size_ = waiting_.size() + length;
}

void LogFile::put(std::string_view& text) {
    if (canRaiseSignal()) return putWithoutSignal(text);
    tryToPut(text);
}

void LogFile::putWithoutSignal(std::string_view& text) {
    WriteSignalBlock block;
    if (const int error = tryToPut(text); error != 0) block.takeBackSignal(error);
}

bool LogFile::canRaiseSignal() const {
    if (stream_ != nullptr) return canRaiseWriteSignal(::fileno(stream_));
    return isPipe_ || (isRegular_ && isSizeLimited_);
}

int LogFile::tryToPut(std::string_view& text) {
    return stream_ != nullptr ? putToStream(text) : writeFront(file_.number(), text);
}

int LogFile::putToStream(std::string_view& text) {
    const std::size_t length = text.size();
    text.remove_prefix(std::fwrite(text.data(), 1, length, stream_));
    const int error = text.empty() ? 0 : errno;
    const bool isFlushed = std::fflush(stream_) == 0;
    return error == 0 && !isFlushed ? errno : error;
}

void LogFile::backUp() {
    if (backupPath_.empty() || backupCount_ == 0 || !isReplaceable(backupPath_)) return;
    shiftNumberedFiles(backupPath_, backupCount_);
    copyLogFile(path_, backupPath_);
}

bool LogFile::isEmpty() const {
    struct stat status {};
    return ::fstat(file_.number(), &status) == 0 && status.st_size == 0;
}

// If the file cannot be renamed, it is appended to until it has grown by the same size again. An
// empty file never replaces another one.
void LogFile::rotate() {
    if (isEmpty()) return;
    heritage_ = heritageOf(file_.number());
    backUp();
    std::string_view ended = kEndedText;
    put(ended);
    close();
    shiftNumberedFiles(path_, rollCount_);
    openFile();
}

}  // namespace halvane::logging
