// The one description of an element's layout serves three purposes: decoding, encoding, and telling
// each field with its place.
//
// A layout is a function template that names the fields in the order of their octets:
//
//     constexpr auto kLayout = [](auto& codec, auto& element) {
//         codec.number("Station Count", element.stationCount);
//         codec.number("Channel Utilization", element.channelUtilization);
//         codec.rest(element.rest);
//     };
//
// The codec is an ElementReader, which also describes if it has a sink, or an ElementWriter. Fields
// that a condition governs are std::optional: the reader creates them, the writer writes those that
// are there. Octets after the fields that are known go to `rest`, so that an element that nobody
// changed is encoded with the octets that it came with; so are reserved bits, since bits stay in
// the words that they came in.
#ifndef HALVANE_AIR_ELEMENT_CODEC_INTERNAL_H
#define HALVANE_AIR_ELEMENT_CODEC_INTERNAL_H

#include <algorithm>
#include <array>
#include <concepts>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <type_traits>
#include <utility>
#include <vector>

#include "halvane/air/bit_octets.h"
#include "halvane/air/element_damage.h"
#include "halvane/air/field_sink.h"
#include "halvane/air/pieces_internal.h"
#include "halvane/air/suite.h"
#include "halvane/base/byte_buffer.h"
#include "halvane/base/byte_cursor.h"
#include "halvane/base/mac_address.h"
#include "halvane/base/ssid.h"

namespace halvane::air {

// A run of bits within a field of octets, with the standard's name for it. A run of one bit without
// a form is told as a flag.
struct BitField {
    std::uint16_t first;
    std::uint8_t count;
    std::string_view label;
    NumberForm form{};
};

// Tells the runs of bits of one field of octets.
class BitTeller {
  public:
    BitTeller(FieldSink& sink, const FieldPlace& place, Octets octets)
        : sink_(sink), place_(place), octets_(octets) {}

    // A run past the octets is left out. Of one that they end in, the missing bits are not set.
    void run(const BitField& part);
    void runs(std::span<const BitField> parts) {
        for (const BitField& part : parts) run(part);
    }
    template <typename Tell>
    void group(std::string_view label, Tell tell) {
        sink_.beginGroup(label);
        tell();
        sink_.endGroup();
    }

  private:
    FieldSink& sink_;
    const FieldPlace place_;
    const Octets octets_;
};

// Reads a body. The first field that does not fit fails the reader for good; every later field is
// left as it was.
class ElementReader {
  public:
    explicit ElementReader(Octets body, FieldSink* sink = nullptr)
        : cursor_(body), end_(body.size()), sink_(sink) {}

    bool ok() const { return !damage_; }
    const std::optional<ElementDamage>& damage() const { return damage_; }
    bool hasMore() const { return ok() && cursor_.position() < end_; }
    std::size_t remaining() const { return ok() ? end_ - cursor_.position() : 0; }

    // An unsigned number of `Size` octets, the least significant first.
    template <std::size_t Size, std::unsigned_integral Number>
    void numberOf(std::string_view label, Number& value, const NumberForm& form = {}) {
        const auto part = take(Size);
        if (!part) return;
        std::uint64_t number = 0;
        for (std::size_t i = Size; i-- > 0;) number = number << 8 | (*part)[i];
        value = static_cast<Number>(number);
        if (sink_) tellNumber(placeBefore(Size), label, number, 8 * Size, form);
    }
    template <std::unsigned_integral Number>
    void number(std::string_view label, Number& value, const NumberForm& form = {}) {
        numberOf<sizeof(Number)>(label, value, form);
    }
    // The same in two's complement.
    template <std::signed_integral Number>
    void number(std::string_view label, Number& value, NumberForm form = {}) {
        form.isSigned = true;
        auto bits = static_cast<std::make_unsigned_t<Number>>(value);
        number(label, bits, form);
        value = static_cast<Number>(bits);
    }

    // The same with the most significant octet first, as the Wi-Fi Alliance's attributes have it.
    template <std::unsigned_integral Number>
    void bigEndian(std::string_view label, Number& value, const NumberForm& form = {}) {
        const auto part = take(sizeof(Number));
        if (!part) return;
        std::uint64_t number = 0;
        for (const std::uint8_t octet : *part) number = number << 8 | octet;
        value = static_cast<Number>(number);
        if (sink_) tellNumber(placeBefore(sizeof(Number)), label, number, 8 * sizeof(Number), form);
    }

    // A field that consists of the parts that `parts` names.
    template <std::size_t Size>
    void bits(BitOctets<Size>& value, std::span<const BitField> parts) {
        const auto part = take(Size);
        if (!part) return;
        for (std::size_t i = 0; i < Size; ++i) value.octets[i] = (*part)[i];
        if (sink_) BitTeller(*sink_, placeBefore(Size), *part).runs(parts);
    }
    // A field of bits whose size `sizeIn` finds in the octets that are left, and whose runs `tell`
    // tells with a BitTeller.
    template <typename List, typename SizeIn, typename Tell>
    void bitString(List& value, SizeIn sizeIn, Tell tell) {
        if (!ok()) return;
        ByteCursor ahead = cursor_;
        const auto part = take(sizeIn(ahead.take(remaining()).value_or(Octets())));
        if (!part) return;
        if constexpr (std::same_as<List, ByteBuffer>) {
            value = ByteBuffer(*part);
        } else {
            value.clear();
            for (const std::uint8_t octet : *part) value.push_back(octet);
        }
        if (!sink_) return;
        BitTeller teller(*sink_, placeBefore(part->size()), *part);
        tell(teller);
    }

    void address(std::string_view label, MacAddress& value);
    void cipher(std::string_view label, Suite& value);
    void akm(std::string_view label, Suite& value);

    template <std::size_t Size>
    void octets(std::string_view label, std::array<std::uint8_t, Size>& octets) {
        const auto part = take(Size);
        if (!part) return;
        for (std::size_t i = 0; i < Size; ++i) octets[i] = (*part)[i];
        if (sink_) sink_->octets(placeBefore(Size), label, *part);
    }
    // A network's name of `size` octets. Fails for more octets than a name has.
    void ssid(std::string_view label, Ssid& value, std::size_t size);
    // The same of all octets that are left.
    void ssid(std::string_view label, Ssid& value) { ssid(label, value, remaining()); }
    // `size` octets, whatever they mean.
    void octets(std::string_view label, ByteBuffer& value, std::size_t size);
    // All octets that are left.
    void octets(std::string_view label, ByteBuffer& value) { octets(label, value, remaining()); }
    // All octets that are left, which hold elements after `fixedSize` octets.
    void elements(std::string_view label, ByteBuffer& value, std::size_t fixedSize = 0);
    // The octets that are left, whose meaning the element does not depend on. `tell` reads them
    // with a reader of its own, for the sink alone: what it cannot read stays octets.
    template <typename Tell>
    void opaque(ByteBuffer& value, Tell tell) {
        if (!ok()) return;
        if (sink_) {
            ElementReader inner(*this);
            tell(inner);
            inner.damage_.reset();
            inner.end_ = end_;
            if (inner.hasMore()) inner.tellRemaining();
        }
        value = ByteBuffer(take(remaining()).value_or(Octets()));
    }
    // The same as text, whose encoding is unknown. It is told as escapedText(), without NUL octets
    // at its end; as octets if it has no others.
    void text(std::string_view label, ByteBuffer& value, std::size_t size);
    void text(std::string_view label, ByteBuffer& value) { text(label, value, remaining()); }
    // The octets after the fields that the library knows.
    void rest(ByteBuffer& value) {
        if (hasMore()) octets("Further octets", value);
    }

    // A field that is there if `isPresent`: `read` takes its value.
    template <typename T, typename Read>
    void when(bool isPresent, std::optional<T>& value, Read read) {
        if (isPresent && ok()) read(value.emplace());
    }
    // A field that is there if octets are left for it.
    template <typename T, typename Read>
    void ifMore(std::optional<T>& value, Read read) {
        when(hasMore(), value, read);
    }

    // `count` items; `read` takes one. Fails where `list` has no room for them all.
    template <typename List, typename Read>
    void list(std::size_t count, List& list, Read read) {
        for (std::size_t i = 0; i < count && ok(); ++i) {
            if (!appendTo(list, read)) return;
        }
    }
    // The same after the number of items, which is a field of type `Count`.
    template <std::unsigned_integral Count, typename List, typename Read>
    void counted(std::string_view label, List& items, Read read) {
        Count count = 0;
        number(label, count);
        list(count, items, read);
    }
    // Items up to the end. An item that takes no octet ends the list.
    template <typename List, typename Read>
    void listToEnd(List& list, Read read) {
        while (hasMore()) {
            const std::size_t before = cursor_.position();
            if (!appendTo(list, read) || cursor_.position() == before) return;
        }
    }

    // Items of `size` octets each, while octets are left for a whole one.
    template <typename List, typename Read>
    void wholeItems(std::size_t size, List& items, Read read) {
        list(remaining() / size, items, read);
    }

    // Fields that belong together.
    template <typename Read>
    void group(std::string_view label, Read read) {
        if (!ok()) return;
        if (sink_) sink_->beginGroup(label);
        read();
        if (sink_) sink_->endGroup();
    }

    // The next `size` octets as a structure of its own, of which `read` cannot read past the end.
    // Octets that it leaves are lost: it ends with rest().
    template <typename Read>
    void within(std::size_t size, Read read) {
        if (!ok()) return;
        if (size > remaining()) return fail();
        const std::size_t end = std::exchange(end_, cursor_.position() + size);
        read();
        if (!ok()) return;
        cursor_.skip(remaining());
        end_ = end;
    }
    // The same after the structure's length, which is a field of type `Length` and counts `extra`
    // octets more than the structure has (1: itself).
    template <std::unsigned_integral Length, typename Read>
    void sized(std::string_view label, std::size_t extra, Read read) {
        Length length = 0;
        number(label, length);
        if (length < extra) return fail();
        within(length - extra, read);
    }
    // The same after a length of two octets, the most significant first.
    template <typename Read>
    void bigEndianSized(std::string_view label, Read read) {
        std::uint16_t length = 0;
        bigEndian(label, length);
        within(length, read);
    }

    // The octet `ahead` octets after the next one; absent past the end.
    std::optional<std::uint8_t> peek(std::size_t ahead = 0) const {
        return ahead < remaining() ? cursor_.peek(ahead) : std::nullopt;
    }
    // Items up to the end, or up to octets that hold no whole item. `fits` peeks to tell. An item
    // that takes no octet ends the list.
    template <typename List, typename Fits, typename Read>
    void listWhile(Fits fits, List& list, Read read) {
        while (hasMore() && fits(*this)) {
            const std::size_t before = cursor_.position();
            if (!appendTo(list, read) || cursor_.position() == before) return;
        }
    }
    // The same of subelements, which begin with an ID and a length.
    template <typename List, typename Read>
    void subelements(List& list, Read read) {
        listWhile(
            [](const ElementReader& reader) {
                const auto length = reader.peek(1);
                return length && *length <= reader.remaining() - kPieceHeader;
            },
            list, read);
    }

    // A length and the octets that it counts, with the fragments of the ID `fragmentId` after them,
    // as a structure of its own. `endsEmpty` tells whether the last fragment has no octets.
    template <typename Read>
    void joined(std::uint8_t fragmentId, bool& endsEmpty, Read read) {
        std::uint8_t length = 0;
        number("Length", length);
        if (!ok() || length < kFullPiece || !hasFragmentAfter(kFullPiece, fragmentId)) {
            return within(length, read);
        }
        const std::size_t start = cursor_.position();
        const std::vector<std::uint8_t> body = takePieces(fragmentId);
        const std::size_t fragments = (cursor_.position() - start - body.size()) / kPieceHeader;
        endsEmpty = body.size() == fragments * kFullPiece;
        std::optional<PieceSink> sink;
        if (sink_) sink.emplace(*sink_, fragmentId, start, body.size(), fragments);
        ElementReader outer = *this;
        *this = ElementReader(body, sink ? &*sink : nullptr);
        within(body.size(), read);
        if (damage_) outer.failAt(placeInPieces(start, body.size(), damage_->offset));
        *this = outer;
        if (sink && ok()) sink->finish();
    }

    // Fails at the octet that is next.
    void fail() {
        if (ok()) damage_ = ElementDamage{cursor_.position(), remaining()};
    }

  private:
    std::optional<Octets> take(std::size_t size) {
        if (size > remaining()) fail();
        return ok() ? cursor_.take(size) : std::nullopt;
    }
    // Whether a whole fragment stands `ahead` octets after the next one.
    bool hasFragmentAfter(std::size_t ahead, std::uint8_t fragmentId) const {
        const auto length = peek(ahead + 1);
        return length && peek(ahead) == fragmentId && *length <= remaining() - ahead - kPieceHeader;
    }
    // Takes a full piece and the fragments after it.
    std::vector<std::uint8_t> takePieces(std::uint8_t fragmentId);
    // Fails for a structure that has been passed, at an octet of it.
    void failAt(std::size_t offset) {
        damage_ = ElementDamage{offset, cursor_.position() - offset};
    }
    FieldPlace placeBefore(std::size_t size) const {
        return {cursor_.position() - size, size, 0, 0};
    }

    void tellRemaining();

    template <typename List, typename Read>
    bool appendTo(List& list, Read read) {
        typename List::value_type item{};
        read(item);
        if (!ok()) return false;
        if constexpr (requires {
                          { list.push_back(item) } -> std::same_as<bool>;
                      }) {
            if (!list.push_back(item)) fail();
        } else {
            list.push_back(std::move(item));
        }
        return ok();
    }

    void tellNumber(const FieldPlace& place, std::string_view label, std::uint64_t value,
                    std::size_t width, const NumberForm& form);

    ByteCursor cursor_;
    std::size_t end_;  // of the innermost structure
    FieldSink* sink_;
    std::optional<ElementDamage> damage_{};
};

// Appends a body's octets. A value that its field cannot tell fails the writer for good: a count or
// a length of too much, and a number of too many octets.
class ElementWriter {
  public:
    // The room is for any usual body. Without it, GCC 12 warns of false overflows where it sees
    // that nothing has been written yet.
    ElementWriter() { octets_.reserve(64); }

    // No octets if the writer has failed.
    std::vector<std::uint8_t> take() {
        if (!fits_) octets_.clear();
        return std::move(octets_);
    }
    void fail() { fits_ = false; }
    static bool ok() { return true; }
    static std::size_t remaining() { return 0; }  // conditions are the reader's alone

    template <std::size_t Size, std::unsigned_integral Number>
    void numberOf(std::string_view, Number value, const NumberForm& = {}) {
        if constexpr (Size < sizeof(Number)) require(value >> (8 * Size) == 0);
        for (std::size_t i = 0; i < Size; ++i) {
            octets_.push_back(static_cast<std::uint8_t>(std::uint64_t{value} >> (8 * i)));
        }
    }
    template <std::unsigned_integral Number>
    void number(std::string_view label, Number value, const NumberForm& = {}) {
        numberOf<sizeof(Number)>(label, value);
    }
    template <std::signed_integral Number>
    void number(std::string_view label, Number value, const NumberForm& = {}) {
        number(label, static_cast<std::make_unsigned_t<Number>>(value));
    }
    template <std::unsigned_integral Number>
    void bigEndian(std::string_view, Number value, const NumberForm& = {}) {
        for (std::size_t i = sizeof(Number); i-- > 0;) {
            octets_.push_back(static_cast<std::uint8_t>(std::uint64_t{value} >> (8 * i)));
        }
    }
    template <std::size_t Size>
    void bits(const BitOctets<Size>& value, std::span<const BitField>) {
        append(value.octets);
    }
    template <typename List, typename SizeIn, typename Tell>
    void bitString(const List& value, SizeIn, Tell) {
        octets_.insert(octets_.end(), value.begin(), value.end());
    }
    void address(std::string_view, const MacAddress& value) { append(value.octets()); }
    void cipher(std::string_view, const Suite& value) {
        append(value.oui);
        octets_.push_back(value.type);
    }
    void akm(std::string_view label, const Suite& value) { cipher(label, value); }
    template <std::size_t Size>
    void octets(std::string_view, const std::array<std::uint8_t, Size>& value) {
        append(value);
    }
    void ssid(std::string_view, const Ssid& value, std::size_t = 0) { append(value.bytes()); }
    void octets(std::string_view, const ByteBuffer& value, std::size_t = 0) {
        append(value.bytes());
    }
    void elements(std::string_view, const ByteBuffer& value, std::size_t = 0) {
        append(value.bytes());
    }
    template <typename Tell>
    void opaque(const ByteBuffer& value, Tell) {
        append(value.bytes());
    }
    void text(std::string_view, const ByteBuffer& value, std::size_t = 0) { append(value.bytes()); }
    void rest(const ByteBuffer& value) { append(value.bytes()); }

    template <typename T, typename Write>
    void when(bool, const std::optional<T>& value, Write write) {
        if (value) write(*value);
    }
    template <typename T, typename Write>
    void ifMore(const std::optional<T>& value, Write write) {
        when(true, value, write);
    }
    template <typename List, typename Write>
    void list(std::size_t, const List& list, Write write) {
        for (const auto& item : list) write(item);
    }
    template <std::unsigned_integral Count, typename List, typename Write>
    void counted(std::string_view label, const List& items, Write write) {
        require(items.size() <= std::numeric_limits<Count>::max());
        number(label, static_cast<Count>(items.size()));
        list(items.size(), items, write);
    }
    template <typename List, typename Write>
    void listToEnd(const List& list, Write write) {
        for (const auto& item : list) write(item);
    }
    template <typename List, typename Write>
    void wholeItems(std::size_t, const List& list, Write write) {
        listToEnd(list, write);
    }
    template <typename Write>
    void group(std::string_view, Write write) {
        write();
    }
    template <typename Write>
    void within(std::size_t, Write write) {
        write();
    }
    template <std::unsigned_integral Length, typename Write>
    void sized(std::string_view, std::size_t extra, Write write) {
        const std::size_t start = octets_.size();
        octets_.resize(start + sizeof(Length));
        write();
        const std::size_t length = octets_.size() - start - sizeof(Length) + extra;
        require(length <= std::numeric_limits<Length>::max());
        for (std::size_t i = 0; i < sizeof(Length); ++i) {
            octets_[start + i] = static_cast<std::uint8_t>(length >> (8 * i));
        }
    }

    static std::optional<std::uint8_t> peek(std::size_t = 0) { return std::nullopt; }
    template <typename Fits, typename List, typename Write>
    void listWhile(Fits, const List& list, Write write) {
        listToEnd(list, write);
    }
    template <typename List, typename Write>
    void subelements(const List& list, Write write) {
        listToEnd(list, write);
    }
    template <typename Write>
    void joined(std::uint8_t fragmentId, bool endsEmpty, Write write) {
        ElementWriter body;
        std::swap(octets_, body.octets_);
        write();
        std::swap(octets_, body.octets_);
        appendPieces(octets_, fragmentId, body.octets_, endsEmpty);
    }
    template <typename Write>
    void bigEndianSized(std::string_view label, Write write) {
        const std::size_t start = octets_.size();
        bigEndian(label, std::uint16_t{0});
        write();
        const std::size_t length = octets_.size() - start - 2;
        require(length <= std::numeric_limits<std::uint16_t>::max());
        octets_[start] = static_cast<std::uint8_t>(length >> 8);
        octets_[start + 1] = static_cast<std::uint8_t>(length);
    }

  private:
    void append(Octets octets) { octets_.insert(octets_.end(), octets.begin(), octets.end()); }
    void require(bool fits) { fits_ = fits_ && fits; }

    std::vector<std::uint8_t> octets_;
    bool fits_ = true;
};

// Makes an element in its place. std::in_place alone would first fill it with zeros: hundreds of
// octets in lists that stay empty.
template <typename T>
struct NewElement {
    operator T() const { return T{}; }
};

template <typename T, typename Layout>
std::optional<T> decodeBy(const Layout& layout, Octets body) {
    std::optional<T> element(std::in_place, NewElement<T>());
    ElementReader reader(body);
    layout(reader, *element);
    if (!reader.ok()) element.reset();
    return element;
}

template <typename T, typename Layout>
std::vector<std::uint8_t> encodeBy(const Layout& layout, const T& element) {
    ElementWriter writer;
    layout(writer, element);
    return writer.take();
}

template <typename T, typename Layout>
std::optional<ElementDamage> describeBy(const Layout& layout, Octets body, FieldSink& sink) {
    T element;
    ElementReader reader(body, &sink);
    layout(reader, element);
    return reader.damage();
}

// Defines the three functions of an element in its source, by the layout there.
#define HALVANE_AIR_DEFINE_ELEMENT(Type, layout)                                \
    std::optional<Type> Type::decode(Octets body) {                             \
        return decodeBy<Type>(layout, body);                                    \
    }                                                                           \
    std::optional<ElementDamage> Type::describe(Octets body, FieldSink& sink) { \
        return describeBy<Type>(layout, body, sink);                            \
    }                                                                           \
    std::vector<std::uint8_t> Type::encode() const {                            \
        return encodeBy(layout, *this);                                         \
    }

}  // namespace halvane::air

#endif
