// Pre-shared keys of WPA and WPA2.
#include <array>
#include <cstdint>
#include <cstdio>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "halvane/base/byte_buffer.h"
#include "halvane/base/error.h"
#include "halvane/base/hex_digits.h"
#include "halvane/model/bss_config.h"
#include "halvane/model/bss_limits.h"
#include "halvane/platform/os/secret_internal.h"
#include "halvane/utils/cli.h"
#include "halvane/utils/convert/hex_data.h"

#include "tools/halvane/commands/command.h"
#include "tools/halvane/input/passphrase_input.h"
#include "tools/halvane/options/argument.h"
#include "tools/halvane/options/ssid_argument.h"
#include "tools/halvane/output/message.h"
#include "tools/halvane/output/standard_output.h"

namespace halvane::tool {

namespace {

std::int32_t gIsHex = 0;

int fail(const std::string& message) {
    complain("psk: " + message);
    return kExitFailed;
}

// The line stands only in this function's own memory, which is wiped.
void print(const ByteBuffer& key) {
    Secret<std::array<char, HALVANE_HEX_TEXT_SIZE(kBSSKeySize)>> line;
    char* at = line->data();
    for (const std::uint8_t octet : key.bytes()) {
        at = DataToHexCStringEx(&octet, sizeof(octet), at, kHexDigitsLowercase) + 2;
    }
    *at++ = '\n';
    std::setvbuf(stdout, nullptr, _IONBF, 0);
    put({line->data(), static_cast<std::size_t>(at - line->data())});
}

}  // namespace

CLIOption gPSKOptions[] = {
    {.type = kCLIBoolean,
     .longName = "ssid-hex",
     .valuePtr = &gIsHex,
     .flags = kCLINoValue,
     .shortHelp = "SSID is hexadecimal text of its octets"},
    {.type = kCLIArgument, .longName = "SSID", .shortHelp = "the network's name, 1 to 32 octets"},
    {.type = kCLISection,
     .shortHelp = "EXIT STATUS",
     .longHelp = "0 success; 1 the passphrase cannot be read or makes no key, or writing\n"
                 "failed; 2 usage error."},
    {.type = kCLIEnd},
};

int pskCommand() {
    const bool isHex = std::exchange(gIsHex, 0) != 0;
    const std::vector<std::string> words = takeArguments();
    if (words.size() != 1) return refuse("psk", "takes one SSID");
    const auto ssid = ssidOf(words[0], isHex);
    if (!ssid) return refuse("psk", ssid.error());

    const auto passphrase = readPassphrase();
    if (!passphrase) return fail(passphrase.error());
    std::optional<Error> error;
    const auto key =
        HalvaneBSSConfig::wpaPasswordHash_withSSID_error(*passphrase, ssid->buffer(), &error);
    if (!key) return fail(passphraseProblem(*passphrase, error));
    print(*key);
    return kExitDone;
}

}  // namespace halvane::tool
