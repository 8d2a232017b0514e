#include <span>
#include <string>
#include <vector>

#include "halvane/utils/cli.h"
#include "halvane/utils/log.h"

#include "tools/halvane/commands/command.h"
#include "tools/halvane/output/message.h"
#include "tools/halvane/output/standard_files.h"
#include "tools/halvane/output/standard_output.h"

namespace halvane::tool {
namespace {

CLIOption gHelpOptions[] = {
    {.type = kCLIArgument,
     .longName = "COMMAND",
     .flags = kCLIOptionalValue,
     .shortHelp = "explain this one instead of listing them all"},
    {.type = kCLIEnd},
};

const CLIOption kCommands[] = {
    {.type = kCLICallback,
     .shortName = 'h',
     .longName = "help",
     .flags = kCLINoValue | kCLINoNegation | kCLILocal,
     .callback = _CLIHelpOption,
     .shortHelp = "print this help, or that of the command"},
    {.type = kCLICallback,
     .longName = "version",
     .valuePtr = CLI_TEXT(HALVANE_VERSION),
     .countPtr = CLI_TEXT(HALVANE_BUILD),
     .flags = kCLINoValue | kCLINoNegation | kCLILocal,
     .callback = _CLIVersionOption,
     .shortHelp = "print the version"},
    {.type = kCLICommand,
     .longName = "decode",
     .handler = handle<decodeCommand>,
     .subOptions = gDecodeOptions,
     .shortHelp = "print the BSS records of capture files",
     .longHelp =
         "Prints the BSS records of the beacons and probe responses in capture files (pcap or\n"
         "pcapng; 802.11, radiotap, Prism, AVS or PPI). One record per BSSID, in order of first\n"
         "sighting, later frames folded in. A summary of the frames read and skipped goes to\n"
         "standard error."},
    {.type = kCLICommand,
     .longName = "channels",
     .handler = handle<channelsCommand>,
     .subOptions = gChannelsOptions,
     .shortHelp = "print channels and their frequencies",
     .longHelp =
         "Prints the channels of the 2.4 GHz and 5 GHz bands: number, centre frequency and\n"
         "the channel that is the other half of its 40 MHz channel."},
    {.type = kCLICommand,
     .longName = "skus",
     .handler = handle<skusCommand>,
     .subOptions = gSKUsOptions,
     .shortHelp = "print the regulatory regions",
     .longHelp =
         "Prints the SKUs, the regions that variants of a product are made for: short name,\n"
         "number of countries and name."},
    {.type = kCLICommand,
     .longName = "countries",
     .handler = handle<countriesCommand>,
     .subOptions = gCountriesOptions,
     .shortHelp = "print the countries of the regions",
     .longHelp =
         "Prints the countries of all SKUs, or of one: ISO name and number, the short name of\n"
         "their SKU, and their own."},
    {.type = kCLICommand,
     .longName = "country",
     .handler = handle<countryCommand>,
     .subOptions = gCountryOptions,
     .shortHelp = "print a country and its channels",
     .longHelp =
         "Prints a country and the channels that it allows, each with its frequency: whether\n"
         "it is listed but disabled, is radar prone, and can be 40 MHz wide."},
    {.type = kCLICommand,
     .longName = "pin",
     .handler = handle<pinCommand>,
     .subOptions = gPINOptions,
     .shortHelp = "print a fresh WPS PIN, or check one",
     .longHelp =
         "Prints a random WPS device PIN: seven digits and the one that checks them.\n"
         "With 'check N' prints no PIN but tells by the exit status whether the last digit\n"
         "of the PIN N, of eight digits, is the one that checks the others."},
    {.type = kCLICommand,
     .longName = "psk",
     .handler = handle<pskCommand>,
     .subOptions = gPSKOptions,
     .shortHelp = "print the WPA pre-shared key of a passphrase",
     .longHelp =
         "Prints the pre-shared key of WPA and WPA2 that a passphrase makes for the SSID, as 64\n"
         "hexadecimal digits. The passphrase is the first line of standard input; where that is\n"
         "a terminal it is asked for and not shown. It has 8 to 63 characters of printable\n"
         "ASCII, but not 32."},
    {.type = kCLICommand,
     .longName = "config",
     .handler = handle<configCommand>,
     .subOptions = gConfigOptions,
     .shortHelp = "print the BSS configuration that options make",
     .longHelp =
         "Prints the configuration of a network as the daemon would be given it, passphrase\n"
         "and key included. Without options it is an open network of all PHY modes. WORDS are\n"
         "separated by commas, in any case; those of a group take the place of its defaults."},
};

const CLIOption kLastCommands[] = {
    {.type = kCLICommand,
     .longName = "help",
     .handler = _CLIHelpCommand,
     .subOptions = gHelpOptions,
     .shortHelp = "print this help, or that of a command"},
    {.type = kCLIEnd},
};

std::vector<CLIOption> allCommands() {
    const std::span<const CLIOption> parts[] = {
        kCommands,         daemonListCommands(), daemonActionCommands(),
        loggingCommands(), monitorCommands(),    kLastCommands};
    std::vector<CLIOption> commands;
    for (const auto part : parts) commands.insert(commands.end(), part.begin(), part.end());
    return commands;
}

// The log file is the daemon's; what the library has to say here goes to standard error.
void keepFromLogFile() {
#define HALVANE_KEEP_FROM_LOG_FILE(name) gLogCategory_##name.initConfig = nullptr;
    HALVANE_WIFI_LOG_CATEGORIES(HALVANE_KEEP_FROM_LOG_FILE)
#undef HALVANE_KEEP_FROM_LOG_FILE
}

// Results that did not reach standard output (a full disk, say) are a failure too.
int flushed(int status) {
    if (flushOutput()) return status;
    complain(std::string("standard output: ") + lostOutputReason());
    return status == kExitDone ? kExitFailed : status;
}

int run() {
    keepFromLogFile();
    auto commands = allCommands();
    const int status = flushed(exitStatusOfParser(CLIParse(commands.data(), 0)));
    CLIFree();
    return status;
}

}  // namespace
}  // namespace halvane::tool

int main(int argc, char** argv) {
    halvane::tool::openStandardFiles();
    CLIInit(argc, argv);
    return halvane::tool::exitStatusOf(halvane::tool::run);
}
