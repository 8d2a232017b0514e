#include "halvane/air/phy_rate.h"

#include <array>
#include <cstddef>
#include <span>

namespace halvane::air {

namespace {

// The modulation and coding of each MCS; 36.5 has all of them, the older clauses the first ones.
struct Modulation {
    std::uint8_t bits;
    std::uint8_t numerator;
    std::uint8_t denominator;
};
constexpr Modulation kModulations[] = {
    {1, 1, 2}, {2, 1, 2}, {2, 3, 4}, {4, 1, 2},  {4, 3, 4},  {6, 2, 3},  {6, 3, 4},
    {6, 5, 6}, {8, 3, 4}, {8, 5, 6}, {10, 3, 4}, {10, 5, 6}, {12, 3, 4}, {12, 5, 6},
};

struct WidthRow {
    int width;  // MHz
    int dataSubcarriers;
};
constexpr WidthRow kHtWidths[] = {{20, 52}, {40, 108}};
constexpr WidthRow kVhtWidths[] = {{20, 52}, {40, 108}, {80, 234}, {160, 468}};
constexpr WidthRow kHeWidths[] = {{20, 234}, {40, 468}, {80, 980}, {160, 1960}};
constexpr WidthRow kEhtWidths[] = {{20, 234}, {40, 468}, {80, 980}, {160, 1960}, {320, 3920}};

struct PhyRow {
    std::string_view name;
    std::span<const WidthRow> widths;
    int highestMcs;
    int maxStreams;
    int shortSymbol;  // ns
    int longSymbol;
};
constexpr std::array<PhyRow, 4> kPhys = {{{"HT", kHtWidths, 7, 4, 3600, 4000},
                                          {"VHT", kVhtWidths, 9, 8, 3600, 4000},
                                          {"HE", kHeWidths, 11, 8, 13600, 13600},
                                          {"EHT", kEhtWidths, 13, 8, 13600, 13600}}};

// The combinations without a rate: the bits of a symbol do not divide among its encoders (21.5).
constexpr bool isExcludedFromVht(int width, int streams, int mcs) {
    if (width == 20) return mcs == 9 && streams != 3 && streams != 6;
    if (width == 80) {
        return (mcs == 6 && (streams == 3 || streams == 7)) || (mcs == 9 && streams == 6);
    }
    return width == 160 && mcs == 9 && streams == 3;
}

const WidthRow* widthRow(const PhyRow& phy, int width) {
    for (const WidthRow& row : phy.widths) {
        if (row.width == width) return &row;
    }
    return nullptr;
}

// Bits per nanosecond are Gbit/s; a tenth of a Mbit/s is 1/10000 of that.
std::uint32_t hundredKbitOf(const PhyRate& rate) {
    const auto bits = std::uint64_t{10'000} * static_cast<unsigned>(rate.dataSubcarriers) *
                      static_cast<unsigned>(rate.codedBits * rate.codingNumerator) *
                      static_cast<unsigned>(rate.inputs.streams);
    const auto time = static_cast<std::uint64_t>(rate.codingDenominator) *
                      static_cast<unsigned>(rate.symbolNanoseconds);
    return static_cast<std::uint32_t>((2 * bits + time) / (2 * time));
}

std::string tenthsText(std::uint32_t tenths) {
    return std::to_string(tenths / 10) + '.' + std::to_string(tenths % 10);
}

}  // namespace

std::string_view phyName(Phy phy) {
    return kPhys[static_cast<std::size_t>(phy)].name;
}

std::optional<PhyRate> phyRate(const PhyRateInputs& inputs) {
    const PhyRow& phy = kPhys[static_cast<std::size_t>(inputs.phy)];
    const WidthRow* const width = widthRow(phy, inputs.width);
    if (width == nullptr || inputs.mcs < 0 || inputs.mcs > phy.highestMcs || inputs.streams < 1 ||
        inputs.streams > phy.maxStreams) {
        return std::nullopt;
    }
    if (inputs.phy == Phy::Vht && isExcludedFromVht(inputs.width, inputs.streams, inputs.mcs)) {
        return std::nullopt;
    }
    const Modulation& modulation = kModulations[static_cast<std::size_t>(inputs.mcs)];
    PhyRate rate{.inputs = inputs,
                 .dataSubcarriers = width->dataSubcarriers,
                 .codedBits = modulation.bits,
                 .codingNumerator = modulation.numerator,
                 .codingDenominator = modulation.denominator,
                 .symbolNanoseconds = inputs.isShortGuard ? phy.shortSymbol : phy.longSymbol};
    rate.hundredKbit = hundredKbitOf(rate);
    return rate;
}

std::optional<PhyRate> highestPhyRate(PhyRateInputs inputs) {
    for (; inputs.mcs >= 0; --inputs.mcs) {
        if (const auto rate = phyRate(inputs)) return rate;
    }
    return std::nullopt;
}

std::string PhyRate::formula() const {
    return std::to_string(dataSubcarriers) + " subcarriers x " + std::to_string(codedBits) +
           (codedBits == 1 ? " bit x " : " bits x ") + std::to_string(codingNumerator) + '/' +
           std::to_string(codingDenominator) + " x " + std::to_string(inputs.streams) +
           (inputs.streams == 1 ? " stream / " : " streams / ") +
           tenthsText(static_cast<std::uint32_t>(symbolNanoseconds / 100)) +
           " us = " + tenthsText(hundredKbit) + " Mbit/s";
}

}  // namespace halvane::air
