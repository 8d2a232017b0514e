// Descriptors, and small files that are read and replaced as a whole.
//
// Any thread may call the functions. They resume interrupted system calls. No descriptor outlives
// an exec.
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

// Owns a descriptor; -1 means none.
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

    // Passes ownership of the descriptor to the caller.
    int release() { return std::exchange(number_, -1); }

  private:
    int number_ = -1;
};

// Returns the same file under a number above those of the standard streams. If a program has closed
// a standard stream, a file under that number would be mistaken for the stream, and whoever reopens
// the stream would close the file. The result holds no descriptor if `file` holds none, or if the
// process has no more.
FileDescriptor aboveStandardStreams(FileDescriptor file);

// Writes `text`, and removes from it what is written. Returns 0, or the errno value of the failure.
// REQUIRES: as for writeAll().
int writeFront(int descriptor, std::string_view& text);

// Writes all of `text`. Returns 0, or the errno value of the failure.
// REQUIRES: a WriteSignalBlock if the write may raise a signal (write_signal_internal.h).
int writeAll(int descriptor, std::string_view text);

// Returns the folder of a path; "." for a name alone.
std::string folderOf(const std::string& path);

struct FileText {
    HalvaneStatus status = kStatusOK;
    int error = 0;  // the errno of a failure; 0 if none tells the reason
    bool isThere = false;
    bool isTooLong = false;
    std::string text;  // empty unless the file exists and is not too long
};

// Reads a regular file of at most `limit` bytes. A missing file is not a failure. Anything else
// that is not a regular file gives kStatusCannotOpen, without waiting for it.
FileText readFile(const std::string& path, std::size_t limit);

// Creates `folder` and its missing parents with the given mode, less the process's umask. Existing
// folders stay unchanged.
HalvaneStatus makeFolders(const std::string& folder, mode_t mode);

// Only the user has access.
inline constexpr mode_t kPrivateFolderMode = 0700;

// An advisory lock, held until the object is destroyed. It excludes other processes and other
// threads. The lock file stays: removing it could let two holders in.
class FileLock {
  public:
    // Waits for the lock, but at most ten seconds: a holder that takes longer is stuck and must not
    // block everybody else. The status is then kStatusCannotOpen. Only the time slept between
    // attempts counts. Each pause takes a millisecond, and less the longer the wait lasts. On a
    // busy machine, where pauses take longer than intended, the wait takes longer but makes as many
    // attempts.
    //
    // The wait is fair: a holder that returns queues behind those that waited meanwhile. To this
    // end there are two locks of the file's open description (fcntl, F_OFD_SETLK), of one byte
    // each: byte 0 is the lock itself, byte 1 is the turn of the next holder. The kernel's own
    // waits are neither bounded nor fair: they wake the waiting threads and give the lock to the
    // first one that comes.
    explicit FileLock(const std::string& path);
    FileLock(const FileLock&) = delete;
    FileLock& operator=(const FileLock&) = delete;
    ~FileLock();

    // kStatusOK if the lock is held, otherwise the reason why not.
    HalvaneStatus status() const { return status_; }

    // The errno of that reason; 0 if the lock is held.
    int error() const { return error_; }

  private:
    FileDescriptor file_;
    HalvaneStatus status_ = kStatusOK;
    int error_ = 0;
};

// Replaces `path` by a file that holds `text` and that only the user can access. A reader, and a
// crash at any time, finds the old file or the new one. On failure the old file is unchanged. The
// text is first written to a file of the same name with ".new" appended.
// REQUIRES: the caller holds a lock that every writer of `path` takes.
HalvaneStatus replaceFile(const std::string& path, std::string_view text);

// Renames the file to the first free name with ".damaged", ".damaged.2" and so on appended, and
// returns the new path.
// REQUIRES: as for replaceFile().
Result<std::string, HalvaneStatus> setFileAside(const std::string& path);

// The longest suffix that the functions above append to a path.
inline constexpr std::string_view kLongestFileSuffix = ".damaged.9999";

}  // namespace halvane

#endif
