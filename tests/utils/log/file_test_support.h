// What tests of the output "file" share.
#ifndef TESTS_UTILS_LOG_FILE_TEST_SUPPORT_H
#define TESTS_UTILS_LOG_FILE_TEST_SUPPORT_H

#include <filesystem>
#include <fstream>
#include <iterator>
#include <map>
#include <string>

#include "halvane/base/status.h"
#include "halvane/utils/log.h"

#include "tests/support/temporary_folder.h"
#include "tests/utils/log/test_support.h"

namespace halvane::testing {

using Files = std::map<std::string, std::string>;  // contents by name

inline const std::string kEnded = "\nLOG ENDED, CONTINUES IN NEXT LOG FILE\n";

// A folder of its own, and a category that logs to files in it.
class LogFileTest : public LogTest {
  public:
    inline static TestCategory category{"FileTest"};

  protected:
    LogFileTest() {
        category.reset();
        LogIsEnabled(&category, kLogLevelInfo);
    }

    std::string path(const std::string& name = "log") const { return folder_.path() / name; }

    // Sets the category's output to "file;<parameters>".
    static HalvaneStatus setFile(const std::string& parameters) {
        return control(category, "output=file;" + parameters);
    }

    static void log(const std::string& text) {
        LogPrintF(&category, "", kLogLevelInfo, "%s", text.c_str());
    }

    std::string contents(const std::string& name = "log") const {
        std::ifstream file(path(name), std::ios::binary);
        return {std::istreambuf_iterator<char>(file), {}};
    }

    Files files() const {
        Files found;
        for (const auto& entry : std::filesystem::directory_iterator(folder_.path())) {
            const std::string name = entry.path().filename();
            found[name] = entry.is_regular_file() ? contents(name) : "";
        }
        return found;
    }

    void write(const std::string& name, const std::string& text) const {
        std::ofstream(path(name), std::ios::binary) << text;
    }

    TemporaryFolder folder_;
};

}  // namespace halvane::testing

#endif
