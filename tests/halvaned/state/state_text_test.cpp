#include "tools/halvaned/state/state_text.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <string>
#include <vector>

#include "halvane/base/property_list_value.h"
#include "halvane/model/bss_config.h"

#include "tests/halvaned/state/sample_state.h"
#include "tests/support/made_config.h"
#include "tools/halvaned/state/daemon_state.h"

using halvane::HalvaneBSSConfig;
using halvane::testing::openNetwork;
using halvane::testing::sampleState;
using ::testing::HasSubstr;
using ::testing::StartsWith;
using namespace halvane::hosting;

namespace {

std::string document(const std::string& content) {
    return "<plist version=\"1.0\">" + content + "</plist>";
}

// A file of one interface.
std::string fileOf(const std::string& interface, const std::string& name = "wlan0") {
    return document("<dict><key>Version</key><integer>1</integer><key>Interfaces</key><dict><key>" +
                    name + "</key>" + interface + "</dict></dict>");
}

// An interface with these configurations.
std::string interfaceOf(const std::string& configurations) {
    return "<dict><key>Configurations</key>" + configurations +
           "<key>Enabled</key><true/><key>Started</key><false/></dict>";
}

TEST(StateText, ReadsBackAsAnEqualState) {
    for (const DaemonState& state : {DaemonState(), sampleState()}) {
        const auto text = textOf(state);
        ASSERT_TRUE(text) << text.error();
        const auto read = stateFromText(*text);
        ASSERT_TRUE(read) << read.error();
        EXPECT_EQ(*read, state);
    }
}

TEST(StateText, IsThisPropertyList) {
    DaemonState state;
    state.interfaces["wlan1"] = {.role = "AP", .isEnabled = false};
    EXPECT_EQ(textOf(state).value_or(""),
              "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
              "<plist version=\"1.0\">\n"
              "<dict>\n"
              "\t<key>Version</key>\n"
              "\t<integer>1</integer>\n"
              "\t<key>Interfaces</key>\n"
              "\t<dict>\n"
              "\t\t<key>wlan1</key>\n"
              "\t\t<dict>\n"
              "\t\t\t<key>Configurations</key>\n"
              "\t\t\t<array/>\n"
              "\t\t\t<key>Role</key>\n"
              "\t\t\t<string>AP</string>\n"
              "\t\t\t<key>Enabled</key>\n"
              "\t\t\t<false/>\n"
              "\t\t\t<key>Started</key>\n"
              "\t\t\t<false/>\n"
              "\t\t</dict>\n"
              "\t</dict>\n"
              "</dict>\n"
              "</plist>\n");
}

TEST(StateText, IsRefusedWithTheReason) {
    const std::string empty = interfaceOf("<array/>");
    struct Case {
        std::string text;
        const char* error;
    };
    const Case cases[] = {
        {"", "byte 0: it is no property list: "},
        {fileOf(empty).substr(0, 100), "byte "},
        {document("<array/>"), "it is no dictionary"},
        {document("<dict/>"), "Version is missing"},
        {document("<dict><key>Version</key><string>1</string></dict>"), "Version is no integer"},
        {document("<dict><key>Version</key><integer>2</integer><key>New</key><true/></dict>"),
         "it has version 2, and this daemon reads 1"},
        {document("<dict><key>Version</key><integer>-1</integer></dict>"), "it has version -1, "},
        {document("<dict><key>Version</key><integer>1</integer></dict>"), "Interfaces is missing"},
        {document("<dict><key>Version</key><integer>1</integer><key>Interface</key><dict/></dict>"),
         "there is no key Interface"},
        {fileOf("<array/>"), "Interfaces: wlan0: it is no dictionary"},
        {fileOf("<dict/>"), "Interfaces: wlan0: Configurations is missing"},
        {fileOf("<dict><key>Enabld</key><true/></dict>"),
         "Interfaces: wlan0: there is no key Enabld"},
        {fileOf(interfaceOf("<dict/>")), "Interfaces: wlan0: Configurations is no array"},
        {fileOf(interfaceOf("<array><true/></array>")),
         "Interfaces: wlan0: Configurations: element 1 is no dictionary"},
        {fileOf(interfaceOf("<array><dict/></array>")),
         "Interfaces: wlan0: Configurations: element 1 has no SSID of 1 to 32 bytes"},
        {fileOf("<dict><key>Configurations</key><array/><key>Enabled</key><integer>1</integer>"
                "</dict>"),
         "Interfaces: wlan0: Enabled is no boolean"},
        {fileOf("<dict><key>Configurations</key><array/><key>Enabled</key><true/></dict>"),
         "Interfaces: wlan0: Started is missing"},
        {fileOf("<dict><key>Configurations</key><array/><key>Enabled</key><true/>"
                "<key>Started</key><true/><key>Role</key><integer>1</integer></dict>"),
         "Interfaces: wlan0: Role is no string"},
    };
    for (const Case& one : cases) {
        const auto state = stateFromText(one.text);
        ASSERT_FALSE(state) << one.text;
        EXPECT_THAT(state.error(), StartsWith(one.error)) << one.text;
    }
    EXPECT_TRUE(stateFromText(fileOf(empty)));
}

// They become parts of paths and of hostapd's configuration.
TEST(StateText, HasNamesThatInterfacesCanHave) {
    const std::string empty = interfaceOf("<array/>");
    for (const char* name : {"", ".", "..", "a/b", "a b", "a:b", "a\tb", "0123456789abcdef"}) {
        EXPECT_FALSE(stateFromText(fileOf(empty, name))) << name;
        DaemonState state;
        state.interfaces[name] = {};
        EXPECT_FALSE(textOf(state)) << name;
    }
    for (const char* name : {"a", "...", "0123456789abcde", "wlan0.1"}) {
        EXPECT_TRUE(stateFromText(fileOf(empty, name))) << name;
    }
}

TEST(StateText, IsCutNowhere) {
    const auto whole = textOf(sampleState()).value_or("");
    const std::size_t end = whole.rfind("</plist>") + std::string("</plist>").size();
    for (std::size_t size = 0; size < whole.size(); ++size) {
        EXPECT_EQ(stateFromText(whole.substr(0, size)).has_value(), size >= end) << size;
    }
}

TEST(StateText, TellsWhatNoFileCanHold) {
    DaemonState unnamed;
    unnamed.interfaces["wlan0"].configurations = {HalvaneBSSConfig::init()};
    EXPECT_EQ(textOf(unnamed).error(), "a configuration of wlan0 has no SSID of 1 to 32 bytes");
    DaemonState role;
    role.interfaces["wlan0"].role = std::string("\x01", 1);
    EXPECT_THAT(textOf(role).error(), StartsWith("it holds "));
    DaemonState name;
    name.interfaces["wl\xFF"] = {};
    EXPECT_THAT(textOf(name).error(), StartsWith("it holds "));
    DaemonState large;
    large.interfaces["wlan0"].role = std::string(kLargestState, 'x');
    EXPECT_EQ(textOf(large).error(), "it would have more than 16777216 bytes");
    EXPECT_EQ(stateFromText(std::string(kLargestState + 1, ' ')).error(),
              "it has more than 16777216 bytes");
}

}  // namespace
