#include "tools/halvane/config/config_file.h"

#include <cstddef>
#include <cstdint>
#include <gtest/gtest.h>
#include <string>
#include <string_view>

#include "halvane/base/property_list_value.h"
#include "halvane/platform/plist/xml_property_list.h"

#include "tests/support/made_config.h"
#include "tests/support/temporary_folder.h"

using namespace halvane;
using namespace halvane::tool;
using halvane::testing::openNetwork;
using halvane::testing::personalNetwork;
using halvane::testing::TemporaryFolder;

namespace {

class ConfigFile : public ::testing::Test {
  protected:
    std::string fileOf(std::string_view text) {
        return folder_.write("config.plist",
                             {reinterpret_cast<const std::uint8_t*>(text.data()), text.size()});
    }
    std::string fileOf(const PropertyListValue& value) {
        return fileOf(std::string_view(*xmlPropertyList(value)));
    }

    TemporaryFolder folder_;
};

TEST_F(ConfigFile, HoldsOneConfigurationOrSeveral) {
    const auto one = readConfigurations(fileOf(personalNetwork().skeletonRepresentation()));
    ASSERT_TRUE(one);
    ASSERT_EQ(one->size(), 1u);
    EXPECT_EQ(one->front(), personalNetwork());
    const auto several = readConfigurations(fileOf(PropertyListArray{
        personalNetwork().skeletonRepresentation(), openNetwork().skeletonRepresentation()}));
    ASSERT_TRUE(several);
    ASSERT_EQ(several->size(), 2u);
    EXPECT_EQ(several->back(), openNetwork());
}

TEST_F(ConfigFile, NamesWhatIsWrong) {
    const auto expectError = [this](const std::string& text, const std::string& reason) {
        const auto path = fileOf(std::string_view(text));
        const auto result = readConfigurations(path);
        ASSERT_FALSE(result) << text;
        EXPECT_EQ(result.error().substr(0, (path + ": " + reason).size()), path + ": " + reason);
    };
    expectError("", "no XML property list: at octet 0: ");
    expectError("<plist version=\"1.0\"><string/></plist>",
                "no configuration, and no array of them");
    expectError("<plist version=\"1.0\"><array><dict/><true/></array></plist>",
                "no configuration, and no array of them");
    expectError(std::string((std::size_t{1} << 20) + 1, ' '), "too long for a configuration");
    const auto missing = readConfigurations("/nonexistent/config.plist");
    EXPECT_EQ(missing.error(), "/nonexistent/config.plist: No such file or directory");
}

}  // namespace
