#include "tools/halvane/input/key_decoder.h"

#include <cstddef>
#include <optional>
#include <utility>

#include "halvane/base/utf8_internal.h"

#include "tools/halvane/output/unicode.h"

namespace halvane::tool {

namespace {

constexpr unsigned char kEscapeOctet = 0x1B;
constexpr std::size_t kMostParameters = 16;  // octets; longer sequences are of no key

// Single control characters. Line feed is Enter where the terminal turns one into the other.
constexpr std::pair<unsigned char, Key> kControls[] = {
    {'\r', kKeyEnter}, {'\n', kKeyEnter}, {'\b', kKeyBackspace}, {0x7F, kKeyBackspace}};

// Behind CSI (Escape and [), or SS3 (Escape and O) as terminals in application mode send them. With
// a parameter, the key is held with Shift or another one and is none of these.
struct Sequence {
    std::string_view parameters;
    char last;
    Key key;
};
constexpr Sequence kSequences[] = {
    {"", 'A', kKeyUp},   {"", 'B', kKeyDown}, {"", 'C', kKeyRight},   {"", 'D', kKeyLeft},
    {"", 'H', kKeyHome}, {"", 'F', kKeyEnd},  {"1", '~', kKeyHome},   {"7", '~', kKeyHome},
    {"4", '~', kKeyEnd}, {"8", '~', kKeyEnd}, {"5", '~', kKeyPageUp}, {"6", '~', kKeyPageDown},
};

std::optional<Key> keyOf(std::string_view parameters, unsigned char last) {
    for (const Sequence& sequence : kSequences) {
        if (sequence.parameters == parameters && sequence.last == static_cast<char>(last)) {
            return sequence.key;
        }
    }
    return std::nullopt;
}

constexpr bool isFinal(unsigned char octet) {
    return octet >= 0x40 && octet <= 0x7E;
}

constexpr bool beginsString(unsigned char octet) {
    return std::string_view("PX]^_").find(static_cast<char>(octet)) != std::string_view::npos;
}

}  // namespace

std::vector<Key> KeyDecoder::take(std::string_view octets) {
    for (const char octet : octets) takeOctet(static_cast<unsigned char>(octet));
    return std::exchange(keys_, {});
}

std::vector<Key> KeyDecoder::giveUp() {
    if (state_ == State::Escape) found(kKeyEscape);
    state_ = State::Ground;
    return std::exchange(keys_, {});
}

void KeyDecoder::takeOctet(unsigned char octet) {
    switch (state_) {
        case State::Ground:
            return takeGround(octet);
        case State::Escape:
            return takeEscape(octet);
        case State::Sequence:
        case State::SingleShift:
            return takeSequence(octet);
        case State::String:
        case State::StringEscape:
            return takeString(octet);
    }
}

void KeyDecoder::takeGround(unsigned char octet) {
    if (octet == kEscapeOctet) {
        character_.clear();
        state_ = State::Escape;
        return;
    }
    for (const auto& [control, key] : kControls) {
        if (control != octet) continue;
        character_.clear();
        return found(key);
    }
    takeText(octet);
}

void KeyDecoder::takeText(unsigned char octet) {
    const char text = static_cast<char>(octet);
    if (!isContinuation(text)) character_.clear();
    constexpr std::size_t kLongest = 4;
    if (isContinuation(text) && (character_.empty() || character_.size() == kLongest)) return;
    character_ += text;
    const auto character = firstUtf8Character(character_);
    if (!character) return;
    character_.clear();
    if (isVisible(character->codePoint)) found(character->codePoint);
}

void KeyDecoder::takeEscape(unsigned char octet) {
    parameters_.clear();
    if (octet == kEscapeOctet) return found(kKeyEscape);  // the second one waits
    if (octet == '[') {
        state_ = State::Sequence;
    } else if (octet == 'O') {
        state_ = State::SingleShift;
    } else if (beginsString(octet)) {
        state_ = State::String;
    } else {
        state_ = State::Ground;  // with Alt; the rest of a character of UTF-8 is passed over
    }
}

// A control character ends a sequence that never came to its end.
void KeyDecoder::takeSequence(unsigned char octet) {
    if (octet < ' ' || octet > 0x7E) {
        state_ = State::Ground;
        return takeGround(octet);
    }
    if (!isFinal(octet)) {
        if (parameters_.size() <= kMostParameters) parameters_ += static_cast<char>(octet);
        return;
    }
    // The Linux console's function keys: Escape, two brackets and a letter.
    if (octet == '[' && parameters_.empty() && state_ == State::Sequence) {
        parameters_ += '[';
        return;
    }
    const bool isKeypad = state_ == State::SingleShift && octet == 'M';
    const auto key = isKeypad ? kKeyEnter : keyOf(parameters_, octet);
    state_ = State::Ground;
    if (key) found(*key);
}

void KeyDecoder::takeString(unsigned char octet) {
    constexpr unsigned char kBell = 0x07;
    const bool isEnd = octet == kBell || (octet == '\\' && state_ == State::StringEscape);
    state_ = isEnd ? State::Ground : octet == kEscapeOctet ? State::StringEscape : State::String;
}

}  // namespace halvane::tool
