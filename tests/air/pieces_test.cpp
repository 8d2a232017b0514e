#include <cstddef>
#include <cstdint>
#include <gtest/gtest.h>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "halvane/air/element_codec_internal.h"
#include "halvane/air/pieces_internal.h"
#include "halvane/base/byte_buffer.h"

#include "tests/support/hostile_bytes.h"

using halvane::ByteBuffer;
using halvane::testing::Bytes;
using namespace halvane::air;

namespace {

constexpr std::uint8_t kFragment = 254;

Bytes counting(std::size_t size) {
    Bytes bytes(size);
    for (std::size_t i = 0; i < size; ++i) bytes[i] = static_cast<std::uint8_t>(i);
    return bytes;
}

Bytes piecesOf(const Bytes& body, bool endsEmpty = false) {
    Bytes octets;
    appendPieces(octets, kFragment, body, endsEmpty);
    return octets;
}

struct Joined {
    std::uint16_t number = 0;
    bool endsEmpty = false;
    ByteBuffer octets{};
    ByteBuffer rest{};
};

// Octets, a number that may lie in two pieces, octets.
constexpr auto kLayout = [](auto& codec, auto& element) {
    codec.joined(kFragment, element.endsEmpty, [&] {
        codec.octets("Octets", element.octets, 254);
        codec.number("Number", element.number);
        codec.rest(element.rest);
    });
};

class PlaceLister : public FieldSink {
  public:
    void flag(const FieldPlace& place, std::string_view label, bool) override { add(place, label); }
    void number(const FieldPlace& place, std::string_view label, std::int64_t,
                const NumberForm&) override {
        add(place, label);
    }
    void text(const FieldPlace& place, std::string_view label, std::string_view) override {
        add(place, label);
    }
    void octets(const FieldPlace& place, std::string_view label, Octets value) override {
        EXPECT_EQ(value.size(), place.size);
        add(place, label);
    }
    void beginGroup(std::string_view) override {}
    void endGroup() override {}

    std::string places;

  private:
    void add(const FieldPlace& place, std::string_view label) {
        places += std::string(label) + ' ' + std::to_string(place.offset) + '+' +
                  std::to_string(place.size) + '\n';
    }
};

TEST(AirPieces, HoldEverySize) {
    for (std::size_t size = 0; size <= 1100; ++size) {
        const Bytes body = counting(size);
        const Bytes octets = piecesOf(body);
        const std::size_t fragments = size == 0 ? 0 : (size - 1) / 255;
        EXPECT_EQ(octets.size(), 1 + size + 2 * fragments);
        for (std::size_t i = 0; i < size; ++i) {
            ASSERT_EQ(octets[placeInPieces(1, size, i)], body[i]) << size << ' ' << i;
        }
        EXPECT_EQ(placeInPieces(1, size, size), octets.size());
    }
}

TEST(AirPieces, AreReadAsOneStructure) {
    for (const std::size_t size : {256u, 257u, 509u, 510u, 511u, 800u}) {
        for (const bool endsEmpty : {false, true}) {
            const Bytes octets = piecesOf(counting(size), endsEmpty);
            const auto read = decodeBy<Joined>(kLayout, octets);
            ASSERT_TRUE(read) << size;
            EXPECT_EQ(read->number, 0xFFFE);
            EXPECT_EQ(read->octets.size() + 2 + read->rest.size(), size);
            EXPECT_EQ(read->endsEmpty, endsEmpty && size % 255 == 0) << size;
            EXPECT_EQ(encodeBy(kLayout, *read), octets) << size;
        }
    }
}

TEST(AirPieces, TellPlacesWithTheHeadersOfFragments) {
    const Bytes octets = piecesOf(counting(510), true);
    PlaceLister lister;
    EXPECT_FALSE(describeBy<Joined>(kLayout, octets, lister));
    EXPECT_EQ(lister.places,
              "Length 0+1\n"
              "Octets 1+254\n"
              "Number 255+4\n"
              "Subelement ID 256+1\n"
              "Length 257+1\n"
              "Further octets 259+254\n"
              "Subelement ID 513+1\n"
              "Length 514+1\n");
}

// Checks each octet of a field of elements against the octet at its place.
class PlaceChecker : public PlaceLister {
  public:
    explicit PlaceChecker(const Bytes& body) : body_(body) {}

    bool elements(std::string_view, const ElementOctets& value) override {
        const Bytes whole(value.octets.begin(), value.octets.end());
        for (std::size_t i = 0; i < whole.size(); ++i) {
            EXPECT_EQ(body_.at(value.offsetOf(i)), whole[i]) << whole.size() << ' ' << i;
        }
        EXPECT_EQ(value.offsetOf(whole.size()), value.offsetOf(whole.size() - 1) + 1);
        ++fields;
        return true;
    }

    int fields = 0;

  private:
    const Bytes& body_;
};

TEST(AirPieces, TellThePlaceOfEachOctetOfElements) {
    for (const std::size_t before : {0u, 1u, 254u, 255u, 256u, 300u}) {
        const auto layout = [&](auto& codec, auto& element) {
            codec.joined(kFragment, element.endsEmpty, [&] {
                codec.octets("Octets", element.octets, before);
                codec.elements("Elements", element.rest);
            });
        };
        for (const std::size_t size : {301u, 509u, 510u, 511u, 1100u}) {
            const Bytes octets = piecesOf(counting(size));
            PlaceChecker checker(octets);
            EXPECT_FALSE(describeBy<Joined>(layout, octets, checker));
            EXPECT_EQ(checker.fields, 1);
        }
    }
}

TEST(AirPieces, AreCutWhereAFragmentDoesNotFit) {
    Bytes octets = piecesOf(counting(300));
    octets.pop_back();
    EXPECT_FALSE(decodeBy<Joined>(kLayout, octets));  // 255 octets lack the number's second
    PlaceLister lister;
    const auto damage = describeBy<Joined>(kLayout, octets, lister);
    ASSERT_TRUE(damage);
    EXPECT_EQ(damage->offset, 255u);
}

TEST(AirPieces, PlaceDamageBehindAFragment) {
    const auto damagedLayout = [](auto& codec, auto& element) {
        codec.joined(kFragment, element.endsEmpty, [&] {
            codec.octets("Octets", element.octets, 299);
            codec.number("Number", element.number);
        });
    };
    const Bytes octets = piecesOf(counting(300));
    PlaceLister lister;
    const auto damage = describeBy<Joined>(damagedLayout, octets, lister);
    ASSERT_TRUE(damage);
    EXPECT_EQ(damage->offset, 1u + 299 + 2);
    EXPECT_EQ(damage->remaining, 1u);
}

// A piece that is not full is the last.
TEST(AirPieces, EndAtAShortPiece) {
    Bytes octets = piecesOf(counting(257));
    octets.insert(octets.end(), {kFragment, 1, 0xEE});
    ElementReader reader(octets);
    Joined joined;
    kLayout(reader, joined);
    EXPECT_TRUE(reader.ok());
    EXPECT_EQ(reader.remaining(), 3u);
    EXPECT_TRUE(reader.hasMore());
    EXPECT_EQ(reader.peek(2), 0xEE);
    EXPECT_FALSE(reader.peek(3));
}

struct Item {
    std::uint8_t id = 0;
    ByteBuffer body{};
};
struct Items {
    std::vector<Item> items{};
    ByteBuffer rest{};
};
constexpr auto kItemsLayout = [](auto& codec, auto& element) {
    codec.subelements(element.items, [&](auto& item) {
        codec.number("ID", item.id);
        codec.template sized<std::uint8_t>("Length", 0, [&] { codec.octets("Data", item.body); });
    });
    codec.rest(element.rest);
};

TEST(AirPieces, LeaveWhatMakesNoSubelementToTheRest) {
    const Bytes octets = {1, 2, 0xA, 0xB, 2, 0, 3, 2, 0xC};
    for (std::size_t size = 0; size <= octets.size(); ++size) {
        const Bytes part(octets.begin(), octets.begin() + static_cast<std::ptrdiff_t>(size));
        const auto read = decodeBy<Items>(kItemsLayout, part);
        ASSERT_TRUE(read) << size;
        EXPECT_EQ(read->items.size(), size < 4 ? 0u : size < 6 ? 1u : 2u) << size;
        EXPECT_EQ(read->rest.size(), size < 4 ? size : size < 6 ? size - 4 : size - 6) << size;
        EXPECT_EQ(encodeBy(kItemsLayout, *read), part);
    }
}

}  // namespace
