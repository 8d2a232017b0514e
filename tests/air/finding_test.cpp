#include "halvane/air/finding.h"

#include <gtest/gtest.h>
#include <regex>
#include <set>
#include <string>

using namespace halvane::air;

namespace {

TEST(AirFinding, HasARowForEachKind) {
    EXPECT_GE(findingInfos().size(), 40u);
    std::set<std::string> ids;
    for (const FindingInfo& info : findingInfos()) {
        EXPECT_EQ(&findingInfo(info.kind), &info);
        EXPECT_EQ(findingInfo(info.id), &info);
        EXPECT_TRUE(ids.insert(std::string(info.id)).second) << info.id;
        EXPECT_TRUE(std::regex_match(std::string(info.id), std::regex("[a-z0-9.]+(-[a-z0-9.]+)*")))
            << info.id;
        EXPECT_TRUE(info.sentence.ends_with('.')) << info.id;
        EXPECT_TRUE(info.advice.empty() || info.advice.ends_with('.')) << info.id;
        EXPECT_FALSE(info.clause.empty()) << info.id;
    }
    EXPECT_EQ(findingInfo("no-such-finding"), nullptr);
}

// IEEE 802.11-2020 ends with clause 25; HE and EHT came with amendments.
TEST(AirFinding, NamesTheAmendmentOfALaterClause) {
    const std::regex clause(R"(([0-9]+)(\.[0-9]+)+)");
    for (const FindingInfo& info : findingInfos()) {
        const std::string text(info.clause);
        std::smatch match;
        if (std::regex_match(text, match, clause)) {
            EXPECT_LE(std::stoi(match[1]), 25) << info.id;
        }
        EXPECT_EQ(text.find(" of 802.11"), std::string::npos) << info.id;
    }
}

TEST(AirFinding, NamesSeverities) {
    EXPECT_EQ(severityName(Severity::Note), "note");
    EXPECT_EQ(severityName(Severity::Warning), "warning");
    EXPECT_EQ(severityName(Severity::Error), "error");
}

}  // namespace
