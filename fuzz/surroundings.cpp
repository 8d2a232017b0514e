// Linked into every target: preferences are in a private folder, there is no bus, and the Wi-Fi
// categories log everything, but to nobody.
#include "fuzz/surroundings.h"

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <fcntl.h>
#include <filesystem>
#include <string_view>
#include <system_error>
#include <unistd.h>

#include "halvane/utils/log.h"
#include "halvane/utils/printf.h"

#include "tests/support/replaced_system.h"

// Defined only if a sanitizer is linked.
extern "C" __attribute__((weak)) void __sanitizer_set_report_fd(void* descriptor);

namespace halvane::fuzzing {

namespace {

class TemporaryFolder {
  public:
    TemporaryFolder() {
        path_ = (std::filesystem::temp_directory_path() / "halvane-fuzz-XXXXXX").string();
        if (::mkdtemp(path_.data()) == nullptr) std::abort();
    }
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;
    ~TemporaryFolder() {
        std::error_code ignored;
        std::filesystem::remove_all(path_, ignored);
    }

    const std::string& path() const { return path_; }

  private:
    std::string path_;
};

int redirect(std::FILE* stream, int descriptor, int target) {
    std::fflush(stream);
    const int saved = ::dup(descriptor);
    ::dup2(target, descriptor);
    return saved;
}

void restore(std::FILE* stream, int descriptor, int saved) {
    std::fflush(stream);
    ::dup2(saved, descriptor);
    ::close(saved);
}

// Not /dev/null itself, because the console would then be the system log.
int discard() {
    static const int descriptor = ::open("/dev/zero", O_WRONLY | O_CLOEXEC);
    return descriptor;
}

void dropLine(const LogMessage*, const char*, std::size_t, void*) {}

void logToNobody() {
#define HALVANE_FUZZ_CATEGORY(name) gLogCategory_##name.initConfig = nullptr;
    HALVANE_WIFI_LOG_CATEGORIES(HALVANE_FUZZ_CATEGORY)
#undef HALVANE_FUZZ_CATEGORY
    char control[100];
    SNPrintF(control, sizeof(control), "^WiFi:level=all,^WiFi:output=callback;func=%p",
             reinterpret_cast<const void*>(&dropLine));
    LogControl(control);
}

}  // namespace

const std::string& privateFolder() {
    static const TemporaryFolder folder;
    return folder.path();
}

QuietStreams::QuietStreams()
    : output_(redirect(stdout, STDOUT_FILENO, discard())),
      errors_(redirect(stderr, STDERR_FILENO, discard())) {
    // The first one is that of the process.
    static const int reports = ::dup(errors_);
    if (__sanitizer_set_report_fd != nullptr) {
        __sanitizer_set_report_fd(reinterpret_cast<void*>(static_cast<std::intptr_t>(reports)));
    }
}

QuietStreams::~QuietStreams() {
    restore(stdout, STDOUT_FILENO, output_);
    restore(stderr, STDERR_FILENO, errors_);
}

}  // namespace halvane::fuzzing

extern "C" int LLVMFuzzerInitialize(int*, char***) {
    using namespace halvane;
    ::setenv("XDG_CONFIG_HOME", fuzzing::privateFolder().c_str(), 1);
    ::setenv("DBUS_SYSTEM_BUS_ADDRESS", "unix:path=/nonexistent", 1);
    replaceSystemLog([](int, std::string_view) {});
    replaceConsoleDevice("/dev/null");
    fuzzing::logToNobody();
    return 0;
}
