// What settings do to categories.
#include <algorithm>
#include <array>
#include <charconv>
#include <limits>

#include "halvane/utils/ignore_case_internal.h"
#include "halvane/utils/log_state_internal.h"
#include "halvane/utils/up_ticks.h"

namespace halvane::logging {

namespace {

// Calls visit(category) for `only`, or for every category, where the pattern matches. A category
// that waits for its first test is left out: it takes all settings then.
template <typename Visit>
void forEachMatch(const LogAction& action, LogCategory* only, Visit visit) {
    LogCategory* category = only != nullptr ? only : logState().categories;
    for (; category != nullptr; category = only != nullptr ? nullptr : category->next) {
        const bool isInitialized = category->level != kLogLevelUninitialized;
        if (isInitialized && __LogCategory_match(action.pattern, category->name)) visit(*category);
    }
}

HalvaneStatus applyLevel(const LogAction& action, LogCategory* only) {
    const std::int32_t level = __LogCategory_StringToLevel(action.value.c_str());
    if (level < 0) return kStatusOK;
    forEachMatch(action, only,
                 [level](LogCategory& category) { setCategoryLevel(category, level); });
    return kStatusOK;
}

struct HeaderFlag {
    std::string_view keyword;
    std::uint32_t flag;  // 0 clears
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

HalvaneStatus applyFlags(const LogAction& action, LogCategory* only) {
    const std::uint32_t flags = headerFlagsOf(action.value);
    forEachMatch(action, only, [flags](LogCategory& category) {
        category.flags = flags;
        if ((flags & kLogHeaderPrefix) != 0) setCategoryPrefix(category);
    });
    return kStatusOK;
}

// Takes the digits that `text` begins with; a number too large is the largest, none is 0.
template <typename Number>
Number takeDigits(std::string_view& text) {
    Number number = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    text.remove_prefix(static_cast<std::size_t>(end - text.data()));
    return error == std::errc::result_out_of_range ? std::numeric_limits<Number>::max() : number;
}

// Exact, unlike MillisecondsToUpTicks; what is too long for 64 bits is the longest.
std::uint64_t rateTicks(std::uint64_t milliseconds) {
    constexpr std::uint64_t kMax = std::numeric_limits<std::uint64_t>::max();
    const std::uint64_t perSecond = UpTicksPerSecond();
    const std::uint64_t seconds = milliseconds / 1000;
    if (seconds >= kMax / perSecond) return kMax;
    return perSecond * seconds + perSecond * (milliseconds % 1000) / 1000;
}

// "<messages>/<milliseconds>", with any character for the '/'.
HalvaneStatus applyRate(const LogAction& action, LogCategory* only) {
    std::string_view text = action.value;
    const auto max = takeDigits<std::uint32_t>(text);
    if (!text.empty()) text.remove_prefix(1);
    const std::uint64_t period = rateTicks(takeDigits<std::uint64_t>(text));
    forEachMatch(action, only, [max, period](LogCategory& category) {
        category.rateMax = max;
        category.ratePeriod = period;
    });
    return kStatusOK;
}

// A new setting is tried even where it is for no category yet, so that who makes it hears what is
// wrong with it.
HalvaneStatus applyOutput(const LogAction& action, LogCategory* only) {
    const bool isTried = action.isNew && only == nullptr;
    HalvaneStatus status = kStatusOK;
    LogOutput* output = isTried ? findOrCreateOutput(action.value, status) : nullptr;
    forEachMatch(action, only, [&](LogCategory& category) {
        if (output == nullptr && status == kStatusOK) {
            output = findOrCreateOutput(action.value, status);
        }
        if (output != nullptr) setCategoryOutput(category, output);
    });
    return isTried ? status : kStatusOK;
}

struct Pass {
    std::string_view name;
    HalvaneStatus (*apply)(const LogAction& action, LogCategory* only);
};
constexpr std::array<Pass, 4> kPasses = {{
    {"level", applyLevel},
    {"flags", applyFlags},
    {"rate", applyRate},
    {"output", applyOutput},
}};

}  // namespace

HalvaneStatus __LogCategory_ApplyActions(LogCategory* only) {
    HalvaneStatus first = kStatusOK;
    for (const Pass& pass : kPasses) {
        for (const LogAction& action : logState().actions) {
            if (action.name != pass.name) continue;
            const HalvaneStatus status = pass.apply(action, only);
            if (first == kStatusOK) first = status;
        }
    }
    deleteUnusedOutputs();
    return first;
}

}  // namespace halvane::logging
