// Prints BSS records in one of the output formats.
//
// Records go out as they arrive, so a stream of them needs no memory. JSON goes out in batches of a
// fixed size, but one by one on a terminal.
#ifndef TOOLS_HALVANE_OUTPUT_RECORD_WRITER_H
#define TOOLS_HALVANE_OUTPUT_RECORD_WRITER_H

#include <cstdio>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "halvane/base/mac_address.h"
#include "halvane/capture/frame_record.h"

#include "tools/halvane/output/format.h"
#include "tools/halvane/output/frame_origin.h"
#include "tools/halvane/output/maker_lookup.h"
#include "tools/halvane/output/text_style.h"
#include "tools/halvane/survey/network_moment.h"
#include "tools/halvane/survey/network_statistics.h"

namespace halvane::tool {

class RecordWriter {
  public:
    virtual ~RecordWriter() = default;

    // A record of one frame, or of a network and how it was heard. Both may be unknown.
    virtual void write(const capture::Sighting& sighting, const std::optional<FrameOrigin>& origin,
                       const NetworkStatistics* heard = nullptr) = 0;

    // A record of the kernel's list. JSON has its age and whether it is in use.
    virtual void writeScanned(const capture::Sighting& sighting, const NetworkMoment& moment) {
        static_cast<void>(moment);
        write(sighting, std::nullopt);
    }

    // Ends the document. REQUIRES: called once, after the last record.
    virtual void finish() = 0;

    // REQUIRES: `stream` outlives the writer. Write errors stay in the stream's error flag.
    // `makerOf` is what JSON tells makers by.
    static std::unique_ptr<RecordWriter> create(Format format, std::FILE* stream,
                                                MakerOf makerOf = {});

    // Writes the profile of each record, with its reasons, in place of the record.
    // `makerOf` returns the cell of a table for the maker of an address; "-" for none. `files` are
    // the names of those that the origins of the records count; empty: no file is told.
    static std::unique_ptr<RecordWriter> createExplaining(
        std::FILE* stream, const TextStyle& style,
        std::function<std::string(const MacAddress&)> makerOf, std::vector<std::string> files = {});
};

}  // namespace halvane::tool

#endif
