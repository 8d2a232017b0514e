#include "tools/halvane/output/record_writer.h"

#include <nlohmann/json.hpp>
#include <string>
#include <string_view>
#include <utility>

#include "halvane/base/property_list_value.h"

#include "tools/halvane/output/json_value.h"
#include "tools/halvane/output/property_list_output.h"
#include "tools/halvane/output/record_json.h"
#include "tools/halvane/output/standard_output.h"

namespace halvane::tool {

namespace {

const char* subtypeName(capture::BeaconSubtype subtype) {
    switch (subtype) {
        case capture::BeaconSubtype::Beacon:
            return "beacon";
        case capture::BeaconSubtype::ProbeResponse:
            return "probe-response";
    }
    return "";
}

JSON jsonWithOrigin(const capture::Sighting& sighting, const std::optional<FrameOrigin>& origin) {
    JSON object = JSON::object();
    if (origin) {
        object["frame"] = origin->number;
        object["subtype"] = subtypeName(origin->subtype);
    }
    putMember(object, "radioChannel", sighting.otherRadioChannel());
    appendRecord(object, sighting.record);
    return object;
}

class Writer : public RecordWriter {
  public:
    explicit Writer(std::FILE* stream) : stream_(stream) {}

  protected:
    void put(const std::string& text) { tool::put(text, stream_); }

  private:
    std::FILE* stream_;
};

class TextWriter : public Writer {
  public:
    using Writer::Writer;

    void write(const capture::Sighting& sighting,
               const std::optional<FrameOrigin>& origin) override {
        if (origin) {
            put("Frame                : " + std::to_string(origin->number) + " (" +
                subtypeName(origin->subtype) + ")\n");
        }
        if (const auto channel = sighting.otherRadioChannel()) {
            put("Radio Channel        : " + channel->description() + '\n');
        }
        put(sighting.record.description());
    }
    void finish() override {}
};

class JSONLinesWriter : public Writer {
  public:
    using Writer::Writer;

    void write(const capture::Sighting& sighting,
               const std::optional<FrameOrigin>& origin) override {
        put(jsonWithOrigin(sighting, origin).dump() + '\n');
    }
    void finish() override {}
};

// One array, its brackets written around the records as they pass.
class JSONWriter : public Writer {
  public:
    using Writer::Writer;

    void write(const capture::Sighting& sighting,
               const std::optional<FrameOrigin>& origin) override {
        put(isFirst_ ? "[\n" : ",\n");
        put(jsonWithOrigin(sighting, origin).dump(2));
        isFirst_ = false;
    }
    void finish() override { put(isFirst_ ? "[]\n" : "\n]\n"); }

  private:
    bool isFirst_ = true;
};

// One array. Each record is written as the document of an array of its own, of which only the part
// between the array's tags goes out.
class PropertyListWriter : public Writer {
  public:
    using Writer::Writer;

    void write(const capture::Sighting& sighting, const std::optional<FrameOrigin>&) override {
        PropertyListDictionary skeleton = sighting.record.skeletonRepresentation();
        if (const auto channel = sighting.otherRadioChannel()) {
            skeleton.set("RadioChannel", *channel);
        }
        const auto document = propertyListText(PropertyListArray{std::move(skeleton)});
        if (!document) return;
        const std::size_t start = document->find(kArrayStart) + kArrayStart.size();
        const std::size_t end = document->rfind(kArrayEnd);
        if (end_.empty()) put(document->substr(0, start));
        put(document->substr(start, end - start));
        end_ = document->substr(end);
    }
    void finish() override {
        put(end_.empty() ? propertyListText(PropertyListArray()).value_or("") : end_);
    }

  private:
    static constexpr std::string_view kArrayStart = "<array>\n";
    static constexpr std::string_view kArrayEnd = "</array>\n";

    std::string end_;  // of the document; empty before its first record
};

}  // namespace

std::unique_ptr<RecordWriter> RecordWriter::create(Format format, std::FILE* stream) {
    switch (format) {
        case Format::Text:
            return std::make_unique<TextWriter>(stream);
        case Format::JSON:
            return std::make_unique<JSONWriter>(stream);
        case Format::JSONLines:
            return std::make_unique<JSONLinesWriter>(stream);
        case Format::PropertyList:
            return std::make_unique<PropertyListWriter>(stream);
    }
    return nullptr;
}

}  // namespace halvane::tool
