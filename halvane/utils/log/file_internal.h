// A log file that rotates when it has grown, or a standard stream.
#ifndef HALVANE_UTILS_LOG_FILE_INTERNAL_H
#define HALVANE_UTILS_LOG_FILE_INTERNAL_H

#include <cstdint>
#include <cstdio>
#include <optional>
#include <string>
#include <string_view>
#include <sys/types.h>

#include "halvane/base/status.h"
#include "halvane/platform/os/file_internal.h"
#include "halvane/utils/log/rotation_internal.h"

namespace halvane::logging {

// Counts the looks at a path, each of them a system call: so many in each step of a clock, which
// lasts some milliseconds. Thus who writes many lines at once does not pay for each of them.
class LookCount {
  public:
    static constexpr unsigned kMostInAStep = 64;

    // Whether there is one more.
    bool take();

  private:
    std::uint64_t step_ = 0;
    unsigned taken_ = 0;  // in that step
};

class LogFile {
  public:
    LogFile() = default;
    LogFile(const LogFile&) = delete;
    LogFile& operator=(const LogFile&) = delete;

    // Takes a stream that stays its owner's.
    void useStream(std::FILE* stream);

    // Takes the path of a file.
    HalvaneStatus setPath(std::string_view path);

    // "<size>[K|M|B]#<count>": from which size on to rotate, and how many files to keep.
    HalvaneStatus setRoll(std::string_view value);
    // "<path>#<count>": where a rotation leaves a copy of the file, and how many copies to keep.
    HalvaneStatus setBackup(std::string_view value);

    // Once all is set, opens the file for appending, with the folders to it. kStatusUnsupported
    // where there is none, or where it and its backups would get in each other's way;
    // kStatusBadPath where a path is too long for the names of rotated files, or where the backup's
    // folder is not there. What a relative path leads to then it leads to for good.
    HalvaneStatus open();

    // Opens the file's path anew, with the folders to it; kStatusCannotOpen where that fails, and
    // what was open stays so. A stream is left as it is.
    HalvaneStatus reopen();

    // Rotates if these bytes would make the file too large, then writes them. Errors are ignored. A
    // file that was renamed or removed, or that a rotation could not open, is opened anew before;
    // in a burst of writes only some of them look for that.
    void write(std::string_view text);

  private:
    bool isOpen() const { return stream_ != nullptr || file_; }
    bool hasChanged();
    bool isElsewhere() const;
    bool isEmpty() const;
    bool openFile();
    void close();
    void put(std::string_view text);
    bool canRaiseSignal() const;
    // Each returns what failed, an errno value; 0 for nothing.
    int tryToPut(std::string_view text);
    int putToStream(std::string_view text);
    void backUp();
    void rotate();

    std::FILE* stream_ = nullptr;  // a standard stream
    std::string path_;             // empty for that
    FileDescriptor file_;
    dev_t device_ = 0;  // with the inode, which file that is
    ino_t inode_ = 0;
    LookCount looks_;
    std::optional<FileHeritage> heritage_;  // of the file before the next one to be made
    bool isRegular_ = false;                // a device or pipe is never rotated
    bool isPipe_ = false;
    bool isSizeLimited_ = false;  // by RLIMIT_FSIZE, at the last look
    std::uint64_t size_ = 0;      // bytes written so far
    std::uint64_t rollMaxSize_ = 0;
    int rollCount_ = 0;
    std::string backupPath_;
    int backupCount_ = 0;
};

}  // namespace halvane::logging

#endif
