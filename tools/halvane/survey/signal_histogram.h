// The signals of the frames of a network: how many frames had each. The median, the mean and the
// ends are exact, however many frames there are.
//
// Plain values. Threads: as for a standard container.
#ifndef TOOLS_HALVANE_SURVEY_SIGNAL_HISTOGRAM_H
#define TOOLS_HALVANE_SURVEY_SIGNAL_HISTOGRAM_H

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>

namespace halvane::tool {

class SignalHistogram {
  public:
    // A card that tells more does not tell the truth.
    static constexpr int kMost = 0;      // dBm
    static constexpr int kLeast = -127;  // dBm; what is below counts as this

    // Counts a frame. A signal above kMost is not believed, and counts apart.
    void add(int dBm);
    void add(const SignalHistogram& other);

    // Frames whose signal is believed, and those whose signal is not.
    std::uint64_t count() const { return count_; }
    std::uint64_t implausibleCount() const { return implausibleCount_; }

    // All in dBm, and absent without a believed signal. Of an even number of frames the median is
    // the stronger of the two in the middle.
    std::optional<int> median() const;
    std::optional<int> least() const;
    std::optional<int> greatest() const;
    std::optional<double> mean() const;

  private:
    static constexpr std::size_t kSteps = kMost - kLeast + 1;

    std::optional<int> signalOf(std::uint64_t rank) const;  // from 0, the weakest first

    std::array<std::uint32_t, kSteps> counts_{};  // from kLeast on
    std::uint64_t count_ = 0;
    std::uint64_t implausibleCount_ = 0;
    std::int64_t sum_ = 0;
};

}  // namespace halvane::tool

#endif
