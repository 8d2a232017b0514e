// The numbered files that rotations leave: "<path>.1" is the newest of them.
#ifndef HALVANE_UTILS_LOG_ROTATION_INTERNAL_H
#define HALVANE_UTILS_LOG_ROTATION_INTERNAL_H

#include <optional>
#include <string>
#include <sys/types.h>

#include "halvane/platform/os/file_internal.h"

namespace halvane::logging {

inline constexpr int kMaxKeptFiles = 10000;  // a rotation renames them all, with the lock held

std::string numberedName(const std::string& path, int number);

// A file or nothing: what may be renamed away. Not a device, which other programs need in place.
bool isReplaceable(const std::string& path);

// Whether the names of `count` files are not too long.
bool numberedNamesFit(const std::string& path, int count);

// Whether one of the paths is the other, or a numbered name of the other.
bool numberedNamesCollide(const std::string& path, const std::string& other);

// Renames the file to number 1, and each numbered file to the next number, as far as there is one
// without a gap: the file that would fall out at the end is removed only where all numbers are
// taken. So a program that is stopped between two renames loses no file by the next rotation.
void shiftNumberedFiles(const std::string& path, int count);

// What a file hands on to those that take its place or hold its copy.
struct FileHeritage {
    mode_t mode;
    uid_t owner;
    gid_t group;
};
std::optional<FileHeritage> heritageOf(int descriptor);

// Makes a file that is not there yet, with the heritage as far as the process may give it; none
// where it cannot.
FileDescriptor createHeir(const std::string& path, int flags, const FileHeritage& heritage);

// Copies `from` into a new file. One that is there already, for it could not be renamed, stays as
// it is. Until all is copied that can be, the copy has the number 0, which no kept file has: one
// that a program leaves behind which is stopped meanwhile is taken for no backup, and overwritten.
void copyLogFile(const std::string& from, const std::string& to);

}  // namespace halvane::logging

#endif
