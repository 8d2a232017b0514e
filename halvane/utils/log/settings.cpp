#include <algorithm>
#include <new>
#include <utility>

#include "halvane/utils/log/pattern_internal.h"
#include "halvane/utils/log/settings_internal.h"

namespace halvane::logging {

namespace {

// A pattern holds no colon, so keys are unique.
std::string keyOf(std::string_view pattern, std::string_view name) {
    std::string key(pattern);
    key.append(":").append(name);
    std::ranges::transform(key, key.begin(), [](char character) {
        const bool isUpper = character >= 'A' && character <= 'Z';
        return static_cast<char>(isUpper ? character - 'A' + 'a' : character);
    });
    return key;
}

// Reserves room, so that the next append cannot fail.
template <typename Element>
void makeRoomForOne(std::vector<Element>& elements) {
    if (elements.size() < elements.capacity()) return;
    elements.reserve(std::max<std::size_t>(2 * elements.size(), 8));
}

// Returns whether the action's value is valid for its pass.
bool isValid(const LogAction& action, LogPass pass) {
    return pass != LogPass::Level || __LogCategory_StringToLevel(action.value.c_str()) >= 0;
}

}  // namespace

void LogActionList::set(std::string_view pattern, std::string_view name, std::string_view value) {
    std::string key = keyOf(pattern, name);
    const auto found = places_.find(key);
    if (found == places_.end()) {
        append(std::move(key), {std::string(pattern), std::string(name), std::string(value)});
        return noteMatches(actions_.size() - 1);
    }
    const std::size_t place = found->second;
    LogAction& action = actions_[place];
    std::string copy(value);
    if (!action.isNew) newPlaces_.push_back(place);
    action.value = std::move(copy);
    action.isNew = true;
    noteMatches(place);
}

void LogActionList::append(std::string key, LogAction action) {
    makeRoomForOne(actions_);
    makeRoomForOne(newPlaces_);
    const std::size_t place = actions_.size();
    places_.emplace(std::move(key), place);
    // Nothing fails after this point.
    newPlaces_.push_back(place);
    actions_.push_back(std::move(action));
}

void LogActionList::age() {
    for (const std::size_t place : newPlaces_) actions_[place].isNew = false;
    newPlaces_.clear();
}

void LogActionList::clear() {
    actions_.clear();
    places_.clear();
    newPlaces_.clear();
    matches_.clear();
}

const LogActionList::Places& LogActionList::placesFor(const LogCategory& category, LogPass pass) {
    auto found = matches_.find(&category);
    if (found == matches_.end()) {
        Matches matches;
        for (std::size_t place = 0; place < actions_.size(); ++place) {
            noteMatch(category, matches, place);
        }
        found = matches_.emplace(&category, std::move(matches)).first;
    }
    return found->second[static_cast<std::size_t>(pass)];
}

// If memory runs out for the matches, they are computed again when next requested.
void LogActionList::noteMatches(std::size_t place) try {
    for (auto& [category, matches] : matches_) noteMatch(*category, matches, place);
} catch (const std::bad_alloc&) {
    matches_.clear();
}

void LogActionList::noteMatch(const LogCategory& category, Matches& matches,
                              std::size_t place) const {
    const LogAction& action = actions_[place];
    const auto name = std::ranges::find(kLogPassNames, action.name);
    if (name == kLogPassNames.end()) return;
    const auto pass = static_cast<std::size_t>(name - kLogPassNames.begin());
    if (!__LogCategory_match(action.pattern, category.name)) return;

    Places& places = matches[pass];
    const auto at = std::ranges::lower_bound(places, place);
    const bool isListed = at != places.end() && *at == place;
    const bool isFit = isValid(action, static_cast<LogPass>(pass));
    if (isFit && !isListed) places.insert(at, place);
    if (!isFit && isListed) places.erase(at);
}

}  // namespace halvane::logging
