#include "tools/halvane/output/maker_name.h"

#include <gtest/gtest.h>
#include <string>

using halvane::tool::makerKey;
using halvane::tool::shortMakerName;

namespace {

struct Row {
    const char* name;
    const char* whole;   // in 16 cells
    const char* narrow;  // in 8
};

void expectRow(const Row& row) {
    EXPECT_EQ(shortMakerName(row.name), row.whole) << row.name;
    EXPECT_EQ(shortMakerName(row.name, 8), row.narrow) << row.name;
}

TEST(MakerName, KeepsTheWordsThatPeopleKnow) {
    for (const Row& row : {
             Row{"Zioncom Electronics (Shenzhen) Ltd.", "Zioncom", "Zioncom"},
             Row{"MERCURY CORPORATION", "Mercury", "Mercury"},
             Row{"Allradio Co., Ltd", "Allradio", "Allradio"},
             Row{"SAMJIN Co., Ltd.", "SAMJIN", "SAMJIN"},
             Row{"EFM Networks", "EFM Networks", "EFM"},
             Row{"L-TECH CORPORATION", "L-Tech", "L-Tech"},
             Row{"TP-LINK TECHNOLOGIES CO.,LTD.", "Tp-Link", "Tp-Link"},
             Row{"TP-Link Corporation Limited", "TP-Link", "TP-Link"},
             Row{"ALFA, INC.", "Alfa", "Alfa"},
             Row{"Beijing Xiaomi Electronics Co., Ltd.", "Xiaomi", "Xiaomi"},
             Row{"Cisco Systems, Inc", "Cisco Systems", "Cisco"},
             Row{"Arcadyan Corporation", "Arcadyan", "Arcadyan"},
             Row{"Hon Hai Precision Ind. Co.,Ltd.", "Hon Hai", "Hon Hai"},
             Row{"Hewlett Packard Enterprise", "Hewlett Packard", "Hewlett"},
             Row{"Sercomm Corporation.", "Sercomm", "Sercomm"},
             Row{"Edimax Technology Co. Ltd.", "Edimax", "Edimax"},
             Row{"Cambium Networks Limited", "Cambium Networks", "Cambium"},
             Row{"Tenda Technology Co., Ltd.", "Tenda Technology", "Tenda"},
             Row{"ASUSTek COMPUTER INC.", "ASUSTek COMPUTER", "ASUSTek"},
             Row{"Wiznet", "Wiznet", "Wiznet"},
             Row{"D-Link International", "D-Link", "D-Link"},
             Row{"Arista Network, Inc.", "Arista Network", "Arista"},
         }) {
        expectRow(row);
    }
}

TEST(MakerName, DropsLegalFormsOfManyCountries) {
    for (const char* name : {"Acme AG",
                             "Acme GmbH & Co. KG",
                             "Acme S.p.A.",
                             "Acme s.r.o.",
                             "Acme Sp. z o.o.",
                             "Acme Pty Ltd",
                             "Acme Pvt. Ltd.",
                             "Acme Sdn Bhd",
                             "Acme A/S",
                             "Acme, LLC",
                             "Acme Oy",
                             "Acme Private Limited",
                             "Acme Co.Ltd.",
                             "Acme CO.\xEF\xBC\x8CLTD",
                             "Acme Company",
                             "Acme B.V.",
                             "Acme Kft.",
                             "Acme K.K.",
                             "Acme, a Great Company",
                             "Acme.Inc",
                             "ACME.INC.",
                             "Acme.Ltd Co"}) {
        EXPECT_EQ(shortMakerName(name), "Acme") << name;
    }
}

TEST(MakerName, KeepsWhatOnlyLooksLikeALegalFormBehindADot) {
    for (const char* name : {"Acme.com", "A.S.A", "Us.SA", "2.Co", ".ltd"}) {
        EXPECT_EQ(shortMakerName(name), name);
    }
}

TEST(MakerName, DropsATownOnlyBeforeAName) {
    EXPECT_EQ(shortMakerName("SHENZHEN BILIAN ELECTRONIC CO.,LTD"), "Bilian");
    EXPECT_EQ(shortMakerName("Shenzhen City Acme Ltd"), "Acme");
    EXPECT_EQ(shortMakerName("Hong Kong Acme Ltd"), "Acme");
    EXPECT_EQ(shortMakerName("Shanghai"), "Shanghai");
    EXPECT_EQ(shortMakerName("Shanghai Ltd"), "Shanghai");
    EXPECT_EQ(shortMakerName("Shanghai Electric Co., Ltd"), "Shanghai");
    EXPECT_EQ(shortMakerName("Suzhou Telecom"), "Suzhou Telecom");
}

TEST(MakerName, LeavesBracketsOut) {
    EXPECT_EQ(shortMakerName("Acme [old] Radio (Europe (West)) Ltd"), "Acme Radio");
    EXPECT_EQ(shortMakerName("Acme (Europe Ltd"), "Acme");
    EXPECT_EQ(shortMakerName("Acme\xEF\xBC\x88HongKong\xEF\xBC\x89Limited"), "Acme");
    EXPECT_EQ(shortMakerName("(Europe)"), "");
}

TEST(MakerName, CalmsCapitalsButNotAbbreviations) {
    EXPECT_EQ(shortMakerName("IGT"), "IGT");
    EXPECT_EQ(shortMakerName("LG INNOTEK"), "LG Innotek");
    EXPECT_EQ(shortMakerName("3COM CORPORATION"), "3Com");
    EXPECT_EQ(shortMakerName("zte corporation"), "zte");
}

TEST(MakerName, KeepsAtLeastTheFirstWord) {
    EXPECT_EQ(shortMakerName("Co., Ltd."), "Co.");
    EXPECT_EQ(shortMakerName("Feinwerktechnikbau GmbH", 8), "Feinwerktechnikbau");
    EXPECT_EQ(shortMakerName("Barnes & Noble", 8), "Barnes");
    EXPECT_EQ(shortMakerName("  ,, "), "");
    EXPECT_EQ(shortMakerName(""), "");
}

// A character of several octets takes one cell.
TEST(MakerName, CountsCharacters) {
    EXPECT_EQ(shortMakerName("G\xC3\xA4\xC3\xB6\xC3\xBC Netz", 9),
              "G\xC3\xA4\xC3\xB6\xC3\xBC Netz");
    EXPECT_EQ(shortMakerName("G\xC3\xA4\xC3\xB6\xC3\xBC Netze", 9), "G\xC3\xA4\xC3\xB6\xC3\xBC");
}

TEST(MakerName, CountsMakersThatDifferInCaseAsOne) {
    EXPECT_EQ(makerKey(shortMakerName("TP-LINK TECHNOLOGIES CO.,LTD.")),
              makerKey(shortMakerName("TP-Link Corporation Limited")));
    EXPECT_NE(makerKey("D-Link"), makerKey("Tp-Link"));
}

}  // namespace
