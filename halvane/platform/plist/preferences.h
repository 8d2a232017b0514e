// Preferences: string values that programs keep between runs, by application and key.
//
// The values of an application are one XML property list, <folder>/<application>.plist. The folder
// is $XDG_CONFIG_HOME/halvane if that variable is an absolute path, otherwise
// $HOME/.config/halvane, otherwise the same in the home folder from the user database. A program
// with more rights than its user ignores the variables. In the file name, a leading "." and every
// byte except letters, digits, "-", "_" and "." becomes "%" and two hexadecimal digits.
//
// A file is damaged if it is not a property list, if its root is not a dictionary, or if it is
// longer than kPreferencesFileLimit. A damaged file is set aside: it is renamed to its name with
// ".damaged", ".damaged.2" and so on appended, and from then on counts as missing. A lock file
// stays beside the file, under its name with ".lock" appended. If a symbolic link takes the file's
// place, its target is used if that exists; otherwise a file replaces the link.
//
// Threads: any number of threads and processes may make any call at the same time. No write is
// lost. A reader gets the values from before or after a write, and waits for nobody unless the file
// is damaged.
// REQUIRES: nobody changes the environment during a call.
#ifndef HALVANE_PLATFORM_PLIST_PREFERENCES_H
#define HALVANE_PLATFORM_PLIST_PREFERENCES_H

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

#include "halvane/base/cxx20.h"
#include "halvane/base/export.h"
#include "halvane/base/status.h"

namespace halvane {

inline constexpr std::size_t kPreferencesFileLimit = 16777216;  // bytes

// Whether values were written; otherwise why not.
struct PreferenceResult {
    // kStatusOK also if there is no value, or if a damaged file was set aside. Otherwise:
    // - kStatusBadPath: the name is too long for a file, or there is no folder for the file
    // - kStatusCannotOpen: the file or folder cannot be read or written, or is not a regular file
    // - kStatusConversionFailed: XML cannot carry the key or value to write
    // - kStatusNoRoom: there is no room on the disk, in the file, within RLIMIT_FSIZE, or for
    //   another damaged file
    // - kStatusNoMemory: out of memory
    HalvaneStatus status = kStatusOK;

    // The value that a read found.
    std::optional<std::string> value;

    // The new path of a damaged file; empty if there was none, or if it could not be set aside.
    std::string setAside;

    // The path of the file that cannot be used, and the errno that tells why. Empty and 0 if the
    // status is kStatusOK, or if it says all that is known.
    std::string path;
    int error = 0;
};

// Returns the value of `key`; absent if the file or the key is missing, or if the value is not a
// string. An empty `application` means the current one: the name that the program was started by.
HALVANE_EXPORT PreferenceResult readPreference(std::string_view application, std::string_view key);

// Sets the value of `key`, or removes it if `value` is absent, and returns once the change is on
// the disk. All other values in the file are kept, also those that are not strings. If the status
// is not kStatusOK, the file is unchanged.
HALVANE_EXPORT PreferenceResult writePreference(std::string_view application, std::string_view key,
                                                std::optional<std::string_view> value);

}  // namespace halvane

#endif
