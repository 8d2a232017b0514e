#include "tools/halvane/commands/command_table.h"

#include <span>

#include "tools/halvane/commands/command.h"
#include "tools/halvane/options/channel_options.h"
#include "tools/halvane/options/decode_options.h"
#include "tools/halvane/options/report_options.h"
#include "tools/halvane/options/scan_options.h"
#include "tools/halvane/options/watch_options.h"

namespace halvane::tool {
namespace {

// Made when it is first needed, because the tables of options are made when the program starts.
std::span<const CLIOption> firstCommands() {
    static const CLIOption kCommands[] = {
        {.type = kCLICallback,
         .shortName = 'h',
         .longName = "help",
         .flags = kCLINoValue | kCLINoNegation | kCLILocal,
         .callback = _CLIHelpOption,
         .shortHelp = "print this help, or the help of the command"},
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
         .subOptions = decodeOptions(),
         .shortHelp = "show the networks of capture files",
         .longHelp = "Shows the networks whose beacons and probe responses are in captures: pcap\n"
                     "and pcapng, gzip, zstd or xz or not; 802.11, radiotap, Prism, AVS or PPI.\n"
                     "FILE may be a folder; '-' is standard input."},
        {.type = kCLICommand,
         .longName = "report",
         .handler = handle<reportCommand>,
         .subOptions = reportOptions(),
         .shortHelp = "make a page about the networks of capture files",
         .longHelp = "Makes one HTML page about the networks of captures: channels, signal over\n"
                     "time, shares, findings and a table. It loads nothing, and can be read\n"
                     "without scripts. Captures are what 'halvane decode' reads."},
        {.type = kCLICommand,
         .longName = "scan",
         .handler = handle<scanCommand>,
         .subOptions = scanOptions(),
         .shortHelp = "list the networks around, as the kernel has them",
         .longHelp = "Shows the networks that the kernel has heard of last. This needs no monitor\n"
                     "mode, and no rights without --trigger. '*' is the network that this machine\n"
                     "uses, AGE the time since its last frame."},
        {.type = kCLICommand,
         .longName = "watch",
         .handler = handle<watchCommand>,
         .subOptions = watchOptions(),
         .shortHelp = "follow the networks that interfaces hear now",
         .longHelp = "Shows the networks whose beacons and probe responses interfaces in monitor\n"
                     "mode hear, and how they change, until it is ended. The last table stays. If\n"
                     "standard output is no terminal, the table comes once, at the end; with\n"
                     "--format=jsonl records come as they are first heard or change."},
        {.type = kCLICommand,
         .longName = "elements",
         .handler = handle<elementsCommand>,
         .subOptions = gElementsOptions,
         .shortHelp = "explain the elements of hexadecimal text",
         .longHelp = "Prints every element of a buffer: octet, number, length, name, and what its\n"
                     "fields say. The text may be plain, or come from xxd, hexdump -C, od -tx1,\n"
                     "tcpdump -x, iw -u or the copy of a packet viewer. Damage is told with its\n"
                     "octet."},
        {.type = kCLICommand,
         .longName = "channels",
         .handler = handle<channelsCommand>,
         .subOptions = gChannelsOptions,
         .shortHelp = "print channels and their frequencies",
         .longHelp =
             "Prints the channels of the 2.4 GHz and 5 GHz bands: number, centre\n"
             "frequency, and the channel that is the other half of the 40 MHz channel.\n"
             "With --band, --width, --class, --channel, --frequency or --psc instead those\n"
             "of all bands, of all widths and of all operating classes."},
        {.type = kCLICommand,
         .longName = "skus",
         .handler = handle<skusCommand>,
         .subOptions = gSKUsOptions,
         .shortHelp = "print the regulatory regions",
         .longHelp = "Prints the SKUs, the regions for which variants of a product are made:\n"
                     "short name, number of countries and name."},
        {.type = kCLICommand,
         .longName = "countries",
         .handler = handle<countriesCommand>,
         .subOptions = gCountriesOptions,
         .shortHelp = "print the countries of the regions",
         .longHelp =
             "Prints the countries of all SKUs, or of one SKU: ISO name, ISO number, short\n"
             "name of the SKU, and name of the country."},
        {.type = kCLICommand,
         .longName = "country",
         .handler = handle<countryCommand>,
         .subOptions = gCountryOptions,
         .shortHelp = "print a country and its channels",
         .longHelp =
             "Prints a country and its channels. Each channel has its frequency, and flags\n"
             "that tell whether it is disabled, radar prone, and able to be 40 MHz wide."},
        {.type = kCLICommand,
         .longName = "pin",
         .handler = handle<pinCommand>,
         .subOptions = gPINOptions,
         .shortHelp = "print a new WPS PIN, or check one",
         .longHelp =
             "Prints a random WPS device PIN: seven random digits and their check digit.\n"
             "'check N' prints no PIN. It checks the last digit of the PIN N, and the exit\n"
             "status tells whether that digit is right."},
        {.type = kCLICommand,
         .longName = "psk",
         .handler = handle<pskCommand>,
         .subOptions = gPSKOptions,
         .shortHelp = "print the WPA pre-shared key of a passphrase",
         .longHelp = "Prints the pre-shared key of WPA and WPA2 for a passphrase and the SSID, as\n"
                     "64 hexadecimal digits. The passphrase is the first line of standard input.\n"
                     "If that is a terminal, the command asks for it and does not show it. A\n"
                     "passphrase has 8 to 63 characters of printable ASCII, but not exactly 32."},
        {.type = kCLICommand,
         .longName = "config",
         .handler = handle<configCommand>,
         .subOptions = gConfigOptions,
         .shortHelp = "make, check or export a BSS configuration",
         .longHelp =
             "Prints the configuration of a network in the form that the daemon would\n"
             "receive, passphrase and key included. Without options it is an open network\n"
             "of all PHY modes. Commas separate WORDS, and their case does not matter. The\n"
             "words of a group replace its defaults. --check names what contradicts itself\n"
             "in a file, and --export prints the configuration as another program reads\n"
             "it."},
    };
    return kCommands;
}

const CLIOption kLastCommands[] = {
    {.type = kCLICommand,
     .longName = "schema",
     .handler = handle<schemaCommand>,
     .subOptions = gSchemaOptions,
     .shortHelp = "print the schema of a command's JSON",
     .longHelp = "Prints the JSON Schema (draft 2020-12) of what a command prints with\n"
                 "--format=json: every key, its type, unit and meaning. The definition\n"
                 "'record' is that of a line of --format=jsonl. Without COMMAND it lists the\n"
                 "commands that print JSON, one a line."},
    {.type = kCLICommand,
     .longName = "completion",
     .handler = handle<completionCommand>,
     .subOptions = gCompletionOptions,
     .shortHelp = "print what completes command lines in a shell",
     .longHelp = "Prints the script with which a shell completes the command lines of halvane:\n"
                 "commands, options, words, interfaces and files. An installation holds these\n"
                 "scripts where the shells look for them."},
    {.type = kCLICommand,
     .longName = "help",
     .handler = handle<helpCommand>,
     .subOptions = gHelpOptions,
     .shortHelp = "print this help, or the help of a command"},
    {.type = kCLIEnd},
};

}  // namespace

std::vector<CLIOption> commandTable() {
    const std::span<const CLIOption> parts[] = {firstCommands(),        daemonListCommands(),
                                                daemonActionCommands(), loggingCommands(),
                                                monitorCommands(),      kLastCommands};
    std::vector<CLIOption> commands;
    for (const auto part : parts) commands.insert(commands.end(), part.begin(), part.end());
    return commands;
}

}  // namespace halvane::tool
