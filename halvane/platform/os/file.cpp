#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdint>
#include <cstdio>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include "halvane/platform/os/file_internal.h"
#include "halvane/platform/os/up_time_internal.h"
#include "halvane/platform/os/write_signal_internal.h"

namespace halvane {

namespace {

constexpr int kMostSetAside = 9999;

HalvaneStatus statusOfLastError() {
    struct Row {
        int error;
        HalvaneStatus status;
    };
    static constexpr std::array<Row, 8> kRows = {{
        {ENAMETOOLONG, kStatusBadPath},
        {ENOTDIR, kStatusBadPath},
        {ENOENT, kStatusBadPath},
        {ELOOP, kStatusBadPath},
        {ENOMEM, kStatusNoMemory},
        {ENOSPC, kStatusNoRoom},
        {EDQUOT, kStatusNoRoom},
        {EFBIG, kStatusNoRoom},
    }};
    const auto row = std::ranges::find(kRows, errno, &Row::error);
    return row == kRows.end() ? HalvaneStatus(kStatusCannotOpen) : row->status;
}

template <typename Call>
auto uninterrupted(Call call) {
    auto result = call();
    while (result < 0 && errno == EINTR) result = call();
    return result;
}

FileDescriptor openFile(const std::string& path, int flags, mode_t mode = 0) {
    return aboveStandardStreams(FileDescriptor(
        uninterrupted([&] { return ::open(path.c_str(), flags | O_CLOEXEC, mode); })));
}

// Writes all of `text`, whatever signal the write raises.
bool writeWhole(const FileDescriptor& file, std::string_view text) {
    WriteSignalBlock block;
    const int error = writeAll(file.number(), text);
    if (error == 0) return true;
    block.takeBackSignal(error);
    errno = error;
    return false;
}

// Reads up to the end of the file, or `limit` + 1 bytes.
bool readAll(const FileDescriptor& file, std::size_t limit, std::string& text) {
    constexpr std::size_t kStep = 65536;
    for (;;) {
        const std::size_t size = text.size();
        const std::size_t step = std::min(kStep, limit + 1 - size);
        if (step == 0) return true;
        text.resize(size + step);
        const auto count =
            uninterrupted([&] { return ::read(file.number(), text.data() + size, step); });
        text.resize(size + static_cast<std::size_t>(std::max<ssize_t>(count, 0)));
        if (count <= 0) return count == 0;
    }
}

bool renameToFreeName(const std::string& from, const std::string& to) {
    constexpr int kHere = AT_FDCWD;
    if (::renameat2(kHere, from.c_str(), kHere, to.c_str(), RENAME_NOREPLACE) == 0) return true;
    if (errno != EINVAL && errno != ENOSYS) return false;
    // The file system does not support that. link() does not replace a file either, but for a
    // moment both names exist.
    return ::link(from.c_str(), to.c_str()) == 0 && ::unlink(from.c_str()) == 0;
}

bool sync(const FileDescriptor& file) {
    return uninterrupted([&] { return ::fsync(file.number()); }) == 0;
}

// Removes a file on destruction, unless the file was put to its purpose.
class TemporaryFile {
  public:
    explicit TemporaryFile(const std::string& path) : path_(path) {}
    TemporaryFile(const TemporaryFile&) = delete;
    TemporaryFile& operator=(const TemporaryFile&) = delete;
    ~TemporaryFile() {
        if (!isKept_) ::unlink(path_.c_str());
    }
    bool becomes(const std::string& path) {
        isKept_ = ::rename(path_.c_str(), path.c_str()) == 0;
        return isKept_;
    }

  private:
    const std::string& path_;
    bool isKept_ = false;
};

// The bytes of a lock file that are locked. The file may be shorter.
enum class LockByte : off_t { Held, Turn };

// Locks (F_WRLCK) or unlocks (F_UNLCK) the byte without waiting; returns whether that worked. The
// lock belongs to the open file description, as with flock(), so it excludes other threads too.
bool setLock(const FileDescriptor& file, LockByte byte, short type) {
    struct flock range {};
    range.l_type = type;
    range.l_whence = SEEK_SET;
    range.l_start = static_cast<off_t>(byte);
    range.l_len = 1;
    return uninterrupted([&] { return ::fcntl(file.number(), F_OFD_SETLK, &range); }) == 0;
}

// Counts the time slept, not the time elapsed: a process that gets no processor has not waited.
class Patience {
  public:
    // Returns false at once if the whole time has been slept.
    bool nap() {
        const std::uint64_t ticksPerSecond = ticksPerSecondOf(upTimeTimebase());
        if (slept_ >= kSeconds * ticksPerSecond) return false;
        const std::uint64_t start = upTimeNow();
        const long pause = pauseAfter(slept_ * kStepsPerSecond / ticksPerSecond);
        const bool isWhole = upTimeSleep({0, pause}) == 0;
        const auto meant = std::max<std::uint64_t>(
            static_cast<std::uint64_t>(pause) * ticksPerSecond / 1'000'000'000, 1);
        // A pause that a signal interrupts counts in part. A pause that fails counts in full, so
        // that the wait ends.
        const bool isCutShort = !isWhole && errno == EINTR;
        slept_ += isCutShort ? std::min(upTimeNow() - start, meant) : meant;
        return true;
    }

  private:
    static constexpr std::uint64_t kSeconds = 10;
    // How often per second the pauses become shorter.
    static constexpr std::uint64_t kStepsPerSecond = 10;

    // Returns the pause in nanoseconds. A thread that has waited longer tries more often. Otherwise
    // two threads that keep asking for the lock would pass it to each other, ahead of all others.
    static long pauseAfter(std::uint64_t steps) {
        constexpr std::uint64_t kFirst = 1'000'000, kShortest = 100'000;
        return static_cast<long>(std::max(kFirst / (1 + steps), kShortest));
    }

    std::uint64_t slept_ = 0;  // in ticks
};

bool lockWithPatience(const FileDescriptor& file, LockByte byte, Patience& patience) {
    while (!setLock(file, byte, F_WRLCK)) {
        const int error = errno;
        const bool isTaken = error == EAGAIN || error == EACCES;
        if (isTaken && patience.nap()) continue;
        errno = error;
        return false;
    }
    return true;
}

// A thread first waits for the turn and keeps it until it has the lock. A thread that has just
// released the lock and wants it back therefore waits behind the one whose turn it is.
bool lockInTurn(const FileDescriptor& file) {
    Patience patience;
    if (!lockWithPatience(file, LockByte::Turn, patience)) return false;
    const bool isHeld = lockWithPatience(file, LockByte::Held, patience);
    const int error = errno;
    setLock(file, LockByte::Turn, F_UNLCK);
    errno = error;
    return isHeld;
}

}  // namespace

FileDescriptor aboveStandardStreams(FileDescriptor file) {
    if (!file || file.number() > STDERR_FILENO) return file;
    return FileDescriptor(::fcntl(file.number(), F_DUPFD_CLOEXEC, STDERR_FILENO + 1));
}

int writeAll(int descriptor, std::string_view text) {
    return writeFront(descriptor, text);
}

int writeFront(int descriptor, std::string_view& text) {
    while (!text.empty()) {
        const auto count =
            uninterrupted([&] { return ::write(descriptor, text.data(), text.size()); });
        if (count < 0) return errno;
        if (count == 0) return EIO;
        text.remove_prefix(static_cast<std::size_t>(count));
    }
    return 0;
}

std::string folderOf(const std::string& path) {
    const std::size_t slash = path.rfind('/');
    if (slash == std::string::npos) return ".";
    return path.substr(0, std::max<std::size_t>(slash, 1));
}

FileText readFile(const std::string& path, std::size_t limit) {
    FileText result;
    // Without O_NONBLOCK the call would wait for the writer of a FIFO.
    const FileDescriptor file = openFile(path, O_RDONLY | O_NONBLOCK | O_NOCTTY);
    if (!file) {
        const bool isNoFile = errno == ENOENT || errno == ENOTDIR;
        if (isNoFile) return result;
        result.error = errno;
        result.status = statusOfLastError();
        return result;
    }
    result.isThere = true;
    struct stat facts {};
    errno = 0;
    if (::fstat(file.number(), &facts) != 0 || !S_ISREG(facts.st_mode) ||
        !readAll(file, limit, result.text)) {
        result.error = S_ISDIR(facts.st_mode) ? EISDIR : errno;
        result.status = kStatusCannotOpen;
        result.text.clear();
        return result;
    }
    result.isTooLong = result.text.size() > limit;
    if (result.isTooLong) result.text.clear();
    return result;
}

HalvaneStatus makeFolders(const std::string& folder, mode_t mode) {
    for (std::size_t end = 0; end != std::string::npos;) {
        end = folder.find('/', end + 1);
        const std::string part = folder.substr(0, end);
        if (::mkdir(part.c_str(), mode) == 0 || errno == EEXIST) continue;
        // mkdir() can fail on an existing folder with another error, for example on a read-only
        // file system.
        const int error = errno;
        struct stat facts {};
        if (::stat(part.c_str(), &facts) == 0) continue;
        errno = error;
        return statusOfLastError();
    }
    return kStatusOK;
}

FileLock::FileLock(const std::string& path)
    : file_(openFile(path, O_RDWR | O_CREAT | O_NONBLOCK | O_NOCTTY, 0600)) {
    if (file_ && lockInTurn(file_)) return;
    error_ = errno;
    status_ = statusOfLastError();
}

// Unlocks rather than only closes: a child that another thread forks has the descriptor too.
FileLock::~FileLock() {
    if (file_) setLock(file_, LockByte::Held, F_UNLCK);
}

HalvaneStatus replaceFile(const std::string& path, std::string_view text) {
    const std::string newPath = path + ".new";
    // The folder is opened while the old file still exists and a failure can still be reported.
    const FileDescriptor folder = openFile(folderOf(path), O_RDONLY | O_DIRECTORY);
    if (!folder) return statusOfLastError();
    ::unlink(newPath.c_str());  // a leftover of a crash
    const FileDescriptor file = openFile(newPath, O_WRONLY | O_CREAT | O_EXCL, 0600);
    if (!file) return statusOfLastError();

    TemporaryFile temporary(newPath);
    const bool isReplaced = writeWhole(file, text) && sync(file) && temporary.becomes(path);
    if (!isReplaced) return statusOfLastError();
    sync(folder);  // a failure leaves either the old or the new file, complete
    return kStatusOK;
}

Result<std::string, HalvaneStatus> setFileAside(const std::string& path) {
    for (int count = 1; count <= kMostSetAside; ++count) {
        std::string aside = path + ".damaged";
        if (count > 1) aside.append(".").append(std::to_string(count));
        if (renameToFreeName(path, aside)) return aside;
        if (errno == EEXIST) continue;
        return Unexpected(statusOfLastError());
    }
    return Unexpected(HalvaneStatus(kStatusNoRoom));
}

}  // namespace halvane
