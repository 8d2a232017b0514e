#include <cstring>
#include <dlfcn.h>

#include "halvane/platform/os/late_library_internal.h"

namespace halvane {

// Its names are found through the handle alone, and nobody else's change.
LateLibrary::LateLibrary(const char* name) : handle_(::dlopen(name, RTLD_LAZY | RTLD_LOCAL)) {
    if (!handle_) keepProblem();
}

void* LateLibrary::find(const char* function) {
    if (!handle_) return nullptr;
    void* const found = ::dlsym(handle_, function);
    if (!found) keepProblem();
    return found;
}

// The loader's own text lasts until its next call. The copy is kept as long as the table that tells
// it, which is never destroyed.
void LateLibrary::keepProblem() {
    const char* const text = ::dlerror();
    if (problem_) return;
    const char* const copy = ::strdup(text ? text : "not found");
    problem_ = copy ? copy : "not enough memory";
}

}  // namespace halvane
