#include "halvane/ie/wps_device_type.h"

#include <gtest/gtest.h>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include "tests/support/hostile_bytes.h"

using halvane::ByteBuffer;
using halvane::HalvaneWPSDeviceType;
using halvane::testing::Bytes;

namespace {

using Text = std::optional<std::string>;

Bytes wfa(std::uint8_t category, std::uint8_t subCategory) {
    return {
        0x00, category,                 // category ID
        0x00, 0x50,        0xF2, 0x04,  // SMI of the Wi-Fi Alliance
        0x00, subCategory,              // sub-category ID
    };
}

Bytes tessic(std::uint8_t category, std::uint8_t subCategory) {
    return {0x00, category, 0x0A, 0x7E, 0x55, 0x01, 0x00, subCategory};
}

HalvaneWPSDeviceType decode(const Bytes& bytes) {
    return HalvaneWPSDeviceType::initWithDeviceType(ByteBuffer(bytes));
}

TEST(WPSDeviceType, IsEmptyAtFirst) {
    HalvaneWPSDeviceType type;
    EXPECT_FALSE(type.isValid());
    EXPECT_FALSE(type.rawDeviceType());
    EXPECT_EQ(type.categoryID(), 0u);
    EXPECT_EQ(type.subCategoryID(), 0u);
    EXPECT_FALSE(type.SMI());
    EXPECT_FALSE(type.companyName());
    type.parseDeviceType();
    type.parseDeviceTypeWFA();
    type.parseDeviceTypeTessic();
    EXPECT_FALSE(type.isValid());
    EXPECT_FALSE(type.category());
    EXPECT_FALSE(type.subCategory());
}

// The Primary Device Type of a captured beacon.
TEST(WPSDeviceType, DecodesAnAccessPoint) {
    auto type = decode({0x00, 0x06, 0x00, 0x50, 0xF2, 0x04, 0x00, 0x01});
    EXPECT_TRUE(type.isValid());
    EXPECT_EQ(type.rawDeviceType(), ByteBuffer(wfa(6, 1)));
    EXPECT_EQ(type.categoryID(), 6u);
    EXPECT_EQ(type.SMI(), (ByteBuffer{0x00, 0x50, 0xF2, 0x04}));
    EXPECT_EQ(type.subCategoryID(), 1u);
    EXPECT_EQ(type.companyName(), "Wi-Fi Alliance");
    EXPECT_FALSE(type.category());
    EXPECT_FALSE(type.subCategory());

    type.parseDeviceTypeWFA();
    EXPECT_EQ(type.category(), "NetworkInfrastructure");
    EXPECT_EQ(type.subCategory(), "AP");
}

TEST(WPSDeviceType, ReadsItsIntegersBigEndian) {
    const auto type = decode({0x12, 0x34, 0x00, 0x50, 0xF2, 0x04, 0xAB, 0xCD});
    EXPECT_EQ(type.categoryID(), 0x1234u);
    EXPECT_EQ(type.subCategoryID(), 0xABCDu);
}

TEST(WPSDeviceType, TellsTheCompanyByTheSMI) {
    struct Row {
        Bytes smi;
        Text company;
    };
    const std::vector<Row> rows = {
        {{0x00, 0x50, 0xF2, 0x04}, "Wi-Fi Alliance"},
        {{0x0A, 0x7E, 0x55, 0x01}, "Tessic"},
        {{0x00, 0x50, 0xF2, 0x05}, std::nullopt},  // another type
        {{0x0A, 0x7E, 0x55, 0x00}, std::nullopt},
        {{0x0A, 0x7E, 0x56, 0x01}, std::nullopt},  // another OUI
        {{0x00, 0x00, 0x00, 0x00}, std::nullopt},
    };
    for (const Row& row : rows) {
        Bytes bytes = {0x00, 0x06};
        bytes.insert(bytes.end(), row.smi.begin(), row.smi.end());
        bytes.insert(bytes.end(), {0x00, 0x02});
        const auto type = decode(bytes);
        EXPECT_EQ(type.companyName(), row.company);
        EXPECT_EQ(type.isValid(), row.company.has_value());
        EXPECT_EQ(type.SMI(), ByteBuffer(row.smi));
        EXPECT_EQ(type.categoryID(), 6u);
        EXPECT_EQ(type.subCategoryID(), 2u);
    }
}

TEST(WPSDeviceType, NamesTheCategoriesOfTheWiFiAlliance) {
    struct Row {
        std::uint8_t categoryID;
        Text category;
        std::vector<std::string> subCategories;  // of the IDs from 1 on
        Text unlisted;
    };
    const std::vector<Row> rows = {
        {0, {}, {}, {}},
        {1, "Computer", {"PC", "Server", "MediaCenter"}, {}},
        {2, "InputDevice", {}, {}},
        {3, {}, {"Printer", "Scanner"}, "Printers,Scanners,Faxes,Copiers"},
        {4, "Camera", {"DigitalStillCamera"}, {}},
        {5, "Storage", {"NAS"}, {}},
        {6, "NetworkInfrastructure", {"AP", "Router", "Switch"}, {}},
        {7, "Displays", {"Television", "PictureFrame", "Projector"}, {}},
        {8, "MultimediaDevices", {"DAR", "PVR", "MCX"}, {}},
        {9, "GamingDevices", {"XBOX", "XBOX360", "Playstation"}, {}},
        {10, "Telephone", {"WindowsMobile"}, {}},
        {11, {}, {}, {}},
        {255, {}, {}, {}},
    };
    for (const Row& row : rows) {
        for (std::uint8_t id = 0; id < 6; ++id) {
            auto type = decode(wfa(row.categoryID, id));
            type.parseDeviceTypeWFA();
            const bool isListed = id >= 1 && id <= row.subCategories.size();
            EXPECT_EQ(type.category(), row.category) << +row.categoryID << " " << +id;
            EXPECT_EQ(type.subCategory(), isListed ? row.subCategories[id - 1u] : row.unlisted)
                << +row.categoryID << " " << +id;
        }
    }
}

TEST(WPSDeviceType, ComparesIDsInAllTheirBits) {
    auto type = decode({0x01, 0x06, 0x00, 0x50, 0xF2, 0x04, 0x00, 0x01});
    type.parseDeviceTypeWFA();
    EXPECT_FALSE(type.category());
    type = decode({0x00, 0x06, 0x00, 0x50, 0xF2, 0x04, 0x01, 0x01});
    type.parseDeviceTypeWFA();
    EXPECT_EQ(type.category(), "NetworkInfrastructure");
    EXPECT_FALSE(type.subCategory());
}

TEST(WPSDeviceType, NamesTheMakersOwnSixDevices) {
    std::set<std::string> models;
    for (std::uint8_t category = 0; category < 12; ++category) {
        for (std::uint8_t id = 0; id < 6; ++id) {
            auto type = decode(tessic(category, id));
            type.parseDeviceTypeTessic();
            Text expected;
            if (category == 6) expected = "NetworkInfrastructure";
            if (category == 8) expected = "MultimediaDevices";
            EXPECT_EQ(type.category(), expected) << +category;
            const bool isListed = expected && id >= 1 && id <= 3;
            EXPECT_EQ(type.subCategory().has_value(), isListed) << +category << " " << +id;
            if (isListed) models.insert(*type.subCategory());
        }
    }
    EXPECT_EQ(models.size(), 6u);
}

TEST(WPSDeviceType, AnUnlistedIDLeavesTheNamesThatWereThere) {
    auto type = decode(wfa(6, 4));
    type.parseDeviceTypeTessic();
    EXPECT_EQ(type.category(), "NetworkInfrastructure");
    EXPECT_FALSE(type.subCategory());

    type = decode(wfa(6, 2));
    type.parseDeviceTypeTessic();
    const Text model = type.subCategory();
    type.parseDeviceTypeWFA();
    EXPECT_NE(type.subCategory(), model);
    EXPECT_EQ(type.subCategory(), "Router");
}

TEST(WPSDeviceType, RefusesOtherSizesThanEightBytes) {
    Bytes longest = wfa(6, 1);
    longest.push_back(0x00);
    halvane::testing::forEachPrefix(longest, [](const ByteBuffer& bytes) {
        const auto type = HalvaneWPSDeviceType::initWithDeviceType(bytes);
        const bool isWhole = bytes.size() == 8;
        EXPECT_EQ(type.rawDeviceType(), bytes);
        EXPECT_EQ(type.isValid(), isWhole) << bytes.size();
        EXPECT_EQ(type.categoryID(), isWhole ? 6u : 0u) << bytes.size();
        EXPECT_EQ(type.SMI().has_value(), isWhole) << bytes.size();
        EXPECT_EQ(type.companyName().has_value(), isWhole) << bytes.size();
        EXPECT_EQ(type.description().back(), '\n');
    });
}

TEST(WPSDeviceType, DescribesItsNames) {
    auto type = decode(wfa(1, 2));
    EXPECT_EQ(type.description(),
              "    Company      : Wi-Fi Alliance\n"
              "    Category     : (null)\n"
              "    Sub Category : (null)\n");
    type.parseDeviceTypeWFA();
    EXPECT_EQ(type.description(),
              "    Company      : Wi-Fi Alliance\n"
              "    Category     : Computer\n"
              "    Sub Category : Server\n");
}

}  // namespace
