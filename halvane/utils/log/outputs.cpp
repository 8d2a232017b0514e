// The list of outputs, shared by the categories.
#include <map>
#include <new>
#include <string>
#include <utility>

#include "halvane/base/result.h"
#include "halvane/base/status.h"
#include "halvane/utils/log.h"
#include "halvane/utils/log/lock_internal.h"
#include "halvane/utils/log/output_internal.h"
#include "halvane/utils/log/state_internal.h"

namespace halvane::logging {

Result<LogOutput*, HalvaneStatus> findOrCreateOutput(const std::string& spec) {
    auto& outputs = logState().outputs;
    const auto found = outputs.find(spec);
    if (found != outputs.end()) return found->second.get();
    auto output = __LogOutputCreate(spec);
    if (!output) return Unexpected(output.error());
    return outputs.emplace(spec, *std::move(output)).first->second.get();
}

void setCategoryOutput(LogCategory& category, LogOutput* output) {
    ++output->refCount;
    if (category.output != nullptr) --category.output->refCount;
    category.output = output;
}

void deleteUnusedOutputs() {
    std::erase_if(logState().outputs,
                  [](const auto& entry) { return entry.second->refCount == 0; });
}

namespace {

// Reopens all files. Returns the status of the first failure.
HalvaneStatus reopenFiles() {
    HalvaneStatus first = kStatusOK;
    for (const auto& [spec, output] : logState().outputs) {
        const HalvaneStatus status = output->file.reopen();
        output->file.flush();
        if (first == kStatusOK) first = status;
    }
    return first;
}

}  // namespace

}  // namespace halvane::logging

extern "C" HalvaneStatus LogReopen() try {
    LogUtils_EnsureInitialized();
    const halvane::logging::LogLock lock;
    return lock ? halvane::logging::reopenFiles() : HalvaneStatus(kStatusUnsupported);
} catch (const std::bad_alloc&) {
    return kStatusNoMemory;
}
