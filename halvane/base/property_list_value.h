// A property-list value: dictionary, array, string, number, data, boolean or date.
//
// Skeleton representations and messages on a bus are built from these. A value may also be null, or
// hold a foreign object that can only be printed; a property list carries neither.
//
// A value of any depth can be built, moved and destroyed. Copying and comparing recurse, one call
// per level.
// REQUIRES of both: the stack has room for the depth, as any has for kPropertyListMaxDepth.
//
// Threads: distinct values may be used from distinct threads; one value follows the rules of a
// standard container.
#ifndef HALVANE_BASE_PROPERTY_LIST_VALUE_H
#define HALVANE_BASE_PROPERTY_LIST_VALUE_H

#include <concepts>
#include <cstddef>
#include <cstdint>
#include <iterator>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <type_traits>
#include <utility>
#include <variant>
#include <vector>

#include "halvane/base/byte_buffer.h"
#include "halvane/base/date.h"
#include "halvane/base/export.h"
#include "halvane/base/number.h"
#include "halvane/base/property_list_depth.h"   // IWYU pragma: export
#include "halvane/base/property_list_object.h"  // IWYU pragma: export

namespace halvane {

class PropertyListValue;

// Entries in order of insertion, with unique keys. Finding a key takes logarithmic time whatever
// the keys are. If memory runs out, the dictionary stays as it was.
class HALVANE_EXPORT PropertyListDictionary {
  public:
    // A key and its value.
    using Entry = std::pair<std::string, PropertyListValue>;
    class Iterator;  // forward, of constant entries

    // Without entries.
    PropertyListDictionary();
    // Copies and moves as a standard container does:
    PropertyListDictionary(const PropertyListDictionary&);
    PropertyListDictionary(PropertyListDictionary&&) noexcept;
    PropertyListDictionary& operator=(const PropertyListDictionary&);
    PropertyListDictionary& operator=(PropertyListDictionary&&) noexcept;
    ~PropertyListDictionary();

    std::size_t size() const;
    bool empty() const;

    // Returns the value of `key`, or null. Valid until the dictionary is next changed.
    const PropertyListValue* find(std::string_view key) const;

    // Makes room for `size` entries in all. Unless it is called, the room grows with the entries.
    void reserve(std::size_t size);

    // Sets the value of `key` in place, or appends a new entry.
    void set(std::string_view key, PropertyListValue value);

    // Finds the entry of `key`, or appends one with the null value. Returns the place of its value,
    // and whether it was appended. Valid until the dictionary is next changed.
    std::pair<PropertyListValue*, bool> enter(std::string_view key);

    // Removes the entry of `key`; returns false if there is none. `key` may refer to the entry's
    // own key. The time is logarithmic, amortised over many calls.
    bool erase(std::string_view key);

    // Iterates in order of insertion. Valid until the dictionary is next changed.
    Iterator begin() const;
    Iterator end() const;

    // Equal dictionaries have the same keys with equal values, in any order.
    friend HALVANE_EXPORT bool operator==(const PropertyListDictionary& a,
                                          const PropertyListDictionary& b);

  private:
    friend class PropertyListDismantler;

    // Scanning a few entries is faster than searching a tree. A larger dictionary has an index.
    static constexpr std::size_t kScanLimit = 16;
    static constexpr std::size_t kNowhere = SIZE_MAX;
    struct Slot;
    struct Index;
    std::size_t indexOf(std::string_view key) const;
    void makeRoom();
    PropertyListValue* append(std::string_view key);
    void indexLastEntry();
    void removeErased();

    // If there is an index, erased entries stay until there are many. Closing the gap after each
    // erasure would take linear time.
    std::vector<Slot> slots_;
    std::unique_ptr<Index> index_;  // null up to kScanLimit entries, as in most dictionaries
};

// Values in order.
using PropertyListArray = std::vector<PropertyListValue>;

class HALVANE_EXPORT PropertyListValue {
  public:
    // A value of a kind that other code defines. Null is the null value.
    using Object = std::shared_ptr<const PropertyListObject>;
    // What a value holds; nothing for null.
    using Variant = std::variant<std::monostate, bool, Number, std::string, ByteBuffer, Date,
                                 PropertyListArray, PropertyListDictionary, Object>;

    // The null value.
    PropertyListValue() = default;

    // Makes a value of the kind that the type of the argument tells:
    template <std::same_as<bool> Boolean>
    PropertyListValue(Boolean value) : value_(value) {}
    template <typename Arithmetic>
    requires(std::is_arithmetic_v<Arithmetic> && !std::same_as<Arithmetic, bool>)
        PropertyListValue(Arithmetic value)
        : value_(Number(value)) {}
    // Makes a value of the kind that the type of the argument tells:
    PropertyListValue(Number value) : value_(value) {}
    PropertyListValue(std::string value) : value_(std::move(value)) {}
    PropertyListValue(std::string_view value) : value_(std::string(value)) {}
    // A null pointer makes the null value.
    PropertyListValue(const char* value) {
        if (value != nullptr) value_ = std::string(value);
    }
    PropertyListValue(ByteBuffer value) : value_(std::move(value)) {}
    PropertyListValue(Date value) : value_(value) {}
    PropertyListValue(PropertyListArray value) : value_(std::move(value)) {}
    PropertyListValue(PropertyListDictionary value) : value_(std::move(value)) {}
    PropertyListValue(Object value) : value_(std::move(value)) {}

    PropertyListValue(const PropertyListValue&) = default;
    PropertyListValue(PropertyListValue&&) noexcept = default;
    PropertyListValue& operator=(const PropertyListValue&) = default;
    PropertyListValue& operator=(PropertyListValue&&) noexcept = default;
    ~PropertyListValue() {
        if (as<PropertyListArray>() != nullptr || as<PropertyListDictionary>() != nullptr) {
            dismantle();
        }
    }

    // Whether there is no value.
    bool isNull() const { return std::holds_alternative<std::monostate>(value_); }

    // Returns the value as one of the alternatives of Variant, or null if it is of another kind.
    template <typename Kind>
    const Kind* as() const {
        return std::get_if<Kind>(&value_);
    }
    template <typename Kind>
    Kind* as() {
        return std::get_if<Kind>(&value_);
    }

    // Makes the value one of `Kind`, an alternative of Variant, and returns what it then holds. An
    // assignment does the same by way of another value.
    template <typename Kind>
    Kind& emplace(Kind held) {
        return value_.template emplace<Kind>(std::move(held));
    }

    // What the value holds, for std::visit.
    const Variant& variant() const { return value_; }

    // Equal values have the same kind and content. Numbers compare by value, objects by identity.
    friend HALVANE_EXPORT bool operator==(const PropertyListValue& a, const PropertyListValue& b);

  private:
    // Destroys nested containers of any depth.
    void dismantle() noexcept;

    Variant value_;
};

// An entry, or the place of an erased one.
struct PropertyListDictionary::Slot {
    Entry entry;            // its key is empty once it is erased
    bool isErased = false;  // whether iterators skip it
};

// A forward iterator over the entries that are not erased, in order of insertion.
class PropertyListDictionary::Iterator {
  public:
    using iterator_category = std::forward_iterator_tag;
    using value_type = Entry;
    using difference_type = std::ptrdiff_t;
    using pointer = const Entry*;
    using reference = const Entry&;

    Iterator() = default;

    reference operator*() const { return slot_->entry; }
    pointer operator->() const { return &slot_->entry; }
    Iterator& operator++() {
        do ++slot_;
        while (slot_ != end_ && slot_->isErased);
        return *this;
    }
    Iterator operator++(int) {
        const Iterator before = *this;
        ++*this;
        return before;
    }
    // Iterators of one dictionary are equal if they are at the same entry.
    friend bool operator==(const Iterator& a, const Iterator& b) { return a.slot_ == b.slot_; }

  private:
    friend class PropertyListDictionary;
    Iterator(const Slot* slot, const Slot* end) : slot_(slot), end_(end) {}

    const Slot* slot_ = nullptr;
    const Slot* end_ = nullptr;
};

}  // namespace halvane

#endif
