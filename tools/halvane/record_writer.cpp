#include "tools/halvane/record_writer.h"

#include <nlohmann/json.hpp>
#include <string>

#include "tools/halvane/property_list_output.h"
#include "tools/halvane/record_json.h"
#include "tools/halvane/standard_output.h"

namespace halvane::tool {

namespace {

const char* subtypeName(BeaconSubtype subtype) {
    switch (subtype) {
        case BeaconSubtype::Beacon:
            return "beacon";
        case BeaconSubtype::ProbeResponse:
            return "probe-response";
    }
    return "";
}

JSON jsonWithOrigin(const HalvaneMAC& record, const std::optional<FrameOrigin>& origin) {
    JSON object = JSON::object();
    if (origin) {
        object["frame"] = origin->number;
        object["subtype"] = subtypeName(origin->subtype);
    }
    appendRecord(object, record);
    return object;
}

class Writer : public RecordWriter {
  public:
    explicit Writer(std::FILE* stream) : stream_(stream) {}

  protected:
    void put(const std::string& text) { tool::put(text, stream_); }
    std::FILE* stream() const { return stream_; }

  private:
    std::FILE* stream_;
};

class TextWriter : public Writer {
  public:
    using Writer::Writer;

    void write(const HalvaneMAC& record, const std::optional<FrameOrigin>& origin) override {
        if (origin) {
            put("Frame                : " + std::to_string(origin->number) + " (" +
                subtypeName(origin->subtype) + ")\n");
        }
        put(record.description());
    }
    void finish() override {}
};

class JSONLinesWriter : public Writer {
  public:
    using Writer::Writer;

    void write(const HalvaneMAC& record, const std::optional<FrameOrigin>& origin) override {
        put(jsonWithOrigin(record, origin).dump() + '\n');
    }
    void finish() override {}
};

// One array, its brackets written around the records as they pass.
class JSONWriter : public Writer {
  public:
    using Writer::Writer;

    void write(const HalvaneMAC& record, const std::optional<FrameOrigin>& origin) override {
        put(isFirst_ ? "[\n" : ",\n");
        put(jsonWithOrigin(record, origin).dump(2));
        isFirst_ = false;
    }
    void finish() override { put(isFirst_ ? "[]\n" : "\n]\n"); }

  private:
    bool isFirst_ = true;
};

class PropertyListWriter : public Writer {
  public:
    using Writer::Writer;

    void write(const HalvaneMAC& record, const std::optional<FrameOrigin>&) override {
        skeletons_.emplace_back(record.skeletonRepresentation());
    }
    void finish() override { putPropertyList(std::move(skeletons_), stream()); }

  private:
    PropertyListArray skeletons_;
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
