#include "halvane/utils/convert/version_number.h"

#include <charconv>
#include <cstddef>
#include <cstdint>

#include "halvane/base/ascii_internal.h"
#include "halvane/base/status.h"
#include "halvane/utils/convert/version_number_internal.h"
#include "halvane/utils/text/cursor_internal.h"

namespace {

using halvane::TextCursor;

constexpr std::uint32_t kMinorMax = 0x0F;

// Both lower parts have at most 99; 31 bits leave this maximum for the major one.
constexpr std::uint32_t kSourceMajorMax = 214747;
constexpr std::uint32_t kSourceMinorMax = 99;

char* putNumber(char* to, std::uint32_t number) {
    constexpr int kDigitsMax = 10;
    return std::to_chars(to, to + kDigitsMax, number).ptr;
}

char* putNumber(char* to, char mark, std::uint32_t number) {
    *to++ = mark;
    return putNumber(to, number);
}

// Reads a '.' and a number, if both are there. Returns false if the number is too large.
bool readPart(TextCursor& text, std::uint32_t max, std::uint32_t& part) {
    if (text.peek() != '.' || !halvane::isDigit(text.peek(1))) return true;
    text.skip(1);
    return text.decimal(max, part) == kStatusOK;
}

// Reads a letter and a revision, if the letter is there.
bool readStage(TextCursor& text, std::uint32_t& stage, std::uint32_t& revision) {
    const char letter = static_cast<char>(text.peek() | 0x20);
    for (const auto& known : halvane::kVersionStages) {
        if (known.letter != letter) continue;
        text.skip(1);
        stage = known.value;
        return text.decimal(UINT8_MAX, revision) != kStatusOutOfRange;
    }
    return true;
}

}  // namespace

char* NumVersionToCString(std::uint32_t version, char* buffer) {
    const std::uint32_t bugFix = version >> 16 & kMinorMax;
    const std::uint32_t revision = version & UINT8_MAX;
    char* to = putNumber(buffer, version >> 24);
    to = putNumber(to, '.', version >> 20 & kMinorMax);
    if (bugFix != 0) to = putNumber(to, '.', bugFix);
    const char letter = halvane::stageLetter(version >> 8 & UINT8_MAX);
    if (letter != 0 && (letter != 'f' || revision != 0)) to = putNumber(to, letter, revision);
    *to = '\0';
    return buffer;
}

std::uint32_t TextToNumVersion(const char* text, std::size_t length) {
    TextCursor cursor(text, length);
    cursor.skipSpace();
    std::uint32_t major = 0;
    std::uint32_t minor = 0;
    std::uint32_t bugFix = 0;
    std::uint32_t stage = kNumVersionStageFinal;
    std::uint32_t revision = 0;
    const bool isRead = cursor.decimal(UINT8_MAX, major) == kStatusOK &&
                        readPart(cursor, kMinorMax, minor) && readPart(cursor, kMinorMax, bugFix) &&
                        readStage(cursor, stage, revision);
    return isRead ? major << 24 | minor << 20 | bugFix << 16 | stage << 8 | revision : 0;
}

char* SourceVersionToCString(std::uint32_t version, char* buffer) {
    const std::uint32_t minor = version / 100 % 100;
    const std::uint32_t revision = version % 100;
    char* to = putNumber(buffer, version / 10000);
    if (minor != 0 || revision != 0) to = putNumber(to, '.', minor);
    if (revision != 0) to = putNumber(to, '.', revision);
    *to = '\0';
    return buffer;
}

std::uint32_t TextToSourceVersion(const char* text, std::size_t length) {
    TextCursor cursor(text, length);
    cursor.skipSpace();
    std::uint32_t major = 0;
    std::uint32_t minor = 0;
    std::uint32_t revision = 0;
    const bool isRead = cursor.decimal(kSourceMajorMax, major) == kStatusOK &&
                        readPart(cursor, kSourceMinorMax, minor) &&
                        readPart(cursor, kSourceMinorMax, revision);
    return isRead ? major * 10000 + minor * 100 + revision : 0;
}
