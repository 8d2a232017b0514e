// hostapd's own parser of configuration files as a judge: it names each line that it does not know,
// and what does not fit together.
#ifndef TESTS_SUPPORT_HOSTAPD_PARSER_H
#define TESTS_SUPPORT_HOSTAPD_PARSER_H

#include <algorithm>
#include <string>
#include <unistd.h>
#include <vector>

#include "halvane/base/byte_buffer.h"

#include "tests/support/run_program.h"
#include "tests/support/temporary_folder.h"

namespace halvane::testing {

// Empty if hostapd is not installed.
inline std::string hostapdPath() {
    for (const char* path : {"/usr/sbin/hostapd", "/usr/local/sbin/hostapd"}) {
        if (::access(path, X_OK) == 0) return path;
    }
    return {};
}

// Gives hostapd a file with an unknown line at its end, which keeps it from starting a network. The
// parser reads all of the file nevertheless.
class HostapdParser {
  public:
    // The complaints about all lines but the added one; empty if there are none.
    // REQUIRES: hostapd is installed.
    std::string complaintsOf(const std::string& text,
                             const std::vector<std::string>& options = {}) {
        const auto file = ByteBuffer::fromText(text + kEnd + "=1\n");
        const auto path = folder_.write("hostapd.conf", file.bytes());
        std::vector<std::string> words = {hostapdPath()};
        words.insert(words.end(), options.begin(), options.end());
        words.push_back(path);
        auto said = runProgram(words).output;
        const auto line = std::to_string(1 + std::ranges::count(text, '\n'));
        drop(said, "Line " + line + ": unknown configuration item '" + kEnd + "'\n");
        drop(said, "1 errors found in configuration file '" + path + "'\n");
        drop(said, "Failed to set up interface with " + path + "\n");
        drop(said, "Failed to initialize interface\n");
        return said;
    }

  private:
    static constexpr const char* kEnd = "the_end_of_the_file";

    static void drop(std::string& said, const std::string& expected) {
        const auto at = said.find(expected);
        if (at == std::string::npos) {
            said += "(missing: " + expected + ")";
        } else {
            said.erase(at, expected.size());
        }
    }

    TemporaryFolder folder_;
};

}  // namespace halvane::testing

#endif
