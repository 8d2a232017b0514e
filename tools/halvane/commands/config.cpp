// Prints the BSS configuration that the options make, checks one, or exports it.
#include <array>
#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "halvane/model/bss_config.h"
#include "halvane/utils/cli.h"

#include "tools/halvane/commands/command.h"
#include "tools/halvane/config/config_file.h"
#include "tools/halvane/config/contradictions.h"
#include "tools/halvane/config/export_format.h"
#include "tools/halvane/options/argument.h"
#include "tools/halvane/options/config_options.h"
#include "tools/halvane/options/format_option.h"
#include "tools/halvane/output/config_json.h"
#include "tools/halvane/output/format.h"
#include "tools/halvane/output/message.h"
#include "tools/halvane/output/print_records.h"
#include "tools/halvane/output/standard_output.h"

namespace halvane::tool {

namespace {

// What the parser stores; null means not typed.
struct TypedTask {
    const char* check = nullptr;
    const char* exported = nullptr;
    bool hasFormat = false;
};
TypedTask gTypedTask;

int fail(const std::string& message) {
    complain("config: " + message);
    return kExitFailed;
}

void print(const HalvaneBSSConfig& configuration, Format format) {
    if (format != Format::Text) {
        return printRecord(configuration, configuration.skeletonRepresentation(), format);
    }
    put(configuration.description());
}

// --- Checking ---

// Prints the sentences of each configuration, with its number if there are several.
bool printContradictions(const std::vector<HalvaneBSSConfig>& configurations) {
    bool hasAny = false;
    for (std::size_t i = 0; i < configurations.size(); ++i) {
        const std::string number =
            configurations.size() > 1 ? std::to_string(i + 1) + ": " : std::string();
        for (const Contradiction& contradiction : contradictionsIn(configurations[i])) {
            put(number + contradiction.sentence + '\n');
            hasAny = true;
        }
    }
    return hasAny;
}

int check(const char* path) {
    const auto configurations = readConfigurations(path);
    if (!configurations) return fail(configurations.error());
    if (printContradictions(*configurations)) return kExitFailed;
    complain("config: " + inputName(path) + ": no contradictions");
    return kExitDone;
}

// --- Exporting ---

void tellEach(const ExportFormat& format, const std::vector<std::string>& sentences) {
    for (const std::string& sentence : sentences) {
        complain("config: " + std::string(format.name) + ": " + sentence);
    }
}

int printExported(const HalvaneBSSConfig& configuration, const ExportFormat& format) {
    const auto result = exported(configuration, format);
    if (!result) {
        tellEach(format, result.error());
        return kExitFailed;
    }
    tellEach(format, result->losses);
    put(result->text);
    return kExitDone;
}

// --- Options ---

constexpr std::array<std::string_view, 3> kPrograms = {"hostapd", "iwd", "networkmanager"};

// Why the tasks and options do not go together; absent if they do.
std::optional<UsageError> conflictOf(const TypedTask& task, const ConfigOptions& options) {
    if (task.check != nullptr && task.exported != nullptr) {
        return UsageError{"--check and --export do not go together"};
    }
    if (task.hasFormat && (task.check != nullptr || task.exported != nullptr)) {
        return UsageError{std::string(task.check != nullptr ? "--check" : "--export") +
                          " and --format do not go together"};
    }
    const bool hasOptions =
        options.needsPassphrase || options.configuration != HalvaneBSSConfig::init();
    if (task.check != nullptr && hasOptions) {
        return UsageError{"--check reads a file and takes no options"};
    }
    if (task.exported != nullptr && exportFormatOf(task.exported) == nullptr) {
        return withSuggestion({std::string("--export: '") + task.exported +
                               "' is not hostapd, iwd or networkmanager"},
                              "--export=", task.exported, kPrograms);
    }
    return missingPart(options);
}

int makeConfiguration(ConfigOptions options, const TypedTask& task, Format format) {
    // An export refuses all that contradicts itself, the passphrase too.
    if (task.exported != nullptr) options.checksPassphrase = false;
    const auto configuration = configurationOf(options);
    if (!configuration) return fail(configuration.error());
    if (task.exported != nullptr) {
        return printExported(*configuration, *exportFormatOf(task.exported));
    }
    print(*configuration, format);
    return kExitDone;
}

}  // namespace

CLIOption gConfigOptions[] = {
    {.type = kCLIGroup, .shortHelp = "Networks as people name them"},
    HALVANE_CONFIG_PRESETS,
    {.type = kCLIGroup, .shortHelp = "Fields"},
    HALVANE_CONFIG_OPTIONS,
    {.type = kCLIGroup, .shortHelp = "Output"},
    configValue("check", &gTypedTask.check, "FILE", "name what contradicts itself in a plist"),
    configValue("export", &gTypedTask.exported, "PROGRAM", "hostapd, iwd or networkmanager"),
    formatOption("json, plist: one document; jsonl: one line; plist: the skeleton."),
    {.type = kCLISection,
     .shortHelp = "PRESETS",
     .longHelp = "A preset of the kind 'personal' reads the passphrase as --passphrase does.\n"
                 "The other options change what it sets. --security=WPA or WPA2 takes the\n"
                 "ciphers and key management that it demands where no option tells them."},
    {.type = kCLISection,
     .shortHelp = "SECRETS",
     .longHelp = "Every format and every export holds the passphrase or the key in the clear:\n"
                 "mind who can read the output."},
    {.type = kCLISection,
     .shortHelp = "EXIT STATUS",
     .longHelp = "0 success, or no contradictions; 1 there are contradictions, the passphrase\n"
                 "cannot be read, is not valid, or makes no key, the file cannot be read, the\n"
                 "program cannot host such a network, or writing failed; 2 usage error."},
    {.type = kCLIEnd},
};

int configCommand() {
    const auto words = takeArguments();
    const auto options = takeConfigOptions();
    TypedTask task = std::exchange(gTypedTask, TypedTask());
    task.hasFormat = gTypedFormat != nullptr;
    const auto format = takeFormat();
    // The message does not repeat the argument, because it may be the passphrase.
    if (!words.empty()) return refuse("config", "takes options only");
    if (!options) return refuse("config", options.error());
    if (!format) return refuse("config", format.error());
    if (const auto conflict = conflictOf(task, *options)) return refuse("config", *conflict);
    if (task.check != nullptr) return check(task.check);
    return makeConfiguration(*options, task, *format);
}

}  // namespace halvane::tool
