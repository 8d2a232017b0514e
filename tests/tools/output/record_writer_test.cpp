#include "tools/halvane/output/record_writer.h"

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>
#include <string>
#include <vector>

#include "halvane/base/byte_buffer.h"
#include "halvane/base/number.h"
#include "halvane/base/property_list_value.h"
#include "halvane/ie/mac.h"
#include "halvane/platform/plist/xml_property_list.h"

#include "tests/support/captured_stream.h"
#include "tests/support/elements.h"
#include "tests/support/replaced_system.h"

using namespace halvane;
using namespace halvane::testing;
using namespace halvane::capture;
using namespace halvane::tool;

namespace {

// Of a BSS on channel 149.
Sighting sighting(std::uint8_t last, std::optional<Number> radioChannel) {
    auto record = HalvaneMAC::initWithMAC({0x02, 0, 0, 0, 0, last});
    record.setInformationElements(ByteBuffer(ssidElement("home")));
    record.setChannel(Number(149));
    return {record, radioChannel};
}

std::string written(Format format, const std::vector<Sighting>& sightings,
                    const std::optional<FrameOrigin>& origin = {}) {
    const CapturedStream output(stdout);
    const auto writer = RecordWriter::create(format, stdout);
    for (const Sighting& each : sightings) writer->write(each, origin);
    writer->finish();
    return output.text();
}

TEST(RecordWriter, TellsTheRadiosChannelWhereItIsAnother) {
    const halvane::ScopedUpTime clock;  // a description tells the age in seconds
    const Sighting other = sighting(1, Number(1));
    const std::string text = other.record.description();
    EXPECT_EQ(written(Format::Text, {other}), "Radio Channel        : 1\n" + text);
    EXPECT_EQ(written(Format::Text, {other}, FrameOrigin{7}),
              "Frame                : 7 (beacon)\nRadio Channel        : 1\n" + text);
    for (const Format format : {Format::JSON, Format::JSONLines}) {
        auto json = nlohmann::json::parse(written(format, {other}));
        if (format == Format::JSON) json = json.at(0);
        EXPECT_EQ(json["channel"], 149);
        EXPECT_EQ(json["radioChannel"], 1);
    }
    const std::string list = written(Format::PropertyList, {other});
    EXPECT_NE(list.find("<key>Channel</key>\n\t\t<integer>149</integer>"), list.npos) << list;
    EXPECT_NE(list.find("<key>RadioChannel</key>\n\t\t<integer>1</integer>"), list.npos) << list;
}

TEST(RecordWriter, TellsNoRadioChannelThatIsTheSame) {
    const halvane::ScopedUpTime clock;
    for (const Format format :
         {Format::Text, Format::JSON, Format::JSONLines, Format::PropertyList}) {
        const Sighting none = sighting(1, std::nullopt);
        Sighting same = none;
        same.radioChannel = Number(149);
        EXPECT_EQ(written(format, {same}), written(format, {none}));
    }
    EXPECT_EQ(written(Format::Text, {sighting(1, Number(149))}).substr(0, 4), "MAC ");
}

// Though each record goes out as it comes.
TEST(RecordWriter, WritesOnePropertyListOfAllRecords) {
    for (std::size_t count = 0; count < 4; ++count) {
        std::vector<Sighting> sightings;
        PropertyListArray skeletons;
        for (std::size_t i = 0; i < count; ++i) {
            sightings.push_back(sighting(static_cast<std::uint8_t>(i), std::nullopt));
            skeletons.emplace_back(sightings.back().record.skeletonRepresentation());
        }
        EXPECT_EQ(written(Format::PropertyList, sightings), xmlPropertyList(skeletons));
    }
}

}  // namespace
