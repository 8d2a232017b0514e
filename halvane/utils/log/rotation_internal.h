// The numbered files of rotations: "<path>.1" is the newest.
#ifndef HALVANE_UTILS_LOG_ROTATION_INTERNAL_H
#define HALVANE_UTILS_LOG_ROTATION_INTERNAL_H

#include <optional>
#include <string>
#include <sys/types.h>

#include "halvane/platform/os/file_internal.h"

namespace halvane::logging {

inline constexpr int kMaxKeptFiles = 10000;  // a rotation renames all of them under the lock

std::string numberedName(const std::string& path, int number);

// Returns whether the path may be renamed: it is a regular file or missing. Other programs need a
// device in its place.
bool isReplaceable(const std::string& path);

// Returns whether the names of `count` files are short enough.
bool numberedNamesFit(const std::string& path, int count);

// Returns whether one path is the other, or one of its numbered names.
bool numberedNamesCollide(const std::string& path, const std::string& other);

// Renames the file to number 1 and each numbered file to the next number, up to the first gap. The
// file that drops out at the end is removed only if all numbers are taken. If the program stops
// between two renames, the next rotation therefore loses no file.
void shiftNumberedFiles(const std::string& path, int count);

// The attributes that a file passes on to its successors and copies.
struct FileHeritage {
    mode_t mode;
    uid_t owner;
    gid_t group;
};
std::optional<FileHeritage> heritageOf(int descriptor);

// Creates a file that does not exist, with the heritage as far as the process's rights allow;
// returns none if that fails. Its descriptor is above those of the standard streams.
FileDescriptor createHeir(const std::string& path, int flags, const FileHeritage& heritage);

// Copies `from` into a new file. If `to` exists, because it could not be renamed, it stays
// unchanged. The copy has the number 0, which no kept file has, until everything possible is
// copied. A copy that a stopped program leaves behind is therefore no backup, and is overwritten.
void copyLogFile(const std::string& from, const std::string& to);

}  // namespace halvane::logging

#endif
