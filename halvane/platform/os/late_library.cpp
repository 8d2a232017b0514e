#include <cstdlib>
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

LateLibrary::~LateLibrary() {
    std::free(problem_);
}

const char* LateLibrary::problem() const {
    if (!isMissing_) return nullptr;
    return problem_ ? problem_ : "not enough memory";
}

const char* LateLibrary::takeProblem() {
    const char* const taken = problem();
    problem_ = nullptr;
    return taken;
}

// The loader's own text lasts until its next call.
void LateLibrary::keepProblem() {
    const char* const text = ::dlerror();
    if (isMissing_) return;
    isMissing_ = true;
    problem_ = ::strdup(text ? text : "not found");
}

}  // namespace halvane
