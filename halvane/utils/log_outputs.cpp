// The list of outputs, shared by the categories.
#include <utility>

#include "halvane/utils/log_state_internal.h"

namespace halvane::logging {

LogOutput* findOrCreateOutput(const std::string& spec, HalvaneStatus& status) {
    auto& outputs = logState().outputs;
    const auto found = outputs.find(spec);
    status = kStatusOK;
    if (found != outputs.end()) return found->second.get();
    auto output = __LogOutputCreate(spec, status);
    if (output == nullptr) return nullptr;
    return outputs.emplace(spec, std::move(output)).first->second.get();
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

}  // namespace halvane::logging
