// A log file that rotates when it has grown, or a standard stream.
#ifndef HALVANE_UTILS_LOG_FILE_INTERNAL_H
#define HALVANE_UTILS_LOG_FILE_INTERNAL_H

#include <cstdint>
#include <cstdio>
#include <string>
#include <string_view>

#include "halvane/base/status.h"

namespace halvane::logging {

class LogFile {
  public:
    LogFile() = default;
    ~LogFile();
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
    // kStatusBadPath where a path is too long for the names of rotated files.
    HalvaneStatus open();

    // Rotates if these bytes would make the file too large, then writes them. Errors are ignored. A
    // file that a rotation could not open is tried again on every write.
    void write(std::string_view text);

  private:
    bool isOpen() const { return stream_ != nullptr || descriptor_ >= 0; }
    void openFile();
    void close();
    void put(std::string_view text);
    void writeAll(std::string_view text);
    void backUp();
    void rotate();

    std::FILE* stream_ = nullptr;  // a standard stream
    std::string path_;             // empty for that
    int descriptor_ = -1;
    bool isRegular_ = false;  // a device or pipe is never rotated
    bool isPipe_ = false;
    std::uint64_t size_ = 0;  // bytes written so far
    std::uint64_t rollMaxSize_ = 0;
    int rollCount_ = 0;
    std::string backupPath_;
    int backupCount_ = 0;
};

}  // namespace halvane::logging

#endif
