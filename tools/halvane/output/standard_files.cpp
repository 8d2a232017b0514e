#include "tools/halvane/output/standard_files.h"

#include <fcntl.h>
#include <initializer_list>
#include <unistd.h>

namespace halvane::tool {

// In this order, because open() returns the lowest free number.
void openStandardFiles() noexcept {
    for (const int file : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO}) {
        if (::fcntl(file, F_GETFD) >= 0) continue;
        ::open("/dev/null", file == STDIN_FILENO ? O_WRONLY : O_RDONLY);
    }
}

}  // namespace halvane::tool
