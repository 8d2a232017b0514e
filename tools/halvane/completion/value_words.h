// What may stand in the place of an option's value, or of an argument.
#ifndef TOOLS_HALVANE_COMPLETION_VALUE_WORDS_H
#define TOOLS_HALVANE_COMPLETION_VALUE_WORDS_H

#include <string>
#include <string_view>
#include <vector>

#include "halvane/utils/cli.h"

namespace halvane::tool {

struct ValueWords {
    enum class Kind {
        Any,         // nothing is known of it
        Words,       // one of `words`
        List,        // some of `words`, with commas between
        Files,       // files and folders
        Interfaces,  // the network interfaces of this machine
        Commands,    // a program and its arguments
    };
    Kind kind = Kind::Any;
    std::vector<std::string> words{};
};

// What `row`, an option with a value or an argument of the command, takes. The row itself tells
// most of it: "a|b" as the value's name, a list of words as the help, FILE and INTERFACE. Words
// that the library or another table of the tool has come from there.
ValueWords valueWordsOf(std::string_view command, const CLIOption& row);

}  // namespace halvane::tool

#endif
