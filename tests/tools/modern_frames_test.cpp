// Profiles of real frames of today's networks beside values that were worked out without this
// library. The frames are kept outside of the tree; the test is skipped if they are missing.
#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <functional>
#include <gtest/gtest.h>
#include <map>
#include <optional>
#include <sstream>
#include <string>
#include <vector>

#include "halvane/air/profile.h"
#include "halvane/capture/frame_record.h"

#include "tools/halvane/input/capture_reader.h"
#include "tools/halvane/survey/air_profile.h"

using namespace halvane;
using namespace halvane::tool;

namespace {

struct Row {
    std::string file;
    std::uint64_t frame = 0;
    std::string key;
    std::string value;
};

std::vector<Row> readRows(const std::filesystem::path& path) {
    std::vector<Row> rows;
    std::ifstream file(path);
    std::string line;
    std::getline(file, line);  // titles
    while (std::getline(file, line)) {
        std::istringstream fields(line);
        Row row;
        std::string frame;
        std::getline(fields, row.file, '\t');
        std::getline(fields, frame, '\t');
        std::getline(fields, row.key, '\t');
        std::getline(fields, row.value, '\t');
        row.frame = std::stoull(frame);
        rows.push_back(std::move(row));
    }
    return rows;
}

std::map<std::uint64_t, air::BssProfile> profilesIn(const std::filesystem::path& path) {
    std::map<std::uint64_t, air::BssProfile> profiles;
    auto reader = CaptureReader::open(path.string());
    if (!reader) return profiles;
    while (const auto frame = reader->next()) {
        if (frame->beacon() == nullptr) continue;
        const auto sighting = capture::sightingOf(*frame->beacon(), frame->radio);
        profiles.emplace(frame->number, airProfileOf(sighting));
    }
    return profiles;
}

// --- Values in the words of the table ---

std::string numberText(std::optional<int> number, const char* missing) {
    return number ? std::to_string(*number) : missing;
}

std::string rateText(const std::optional<air::Derived<air::PhyRate>>& rate) {
    if (!rate) return "";
    char text[32];
    std::snprintf(text, sizeof text, "%.1f", (*rate)->mbps());
    return text;
}

std::string securityText(const air::BssProfile& profile) {
    const std::map<std::string, std::string> words = {
        {"Enhanced Open", "OWE"},
        {"Enhanced Open transition", "OWE-transition-open"},
        {"Broken", "WPA-malformed"},
        {"WPA/WPA2-Personal", "WPA2-Personal+WPA-Personal"},
        {"WPA3-Enterprise 192-bit", "WPA3-Enterprise-192"}};
    const std::string name(air::securityName(*profile.security.name));
    const auto word = words.find(name);
    return word == words.end() ? name : word->second;
}

std::string generationText(air::Generation generation) {
    if (generation == air::Generation::Legacy) return "legacy";
    return "Wi-Fi " + std::to_string(static_cast<int>(generation));
}

std::string multipleBssidText(const air::BssProfile& profile) {
    std::string text = "max indicator " + numberText(profile.maxBssidIndicator, "-");
    for (const air::NontransmittedBss& bss : profile.nontransmitted) {
        text += "; " + bss.bssid.text() + " index " + std::to_string(bss.index) + ' ' +
                (bss.profile.ssid ? (*bss.profile.ssid)->text() : "-") + ' ' +
                securityText(bss.profile) + ' ' + generationText(*bss.profile.generation);
    }
    return text;
}

using Reader = std::function<std::string(const air::BssProfile&)>;

const std::map<std::string, Reader>& readers() {
    static const std::map<std::string, Reader> all = {
        {"ssid_hex",
         [](const auto& profile) {
             return profile.ssid ? (*profile.ssid)->buffer().hex() : std::string();
         }},
        {"primary",
         [](const auto& profile) {
             const auto& primary = profile.channel.primaryChannel;
             return primary ? std::to_string(**primary) : std::string("None");
         }},
        {"width", [](const auto& profile) { return std::to_string(profile.channel.span->width); }},
        {"c1_mhz",
         [](const auto& profile) { return numberText(profile.channel.span->center1, "None"); }},
        {"c2_mhz",
         [](const auto& profile) { return numberText(profile.channel.span->center2, ""); }},
        {"generation", [](const auto& profile) { return generationText(*profile.generation); }},
        {"security", securityText},
        {"mfp",
         [](const auto& profile) { return std::string(air::pmfName(*profile.security.pmf)); }},
        {"rate_ht", [](const auto& profile) { return rateText(profile.rates.ht); }},
        {"rate_vht", [](const auto& profile) { return rateText(profile.rates.vht); }},
        {"rate_he", [](const auto& profile) { return rateText(profile.rates.he); }},
        {"rate_eht", [](const auto& profile) { return rateText(profile.rates.eht); }},
        {"mld",
         [](const auto& profile) {
             return profile.mld ? profile.mld->address.text() : std::string();
         }},
        {"mbssid", multipleBssidText},
    };
    return all;
}

TEST(ModernFrames, HaveTheProfilesThatWereWorkedOut) {
    const std::filesystem::path folder = HALVANE_MODERN;
    if (!std::filesystem::exists(folder / "EXPECTED.tsv")) GTEST_SKIP() << "no " << folder;
    std::map<std::string, std::map<std::uint64_t, air::BssProfile>> profiles;
    std::size_t compared = 0;
    for (const Row& row : readRows(folder / "EXPECTED.tsv")) {
        const auto reader = readers().find(row.key);
        if (reader == readers().end() || row.value.find("AMBIGUOUS") != std::string::npos) continue;
        if (!profiles.contains(row.file)) profiles[row.file] = profilesIn(folder / row.file);
        const auto found = profiles[row.file].find(row.frame);
        ASSERT_NE(found, profiles[row.file].end()) << row.file << ' ' << row.frame;
        EXPECT_EQ(reader->second(found->second), row.value)
            << row.file << ", frame " << row.frame << ", " << row.key;
        ++compared;
    }
    EXPECT_GT(compared, 1500u);
}

}  // namespace
