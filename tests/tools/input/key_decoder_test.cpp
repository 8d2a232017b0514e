#include "tools/halvane/input/key_decoder.h"

#include <cstddef>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <string>
#include <string_view>
#include <vector>

#include "tools/halvane/input/key.h"

using namespace halvane::tool;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using Keys = std::vector<Key>;

namespace {

// All keys of the octets, which nothing follows.
Keys keysOf(std::string_view octets) {
    KeyDecoder decoder;
    Keys keys = decoder.take(octets);
    const Keys last = decoder.giveUp();
    keys.insert(keys.end(), last.begin(), last.end());
    EXPECT_FALSE(decoder.isWaiting());
    return keys;
}

struct Case {
    std::string_view octets;
    Keys keys;
};

const std::vector<Case>& cases() {
    static const std::vector<Case> cases = {
        {"q", {U'q'}},
        {"/a b", {U'/', U'a', U' ', U'b'}},
        {"\r", {kKeyEnter}},
        {"\n", {kKeyEnter}},
        {"\b\x7F", {kKeyBackspace, kKeyBackspace}},
        {"\x1B", {kKeyEscape}},
        {"\x1B\x1B", {kKeyEscape, kKeyEscape}},
        {"\x1B[A\x1B[B\x1B[C\x1B[D", {kKeyUp, kKeyDown, kKeyRight, kKeyLeft}},
        {"\x1BOA\x1BOB\x1BOC\x1BOD", {kKeyUp, kKeyDown, kKeyRight, kKeyLeft}},
        {"\x1B[H\x1B[F\x1BOH\x1BOF", {kKeyHome, kKeyEnd, kKeyHome, kKeyEnd}},
        {"\x1B[1~\x1B[4~\x1B[7~\x1B[8~", {kKeyHome, kKeyEnd, kKeyHome, kKeyEnd}},
        {"\x1B[5~\x1B[6~", {kKeyPageUp, kKeyPageDown}},
        {"\x1BOM", {kKeyEnter}},                 // of the keypad
        {"\x1B\x1B[A", {kKeyEscape, kKeyUp}},    // Escape, and soon after it an arrow
        {"\xC3\xA9", {U'\u00E9'}},               // e with acute accent
        {"\xE2\x82\xAC!", {U'\u20AC', U'!'}},    // the euro sign
        {"\xF0\x9F\x98\x80", {U'\U0001F600'}},   // a face
        {"\x1B[200~a\x1B[201~", {U'a'}},         // marks of a paste
        {"\x1B[1;2A\x1B[3~\x1B[15~\x1BOP", {}},  // Shift-Up, Delete, F5, F1
        {"\x1B[[Aq", {U'q'}},                    // F1 of the Linux console
        {"\x1Bq", {}},                           // Alt-q
        {"\x1B[<0;10;20Mq", {U'q'}},             // a click
        {"\x1B]11;rgb:0/0/0\x07q", {U'q'}},      // an answer of the terminal, ended by BEL
        {"\x1BP1+r\x1B\\q", {U'q'}},             // one that is ended by ST
        {"\x1B[12\x1B[A", {kKeyUp}},             // a sequence that never ended
        {"\x1B[12\rq", {kKeyEnter, U'q'}},       // the same
        {"\x1B[", {}},
        {"\x1B[1;", {}},
        {"\x1BO", {}},
        {"\x1B]0;", {}},
        {std::string_view("\x00\x01\x03\t\x1F", 5), {}},  // other control characters
        {"\x80\xBF\xFF\xC0q", {U'q'}},                    // no UTF-8
        {"\xC3q", {U'q'}},                                // cut off
        {"\xE0\x80\x80q", {U'q'}},                        // overlong
        {"\xED\xA0\x80q", {U'q'}},                        // a surrogate
        {"\xC2\x9B"
         "A",
         {U'A'}},                               // a control character (C1)
        {"\xE2\x80\xAE\xE2\x80\x8Bq", {U'q'}},  // what turns text round, or is not seen
    };
    return cases;
}

TEST(KeyDecoder, FindsKeys) {
    for (const Case& row : cases()) {
        EXPECT_EQ(keysOf(row.octets), row.keys) << ::testing::PrintToString(row.octets);
    }
}

TEST(KeyDecoder, FindsThemWhereverTheOctetsAreParted) {
    for (const Case& row : cases()) {
        for (std::size_t part = 0; part <= row.octets.size(); ++part) {
            KeyDecoder decoder;
            Keys keys = decoder.take(row.octets.substr(0, part));
            for (const Key key : decoder.take(row.octets.substr(part))) keys.push_back(key);
            for (const Key key : decoder.giveUp()) keys.push_back(key);
            EXPECT_EQ(keys, row.keys) << ::testing::PrintToString(row.octets) << " at " << part;
        }
    }
}

TEST(KeyDecoder, WaitsForWhatFollowsAnEscape) {
    KeyDecoder decoder;
    EXPECT_FALSE(decoder.isWaiting());
    EXPECT_THAT(decoder.take("\x1B"), IsEmpty());
    EXPECT_TRUE(decoder.isWaiting());
    EXPECT_THAT(decoder.take("["), IsEmpty());
    EXPECT_TRUE(decoder.isWaiting());
    EXPECT_THAT(decoder.take("A"), ElementsAre(kKeyUp));
    EXPECT_FALSE(decoder.isWaiting());
    EXPECT_THAT(decoder.giveUp(), IsEmpty());
}

TEST(KeyDecoder, ForgetsWhatItGaveUp) {
    KeyDecoder decoder;
    for (const std::string_view part : {"\x1B[1", "\x1BO", "\x1B]q", "\x1BP\x1B"}) {
        EXPECT_THAT(decoder.take(part), IsEmpty());
        EXPECT_THAT(decoder.giveUp(), IsEmpty());
        EXPECT_THAT(decoder.take("q"), ElementsAre(U'q'));
    }
}

TEST(KeyDecoder, TakesAnyOctets) {
    for (unsigned first = 0; first < 256; ++first) {
        for (unsigned second = 0; second < 256; ++second) {
            const std::string octets = {static_cast<char>(first), static_cast<char>(second)};
            EXPECT_LE(keysOf(octets).size(), 2u);
            EXPECT_LE(keysOf("\x1B[" + octets).size(), 2u);
            EXPECT_LE(keysOf("\x1B" + octets).size(), 3u);
        }
    }
    EXPECT_THAT(keysOf("\x1B[" + std::string(1'000'000, '5') + "~q"), ElementsAre(U'q'));
}

}  // namespace
