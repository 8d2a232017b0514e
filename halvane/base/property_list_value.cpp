#include "halvane/base/property_list_value.h"

#include <algorithm>
#include <cstddef>
#include <functional>
#include <map>
#include <new>
#include <string>
#include <utility>
#include <vector>

namespace halvane {

struct PropertyListDictionary::Index {
    std::map<std::string, std::size_t, std::less<>> positions;  // of the entries that are not
                                                                // erased
    std::size_t first = 0;                                      // the first such entry
};

PropertyListDictionary::PropertyListDictionary() = default;
PropertyListDictionary::PropertyListDictionary(const PropertyListDictionary& other)
    : slots_(other.slots_),
      index_(other.index_ ? std::make_unique<Index>(*other.index_) : nullptr) {}
PropertyListDictionary::PropertyListDictionary(PropertyListDictionary&&) noexcept = default;
PropertyListDictionary& PropertyListDictionary::operator=(const PropertyListDictionary& other) {
    return *this = PropertyListDictionary(other);
}
PropertyListDictionary& PropertyListDictionary::operator=(PropertyListDictionary&&) noexcept =
    default;
PropertyListDictionary::~PropertyListDictionary() = default;

std::size_t PropertyListDictionary::size() const {
    return index_ ? index_->positions.size() : slots_.size();
}
bool PropertyListDictionary::empty() const {
    return size() == 0;
}

PropertyListDictionary::Iterator PropertyListDictionary::begin() const {
    const Slot* const slots = slots_.data();
    return {slots + (index_ ? index_->first : 0), slots + slots_.size()};
}
PropertyListDictionary::Iterator PropertyListDictionary::end() const {
    const Slot* const end = slots_.data() + slots_.size();
    return {end, end};
}

std::size_t PropertyListDictionary::indexOf(std::string_view key) const {
    if (index_) {
        const auto found = index_->positions.find(key);
        return found == index_->positions.end() ? kNowhere : found->second;
    }
    const auto keyOf = [](const Slot& slot) -> std::string_view { return slot.entry.first; };
    const auto found = std::ranges::find(slots_, key, keyOf);
    return found == slots_.end() ? kNowhere : static_cast<std::size_t>(found - slots_.begin());
}

const PropertyListValue* PropertyListDictionary::find(std::string_view key) const {
    const auto index = indexOf(key);
    return index != kNowhere ? &slots_[index].entry.second : nullptr;
}

void PropertyListDictionary::reserve(std::size_t size) {
    slots_.reserve(size);
}

void PropertyListDictionary::set(std::string_view key, PropertyListValue value) {
    *enter(key).first = std::move(value);
}

std::pair<PropertyListValue*, bool> PropertyListDictionary::enter(std::string_view key) {
    if (const auto index = indexOf(key); index != kNowhere) {
        return {&slots_[index].entry.second, false};
    }
    if (slots_.size() < slots_.capacity()) return {append(key), true};
    const std::string ownKey(key);  // `key` may refer to an entry, which now moves
    makeRoom();
    return {append(ownKey), true};
}

// A dictionary of one entry stays that small, and a skeleton of about eight entries allocates only
// a few times. A large dictionary grows by half, since received texts contain many of them.
void PropertyListDictionary::makeRoom() {
    constexpr std::size_t kFew = 4;
    constexpr std::size_t kUsual = 8;
    const std::size_t size = slots_.size();
    const std::size_t few = size == 0 ? 1 : size < kFew ? kFew : kUsual;
    slots_.reserve(size < kUsual ? few : size + size / 2);
}

// REQUIRES: there is room, and no entry of the key
PropertyListValue* PropertyListDictionary::append(std::string_view key) {
    Entry& entry = slots_.emplace_back().entry;
    try {
        entry.first = key;
        if (index_ || slots_.size() > kScanLimit) indexLastEntry();
    } catch (const std::bad_alloc&) {
        // Look-ups would miss the entry, and its key could be entered twice.
        slots_.pop_back();
        throw;
    }
    return &entry.second;
}

void PropertyListDictionary::indexLastEntry() {
    if (index_) {
        index_->positions.emplace(slots_.back().entry.first, slots_.size() - 1);
        return;
    }
    auto index = std::make_unique<Index>();
    for (std::size_t i = 0; i < slots_.size(); ++i) {
        index->positions.emplace(slots_[i].entry.first, i);
    }
    index_ = std::move(index);
}

bool PropertyListDictionary::erase(std::string_view key) {
    const auto index = indexOf(key);
    if (index == kNowhere) return false;
    if (!index_) {
        slots_.erase(slots_.begin() + static_cast<std::ptrdiff_t>(index));
        return true;
    }
    auto& [positions, first] = *index_;
    positions.erase(positions.find(key));
    slots_[index] = {{}, true};
    while (first < slots_.size() && slots_[first].isErased) ++first;
    const std::size_t erased = slots_.size() - positions.size();
    if (positions.size() <= kScanLimit || erased > positions.size()) removeErased();
    return true;
}

// Its time is about proportional to the number of erasures since the last call. It allocates
// nothing.
void PropertyListDictionary::removeErased() {
    std::erase_if(slots_, [](const Slot& slot) { return slot.isErased; });
    if (slots_.size() <= kScanLimit) return index_.reset();
    for (std::size_t i = 0; i < slots_.size(); ++i) {
        index_->positions.find(slots_[i].entry.first)->second = i;
    }
    index_->first = 0;
}

bool operator==(const PropertyListDictionary& a, const PropertyListDictionary& b) {
    return a.size() == b.size() && std::ranges::all_of(a, [&b](const auto& entry) {
               const auto* other = b.find(entry.first);
               return other != nullptr && *other == entry.second;
           });
}

bool operator==(const PropertyListValue& a, const PropertyListValue& b) {
    return a.value_ == b.value_;
}

// Takes nested containers apart one at a time, where destructors would recurse one call per level.
// It allocates nothing. Containers that wait form a chain: each holds the next one as its first
// child, in the room that the child taken last has left. That displaced first child is taken when
// the chain behind its holder is empty. Every container therefore enters the chain once per child.
class PropertyListDismantler {
  public:
    // A container without nested containers needs no help.
    static bool isNeededFor(const PropertyListValue& value) {
        if (const auto* array = value.as<PropertyListArray>()) {
            return std::ranges::any_of(*array, hasChildren);
        }
        const auto* dictionary = value.as<PropertyListDictionary>();
        return dictionary != nullptr &&
               std::ranges::any_of(dictionary->slots_, hasChildren, valueOf);
    }

    static void dismantle(PropertyListValue current) {
        PropertyListValue waiting;
        for (;;) {
            if (!hasChildren(current)) {
                if (waiting.isNull()) return;
                current = std::exchange(waiting, PropertyListValue());
                continue;
            }
            PropertyListValue child = takeLast(current);
            if (!hasChildren(child)) continue;
            if (hasChildren(current)) {
                if (!waiting.isNull()) putFirst(current, std::move(waiting));
                waiting = std::move(current);
            }
            current = std::move(child);
        }
    }

  private:
    using Slot = PropertyListDictionary::Slot;

    static const PropertyListValue& valueOf(const Slot& slot) { return slot.entry.second; }

    // Counts the values of erased entries too, which are null.
    static bool hasChildren(const PropertyListValue& value) {
        if (const auto* array = value.as<PropertyListArray>()) return !array->empty();
        const auto* dictionary = value.as<PropertyListDictionary>();
        return dictionary != nullptr && !dictionary->slots_.empty();
    }

    // REQUIRES: hasChildren(container)
    static PropertyListValue takeLast(PropertyListValue& container) {
        const auto takeFrom = [](auto& children, auto childOf) {
            PropertyListValue last = std::move(childOf(children.back()));
            children.pop_back();
            return last;
        };
        if (auto* array = container.as<PropertyListArray>())
            return takeFrom(*array, std::identity());
        return takeFrom(container.as<PropertyListDictionary>()->slots_,
                        [](Slot& slot) -> PropertyListValue& { return slot.entry.second; });
    }

    // Moves the first child to the end and puts `value` in its place.
    // REQUIRES: hasChildren(container), and a child was taken from it before
    static void putFirst(PropertyListValue& container, PropertyListValue value) {
        if (auto* array = container.as<PropertyListArray>()) {
            array->push_back(std::exchange(array->front(), std::move(value)));
            return;
        }
        auto& slots = container.as<PropertyListDictionary>()->slots_;
        PropertyListValue first = std::exchange(slots.front().entry.second, std::move(value));
        slots.push_back({{std::string(), std::move(first)}, false});
    }
};

// Destructors are faster if the levels are few, as in most values.
void PropertyListValue::dismantle() noexcept {
    constexpr int kFewLevels = 16;
    thread_local int level = 0;
    if (level < kFewLevels) {
        ++level;
        std::destroy_at(&value_);
        std::construct_at(&value_);  // for the destructor, which ends it again
        --level;
    } else if (PropertyListDismantler::isNeededFor(*this)) {
        PropertyListDismantler::dismantle(std::move(*this));
    }
}

}  // namespace halvane
