// Preferences: string values that programs keep between runs, by application and key.
//
// The values of an application are one XML property list, <folder>/<application>.plist. The folder
// is $XDG_CONFIG_HOME/halvane where that variable is an absolute path, else $HOME/.config/halvane,
// else the same in the home folder that the user database tells; a program with more rights than
// its user does not look at the variables. In the name of the file every byte of the application
// but letters, digits, "-", "_" and "." stands as "%" and two hexadecimal digits, and so does a "."
// in front.
//
// A file that is no property list, whose root is no dictionary, or that is longer than
// kPreferencesFileLimit is damaged: it is set aside, under its name with ".damaged", ".damaged.2"
// and so on behind it, and what is then there is no file. Beside the file there is a lock, the
// file's name with ".lock" behind it; it stays. A symbolic link in the place of the file stands for
// its target, if that exists, and is replaced by a file else.
//
// Threads: any call from any thread, and any number of processes; no write is lost, and a reader,
// which waits for nobody while the file is whole, gets the values of before or after a write.
// REQUIRES: nobody changes the environment during a call.
#ifndef HALVANE_PLATFORM_PLIST_PREFERENCES_H
#define HALVANE_PLATFORM_PLIST_PREFERENCES_H

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

#include "halvane/base/export.h"
#include "halvane/base/status.h"

namespace halvane {

inline constexpr std::size_t kPreferencesFileLimit = 16777216;  // bytes

struct PreferenceResult {
    // kStatusOK also where there is no value, and where a damaged file was set aside. Otherwise:
    // - kStatusBadPath: the name is too long for a file, or there is no folder for the file
    // - kStatusCannotOpen: file or folder cannot be read or written, or the file is something else
    // - kStatusConversionFailed: XML cannot carry the key or value to write
    // - kStatusNoRoom: on the disk, in the file, within RLIMIT_FSIZE, or for one more
    //   damaged file
    // - kStatusNoMemory
    HalvaneStatus status = kStatusOK;

    // Of a read.
    std::optional<std::string> value;

    // Where a damaged file went; empty: there was none, or it could not be set aside.
    std::string setAside;
};

// The value of `key`; absent where there is no file, no such key, or no string under it. An empty
// `application` is the current one: the name that the program was started by.
HALVANE_EXPORT PreferenceResult readPreference(std::string_view application, std::string_view key);

// Sets the value of `key`, or removes it where `value` is absent, and returns when that is on the
// disk. Whatever else the file holds is kept, also values that are no strings. Where the status is
// not kStatusOK, the file is as it was.
HALVANE_EXPORT PreferenceResult writePreference(std::string_view application, std::string_view key,
                                                std::optional<std::string_view> value);

}  // namespace halvane

#endif
