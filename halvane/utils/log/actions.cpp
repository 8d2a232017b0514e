// The effects of settings on categories.
#include <algorithm>
#include <array>
#include <charconv>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <map>
#include <string_view>
#include <system_error>

#include "halvane/base/result.h"
#include "halvane/base/status.h"
#include "halvane/utils/log.h"
#include "halvane/utils/log/settings_internal.h"
#include "halvane/utils/log/state_internal.h"
#include "halvane/utils/scan/up_ticks.h"
#include "halvane/utils/text/ignore_case_internal.h"

namespace halvane::logging {

namespace {

// Calls visit(category) for `only`, or for every category. A category before its first test is
// skipped: that test applies all settings.
template <typename Visit>
void forEachCategory(LogCategory* only, Visit visit) {
    LogCategory* category = only != nullptr ? only : logState().categories;
    for (; category != nullptr; category = only != nullptr ? nullptr : category->next) {
        if (category->level != kLogLevelUninitialized) visit(*category);
    }
}

void applyLevel(const LogAction& action, LogCategory& category) {
    setCategoryLevel(category, __LogCategory_StringToLevel(action.value.c_str()));
}

struct HeaderFlag {
    std::string_view keyword;
    std::uint32_t flag;  // 0 clears the flags
};
constexpr std::array<HeaderFlag, 8> kHeaderFlags = {{
    {"time", kLogHeaderTime},
    {"pid", kLogHeaderPID},
    {"program", kLogHeaderProgram},
    {"category", kLogHeaderCategory},
    {"level", kLogHeaderLevel},
    {"prefix", kLogHeaderPrefix},
    {"function", kLogHeaderFunction},
    {"none", 0},
}};

std::uint32_t headerFlagsOf(std::string_view value) {
    std::uint32_t flags = 0;
    while (!value.empty()) {
        const std::string_view word = value.substr(0, value.find(';'));
        value.remove_prefix(std::min(word.size() + 1, value.size()));
        for (const auto& [keyword, flag] : kHeaderFlags) {
            if (equalsIgnoringCase(keyword, word)) flags = flag != 0 ? flags | flag : 0;
        }
    }
    return flags;
}

void applyFlags(const LogAction& action, LogCategory& category) {
    category.flags = headerFlagsOf(action.value);
    if ((category.flags & kLogHeaderPrefix) != 0) setCategoryPrefix(category);
}

// Removes the digits at the start of `text` and returns their number: the maximum if it is too
// large, 0 if there are no digits.
template <typename Number>
Number takeDigits(std::string_view& text) {
    Number number = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    text.remove_prefix(static_cast<std::size_t>(end - text.data()));
    return error == std::errc::result_out_of_range ? std::numeric_limits<Number>::max() : number;
}

// Exact, unlike MillisecondsToUpTicks. A time beyond 64 bits becomes the maximum.
std::uint64_t rateTicks(std::uint64_t milliseconds) {
    constexpr std::uint64_t kMax = std::numeric_limits<std::uint64_t>::max();
    const std::uint64_t perSecond = UpTicksPerSecond();
    const std::uint64_t seconds = milliseconds / 1000;
    if (seconds >= kMax / perSecond) return kMax;
    return perSecond * seconds + perSecond * (milliseconds % 1000) / 1000;
}

// Applies "<messages>/<milliseconds>"; any character may replace the '/'.
void applyRate(const LogAction& action, LogCategory& category) {
    std::string_view text = action.value;
    category.rateMax = takeDigits<std::uint32_t>(text);
    if (!text.empty()) text.remove_prefix(1);
    category.ratePeriod = rateTicks(takeDigits<std::uint64_t>(text));
}

struct ValuePass {
    LogPass pass;
    void (*apply)(const LogAction& action, LogCategory& category);
};
constexpr std::array<ValuePass, 3> kValuePasses = {{
    {LogPass::Level, applyLevel},
    {LogPass::Flags, applyFlags},
    {LogPass::Rate, applyRate},
}};

// Only the last setting for a category counts, so only that one is applied.
void applyValues(LogCategory& category) {
    LogActionList& actions = logState().actions;
    for (const auto& [pass, apply] : kValuePasses) {
        const auto& places = actions.placesFor(category, pass);
        if (!places.empty()) apply(actions[places.back()], category);
    }
}

// Finds or creates the outputs of settings. A failed one is not tried again.
class OutputsOfSettings {
  public:
    // Returns the status of the failure if the output cannot be created.
    Result<LogOutput*, HalvaneStatus> find(std::size_t place) {
        const auto failure = failures_.find(place);
        if (failure != failures_.end()) return Unexpected(failure->second);
        auto output = findOrCreateOutput(logState().actions[place].value);
        if (!output) failures_.emplace(place, output.error());
        return output;
    }

  private:
    std::map<std::size_t, HalvaneStatus> failures_;
};

// A new setting is tried even if it matches no category yet, so that its maker learns of faults.
// Returns the status of the first failure.
HalvaneStatus tryNewOutputs(OutputsOfSettings& outputs) {
    const LogActionList& actions = logState().actions;
    LogActionList::Places places = actions.newPlaces();
    std::ranges::sort(places);
    HalvaneStatus first = kStatusOK;
    for (const std::size_t place : places) {
        if (actions[place].name != kLogPassNames[std::size_t(LogPass::Output)]) continue;
        const auto output = outputs.find(place);
        if (!output && first == kStatusOK) first = output.error();
    }
    return first;
}

// The last output that can be created counts, so earlier ones are not even tried.
void applyOutput(LogCategory& category, OutputsOfSettings& outputs) {
    const auto& places = logState().actions.placesFor(category, LogPass::Output);
    for (auto place = places.rbegin(); place != places.rend(); ++place) {
        if (const auto output = outputs.find(*place)) return setCategoryOutput(category, *output);
    }
}

}  // namespace

HalvaneStatus __LogCategory_ApplyActions(LogCategory* only) {
    forEachCategory(only, applyValues);
    OutputsOfSettings outputs;
    const HalvaneStatus status = only == nullptr ? tryNewOutputs(outputs) : kStatusOK;
    forEachCategory(only, [&](LogCategory& category) { applyOutput(category, outputs); });
    deleteUnusedOutputs();
    return status;
}

}  // namespace halvane::logging
