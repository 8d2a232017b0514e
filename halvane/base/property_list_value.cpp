#include "halvane/base/property_list_value.h"

#include <algorithm>
#include <functional>
#include <new>

namespace halvane {

namespace {

// What one allocation should do for: a skeleton has about this many keys.
constexpr std::size_t kUsualEntries = 8;

}  // namespace

PropertyListDictionary::PropertyListDictionary() = default;
PropertyListDictionary::PropertyListDictionary(const PropertyListDictionary& other)
    : entries_(other.entries_),
      index_(other.index_ ? std::make_unique<Index>(*other.index_) : nullptr) {}
PropertyListDictionary::PropertyListDictionary(PropertyListDictionary&&) noexcept = default;
PropertyListDictionary& PropertyListDictionary::operator=(const PropertyListDictionary& other) {
    return *this = PropertyListDictionary(other);
}
PropertyListDictionary& PropertyListDictionary::operator=(PropertyListDictionary&&) noexcept =
    default;
PropertyListDictionary::~PropertyListDictionary() = default;

std::size_t PropertyListDictionary::size() const {
    return entries_.size();
}
bool PropertyListDictionary::empty() const {
    return entries_.empty();
}

const PropertyListDictionary::Entry* PropertyListDictionary::begin() const {
    return entries_.data();
}
const PropertyListDictionary::Entry* PropertyListDictionary::end() const {
    return entries_.data() + entries_.size();
}

std::size_t PropertyListDictionary::indexOf(std::string_view key) const {
    if (index_) {
        const auto found = index_->find(key);
        return found == index_->end() ? entries_.size() : found->second;
    }
    const auto found = std::ranges::find(entries_, key, &Entry::first);
    return static_cast<std::size_t>(found - entries_.begin());
}

const PropertyListValue* PropertyListDictionary::find(std::string_view key) const {
    const auto index = indexOf(key);
    return index < entries_.size() ? &entries_[index].second : nullptr;
}

void PropertyListDictionary::set(std::string key, PropertyListValue value) {
    *enter(std::move(key)).first = std::move(value);
}

std::pair<PropertyListValue*, bool> PropertyListDictionary::enter(std::string key) {
    if (const auto index = indexOf(key); index < entries_.size()) {
        return {&entries_[index].second, false};
    }
    // A dictionary of one entry stays that small.
    if (entries_.size() == 1) entries_.reserve(kUsualEntries);
    entries_.emplace_back().first = std::move(key);
    try {
        indexLastEntry();
    } catch (const std::bad_alloc&) {
        // An entry that look-ups miss would be entered twice.
        entries_.pop_back();
        throw;
    }
    return {&entries_.back().second, true};
}

void PropertyListDictionary::indexLastEntry() {
    if (index_) {
        index_->emplace(entries_.back().first, entries_.size() - 1);
    } else if (entries_.size() > kScanLimit) {
        auto index = std::make_unique<Index>();
        for (std::size_t i = 0; i < entries_.size(); ++i) index->emplace(entries_[i].first, i);
        index_ = std::move(index);
    }
}

bool PropertyListDictionary::erase(std::string_view key) {
    const auto index = indexOf(key);
    if (index == entries_.size()) return false;
    if (index_) index_->erase(index_->find(key));
    entries_.erase(entries_.begin() + static_cast<std::ptrdiff_t>(index));
    if (entries_.size() <= kScanLimit) index_.reset();
    if (!index_) return true;
    for (auto& [indexedKey, position] : *index_) position -= position > index ? 1 : 0;
    return true;
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

// Takes containers within containers apart one at a time, where destructors would recurse a call a
// level. It allocates nothing: containers that wait form a chain, each holding the next as its
// first child, in the room that the child taken last has left. Such a first child comes up when the
// chain behind its holder is empty, so that every container is put into the chain once a child.
class PropertyListDismantler {
  public:
    // A container without containers in it needs no help.
    static bool isNeededFor(const PropertyListValue& value) {
        if (const auto* array = value.as<PropertyListArray>()) {
            return std::ranges::any_of(*array, hasChildren);
        }
        const auto* dictionary = value.as<PropertyListDictionary>();
        return dictionary != nullptr &&
               std::ranges::any_of(dictionary->entries_, hasChildren, &Entry::second);
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
    using Entry = PropertyListDictionary::Entry;

    static bool hasChildren(const PropertyListValue& value) {
        if (const auto* array = value.as<PropertyListArray>()) return !array->empty();
        const auto* dictionary = value.as<PropertyListDictionary>();
        return dictionary != nullptr && !dictionary->empty();
    }

    // REQUIRES: hasChildren(container)
    static PropertyListValue takeLast(PropertyListValue& container) {
        const auto takeFrom = [](auto& children, auto valueOf) {
            PropertyListValue last = std::move(valueOf(children.back()));
            children.pop_back();
            return last;
        };
        if (auto* array = container.as<PropertyListArray>())
            return takeFrom(*array, std::identity());
        return takeFrom(container.as<PropertyListDictionary>()->entries_,
                        [](Entry& entry) -> PropertyListValue& { return entry.second; });
    }

    // Puts `value` in the place of the first child, which becomes the last one.
    // REQUIRES: hasChildren(container), and a child was taken from it before
    static void putFirst(PropertyListValue& container, PropertyListValue value) {
        if (auto* array = container.as<PropertyListArray>()) {
            array->push_back(std::exchange(array->front(), std::move(value)));
            return;
        }
        auto& entries = container.as<PropertyListDictionary>()->entries_;
        PropertyListValue first = std::exchange(entries.front().second, std::move(value));
        entries.emplace_back(std::string(), std::move(first));
    }
};

// Destructors are quicker where the levels are few, as they are in most values.
void PropertyListValue::dismantle() noexcept {
    constexpr int kFewLevels = 16;
    thread_local int level = 0;
    if (level < kFewLevels) {
        ++level;
        { const Variant content = std::move(value_); }
        --level;
    } else if (PropertyListDismantler::isNeededFor(*this)) {
        PropertyListDismantler::dismantle(std::move(*this));
    }
}

}  // namespace halvane
