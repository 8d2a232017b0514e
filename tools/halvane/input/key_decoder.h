// Finds keys in the octets that a terminal sends (ECMA-48 control sequences, as xterm sends them).
//
// For one thread.
#ifndef TOOLS_HALVANE_INPUT_KEY_DECODER_H
#define TOOLS_HALVANE_INPUT_KEY_DECODER_H

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "tools/halvane/input/key.h"

namespace halvane::tool {

class KeyDecoder {
  public:
    // Returns the keys that the octets complete. Characters and sequences may be spread over
    // several calls. What is no key is passed over:
    // - octets that are no UTF-8, characters that are not visible, other control characters
    // - sequences of other keys, of the mouse and of pasting; a character behind Escape (Alt)
    // - strings of a terminal that answers (Escape with P, X, ], ^ or _), up to their end
    std::vector<Key> take(std::string_view octets);

    // Whether an Escape waits for what follows it: it is a key if nothing does.
    bool isWaiting() const { return state_ != State::Ground; }

    // Ends the wait: an Escape alone is the key. A part of a sequence is dropped.
    std::vector<Key> giveUp();

  private:
    enum class State { Ground, Escape, Sequence, SingleShift, String, StringEscape };

    void takeOctet(unsigned char octet);
    void takeGround(unsigned char octet);
    void takeText(unsigned char octet);
    void takeEscape(unsigned char octet);
    void takeSequence(unsigned char octet);
    void takeString(unsigned char octet);
    void found(Key key) { keys_.push_back(key); }

    State state_ = State::Ground;
    std::string parameters_;  // of the sequence
    std::string character_;   // the octets of one that is not complete
    std::vector<Key> keys_;
};

}  // namespace halvane::tool

#endif
