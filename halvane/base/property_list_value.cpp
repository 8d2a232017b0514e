#include "halvane/base/property_list_value.h"

#include <algorithm>

namespace halvane {

PropertyListDictionary::PropertyListDictionary() = default;
PropertyListDictionary::PropertyListDictionary(const PropertyListDictionary&) = default;
PropertyListDictionary::PropertyListDictionary(PropertyListDictionary&&) noexcept = default;
PropertyListDictionary& PropertyListDictionary::operator=(const PropertyListDictionary&) = default;
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
    if (entries_.size() > kScanLimit) {
        const auto found = index_.find(key);
        return found == index_.end() ? entries_.size() : found->second;
    }
    const auto found = std::ranges::find(entries_, key, &Entry::first);
    return static_cast<std::size_t>(found - entries_.begin());
}

const PropertyListValue* PropertyListDictionary::find(std::string_view key) const {
    const auto index = indexOf(key);
    return index < entries_.size() ? &entries_[index].second : nullptr;
}

void PropertyListDictionary::set(std::string key, PropertyListValue value) {
    if (const auto index = indexOf(key); index < entries_.size()) {
        entries_[index].second = std::move(value);
        return;
    }
    entries_.emplace_back(std::move(key), std::move(value));
    if (entries_.size() == kScanLimit + 1) {
        rebuildIndex();
    } else if (entries_.size() > kScanLimit) {
        index_.emplace(entries_.back().first, entries_.size() - 1);
    }
}

bool PropertyListDictionary::erase(std::string_view key) {
    const auto index = indexOf(key);
    if (index == entries_.size()) return false;
    if (const auto found = index_.find(key); found != index_.end()) index_.erase(found);
    entries_.erase(entries_.begin() + static_cast<std::ptrdiff_t>(index));
    if (entries_.size() <= kScanLimit) index_.clear();
    for (auto& [indexedKey, position] : index_) position -= position > index ? 1 : 0;
    return true;
}

void PropertyListDictionary::rebuildIndex() {
    index_.clear();
    if (entries_.size() <= kScanLimit) return;
    for (std::size_t i = 0; i < entries_.size(); ++i) index_.emplace(entries_[i].first, i);
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

}  // namespace halvane
