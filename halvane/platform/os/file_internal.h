// Descriptors, and small files that are read and replaced as a whole.
//
// The functions may be called from any thread. Interrupted calls are taken up again, and no
// descriptor outlives an exec.
#ifndef HALVANE_PLATFORM_OS_FILE_INTERNAL_H
#define HALVANE_PLATFORM_OS_FILE_INTERNAL_H

#include <cstddef>
#include <string>
#include <string_view>
#include <sys/types.h>
#include <unistd.h>
#include <utility>

#include "halvane/base/result.h"
#include "halvane/base/status.h"

namespace halvane {

// Owns a descriptor; -1 is none.
class FileDescriptor {
  public:
    FileDescriptor() = default;
    explicit FileDescriptor(int number) : number_(number) {}
    FileDescriptor(FileDescriptor&& other) noexcept : number_(std::exchange(other.number_, -1)) {}
    FileDescriptor& operator=(FileDescriptor&& other) noexcept {
        std::swap(number_, other.number_);
        return *this;
    }
    ~FileDescriptor() {
        if (number_ >= 0) ::close(number_);
    }

    explicit operator bool() const { return number_ >= 0; }
    int number() const { return number_; }

    // Gives the descriptor to the caller.
    int release() { return std::exchange(number_, -1); }

  private:
    int number_ = -1;
};

// The same file under a number above those of the standard streams: where a program has closed one
// of them, its number would be taken for the stream, and lost to whoever opens that anew. None
// where there is none, or the process has no more descriptors.
FileDescriptor aboveStandardStreams(FileDescriptor file);

// Writes all of `text`; returns what failed, an errno value, and 0 for nothing.
// REQUIRES: a WriteSignalBlock where the write may raise a signal (write_signal_internal.h).
int writeAll(int descriptor, std::string_view text);

// The folder that the file of a path is in: "." for a name alone.
std::string folderOf(const std::string& path);

struct FileText {
    HalvaneStatus status = kStatusOK;
    bool isThere = false;
    bool isTooLong = false;
    std::string text;  // empty but for a file that is there, and not too long
};

// The contents of a regular file of at most `limit` bytes. No file is no failure; anything else
// that is no regular file is kStatusCannotOpen, and is not waited for.
FileText readFile(const std::string& path, std::size_t limit);

// Makes `folder`, and those above it, with that mode less the process's umask; those that are there
// are left as they are.
HalvaneStatus makeFolders(const std::string& folder, mode_t mode);

// For the user alone.
inline constexpr mode_t kPrivateFolderMode = 0700;

// An advisory lock, exclusive between processes and between threads, held until destroyed. Its
// file stays: removing it would let two holders in.
class FileLock {
  public:
    // Waits for the lock, for ten seconds at most: who holds it that long is stuck, and must not
    // stop everybody else. Then the status is kStatusCannotOpen. The seconds are those that were
    // slept between attempts, in pauses of a millisecond, which become shorter the longer the wait
    // takes. On a busy machine, where each pause takes longer than it was meant to, the wait takes
    // longer, but has as many attempts.
    //
    // The wait is fair: a holder that comes back stands behind who waited meanwhile. For that there
    // are two locks of the file's open description (fcntl, F_OFD_SETLK), of one byte each: the one
    // of byte 0 is held, the one of byte 1 is the turn of the next. The kernel's own waits are
    // neither bounded nor fair: they wake who waits, and leave the lock to who comes first.
    explicit FileLock(const std::string& path);
    FileLock(const FileLock&) = delete;
    FileLock& operator=(const FileLock&) = delete;
    ~FileLock();

    // Whether the lock is held, and if not, why.
    HalvaneStatus status() const { return status_; }

  private:
    FileDescriptor file_;
    HalvaneStatus status_ = kStatusOK;
};

// Puts a file that holds `text`, for the user alone, in the place of `path`: a reader, and a crash
// at any time, finds the old one or the new one. On failure the old one is untouched. What is
// written first is a file of the same name with ".new" behind it.
// REQUIRES: a lock that every writer of `path` takes is held.
HalvaneStatus replaceFile(const std::string& path, std::string_view text);

// Gives the file a name behind its own that is free, ".damaged", ".damaged.2" and so on, and
// returns the whole of it.
// REQUIRES: as for replaceFile().
Result<std::string, HalvaneStatus> setFileAside(const std::string& path);

// The longest that the functions above put behind a path.
inline constexpr std::string_view kLongestFileSuffix = ".damaged.9999";

}  // namespace halvane

#endif
