// The records of frames as JSON, one after another.
//
// A network sends the same elements again and again. The text of what follows from them is kept and
// copied while they stay, so that only the first of such frames is derived and printed as a whole.
// The output is that of writeJSON() (record_json.h).
//
// For one thread at a time.
#ifndef TOOLS_HALVANE_OUTPUT_FRAME_JSON_H
#define TOOLS_HALVANE_OUTPUT_FRAME_JSON_H

#include <cstddef>
#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <string_view>

#include "halvane/air/bit_octets.h"
#include "halvane/base/byte_buffer.h"
#include "halvane/base/number.h"
#include "halvane/capture/frame_record.h"

#include "tools/halvane/output/constant_texts.h"
#include "tools/halvane/output/frame_origin.h"
#include "tools/halvane/output/json_writer.h"
#include "tools/halvane/output/maker_lookup.h"

namespace halvane::tool {

class FrameJSON {
  public:
    // The most octets of elements and text that are kept. If there would be more, all are dropped.
    static constexpr std::size_t kMostKept = std::size_t{8} << 20;

    // Writes one object. REQUIRES: `writer` and `makerOf` are those of the first call.
    void write(JSONWriter& writer, const capture::Sighting& sighting, const FrameOrigin& origin,
               const MakerOf& makerOf);

    // How many records were written with kept text.
    std::uint64_t repeats() const { return repeats_; }

  private:
    // All that the kept text depends on, beside the address and the octets of TIM that change from
    // beacon to beacon.
    class Basis {
      public:
        Basis(const capture::Sighting& sighting, const ByteBuffer& elements);
        bool isOf(const capture::Sighting& sighting, air::Octets elements) const;
        // The offset of the element TIM. Absent if there is none whose octets may change.
        std::optional<std::size_t> tim() const;
        // The body of TIM in other such elements; none if there is none.
        air::Octets timIn(air::Octets elements) const;
        std::size_t size() const { return elements_.size(); }

      private:
        struct Facts {
            explicit Facts(const capture::Sighting& sighting);
            bool operator==(const Facts&) const = default;

            std::uint16_t capabilities;
            std::optional<Number> beaconInterval;
            std::optional<int> radioFrequency;
            bool isCut;
            std::optional<int> implausibleSignal;
        };

        Facts facts_;
        ByteBuffer elements_;
        std::size_t body_ = 0;  // where that of TIM starts in the elements; 0: there is none
        std::size_t bodyEnd_ = 0;
    };
    // Where in the kept text those octets stand that differ from frame to frame.
    struct Places {
        std::size_t digits;     // where those of TIM's body start
        std::size_t time;       // where the member starts
        std::size_t afterTime;  // where it ends
    };
    struct Kept {
        Basis basis;
        std::string text;  // of all members from the first that follows from the Basis
        Places places;

        std::size_t size() const;
    };

    const Kept* find(std::uint64_t key, const capture::Sighting& sighting,
                     air::Octets elements) const;
    void repeat(JSONWriter& writer, const Kept& kept, air::Octets elements,
                const FrameOrigin& origin);
    void keep(std::uint64_t key, Basis&& basis, std::string_view text, const Places& places);

    std::map<std::uint64_t, Kept> kept_;
    std::size_t keptSize_ = 0;
    std::uint64_t repeats_ = 0;
    ConstantTexts findings_;  // by their kinds
};

}  // namespace halvane::tool

#endif
