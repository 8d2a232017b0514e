#include "halvane/capture/radio_header.h"

#include <algorithm>
#include <cstddef>
#include <gtest/gtest.h>
#include <string>
#include <utility>
#include <vector>

#include "halvane/base/byte_buffer.h"

#include "tests/support/hostile_bytes.h"

using halvane::ByteBuffer;
using halvane::testing::Bytes;
using namespace halvane::capture;

namespace {

const Bytes kFrame = {0x80, 0x00, 0xAB, 0xCD, 0xEF};

Bytes join(const Bytes& header, const Bytes& frame = kFrame) {
    Bytes packet = header;
    packet.insert(packet.end(), frame.begin(), frame.end());
    return packet;
}

Bytes changed(Bytes bytes, std::size_t offset, std::uint8_t value) {
    bytes.at(offset) = value;
    return bytes;
}

// The values of a header as one line; absent values are "-".
std::string summaryOf(const std::optional<RadioInfo>& info) {
    if (!info) return "malformed";
    const auto text = [](const std::optional<int>& value) {
        return value ? std::to_string(*value) : "-";
    };
    return text(info->frequencyMHz) + " MHz, channel " + text(info->channel) + ", signal " +
           text(info->signalDBm) + ", noise " + text(info->noiseDBm) +
           (info->hasFCS ? ", FCS" : "") + (info->isBadFCS ? ", bad" : "");
}

struct Row {
    const char* what;
    LinkType linkType;
    Bytes header;
    std::string expected;
};

void expectRow(const Row& row) {
    const Bytes packet = join(row.header);
    const auto info = parseRadioHeader(row.linkType, packet);
    EXPECT_EQ(summaryOf(info), row.expected) << row.what;
    if (info) {
        EXPECT_TRUE(std::ranges::equal(info->frame, kFrame)) << row.what;
    }
}

// Headers of real captures.

const Bytes kRadiotapOneWord = {
    0x00, 0x00, 0x12, 0x00,  // version 0, pad, length 18
    0x2E, 0x48, 0x00, 0x00,  // present: flags, rate, channel, dBm signal, antenna, RX flags
    0x00,                    // flags: none
    0x02,                    // rate 1 Mb/s
    0x6C, 0x09, 0xA0, 0x00,  // channel 2412 MHz, CCK in the 2 GHz band
    0xD9,                    // signal -39 dBm
    0x01,                    // antenna 1
    0x00, 0x00,              // RX flags: none
};

const Bytes kRadiotapThreeWords = {
    0x00, 0x00, 0x20, 0x00,  // version 0, pad, length 32
    0xAE, 0x40, 0x00, 0xA0,  // present: flags, rate, channel, signal, lock quality, RX flags, more
    0x20, 0x08, 0x00, 0xA0,  // present, again from bit 0: signal, antenna, more
    0x20, 0x08, 0x00, 0x00,  // present, again from bit 0: signal, antenna
    0x10,                    // flags: FCS at end
    0x02,                    // rate 1 Mb/s
    0x6C, 0x09, 0xA0, 0x00,  // channel 2412 MHz
    0xF2,                    // signal -14 dBm
    0x00,                    // alignment
    0x64, 0x00,              // lock quality 100
    0x00, 0x00,              // RX flags: none
    0x00, 0x00,              // signal 0 dBm of antenna 0
    0x00, 0x01,              // signal 0 dBm of antenna 1
};

const Bytes kRadiotapRelativeSignal = {
    0x00, 0x00, 0x18, 0x00,  // version 0, pad, length 24
    0x8E, 0x58, 0x00, 0x00,  // present: flags, rate, channel, lock quality, antenna, dB signal, RX
    0x10,                    // flags: FCS at end
    0x02,                    // rate 1 Mb/s
    0x6C, 0x09, 0xA0, 0x00,  // channel 2412 MHz
    0x54, 0x00,              // lock quality 84
    0x00,                    // antenna 0
    0x2B,                    // signal 43 dB over an unstated reference
    0x00, 0x00,              // RX flags: none
    0x9F, 0x61, 0xC9, 0x5C,  // within the header, but part of no field
};

const Bytes kRadiotapTimer = {
    0x00, 0x00, 0x1A, 0x00,                          // version 0, pad, length 26
    0x2F, 0x48, 0x00, 0x00,                          // present: TSFT, and as in kRadiotapOneWord
    0xD3, 0x63, 0xA1, 0xF2, 0x0D, 0x00, 0x00, 0x00,  // TSFT
    0x10,                                            // flags: FCS at end
    0x02,                                            // rate 1 Mb/s
    0x6C, 0x09, 0xA0, 0x00,                          // channel 2412 MHz
    0xA6,                                            // signal -90 dBm
    0x01,                                            // antenna 1
    0x00, 0x00,                                      // RX flags: none
};

const Bytes kPPI = {
    0x00, 0x00, 0x20, 0x00,                          // version 0, no flags, length 32
    0x69, 0x00, 0x00, 0x00,                          // link type 105
    0x02, 0x00, 0x14, 0x00,                          // field 802.11-Common, 20 bytes
    0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00,  // timer
    0x01, 0x00,                                      // flags: FCS present
    0x04, 0x00,                                      // rate 2 Mb/s
    0x85, 0x09, 0xA0, 0x00,                          // channel 2437 MHz, CCK in the 2 GHz band
    0x00, 0x00,                                      // FHSS hop set, pattern
    0xAC,                                            // signal -84 dBm
    0x9C,                                            // noise -100 dBm
};

// The values of the items, in order: host time, MAC time, channel, RSSI, signal quality (absent),
// signal, noise (absent), rate, is-transmitted, frame length.
const Bytes kPrism = {
    0x44, 0x00, 0x00, 0x00, 0x90, 0x00, 0x00, 0x00,  // message code, length 144
    0x61, 0x74, 0x68, 0x30, 0x00, 0x00, 0x00, 0x00,  // device name "ath0"
    0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00,
    // identifier, status 0 (supplied), length of the value, value
    0x44, 0x00, 0x01, 0x00, 0x00, 0x00, 0x04, 0x00, 0xD5, 0x36, 0x64, 0x00,  // host time
    0x44, 0x00, 0x02, 0x00, 0x00, 0x00, 0x04, 0x00, 0x88, 0xE1, 0x96, 0x79,  // MAC time
    0x44, 0x00, 0x03, 0x00, 0x00, 0x00, 0x04, 0x00, 0x07, 0x00, 0x00, 0x00,  // channel 7
    0x44, 0x00, 0x04, 0x00, 0x00, 0x00, 0x04, 0x00, 0x00, 0x00, 0x00, 0x00,  // RSSI 0
    0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00,  // nothing
    0x44, 0x00, 0x06, 0x00, 0x00, 0x00, 0x04, 0x00, 0x39, 0x00, 0x00, 0x00,  // signal 57
    0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00,  // nothing
    0x44, 0x00, 0x08, 0x00, 0x00, 0x00, 0x04, 0x00, 0x02, 0x00, 0x00, 0x00,  // rate 1 Mb/s
    0x44, 0x00, 0x09, 0x00, 0x00, 0x00, 0x04, 0x00, 0x00, 0x00, 0x00, 0x00,  // received
    0x44, 0x00, 0x0A, 0x00, 0x00, 0x00, 0x04, 0x00, 0x76, 0x00, 0x00, 0x00,  // 118 bytes
};
constexpr std::size_t kPrismChannel = 48;  // offsets of items
constexpr std::size_t kPrismSignal = 84;

TEST(RadioHeader, ReadsTheHeadersOfRealCaptures) {
    for (const Row& row : {
             Row{"one presence word", LinkType::Radiotap, kRadiotapOneWord,
                 "2412 MHz, channel -, signal -39, noise -"},
             Row{"three presence words: the first signal is the frame's", LinkType::Radiotap,
                 kRadiotapThreeWords, "2412 MHz, channel -, signal -14, noise -, FCS"},
             Row{"a signal in dB is not one in dBm", LinkType::Radiotap, kRadiotapRelativeSignal,
                 "2412 MHz, channel -, signal -, noise -, FCS"},
             Row{"an 8-byte field first", LinkType::Radiotap, kRadiotapTimer,
                 "2412 MHz, channel -, signal -90, noise -, FCS"},
             Row{"PPI", LinkType::PPI, kPPI, "2437 MHz, channel -, signal -84, noise -100, FCS"},
             Row{"Prism: a positive signal is not in dBm", LinkType::Prism, kPrism,
                 "- MHz, channel 7, signal -, noise -"},
             Row{"no header at all",
                 LinkType::IEEE80211,
                 {},
                 "- MHz, channel -, signal -, noise -"},
         }) {
        expectRow(row);
    }
}

// Radiotap.

// Holds every field that the table knows, one after the other, and then a dBm noise of a second
// namespace. The reader finds that noise only if every size and alignment before it is right.
const Bytes kRadiotapEveryField = {
    0x00, 0x00, 0xA5, 0x00,                          // 0: version 0, pad, length 165
    0xBF, 0xFF, 0xFF, 0xAF,                          // 4: bits 0-5 and 7-27; bits 29 and 31
    0x40, 0x00, 0x00, 0x00,                          // 8: bit 6
    0x00, 0x00, 0x00, 0x00,                          // 12: alignment
    0x11, 0x11, 0x11, 0x11, 0x11, 0x11, 0x11, 0x11,  // 16: TSFT
    0x00, 0x02,                                      // 24: flags, rate
    0x3C, 0x14, 0x40, 0x01,                          // 26: channel 5180 MHz
    0x11, 0x11,                                      // 30: FHSS
    0xC4, 0x00,                                      // 32: signal -60 dBm; alignment
    0x11, 0x11, 0x11, 0x11, 0x11, 0x11,              // 34: lock quality, TX attenuations
    0x11, 0x11, 0x11, 0x11,                          // 40: TX power, antenna, dB signal, dB noise
    0x00, 0x00, 0x11, 0x11, 0x11, 0x11,              // 44: RX flags, TX flags, retries
    0x00, 0x00,                                      // 50: alignment
    0x11, 0x11, 0x11, 0x11, 0x99, 0x09, 0x09, 0x11,  // 52: XChannel: 2457 MHz, number 9
    0x11, 0x11, 0x11, 0x00,                          // 60: MCS; alignment
    0x11, 0x11, 0x11, 0x11, 0x11, 0x11, 0x11, 0x11,  // 64: A-MPDU status
    0x11, 0x11, 0x11, 0x11, 0x11, 0x11, 0x11, 0x11, 0x11, 0x11, 0x11, 0x11,  // 72: VHT
    0x00, 0x00, 0x00, 0x00,                                                  // 84: alignment
    0x11, 0x11, 0x11, 0x11, 0x11, 0x11, 0x11, 0x11, 0x11, 0x11, 0x11, 0x11,  // 88: timestamp
    0x11, 0x11, 0x11, 0x11, 0x11, 0x11, 0x11, 0x11, 0x11, 0x11, 0x11, 0x11,  // 100: HE
    0x11, 0x11, 0x11, 0x11, 0x11, 0x11, 0x11, 0x11, 0x11, 0x11, 0x11, 0x11,  // 112: HE-MU
    0x11, 0x11, 0x11, 0x11, 0x11, 0x11,              // 124: HE-MU-other-user
    0x11, 0x00,                                      // 130: 0-length PSDU; alignment
    0x11, 0x11, 0x11, 0x11,                          // 132: L-SIG
    0xA1,                                            // 136: noise -95 dBm
    0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00,  // 137: part of no field
    0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00,
    0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00,
};

const Bytes kRadiotapVendor = {
    0x00, 0x00, 0x1E, 0x00,  // 0: version 0, pad, length 30
    0x02, 0x00, 0x00, 0xC0,  // 4: flags; a vendor namespace follows
    0x60, 0x00, 0x00, 0xA0,  // 8: the vendor's bits 5 and 6; then the radiotap namespace again
    0x60, 0x00, 0x00, 0x00,  // 12: signal, noise
    0x10,                    // 16: flags: FCS at end
    0x00,                    // 17: alignment
    0x02, 0x7E, 0x55, 0x01,  // 18: OUI, sub-namespace
    0x03, 0x00,              // 22: 3 bytes of the vendor
    0x81, 0x82, 0x83,        // 24
    0xCE, 0xA4,              // 27: signal -50 dBm, noise -92 dBm
    0x00,                    // 29: part of no field
};

TEST(RadioHeader, FindsTheFieldsOfRadiotap) {
    for (const Row& row : {
             Row{"every field", LinkType::Radiotap, kRadiotapEveryField,
                 "5180 MHz, channel 9, signal -60, noise -95"},
             Row{"a vendor's namespace between", LinkType::Radiotap, kRadiotapVendor,
                 "- MHz, channel -, signal -50, noise -92, FCS"},
             Row{"no fields",
                 LinkType::Radiotap,
                 {0, 0, 8, 0, 0, 0, 0, 0},
                 "- MHz, channel -, signal -, noise -"},
             Row{"XChannel instead of channel",
                 LinkType::Radiotap,
                 {0x00, 0x00, 0x10, 0x00, 0x00, 0x00, 0x04, 0x00,   // length 16, bit 18
                  0x80, 0x00, 0x00, 0x00, 0x71, 0x09, 0x02, 0x14},  // 2417 MHz, number 2
                 "2417 MHz, channel 2, signal -, noise -"},
             Row{"frequency 0 is none",
                 LinkType::Radiotap,
                 {0x00, 0x00, 0x0C, 0x00, 0x08, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00},
                 "- MHz, channel -, signal -, noise -"},
         }) {
        expectRow(row);
    }
}

TEST(RadioHeader, KeepsWhatStandsBeforeAFieldOfUnknownSize) {
    for (const Row& row : {
             Row{"bit 28: TLV fields",
                 LinkType::Radiotap,
                 {0x00, 0x00, 0x0C, 0x00, 0x20, 0x00, 0x00, 0x10, 0xC4, 0x00, 0x00, 0x00},
                 "- MHz, channel -, signal -60, noise -"},
             Row{"bit 32: a second word that starts no namespace",
                 LinkType::Radiotap,
                 {0x00, 0x00, 0x10, 0x00, 0x20, 0x00, 0x00, 0x80,   // signal; more words
                  0x40, 0x00, 0x00, 0x00, 0xC4, 0xA1, 0x00, 0x00},  // bit 38
                 "- MHz, channel -, signal -60, noise -"},
         }) {
        expectRow(row);
    }
}

TEST(RadioHeader, TellsDamageFromTheFlagsOfRadiotap) {
    constexpr std::size_t kFlags = 8, kRxFlags = 16;
    const std::string good = "2412 MHz, channel -, signal -39, noise -";
    for (const Row& row : {
             Row{"0x10: FCS", LinkType::Radiotap, changed(kRadiotapOneWord, kFlags, 0x10),
                 good + ", FCS"},
             Row{"0x40: bad FCS", LinkType::Radiotap, changed(kRadiotapOneWord, kFlags, 0x50),
                 good + ", FCS, bad"},
             Row{"RX flags 0x0002: bad PLCP", LinkType::Radiotap,
                 changed(kRadiotapOneWord, kRxFlags, 0x02), good + ", bad"},
             Row{"other flags", LinkType::Radiotap,
                 changed(changed(kRadiotapOneWord, kFlags, 0xAF), kRxFlags, 0xFD), good},
         }) {
        expectRow(row);
    }
}

TEST(RadioHeader, RefusesMalformedRadiotap) {
    for (const Row& row : {
             Row{"version 1", LinkType::Radiotap, changed(kRadiotapOneWord, 0, 1), "malformed"},
             Row{"longer than the packet", LinkType::Radiotap, changed(kRadiotapOneWord, 2, 24),
                 "malformed"},
             Row{"too short for a presence word", LinkType::Radiotap,
                 changed(kRadiotapOneWord, 2, 7), "malformed"},
             Row{"fields beyond its length", LinkType::Radiotap, changed(kRadiotapOneWord, 2, 17),
                 "malformed"},
             Row{"presence words without an end",
                 LinkType::Radiotap,
                 {0x00, 0x00, 0x0C, 0x00, 0x00, 0x00, 0x00, 0xA0, 0x00, 0x00, 0x00, 0xA0},
                 "malformed"},
             Row{"a vendor's data beyond its length", LinkType::Radiotap,
                 changed(kRadiotapVendor, 22, 7), "malformed"},
         }) {
        expectRow(row);
    }
}

// Prism and AVS.

// Reverses the bytes of each field of a little-endian Prism header. The layout gives the sizes.
Bytes bigEndianPrism(const Bytes& header) {
    Bytes swapped = header;
    const auto swap = [&](std::size_t offset, std::size_t size) {
        const auto first = swapped.begin() + static_cast<std::ptrdiff_t>(offset);
        std::reverse(first, first + static_cast<std::ptrdiff_t>(size));
    };
    swap(0, 4);
    swap(4, 4);
    for (std::size_t item = 24; item < swapped.size(); item += 12) {
        for (const auto& [offset, size] : {std::pair{0, 4}, {4, 2}, {6, 2}, {8, 4}}) {
            swap(item + static_cast<std::size_t>(offset), static_cast<std::size_t>(size));
        }
    }
    return swapped;
}

Bytes withItemValue(Bytes header, std::size_t item, std::int32_t value) {
    for (std::size_t i = 0; i < 4; ++i) {
        header.at(item + 8 + i) =
            static_cast<std::uint8_t>(static_cast<std::uint32_t>(value) >> (8 * i));
    }
    return header;
}

TEST(RadioHeader, ReadsPrismItems) {
    const Bytes inDBm = withItemValue(kPrism, kPrismSignal, -61);
    const Bytes notSupplied = changed(inDBm, kPrismSignal + 4, 1);
    Bytes laterCodes = changed(changed(inDBm, 0, 0x41), kPrismChannel, 0x41);
    laterCodes = changed(changed(laterCodes, kPrismChannel + 1, 0x30), kPrismChannel + 2, 0);
    for (const Row& row : {
             Row{"signal in dBm", LinkType::Prism, inDBm, "- MHz, channel 7, signal -61, noise -"},
             Row{"status 1: not supplied", LinkType::Prism, notSupplied,
                 "- MHz, channel 7, signal -, noise -"},
             Row{"big-endian", LinkType::Prism, bigEndianPrism(inDBm),
                 "- MHz, channel 7, signal -61, noise -"},
             Row{"the later identifiers", LinkType::Prism, laterCodes,
                 "- MHz, channel 7, signal -61, noise -"},
             Row{"below every dBm level", LinkType::Prism,
                 withItemValue(kPrism, kPrismSignal, -129), "- MHz, channel 7, signal -, noise -"},
             Row{"a channel that is none", LinkType::Prism,
                 withItemValue(kPrism, kPrismChannel, 256), "- MHz, channel -, signal -, noise -"},
         }) {
        expectRow(row);
    }
}

const Bytes kAVS = {
    0x80, 0x21, 0x10, 0x01,                          // 0: magic, version 1
    0x00, 0x00, 0x00, 0x40,                          // 4: length 64
    0x00, 0x00, 0x00, 0x00, 0x00, 0x12, 0xD6, 0x87,  // 8: MAC time
    0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x10,  // 16: host time
    0x00, 0x00, 0x00, 0x06,                          // 24: PHY type: ERP
    0x00, 0x00, 0x00, 0x0B,                          // 28: channel 11
    0x00, 0x00, 0x00, 0x0A,                          // 32: data rate 1 Mb/s
    0x00, 0x00, 0x00, 0x00,                          // 36: antenna
    0x00, 0x00, 0x00, 0x00,                          // 40: priority
    0x00, 0x00, 0x00, 0x02,                          // 44: signal type: dBm
    0xFF, 0xFF, 0xFF, 0xB5,                          // 48: signal -75
    0xFF, 0xFF, 0xFF, 0xA0,                          // 52: noise -96
    0x00, 0x00, 0x00, 0x02,                          // 56: long preamble
    0x00, 0x00, 0x00, 0x01,                          // 60: CCK
};

TEST(RadioHeader, ReadsAVSAlsoUnderThePrismLinkType) {
    Bytes megahertz = changed(changed(kAVS, 30, 0x09), 31, 0x8A);                     // 2442
    Bytes kilohertz = changed(changed(changed(kAVS, 29, 0x25), 30, 0x43), 31, 0x10);  // 2442000
    Bytes silent = changed(changed(changed(changed(kAVS, 52, 0), 53, 0), 54, 0), 55, 0);
    Bytes version2 = join(changed(changed(kAVS, 3, 0x02), 7, 80), Bytes(16, 0x55));
    for (const LinkType linkType : {LinkType::AVS, LinkType::Prism}) {
        for (const Row& row : {
                 Row{"dBm", linkType, kAVS, "- MHz, channel 11, signal -75, noise -96"},
                 Row{"no noise", linkType, silent, "- MHz, channel 11, signal -75, noise -"},
                 Row{"version 2", linkType, version2, "- MHz, channel 11, signal -75, noise -96"},
                 Row{"beyond every dBm level", linkType, changed(changed(kAVS, 48, 0x7F), 52, 0x80),
                     "- MHz, channel 11, signal -, noise -"},
                 Row{"type 0: none", linkType, changed(kAVS, 47, 0),
                     "- MHz, channel 11, signal -, noise -"},
                 Row{"type 1: normalised", linkType, changed(kAVS, 47, 1),
                     "- MHz, channel 11, signal -, noise -"},
                 Row{"type 3: raw", linkType, changed(kAVS, 47, 3),
                     "- MHz, channel 11, signal -, noise -"},
                 Row{"MHz", linkType, megahertz, "2442 MHz, channel -, signal -75, noise -96"},
                 Row{"kHz", linkType, kilohertz, "2442 MHz, channel -, signal -75, noise -96"},
             }) {
            expectRow(row);
        }
    }
}

TEST(RadioHeader, RefusesMalformedPrismAndAVS) {
    for (const Row& row : {
             Row{"no message code", LinkType::Prism, changed(kPrism, 0, 0x45), "malformed"},
             Row{"length without items", LinkType::Prism, changed(kPrism, 4, 23), "malformed"},
             Row{"longer than the packet", LinkType::Prism, changed(kPrism, 4, 150), "malformed"},
             Row{"an item beyond its length", LinkType::Prism, changed(kPrism, 4, 143),
                 "malformed"},
             Row{"a stray byte after the items", LinkType::Prism, changed(kPrism, 4, 133),
                 "malformed"},
             Row{"longer than 2 GiB", LinkType::Prism, changed(kPrism, 7, 0x80), "malformed"},
             Row{"another magic", LinkType::AVS, changed(kAVS, 2, 0x20), "malformed"},
             Row{"Prism under the AVS link type", LinkType::AVS, kPrism, "malformed"},
             Row{"length below 64", LinkType::AVS, changed(kAVS, 7, 63), "malformed"},
             Row{"longer than the packet", LinkType::AVS, changed(kAVS, 7, 70), "malformed"},
         }) {
        expectRow(row);
    }
}

// PPI.

TEST(RadioHeader, ReadsPPIFields) {
    constexpr std::size_t kFlags = 20;
    const std::string levels = "2437 MHz, channel -, signal -84, noise -100";
    Bytes aligned = {
        0x00, 0x01, 0x28, 0x00, 0x69, 0x00, 0x00, 0x00,  // 32-bit aligned fields, length 40
        0x10, 0x27, 0x03, 0x00, 0xAA, 0xBB, 0xCC, 0x00,  // an unknown field of 3 bytes, padding
    };
    aligned.insert(aligned.end(), kPPI.begin() + 8, kPPI.end());
    Bytes packed = aligned;
    packed.at(1) = 0x00;
    packed.at(2) = 0x27;
    packed.erase(packed.begin() + 15);
    Bytes unpaddedEnd = {0x00, 0x01, 0x0D, 0x00, 0x69, 0x00, 0x00,
                         0x00, 0x10, 0x27, 0x01, 0x00, 0xAA};
    for (const Row& row : {
             Row{"FCS invalid", LinkType::PPI, changed(kPPI, kFlags, 0x05), levels + ", FCS, bad"},
             Row{"PHY error", LinkType::PPI, changed(kPPI, kFlags, 0x08), levels + ", bad"},
             Row{"timer in ms", LinkType::PPI, changed(kPPI, kFlags, 0x02), levels},
             Row{"level -128: not measured", LinkType::PPI,
                 changed(changed(kPPI, 30, 0x80), 31, 0x80),
                 "2437 MHz, channel -, signal -, noise -, FCS"},
             Row{"aligned fields", LinkType::PPI, aligned, levels + ", FCS"},
             Row{"packed fields", LinkType::PPI, packed, levels + ", FCS"},
             Row{"last field not padded", LinkType::PPI, unpaddedEnd,
                 "- MHz, channel -, signal -, noise -"},
             Row{"no fields",
                 LinkType::PPI,
                 {0, 0, 8, 0, 0x69, 0, 0, 0},
                 "- MHz, channel -, signal -, noise -"},
             Row{"802.11-Common cut short",
                 LinkType::PPI,
                 {0, 0, 0x10, 0, 0x69, 0, 0, 0, 0x02, 0, 0x04, 0, 1, 2, 3, 4},
                 "- MHz, channel -, signal -, noise -"},
         }) {
        expectRow(row);
    }
}

TEST(RadioHeader, RefusesMalformedPPI) {
    for (const Row& row : {
             Row{"version 1", LinkType::PPI, changed(kPPI, 0, 1), "malformed"},
             Row{"around Ethernet", LinkType::PPI, changed(kPPI, 4, 1), "malformed"},
             Row{"shorter than its fixed part", LinkType::PPI, changed(kPPI, 2, 7), "malformed"},
             Row{"longer than the packet", LinkType::PPI, changed(kPPI, 2, 40), "malformed"},
             Row{"a field beyond its length", LinkType::PPI, changed(kPPI, 10, 21), "malformed"},
             Row{"a stray byte after the fields", LinkType::PPI, changed(kPPI, 2, 33), "malformed"},
         }) {
        expectRow(row);
    }
}

// Hostile forms of each header.

TEST(RadioHeader, HandlesEveryPrefixAndEveryLength) {
    struct Sample {
        LinkType linkType;
        Bytes header;
        std::vector<std::size_t> lengthOffsets;
    };
    for (const Sample& sample : {
             Sample{LinkType::Radiotap, kRadiotapOneWord, {2, 3, 4, 5, 6, 7}},
             Sample{LinkType::Radiotap, kRadiotapThreeWords, {2, 3, 7, 11, 15}},
             Sample{LinkType::Radiotap, kRadiotapRelativeSignal, {2, 3}},
             Sample{LinkType::Radiotap, kRadiotapTimer, {2, 3}},
             Sample{LinkType::Radiotap, kRadiotapEveryField, {2, 3, 7, 8, 9, 10, 11}},
             Sample{LinkType::Radiotap, kRadiotapVendor, {2, 3, 7, 11, 15, 22, 23}},
             Sample{LinkType::Prism, kPrism, {0, 3, 4, 5, 6, 7, 30}},
             Sample{LinkType::Prism, bigEndianPrism(kPrism), {0, 3, 4, 5, 6, 7, 31}},
             Sample{LinkType::Prism, kAVS, {4, 5, 6, 7}},
             Sample{LinkType::AVS, kAVS, {4, 5, 6, 7}},
             Sample{LinkType::PPI, kPPI, {1, 2, 3, 10, 11}},
         }) {
        const auto parse = [&](const ByteBuffer& packet) {
            const auto info = parseRadioHeader(sample.linkType, packet.bytes());
            if (info) {
                EXPECT_LE(info->frame.size(), packet.size());
            }
        };
        halvane::testing::forEachPrefix(sample.header, [&](const ByteBuffer& prefix) {
            parse(prefix);
            const bool isWhole = prefix.size() == sample.header.size();
            EXPECT_EQ(parseRadioHeader(sample.linkType, prefix.bytes()).has_value(), isWhole);
        });
        halvane::testing::forEachValueAt(join(sample.header), sample.lengthOffsets, parse);
    }
}

}  // namespace
