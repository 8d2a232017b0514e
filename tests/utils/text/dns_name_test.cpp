#include "halvane/utils/text/dns_name.h"

#include <cstddef>
#include <gtest/gtest.h>
#include <random>
#include <string>
#include <utility>
#include <vector>

#include "tests/support/guarded_bytes.h"

namespace {

using halvane::testing::GuardedBytes;

std::string label(const std::string& text) {
    GuardedBytes guarded = GuardedBytes::terminated(text);
    GuardedBytes buffer(kDNSLabelBufferSize, 0xAA);
    ConvertUTF8StringToRFC1034LabelString(guarded.chars(), buffer.chars());
    return buffer.chars();
}

TEST(DNSLabel, KeepsLettersAndDigits) {
    EXPECT_EQ(label("Printer2"), "Printer2");
    EXPECT_EQ(label("azAZ09"), "azAZ09");
    EXPECT_EQ(label(""), "");
}

TEST(DNSLabel, DropsApostrophes) {
    EXPECT_EQ(label("Anna's Hub"), "Annas-Hub");
    EXPECT_EQ(label("Anna\xE2\x80\x99s Hub"), "Annas-Hub");
    EXPECT_EQ(label("'"), "");
    EXPECT_EQ(label("a ' b"), "a-b");
    EXPECT_EQ(label("a\xE2\x80\x98"
                    "b"),
              "a-b");  // the left quotation mark is another character
    EXPECT_EQ(label("a\xE2\x80"), "a-");
}

TEST(DNSLabel, MakesOneHyphenOfOtherCharacters) {
    EXPECT_EQ(label("a b"), "a-b");
    EXPECT_EQ(label("a . !b"), "a-b");
    EXPECT_EQ(label("  a"), "a");
    EXPECT_EQ(label("Caf\xC3\xA9 2"), "Caf-2");
    EXPECT_EQ(label("a!"), "a-");
    EXPECT_EQ(label("!"), "");
    EXPECT_EQ(label("\xFF\x01"), "");
}

TEST(DNSLabel, KeepsHyphensButForOneAtTheEnd) {
    EXPECT_EQ(label("a-b"), "a-b");
    EXPECT_EQ(label("a--b"), "a--b");
    EXPECT_EQ(label("-a"), "-a");
    EXPECT_EQ(label("--"), "-");
    EXPECT_EQ(label("-"), "");
    EXPECT_EQ(label("a-"), "a-");
    EXPECT_EQ(label("a--"), "a-");
    EXPECT_EQ(label("a -b"), "a--b");
    EXPECT_EQ(label("a- b"), "a-b");
    EXPECT_EQ(label("a -"), "a-");
}

TEST(DNSLabel, HasAtMost63Characters) {
    EXPECT_EQ(label(std::string(63, 'a')), std::string(63, 'a'));
    EXPECT_EQ(label(std::string(64, 'a')), std::string(63, 'a'));
    EXPECT_EQ(label(std::string(62, 'a') + " b"), std::string(62, 'a') + "-");
    EXPECT_EQ(label(std::string(100, '\'') + "a"), "a");
    EXPECT_EQ(label(std::string(63, 'a') + "-"), std::string(63, 'a'));
}

TEST(DNSLabel, HoldsNothingButLettersDigitsAndHyphens) {
    std::mt19937 random(11);
    for (int i = 0; i < 5000; ++i) {
        std::string text(random() % 80, ' ');
        for (char& byte : text) byte = static_cast<char>(1 + random() % 255);
        const std::string made = label(text);
        ASSERT_LE(made.size(), 63u);
        ASSERT_EQ(made.find_first_not_of("abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ"
                                         "0123456789-"),
                  made.npos);
    }
}

HalvaneStatus validity(const std::string& name) {
    GuardedBytes guarded = GuardedBytes::terminated(name);
    return ValidDNSName(guarded.chars());
}

// A name of labels of 49 characters, 50 with their dots.
std::string nameOf(std::size_t size) {
    std::string name;
    for (std::size_t i = 1; i <= size; ++i) name += i % 50 == 0 ? '.' : 'a';
    return name;
}

TEST(DNSName, IsValidOrNotForAReason) {
    const std::vector<std::pair<std::string, HalvaneStatus>> rows = {
        {"example.com", kStatusOK},
        {"example.com.", kStatusOK},
        {"a", kStatusOK},
        {"Anna's Hub._http._tcp.local", kStatusOK},
        {"", -6750},
        {".", -6742},
        {".a", -6742},
        {"a..b", -6742},
        {"a..", -6742},
        {std::string(63, 'a'), kStatusOK},
        {std::string(64, 'a'), -6743},
        {"b." + std::string(64, 'a'), -6743},
        {std::string(63, 'a') + "." + std::string(63, 'b'), kStatusOK},
        {nameOf(254), kStatusOK},
        {nameOf(255), -6751},
        {nameOf(1000), -6751},
        {nameOf(300) + "..", -6751},
    };
    for (const auto& [name, status] : rows) EXPECT_EQ(validity(name), status) << name;
}

TEST(DNSName, CountsAnEscapeAsOneCharacter) {
    std::string decimal;
    std::string simple;
    for (int i = 0; i < 63; ++i) {
        decimal += "\\046";
        simple += "\\.";
    }
    const std::vector<std::pair<std::string, HalvaneStatus>> rows = {
        {"a\\.b", kStatusOK},
        {"\\.", kStatusOK},
        {"a.\\..b", kStatusOK},
        {decimal, kStatusOK},
        {decimal + "a", -6743},
        {simple, kStatusOK},
        {simple + "\\.", -6743},
        {std::string(60, 'a') + "\\255", kStatusOK},
        {"\\256", -6742},  // above every byte
        {"a\\999b", -6742},
        {std::string(63, 'a') + "\\256", -6742},
        {"\\25.a", kStatusOK},  // an escaped 2, and a 5
        {std::string(61, 'a') + "\\255", kStatusOK},
        {std::string(62, 'a') + "\\25", -6743},
        {"a\\", -6742},
        {"\\", -6742},
        {"a\\\\", kStatusOK},
    };
    for (const auto& [name, status] : rows) EXPECT_EQ(validity(name), status) << name;
}

// The name with each character except the dots as a backslash and decimal digits.
std::string escapedNameOf(std::size_t size) {
    std::string escaped;
    for (const char character : nameOf(size)) escaped += character == '.' ? "." : "\\097";
    return escaped;
}

TEST(DNSName, HasAtMost254CharactersHoweverTheyAreWritten) {
    EXPECT_EQ(validity(escapedNameOf(254)), kStatusOK);
    EXPECT_EQ(validity(escapedNameOf(255)), -6751);
}

TEST(DNSName, IsNoneWhereItIsNull) {
    EXPECT_EQ(ValidDNSName(nullptr), -6750);
}

TEST(DNSName, OfAMadeLabelIsValid) {
    std::mt19937 random(12);
    for (int i = 0; i < 2000; ++i) {
        std::string text(random() % 80, ' ');
        for (char& byte : text) byte = static_cast<char>(1 + random() % 255);
        const std::string made = label(text);
        EXPECT_EQ(validity(made), made.empty() ? kStatusTooFew : kStatusOK) << made;
    }
}

}  // namespace
