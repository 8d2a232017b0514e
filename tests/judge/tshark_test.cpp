// What tshark reads in the elements of beacons and probe responses beside what Halvane reads there.
//
// tshark is a peer that others wrote from the same standards. tshark_fields.tsv pairs its fields
// with Halvane's: both stand at the same bits and have the same value. tshark_differences.tsv lists
// where tshark 4.0 and Halvane differ, with who is right by which clause: in the value, in the name
// alone, or in what stands there at all ("alone": nothing to compare). tshark_lost.tsv tells in
// which elements tshark loses its way. tshark_forms.tsv lists what tshark tells apart from values:
// wholes whose parts are compared, headings, remarks.
#include <algorithm>
#include <charconv>
#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <gtest/gtest.h>
#include <iostream>
#include <map>
#include <optional>
#include <set>
#include <span>
#include <string>
#include <string_view>
#include <system_error>
#include <vector>

#include "halvane/air/bit_octets.h"
#include "halvane/air/element_id.h"
#include "halvane/air/element_info.h"
#include "halvane/air/element_range.h"
#include "halvane/base/byte_buffer.h"

#include "tests/judge/captures.h"
#include "tests/judge/field_table.h"
#include "tests/judge/told_values.h"
#include "tests/judge/tshark_output.h"
#include "tests/support/hostile_bytes.h"
#include "tests/support/temporary_folder.h"
#include "tools/halvane/input/capture_reader.h"
#include "tools/halvane/output/described_element.h"
#include "tools/halvane/output/element_list.h"

using namespace halvane;
using namespace halvane::testing;

namespace {

const FieldTable& table() {
    static const FieldTable read = FieldTable::read(HALVANE_JUDGE);
    return read;
}

std::optional<std::int64_t> numberIn(std::string_view text, int base) {
    std::int64_t number = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number, base);
    if (text.empty() || error != std::errc() || end != text.data() + text.size()) {
        return std::nullopt;
    }
    return number;
}

// The number that tshark shows; absent for octets and text.
std::optional<std::int64_t> numberOf(const TsharkField& field) {
    if (field.isPartOfOctets) return numberIn(field.value, 16);
    const std::string_view show = field.show;
    if (show.starts_with("0x")) return numberIn(show.substr(2), 16);
    if (show == field.value) return std::nullopt;
    return numberIn(show, 10);
}

bool isWithin(const TsharkField& inner, const ToldValue& outer) {
    return inner.firstBit >= outer.firstBit &&
           inner.firstBit + inner.bitCount <= outer.firstBit + outer.bitCount;
}

class Judge {
  public:
    // Compares all frames of the files that hold an element that no earlier one held.
    void judge(const std::string& path) {
        std::map<std::uint64_t, Frame> frames = framesIn(path);
        if (frames.empty()) return;
        std::set<std::uint64_t> numbers;
        for (const auto& [number, frame] : frames) numbers.insert(number);
        const auto output = readByTshark(path, numbers);
        for (const auto& [number, frame] : frames) {
            where_ = std::filesystem::path(path).filename().string() + " frame " +
                     std::to_string(number);
            const auto other = output.find(number);
            ASSERT_NE(other, output.end()) << where_;
            compareFrame(frame, other->second);
        }
    }

    // From now on compares only elements whose fields are those of an earlier one.
    void keepForms() { areFormsKept_ = true; }

    std::size_t frames_ = 0;
    std::size_t elements_ = 0;
    std::size_t comparisons_ = 0;
    std::set<FieldKey> met_;        // rows of all tables
    std::set<FieldKey> differing_;  // rows of differences whose values differ
    std::size_t lost_ = 0;          // elements in which tshark lost its way

  private:
    struct Frame {
        Bytes elements;
        std::uint16_t capabilities = 0;
        std::uint16_t beaconInterval = 0;
    };

    std::map<std::uint64_t, Frame> framesIn(const std::string& path) {
        std::map<std::uint64_t, Frame> frames;
        auto reader = tool::CaptureReader::open(path);
        EXPECT_TRUE(reader) << path;
        while (reader) {
            const auto frame = reader->next();
            if (!frame) break;
            const auto* const beacon = frame->beacon();
            if (beacon == nullptr || !hasNews(beacon->elements)) continue;
            frames[frame->number] = {{beacon->elements.begin(), beacon->elements.end()},
                                     beacon->capabilities,
                                     beacon->beaconInterval};
        }
        return frames;
    }

    bool hasNews(air::Octets elements) {
        bool hasNew = false;
        for (const air::Element& element : air::ElementRange(elements)) {
            hasNew |= known_.emplace(element.octets.begin(), element.octets.end()).second;
        }
        return hasNew;
    }

    void compareFrame(const Frame& frame, const TsharkFrame& other) {
        ++frames_;
        EXPECT_EQ(numberIn(std::string_view(other.capabilities).substr(2), 16), frame.capabilities)
            << where_;
        EXPECT_EQ(numberIn(other.beaconInterval, 10), frame.beaconInterval) << where_;
        comparisons_ += 2;
        compareWalk(frame, other);
        for (const TsharkElement& element : other.elements) compareElement(frame, element);
    }

    // Both find elements at the same places. tshark does not join fragments, and an exception ends
    // its walk.
    void compareWalk(const Frame& frame, const TsharkFrame& other) {
        std::set<std::size_t> starts;
        for (const TsharkElement& element : other.elements) starts.insert(element.offset);
        const std::size_t last = starts.empty() ? 0 : *starts.rbegin();
        const air::ElementRange range(frame.elements);
        for (const air::Element& element : range) {
            if (other.isMalformed && element.offset > last) break;
            EXPECT_TRUE(starts.contains(element.offset)) << where_ << " at " << element.offset;
            for (std::size_t i = 0; i < element.octets.size(); ++i) {
                starts.erase(element.offset + i);
            }
            ++comparisons_;
        }
        const auto trailing = range.trailing();
        if (!trailing.empty()) starts.erase(trailing.offset);  // tshark shows what is there of it
        EXPECT_TRUE(starts.empty()) << where_ << " at " << *starts.begin();
    }

    void compareElement(const Frame& frame, const TsharkElement& other) {
        for (const TsharkElement& inner : other.inner) compareElement(frame, inner);
        const auto octets = air::Octets(frame.elements).subspan(other.offset, other.size);
        if (octets.size() < 2 || octets.size() != octets[1] + 2u) return;  // cut
        if (!compared_.emplace(octets.begin(), octets.end()).second) return;
        const tool::ElementList list(octets);
        const air::Element element = *list.range().begin();
        const tool::DescribedElement described(list, element);
        if (!described.hasFields()) return;
        ++elements_;
        if (isLost(other)) {
            ++lost_;
            return;
        }
        const bool isVendor = element.id == air::ElementId::Vendor;
        ToldValues told(isVendor ? 4 : 0);
        described.describe(told);
        const std::string name = air::elementName(element);
        const std::string form = formOf(other.fields, told.values_);
        if (areFormsKept_ && !forms_.contains(form)) return;
        forms_.insert(form);
        std::map<std::string, std::size_t> counts;
        for (const TsharkField& field : other.fields) {
            const std::size_t index = counts[field.name]++;
            compareField(name, field, index, {told.values_, element.body});
        }
    }

    // The names and places of the fields, as both tell them. Remarks of tshark have no place.
    static std::string formOf(const std::vector<TsharkField>& fields,
                              const std::vector<ToldValue>& told) {
        std::string form;
        const auto add = [&](const std::string& name, std::size_t first, std::size_t count) {
            form += name + ' ' + std::to_string(first) + ' ' + std::to_string(count) + '\n';
        };
        for (const TsharkField& field : fields) {
            if (!field.name.starts_with("_ws.")) add(field.name, field.firstBit, field.bitCount);
        }
        for (const ToldValue& value : told) add(value.path, value.firstBit, value.bitCount);
        return form;
    }

    static bool isLost(const TsharkElement& element) {
        return std::ranges::any_of(element.fields, [](const TsharkField& field) {
            const auto row = table().lost.find(field.name);
            return row != table().lost.end() && (row->second == "*" || row->second == field.show);
        });
    }

    // An element as Halvane tells it.
    struct Told {
        const std::vector<ToldValue>& values;
        air::Octets body;
    };

    // `index` counts tshark's fields of the same name in the element.
    void compareField(const std::string& element, const TsharkField& field, std::size_t index,
                      const Told& told) {
        const FieldKey key{element, field.name};
        met_.insert(key);
        const auto difference = table().differences.find(key);
        const bool isDifferent = difference != table().differences.end();
        const auto paths = table().paths.find(key);
        if (paths == table().paths.end()) {
            const bool isListed = isDifferent || table().isForm(element, field.name);
            EXPECT_TRUE(isListed) << where_ << ": " << element << ": " << field.name << ": "
                                  << field.text;
            return;
        }
        if (field.bitCount == 0) return;  // told as missing
        ++comparisons_;
        const std::string fault = faultOf(field, index, paths->second, told);
        if (fault.empty()) return;
        if (isDifferent && difference->second == "value") {
            differing_.insert(key);
            return;
        }
        ADD_FAILURE() << where_ << ": " << element << ": " << field.name << ": " << fault
                      << "\n  tshark: " << field.text
                      << "\n  body: " << ByteBuffer(told.body).hex();
    }

    static bool isAt(const TsharkField& field, const ToldValue& value) {
        return isWithin(field, value) && (!value.number || value.bitCount == field.bitCount);
    }

    // The told value of one of the paths that stands where tshark's field does. A path that begins
    // with "*" stands for all that end so; the field is the one with the same index among them.
    static const ToldValue* find(const TsharkField& field, std::size_t index,
                                 const std::set<std::string>& paths, const Told& told) {
        const std::string& first = *paths.begin();
        for (const ToldValue& value : told.values) {
            if (first.front() == '*') {
                if (value.path.ends_with(first.substr(1)) && index-- == 0) return &value;
            } else if (paths.contains(value.path) && isAt(field, value)) {
                return &value;
            }
        }
        return nullptr;
    }

    // Empty if both tell the same value.
    static std::string faultOf(const TsharkField& field, std::size_t index,
                               const std::set<std::string>& paths, const Told& told) {
        const ToldValue* const other = find(field, index, paths, told);
        if (other == nullptr) return "Halvane tells nothing at its place";
        if (!other->number) return {};  // the same octets
        const auto number = numberOf(field);
        const auto octets = told.body.subspan(field.firstBit / 8, field.bitCount / 8);
        const bool isSame = number ? *number == *other->number : encodes(octets, *other->number);
        return isSame ? "" : "Halvane tells " + std::to_string(*other->number);
    }

    // Whether the octets are the number in one of the two orders.
    static bool encodes(air::Octets octets, std::int64_t number) {
        std::uint64_t little = 0, big = 0;
        for (std::size_t i = 0; i < octets.size(); ++i) {
            little |= std::uint64_t{octets[i]} << (8 * i);
            big = big << 8 | octets[i];
        }
        const auto wanted = static_cast<std::uint64_t>(number);
        return wanted == little || wanted == big;
    }

    bool areFormsKept_ = false;
    std::set<std::string> forms_;
    std::string where_;
    std::set<Bytes> known_;     // elements of all frames so far
    std::set<Bytes> compared_;  // the same, with elements within elements
};

// The reason why tshark cannot judge here; empty if it can.
std::string excuse() {
    const auto version = tsharkVersion();
    if (!version) return "tshark is not installed";
    if (version->find(" 4.0.") == std::string::npos) {
        return "the tables are those of tshark 4.0, this is " + *version;
    }
    return {};
}

void tellFigures(const Judge& judge) {
    std::cout << judge.frames_ << " frames, " << judge.elements_ << " elements, "
              << judge.met_.size() << " fields, " << judge.comparisons_ << " comparisons, "
              << judge.lost_ << " elements in which tshark loses its way\n";
}

TEST(Tshark, AgreesOnTheSamplesOfAllElements) {
    if (const std::string reason = excuse(); !reason.empty()) GTEST_SKIP() << reason;
    const TemporaryFolder folder;
    Judge judge;
    judge.judge(folder.write("samples.pcap", captureOf(judgedSamples())));
    tellFigures(judge);
    EXPECT_GT(judge.comparisons_, 1000u);
}

// Each bit of each sample is set otherwise in turn. A bit that changes which fields there are is
// left out: of lengths and counts that contradict the rest, each program makes something else.
TEST(Tshark, AgreesOnEachBit) {
    if (const std::string reason = excuse(); !reason.empty()) GTEST_SKIP() << reason;
    std::vector<Bytes> elements;
    for (const Bytes& sample : judgedSamples()) {
        const std::size_t start = sample[0] == 255 ? 3 : sample[0] == 221 ? 6 : 2;
        for (std::size_t bit = 8 * start; bit < 8 * sample.size(); ++bit) {
            elements.push_back(sample);
            elements.back()[bit / 8] ^= static_cast<std::uint8_t>(1u << bit % 8);
        }
    }
    const TemporaryFolder folder;
    Judge judge;
    judge.judge(folder.write("samples.pcap", captureOf(judgedSamples())));
    judge.keepForms();
    constexpr std::size_t kFrames = 2000;  // in a file, so that what tshark writes stays small
    for (std::size_t i = 0; i < elements.size(); i += kFrames) {
        const auto part = std::span(elements).subspan(i, std::min(kFrames, elements.size() - i));
        judge.judge(folder.write("bits.pcap", captureOf(part)));
    }
    tellFigures(judge);
    EXPECT_GT(judge.comparisons_, 100000u);
}

// Of a row that is met nowhere, nobody knows whether it is right.
void expectEachRowMet(const Judge& judge) {
    for (const auto& [key, paths] : table().paths) {
        EXPECT_TRUE(judge.met_.contains(key)) << key.first << ": " << key.second;
    }
    for (const auto& [key, what] : table().differences) {
        EXPECT_TRUE(judge.met_.contains(key)) << key.first << ": " << key.second;
        EXPECT_TRUE(what != "value" || judge.differing_.contains(key))
            << key.first << ": " << key.second << " does not differ";
    }
}

TEST(Tshark, AgreesOnRealFrames) {
    if (const std::string reason = excuse(); !reason.empty()) GTEST_SKIP() << reason;
    std::vector<std::string> paths = capturesIn(HALVANE_CAPTURES);
    for (const std::string& path : capturesIn(HALVANE_MODERN)) paths.push_back(path);
    if (paths.empty()) GTEST_SKIP() << "no captures in " << HALVANE_CAPTURES;
    Judge judge;
    for (const std::string& path : paths) judge.judge(path);
    const TemporaryFolder folder;
    judge.judge(folder.write("samples.pcap", captureOf(judgedSamples())));
    tellFigures(judge);
    EXPECT_GT(judge.comparisons_, 10000u);
    expectEachRowMet(judge);
}

// Needs no file outside of the tree.
TEST(Tshark, AgreesOnTheNetworksOfToday) {
    if (const std::string reason = excuse(); !reason.empty()) GTEST_SKIP() << reason;
    Judge judge;
    for (const char* const name :
         {"today.pcap", "shared-beacon.pcap", "multi-link.pcap", "contradictions.pcap"}) {
        judge.judge(std::string(HALVANE_SAMPLES "/") + name);
    }
    tellFigures(judge);
    EXPECT_GT(judge.comparisons_, 1000u);
}

}  // namespace
