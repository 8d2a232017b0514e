#include "tools/halvane/commands/command_schemas.h"

#include <algorithm>
#include <utility>

#include "halvane/air/channel_plan.h"
#include "halvane/air/operating_class.h"
#include "halvane/capture/frame_record.h"
#include "halvane/ie/mac.h"
#include "halvane/model/bss_config.h"
#include "halvane/model/client.h"
#include "halvane/model/device.h"
#include "halvane/model/interface.h"
#include "halvane/regulatory/channel.h"
#include "halvane/regulatory/country.h"
#include "halvane/regulatory/sku.h"

#include "tools/halvane/commands/channel_plan.h"
#include "tools/halvane/output/channel_properties.h"
#include "tools/halvane/output/config_properties.h"
#include "tools/halvane/output/element_properties.h"
#include "tools/halvane/output/frame_origin.h"
#include "tools/halvane/output/frame_properties.h"
#include "tools/halvane/output/model_properties.h"
#include "tools/halvane/output/property_table.h"
#include "tools/halvane/output/record_properties.h"
#include "tools/halvane/output/regulatory_properties.h"
#include "tools/halvane/output/station_event.h"
#include "tools/halvane/survey/network_moment.h"
#include "tools/halvane/survey/network_statistics.h"

namespace halvane::tool {

namespace {

// A record of one table, and under its name.
template <typename Record>
SchemaRecord recordOf(std::string_view sentence) {
    return {kTableName<Record>, sentence, {{kPropertyRows<Record>}}};
}

template <typename Record>
CommandSchema arrayOf(std::string_view command, std::string_view sentence,
                      std::string_view recordSentence) {
    return {command, SchemaForm::Array, sentence, {recordOf<Record>(recordSentence)}};
}

// The members of every record of a network, between those of its origin and of its end.
SchemaRecord networkRecord(std::string_view name, std::string_view sentence,
                           std::vector<SchemaPart> head, std::vector<SchemaPart> tail) {
    SchemaRecord record{name, sentence, std::move(head)};
    record.parts.insert(record.parts.end(), {{kPropertyRows<capture::Sighting>},
                                             {kPropertyRows<HalvaneMAC>},
                                             {kPropertyRows<RecordAir>, true}});
    record.parts.insert(record.parts.end(), tail.begin(), tail.end());
    record.parts.insert(record.parts.end(),
                        {{kPropertyRows<RecordTexts>}, {kPropertyRows<RecordMaker>}});
    return record;
}

CommandSchema decodeSchema() {
    return {"decode",
            SchemaForm::Array,
            "The networks of captures, in the order in which they were first heard.",
            {networkRecord("network", "A network, over all of its frames.", {},
                           {{kPropertyRows<NetworkStatistics>}}),
             networkRecord("frame", "A single frame, with --per-frame.",
                           {{kPropertyRows<FrameOrigin>}}, {{kPropertyRows<FrameTime>}}),
             networkRecord("buffer", "The elements of hexadecimal text, with --hex.", {}, {})}};
}

CommandSchema scanSchema() {
    return {"scan",
            SchemaForm::Array,
            "The networks of the kernel's list, in its order.",
            {networkRecord("network", "A network.", {}, {{kPropertyRows<NetworkMoment>}})}};
}

CommandSchema watchSchema() {
    return {"watch",
            SchemaForm::Array,
            "The networks that were heard, in the order in which they were first heard.",
            {networkRecord("network", "A network, over all of its frames.", {},
                           {{kPropertyRows<NetworkStatistics>}})}};
}

CommandSchema channelsSchema() {
    const PropertyRows mapped = mappedChannelRows();
    return {"channels",
            SchemaForm::Array,
            "Channels, or operating classes.",
            {{mapped.table(), "A channel of 2.4 GHz or 5 GHz.", {{mapped}}},
             recordOf<air::PlannedChannel>("A channel of any band, with options."),
             recordOf<air::OperatingClass>("An operating class, with --class.")}};
}

CommandSchema monitorSchema() {
    const PropertyRows event = stationEventRows();
    return {"monitor",
            SchemaForm::Lines,
            "An event of a station.",
            {{event.table(), "A station comes or goes.", {{event}}}}};
}

std::vector<CommandSchema> allSchemas() {
    constexpr std::string_view kCountry = "A country and its channels.";
    constexpr std::string_view kConfiguration = "The configuration of a network.";
    return {
        decodeSchema(),
        scanSchema(),
        watchSchema(),
        arrayOf<DecodedElement>("elements", "The elements of hexadecimal text.",
                                "An element, or octets that make none."),
        channelsSchema(),
        arrayOf<HalvaneSKU>("skus", "The regulatory regions.", "A region and its countries."),
        arrayOf<HalvaneCountry>("countries", "The countries of the regions.", kCountry),
        {"country", SchemaForm::Object, kCountry, {recordOf<HalvaneCountry>(kCountry)}},
        {"config",
         SchemaForm::Object,
         "The configuration that the options make.",
         {recordOf<HalvaneBSSConfig>(kConfiguration)}},
        arrayOf<HalvaneDevice>("devices", "The devices of the daemon.", "A device."),
        arrayOf<HalvaneInterface>("interfaces", "The interfaces of the daemon.", "An interface."),
        arrayOf<HalvaneChannel>("channel-list", "The channels of an interface.", "A channel."),
        arrayOf<HalvaneBSSConfig>("configs", "The configurations of the daemon.", kConfiguration),
        arrayOf<HalvaneClient>("clients", "The stations of hosted networks.", "A station."),
        monitorSchema(),
    };
}

}  // namespace

const std::vector<CommandSchema>& commandSchemas() {
    static const std::vector<CommandSchema> schemas = allSchemas();
    return schemas;
}

const CommandSchema* schemaOf(std::string_view command) {
    const auto& schemas = commandSchemas();
    const auto found = std::ranges::find(schemas, command, &CommandSchema::command);
    return found == schemas.end() ? nullptr : &*found;
}

}  // namespace halvane::tool
