// The commands of the tool.
#ifndef TOOLS_HALVANE_COMMANDS_COMMAND_H
#define TOOLS_HALVANE_COMMANDS_COMMAND_H

#include <cstdint>
#include <span>
#include <string>

#include "halvane/utils/cli.h"

#include "tools/halvane/options/argument.h"

namespace halvane::tool {

// Exit statuses of every command.
inline constexpr int kExitDone = 0;
inline constexpr int kExitFailed = 1;
inline constexpr int kExitUsage = 2;
// Of a command whose output nobody reads any more: what shells make of an end by SIGPIPE.
inline constexpr int kExitReaderGone = 128 + 13;

// Runs after the options are parsed, and returns the exit status.
using Command = int (*)();

// Prints why the command cannot carry out the command line, and returns kExitUsage.
int refuse(const char* command, const std::string& message);
int refuse(const char* command, const UsageError& error);

// Runs the command. An exception becomes a message and kExitFailed.
int exitStatusOf(Command command) noexcept;

// The exit status for a result of CLIParse(); for 0 it is the status of the command. Reports a lack
// of memory, because the parser does not.
int exitStatusOfParser(std::int32_t status) noexcept;

// A command as the handler of an option table. The handler stores the status in gExitCode.
template <Command command>
void handle() {
    gExitCode = exitStatusOf(command);
}

// The options of each command, and the command. Those of decodeCommand() are decodeOptions()
// (options/decode_options.h), those of reportCommand() reportOptions()
// (options/report_options.h), those of scanCommand() scanOptions() (options/scan_options.h), those
// of watchCommand() watchOptions() (options/watch_options.h), those of channelsCommand()
// gChannelsOptions (options/channel_options.h).
int decodeCommand();
int reportCommand();
int scanCommand();
int watchCommand();
extern CLIOption gElementsOptions[];
int elementsCommand();
int channelsCommand();
extern CLIOption gSKUsOptions[];
int skusCommand();
extern CLIOption gCountriesOptions[];
int countriesCommand();
extern CLIOption gCountryOptions[];
int countryCommand();
extern CLIOption gPINOptions[];
int pinCommand();
extern CLIOption gPSKOptions[];
int pskCommand();
extern CLIOption gConfigOptions[];
int configCommand();
extern CLIOption gSchemaOptions[];
int schemaCommand();
extern CLIOption gCompletionOptions[];
int completionCommand();
extern CLIOption gHelpOptions[];
int helpCommand();

// Commands that talk to the Wi-Fi daemon, as rows of the command table.
std::span<const CLIOption> daemonListCommands();
std::span<const CLIOption> daemonActionCommands();
std::span<const CLIOption> loggingCommands();
std::span<const CLIOption> monitorCommands();

}  // namespace halvane::tool

#endif
