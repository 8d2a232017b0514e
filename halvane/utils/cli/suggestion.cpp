// The name that a mistyped one was meant to be.
#include <optional>
#include <string_view>

#include "halvane/base/similar_word_internal.h"
#include "halvane/utils/cli/message_internal.h"
#include "halvane/utils/cli/parser_internal.h"

namespace halvane::cli {

namespace {

// Suggestions are looked for only if they are wanted.
bool isWanted() {
    return (gState.flags & kCLISuggest) != 0;
}

// REQUIRES: the names that were offered end in a null character.
void suggest(Message& message, const char* before, const SimilarWord& similar) {
    const std::optional<std::string_view> name = similar.found();
    if (name) message.add("Did you mean '%s%s'?\n", before, name->data());
}

}  // namespace

void suggestCommand(Message& message, CLIOption* table, const char* typed) {
    if (!isWanted()) return;
    SimilarWord similar(typed);
    for (const CLIOption& option : Table(table)) {
        if (option.type == kCLICommand && hasLongName(option)) similar.offer(option.longName);
    }
    suggest(message, "", similar);
}

void suggestOption(Message& message, const Level& level, std::string_view typed,
                   const char* before) {
    if (!isWanted()) return;
    SimilarWord similar(typed);
    for (const Level* table = &level; table != nullptr; table = table->above) {
        for (const CLIOption& option : Table(table->table)) {
            if (isOption(option) && hasLongName(option)) similar.offer(option.longName);
        }
    }
    suggest(message, before, similar);
}

}  // namespace halvane::cli
