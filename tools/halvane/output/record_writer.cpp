#include "tools/halvane/output/record_writer.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <unistd.h>
#include <utility>
#include <vector>

#include "halvane/air/bit_octets.h"
#include "halvane/air/bss_profile.h"
#include "halvane/air/element_range.h"
#include "halvane/base/mac_address.h"
#include "halvane/base/property_list_value.h"

#include "tools/halvane/output/air_text.h"
#include "tools/halvane/output/element_text.h"
#include "tools/halvane/output/explain_text.h"
#include "tools/halvane/output/frame_json.h"
#include "tools/halvane/output/json_writer.h"
#include "tools/halvane/output/property_list_output.h"
#include "tools/halvane/output/record_json.h"
#include "tools/halvane/output/standard_output.h"
#include "tools/halvane/survey/air_profile.h"

namespace halvane::tool {

namespace {

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

    void write(const capture::Sighting& sighting, const std::optional<FrameOrigin>& origin,
               const NetworkStatistics*) override {
        if (origin) {
            put("Frame                : " + std::to_string(origin->number) + " (" +
                subtypeName(origin->subtype) + ")\n");
        }
        if (const auto channel = sighting.otherRadioChannel()) {
            put("Radio Channel        : " + channel->description() + '\n');
        }
        put(sighting.record.description());
        if (!sighting.record.ieBuffer()) return;
        const air::BssProfile profile = airProfileOf(sighting);
        put("Air\n" + airText(profile) + "\nElements\n" +
            elementNames(air::ElementRange(sighting.record.ieBuffer()->bytes())) + '\n');
        if (!profile.findings.empty()) put("Findings\n" + findingLines(profile) + '\n');
    }
    void finish() override {}
};

class ExplainingWriter : public Writer {
  public:
    using MakerOf = std::function<std::string(const MacAddress&)>;

    ExplainingWriter(std::FILE* stream, const TextStyle& style, MakerOf makerOf,
                     std::vector<std::string> files)
        : Writer(stream), style_(style), makerOf_(std::move(makerOf)), files_(std::move(files)) {}

    void write(const capture::Sighting& sighting, const std::optional<FrameOrigin>&,
               const NetworkStatistics* heard) override {
        if (!std::exchange(isFirst_, false)) put("\n");
        const auto signal = heard != nullptr ? heard->signal.median() : signalOf(sighting);
        put(explainText({sighting, makerTextOf(sighting), signal, fileOf(sighting)}, style_));
    }
    void finish() override {}

  private:
    std::string makerTextOf(const capture::Sighting& sighting) const {
        const auto address = MacAddress::fromBytes(sighting.record.mac().bytes());
        if (!address) return {};
        std::string maker = makerOf_(*address);
        return maker == "-" ? "" : maker;
    }
    std::string fileOf(const capture::Sighting& sighting) const {
        return sighting.origin && !files_.empty() ? files_.at(sighting.origin->file) : "";
    }
    static std::optional<int> signalOf(const capture::Sighting& sighting) {
        const auto signal = sighting.record.RSSI();
        if (!signal) return std::nullopt;
        return static_cast<int>(signal->exactInt64().value_or(0));
    }

    TextStyle style_;
    MakerOf makerOf_;
    std::vector<std::string> files_;
    bool isFirst_ = true;
};

// Collects the text of whole records, and writes it as one piece when it has the size of a batch. A
// terminal gets each record at once. The rest goes out at the end, even if an exception leaves a
// record unfinished.
class JSONBatch {
  public:
    JSONBatch(JSONWriter::Layout layout, std::FILE* stream)
        : writer_(layout), stream_(stream), isShown_(::isatty(::fileno(stream)) != 0) {}
    JSONBatch(const JSONBatch&) = delete;
    JSONBatch& operator=(const JSONBatch&) = delete;
    ~JSONBatch() { flush(); }

    JSONWriter& writer() { return writer_; }

    // Marks the text so far as whole.
    void commit() {
        whole_ = writer_.text().size();
        if (isShown_ || whole_ >= kJSONBatchSize) flush();
    }

    // Writes the whole records, and drops the rest.
    void flush() {
        put(writer_.text().substr(0, whole_), stream_);
        writer_.clear();
        whole_ = 0;
    }

  private:
    JSONWriter writer_;
    std::FILE* const stream_;
    const bool isShown_;
    std::size_t whole_ = 0;  // bytes of its text
};

// Writes records of frames and of networks.
class JSONRecords {
  public:
    explicit JSONRecords(MakerOf makerOf) : makerOf_(std::move(makerOf)) {}

    void write(JSONWriter& writer, const capture::Sighting& sighting,
               const std::optional<FrameOrigin>& origin, const NetworkStatistics* heard) {
        if (origin && heard == nullptr) return frames_.write(writer, sighting, *origin, makerOf_);
        writeJSON(writer, sighting, origin, heard, makerOf_);
    }
    void write(JSONWriter& writer, const capture::Sighting& sighting, const NetworkMoment& moment) {
        writeJSON(writer, sighting, moment, makerOf_);
    }

  private:
    MakerOf makerOf_;
    FrameJSON frames_;
};

class JSONLinesWriter : public RecordWriter {
  public:
    JSONLinesWriter(std::FILE* stream, MakerOf makerOf)
        : batch_(JSONWriter::Layout::OneLine, stream), records_(std::move(makerOf)) {}

    void write(const capture::Sighting& sighting, const std::optional<FrameOrigin>& origin,
               const NetworkStatistics* heard) override {
        records_.write(batch_.writer(), sighting, origin, heard);
        end();
    }
    void writeScanned(const capture::Sighting& sighting, const NetworkMoment& moment) override {
        records_.write(batch_.writer(), sighting, moment);
        end();
    }
    void finish() override { batch_.flush(); }

  private:
    void end() {
        batch_.writer().newline();
        batch_.commit();
    }

    JSONBatch batch_;
    JSONRecords records_;
};

// Writes one array, with its brackets around the records as they pass. The records are indented
// like separate documents.
class JSONArrayWriter : public RecordWriter {
  public:
    JSONArrayWriter(std::FILE* stream, MakerOf makerOf)
        : batch_(JSONWriter::Layout::Indented, stream), records_(std::move(makerOf)) {}

    void write(const capture::Sighting& sighting, const std::optional<FrameOrigin>& origin,
               const NetworkStatistics* heard) override {
        begin();
        records_.write(batch_.writer(), sighting, origin, heard);
        batch_.commit();
    }
    void writeScanned(const capture::Sighting& sighting, const NetworkMoment& moment) override {
        begin();
        records_.write(batch_.writer(), sighting, moment);
        batch_.commit();
    }
    void finish() override {
        batch_.writer().verbatim(isFirst_ ? "[]\n" : "\n]\n");
        batch_.commit();
        batch_.flush();
    }

  private:
    void begin() {
        batch_.writer().verbatim(isFirst_ ? "[\n" : ",\n");
        isFirst_ = false;
    }

    JSONBatch batch_;
    JSONRecords records_;
    bool isFirst_ = true;
};

// Writes one array. Each record is first written as a document with its own array, and only the
// part between the array's tags goes out.
class PropertyListWriter : public Writer {
  public:
    using Writer::Writer;

    void write(const capture::Sighting& sighting, const std::optional<FrameOrigin>&,
               const NetworkStatistics*) override {
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

std::unique_ptr<RecordWriter> RecordWriter::createExplaining(
    std::FILE* stream, const TextStyle& style,
    std::function<std::string(const MacAddress&)> makerOf, std::vector<std::string> files) {
    return std::make_unique<ExplainingWriter>(stream, style, std::move(makerOf), std::move(files));
}

std::unique_ptr<RecordWriter> RecordWriter::create(Format format, std::FILE* stream,
                                                   MakerOf makerOf) {
    switch (format) {
        case Format::Table:
        case Format::CSV:
            return nullptr;
        case Format::Text:
            return std::make_unique<TextWriter>(stream);
        case Format::JSON:
            return std::make_unique<JSONArrayWriter>(stream, std::move(makerOf));
        case Format::JSONLines:
            return std::make_unique<JSONLinesWriter>(stream, std::move(makerOf));
        case Format::PropertyList:
            return std::make_unique<PropertyListWriter>(stream);
    }
    return nullptr;
}

}  // namespace halvane::tool
