#include "halvane/utils/text/dns_name.h"

#include <cstddef>
#include <cstdint>
#include <string_view>

#include "halvane/base/ascii_internal.h"

namespace {

using std::string_view;

constexpr std::size_t kLongestLabel = 63;
constexpr std::size_t kNameLimit = 255;

constexpr bool isLetterOrDigit(char character) {
    return halvane::digitValue(character) != halvane::kNoDigit;
}

// Returns the length of the apostrophe at the start of `text`; 0 if there is none.
std::size_t apostropheSize(string_view text) {
    for (const string_view apostrophe : {"'", "\xE2\x80\x99"}) {
        if (text.starts_with(apostrophe)) return apostrophe.size();
    }
    return 0;
}

class LabelWriter {
  public:
    explicit LabelWriter(char* buffer) : buffer_(buffer) {}

    bool isFull() const { return size_ == kLongestLabel; }
    void put(char character) { buffer_[size_++] = character; }
    void separate() {
        if (size_ > 0 && buffer_[size_ - 1] != '-') put('-');
    }
    void terminate() { buffer_[size_] = '\0'; }

  private:
    char* buffer_;
    std::size_t size_ = 0;
};

// Returns the length of the character, possibly escaped, at the start of `name`; 0 for a backslash
// at the end or before a number that does not fit into a byte.
std::size_t characterSize(string_view name) {
    if (name.front() != '\\') return 1;
    if (name.size() == 1) return 0;
    constexpr std::size_t kDigits = 3;
    unsigned value = 0;
    for (std::size_t i = 1; i <= kDigits; ++i) {
        if (i == name.size() || !halvane::isDigit(name[i])) return 2;
        value = value * 10 + halvane::digitValue(name[i]);
    }
    return value <= UINT8_MAX ? 1 + kDigits : 0;
}

}  // namespace

void ConvertUTF8StringToRFC1034LabelString(const char* text, char* buffer) {
    LabelWriter label(buffer);
    for (string_view rest = text; !rest.empty() && !label.isFull();) {
        if (const std::size_t size = apostropheSize(rest); size > 0) {
            rest.remove_prefix(size);
            continue;
        }
        const char character = rest.front();
        rest.remove_prefix(1);
        if (isLetterOrDigit(character) || (character == '-' && !rest.empty())) {
            label.put(character);
        } else {
            label.separate();  // has no effect for the further bytes of the character
        }
    }
    label.terminate();
}

HalvaneStatus ValidDNSName(const char* name) {
    if (name == nullptr) return kStatusTooFew;
    string_view rest = name;
    if (rest.empty()) return kStatusTooFew;
    std::size_t nameLength = 0;
    std::size_t labelLength = 0;
    while (!rest.empty()) {
        const std::size_t size = characterSize(rest);
        if (size == 0) return kStatusMalformed;
        if (rest.front() == '.') {
            if (labelLength == 0) return kStatusMalformed;
            labelLength = 0;
        } else if (++labelLength > kLongestLabel) {
            return kStatusWrongLength;
        }
        if (++nameLength == kNameLimit) return kStatusTruncated;
        rest.remove_prefix(size);
    }
    return kStatusOK;
}
