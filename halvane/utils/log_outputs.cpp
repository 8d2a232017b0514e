// The list of outputs, shared by the categories.
#include <algorithm>
#include <utility>

#include "halvane/utils/log_state_internal.h"

namespace halvane::logging {

LogOutput* findOrCreateOutput(const std::string& spec, HalvaneStatus& status) {
    auto& outputs = logState().outputs;
    const auto found = std::ranges::find(outputs, spec, &LogOutput::spec);
    status = kStatusOK;
    if (found != outputs.end()) return found->get();
    auto output = __LogOutputCreate(spec, status);
    if (output == nullptr) return nullptr;
    return outputs.emplace_back(std::move(output)).get();
}

void setCategoryOutput(LogCategory& category, LogOutput* output) {
    ++output->refCount;
    if (category.output != nullptr) --category.output->refCount;
    category.output = output;
}

void deleteUnusedOutputs() {
    std::erase_if(logState().outputs, [](const auto& output) { return output->refCount == 0; });
}

}  // namespace halvane::logging
