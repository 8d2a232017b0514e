// Prints a new WPS device PIN, or checks one.
#include <cstdio>
#include <string>
#include <vector>

#include "halvane/ie/wps.h"
#include "halvane/utils/cli.h"

#include "tools/halvane/commands/command.h"
#include "tools/halvane/options/argument.h"
#include "tools/halvane/output/message.h"

namespace halvane::tool {

namespace {

int printFresh() {
    std::printf("%08lld\n", static_cast<long long>(HalvaneWPS::generatePIN().int64()));
    return kExitDone;
}

int check(const std::string& text) {
    const auto pin = pinOf(text);
    if (!pin) return refuse("pin", "'" + text + "' is not a PIN of 8 digits");
    if (HalvaneWPS::validateChecksum(pin)) return kExitDone;
    complain("pin: " + text + ": the check digit would be " +
             std::to_string(HalvaneWPS::computeChecksum(pin)));
    return kExitFailed;
}

}  // namespace

CLIOption gPINOptions[] = {
    {.type = kCLIArgument,
     .longName = "check N",
     .flags = kCLIOptionalValue,
     .shortHelp = "check N, a PIN of 8 digits, instead"},
    {.type = kCLISection,
     .shortHelp = "COMMANDS",
     .longHelp = "check N    check the last digit of N, and print nothing"},
    {.type = kCLISection,
     .shortHelp = "EXIT STATUS",
     .longHelp = "0 success, or the check digit is right; 1 the check digit is wrong, or\n"
                 "writing failed; 2 usage error."},
    {.type = kCLIEnd},
};

int pinCommand() {
    const std::vector<std::string> words = takeArguments();
    if (words.empty()) return printFresh();
    if (words[0] != "check") return refuse("pin", "'" + words[0] + "' is not 'check'");
    if (words.size() != 2) return refuse("pin", "'check' takes one PIN");
    return check(words[1]);
}

}  // namespace halvane::tool
