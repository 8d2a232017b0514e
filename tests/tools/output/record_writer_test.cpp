#include "tools/halvane/output/record_writer.h"

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <fcntl.h>
#include <gtest/gtest.h>
#include <nlohmann/json.hpp>
#include <poll.h>
#include <string>
#include <vector>

#include "halvane/base/byte_buffer.h"
#include "halvane/base/number.h"
#include "halvane/base/property_list_value.h"
#include "halvane/ie/mac.h"
#include "halvane/platform/os/file_internal.h"
#include "halvane/platform/plist/xml_property_list.h"

#include "tests/support/captured_stream.h"
#include "tests/support/elements.h"
#include "tests/support/replaced_system.h"
#include "tools/halvane/output/json_writer.h"

using namespace halvane;
using namespace halvane::testing;
using namespace halvane::capture;
using namespace halvane::tool;

namespace {

// A sighting of a BSS on channel 149.
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
    const halvane::ScopedUpTime clock;  // a description states the age in seconds
    const Sighting other = sighting(1, Number(1));
    const std::string text = "Radio Channel        : 1\n" + other.record.description();
    EXPECT_TRUE(written(Format::Text, {other}).starts_with(text + "Air\n"));
    EXPECT_TRUE(written(Format::Text, {other}, FrameOrigin{7})
                    .starts_with("Frame                : 7 (beacon)\n" + text + "Air\n"));
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

// The list is complete although the writer writes each record as it comes.
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

// --- When JSON goes out ---

TEST(RecordWriter, PutsJSONInBatchesOfWholeRecords) {
    for (const Format format : {Format::JSON, Format::JSONLines}) {
        const CapturedStream output(stdout);
        const auto writer = RecordWriter::create(format, stdout);
        const Sighting one = sighting(1, std::nullopt);
        writer->write(one, std::nullopt);
        EXPECT_EQ(output.text(), "");
        std::size_t count = 1;
        for (; output.text().empty() && count < 10000; ++count) writer->write(one, std::nullopt);
        const std::string batch = output.text();
        EXPECT_GE(batch.size(), kJSONBatchSize);
        EXPECT_LT(batch.size(), kJSONBatchSize + 4096);
        EXPECT_EQ(batch.back(), format == Format::JSON ? '}' : '\n');
        writer->finish();
        const std::string text = output.text();
        EXPECT_EQ(text.substr(0, batch.size()), batch);
        const auto records = format == Format::JSON
                                 ? nlohmann::json::parse(text).size()
                                 : static_cast<std::size_t>(std::ranges::count(text, '\n'));
        EXPECT_EQ(records, count);
    }
}

// If memory runs out, the writer is not finished. The records written before stay.
TEST(RecordWriter, PutsWholeRecordsThoughItIsNotFinished) {
    const std::string expected = written(Format::JSONLines, {sighting(1, std::nullopt)});
    const CapturedStream output(stdout);
    RecordWriter::create(Format::JSONLines, stdout)->write(sighting(1, std::nullopt), std::nullopt);
    EXPECT_EQ(output.text(), expected);
}

TEST(RecordWriter, GivesATerminalEachRecordAtOnce) {
    const FileDescriptor terminal(::posix_openpt(O_RDWR | O_NOCTTY));
    ASSERT_TRUE(terminal && ::grantpt(terminal.number()) == 0 &&
                ::unlockpt(terminal.number()) == 0);
    std::FILE* const stream = std::fopen(::ptsname(terminal.number()), "w");
    ASSERT_NE(stream, nullptr);
    auto writer = RecordWriter::create(Format::JSONLines, stream);
    writer->write(sighting(1, std::nullopt), std::nullopt);
    pollfd readable = {terminal.number(), POLLIN, 0};
    EXPECT_EQ(::poll(&readable, 1, 10000), 1);
    writer.reset();
    std::fclose(stream);
}

}  // namespace
