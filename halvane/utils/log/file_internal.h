// A log file that rotates when it is large, or a standard stream.
#ifndef HALVANE_UTILS_LOG_FILE_INTERNAL_H
#define HALVANE_UTILS_LOG_FILE_INTERNAL_H

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <optional>
#include <string>
#include <string_view>
#include <sys/types.h>

#include "halvane/base/status.h"
#include "halvane/platform/os/file_internal.h"
#include "halvane/utils/log/flush_internal.h"
#include "halvane/utils/log/rotation_internal.h"

namespace halvane::logging {

// Counts the checks of a path, each of which is a system call. It allows a limited number per step
// of a clock, which lasts some milliseconds. A burst of lines therefore does not pay for a check of
// each.
class LookCount {
  public:
    static constexpr unsigned kMostInAStep = 64;

    // Returns whether one more check is allowed.
    bool take();

  private:
    std::uint64_t step_ = 0;
    unsigned taken_ = 0;  // taken in the current step
};

class LogFile final : public LogBuffer {
  public:
    LogFile() = default;
    ~LogFile() override;
    LogFile(const LogFile&) = delete;
    LogFile& operator=(const LogFile&) = delete;

    // Uses a stream that its owner keeps.
    void useStream(std::FILE* stream);

    // Sets the path of the file.
    HalvaneStatus setPath(std::string_view path);

    // Sets "<size>[K|M|B]#<count>": the size at which to rotate, and the number of files to keep.
    HalvaneStatus setRoll(std::string_view value);
    // Sets "<path>#<count>": where a rotation puts a copy of the file, and the number of copies to
    // keep.
    HalvaneStatus setBackup(std::string_view value);

    // Sets "<size>[K|M|B]": the bytes to collect before they are written.
    HalvaneStatus setBuffer(std::string_view value);

    // Opens the file for appending, and creates its missing folders. All settings must be made
    // before. kStatusUnsupported if there is no path, or if the names of the file and its backups
    // collide. kStatusBadPath if a path is too long for the names of rotated files, or if the
    // backup's folder is missing. A relative path is resolved now, for good.
    HalvaneStatus open();

    // Reopens the file's path, and creates its missing folders. On failure, kStatusCannotOpen, the
    // old file stays open. A stream is unchanged.
    HalvaneStatus reopen();

    // Rotates if these bytes would make the file too large, then writes them. Errors are ignored. A
    // file that was renamed or removed, or that a rotation could not open, is first reopened. In a
    // burst of writes only some check for that. With a buffer the bytes may wait in it for flush();
    // they count as a part of the file. They are dropped if the file does not take what waits.
    void write(std::string_view text);

    // Writes what waits in the buffer. Returns false if some of it still waits, because the file
    // could not be written.
    bool flush() noexcept override;

    // Empties the buffer without writing it.
    void forget() override;

  private:
    bool isOpen() const { return stream_ != nullptr || file_; }
    bool mustRotateFor(std::size_t length) const;
    bool hasChanged();
    bool isElsewhere() const;
    bool isEmpty() const;
    bool openFile();
    void close();
    void followPath();
    void count(std::size_t length);
    bool collect(std::string_view text);
    // Each removes from `text` what it wrote.
    void put(std::string_view& text);
    void putWithoutSignal(std::string_view& text);
    bool canRaiseSignal() const;
    // Each returns 0, or the errno value of the failure.
    int tryToPut(std::string_view& text);
    int putToStream(std::string_view& text);
    void backUp();
    void rotate();

    std::FILE* stream_ = nullptr;  // a standard stream
    std::string path_;             // empty for a stream
    FileDescriptor file_;
    dev_t device_ = 0;  // identifies the file together with the inode
    ino_t inode_ = 0;
    LookCount looks_;
    std::optional<FileHeritage> heritage_;  // of the previous file, for the next new one
    bool isRegular_ = false;                // a device or pipe is never rotated
    bool isPipe_ = false;
    bool isSizeLimited_ = false;  // by RLIMIT_FSIZE, at the last check
    std::uint64_t size_ = 0;      // bytes written so far, or waiting
    std::uint64_t rollMaxSize_ = 0;
    int rollCount_ = 0;
    std::string backupPath_;
    int backupCount_ = 0;
    std::size_t bufferSize_ = 0;  // 0 without a buffer
    std::string waiting_;         // at most that many bytes
};

}  // namespace halvane::logging

#endif
