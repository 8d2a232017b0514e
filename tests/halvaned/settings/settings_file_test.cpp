#include "tools/halvaned/settings/settings_file.h"

#include <filesystem>
#include <fstream>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <iterator>
#include <string>
#include <vector>

#include "tests/support/temporary_folder.h"
#include "tools/halvaned/settings/setting_keys.h"
#include "tools/halvaned/settings/settings.h"

using halvane::testing::TemporaryFolder;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::StartsWith;
using namespace halvane::hosting;

namespace {

Settings read(const std::string& text) {
    const auto settings = settingsFromText(text, "file");
    EXPECT_TRUE(settings) << settings.error();
    return settings.value_or(Settings());
}

std::string faultOf(const std::string& text) {
    const auto settings = settingsFromText(text, "file");
    EXPECT_FALSE(settings) << text;
    return settings ? "" : settings.error();
}

TEST(SettingsFile, MayHaveEachKey) {
    Settings expected;
    expected.driver = Driver::Wired;
    expected.interfaces = {"eth0", "veth-ap.2"};
    expected.hostapd = "/opt/host apd";
    expected.runtimeFolder = "/tmp/run";
    expected.stateFile = "/tmp/state#1";
    expected.country = "DE";
    expected.stations = 7;
    expected.configurations = 8;
    expected.subscribers = 65535;
    expected.radiusServer = "2001:db8::1";
    expected.radiusPort = 1;
    expected.radiusSecretFile = "/etc/secret";
    EXPECT_EQ(read("driver = wired\n"
                   "interfaces =  eth0\t veth-ap.2 \n"
                   "hostapd=/opt/host apd\n"
                   "\n"
                   "  # a comment = no key\r\n"
                   "runtime-folder =/tmp/run\r\n"
                   "\tstate-file\t= /tmp/state#1\n"
                   "country = DE\nstations = 7\nconfigurations = 8\nsubscribers = 65535\n"
                   "radius-server = 2001:db8::1\nradius-port = 1\n"
                   "radius-secret-file = /etc/secret"),
              expected);
    EXPECT_EQ(read("eap-user-file = /etc/users").eapUserFile, "/etc/users");
    EXPECT_EQ(read("radius-server = 192.0.2.1\nradius-secret-file = /s").radiusServer, "192.0.2.1");
}

TEST(SettingsFile, MayBeEmpty) {
    for (const char* text : {"", "\n", "\n\n", "#", " \t\r\n#x\n"})
        EXPECT_EQ(read(text), Settings());
}

TEST(SettingsFile, TellsWhereAValueIsWrongAndWhatIsAllowed) {
    struct Case {
        const char* text;
        const char* error;
    };
    const Case cases[] = {
        {"driver = madwifi", "file:1: driver has to be nl80211 or wired"},
        {"driver =", "file:1: driver has to be nl80211 or wired"},
        {"\n\ndriver = Wired\n", "file:3: driver has to be nl80211 or wired"},
        {"interfaces = a/b", "file:1: interfaces has to be names of interfaces"},
        {"interfaces = 0123456789abcdef", "file:1: interfaces has to be names of interfaces"},
        {"interfaces = a a", "file:1: interfaces has to be names of interfaces"},
        {"hostapd = hostapd", "file:1: hostapd has to be a path that begins with '/'"},
        {"hostapd = /", "file:1: hostapd has to be a path"},
        {"state-file =", "file:1: state-file has to be a path"},
        {"country = de", "file:1: country has to be two capital letters, such as DE"},
        {"country = DEU", "file:1: country has to be"},
        {"stations = 0", "file:1: stations has to be a number from 1 to 2007"},
        {"stations = 2008", "file:1: stations has to be a number from 1 to 2007"},
        {"stations = 4294967297", "file:1: stations has to be"},
        {"stations = 99999999999999999999", "file:1: stations has to be"},
        {"stations = +5", "file:1: stations has to be"},
        {"stations = -5", "file:1: stations has to be"},
        {"stations = 5 # five", "file:1: stations has to be"},
        {"stations = 0x10", "file:1: stations has to be"},
        {"configurations = 1025", "file:1: configurations has to be a number from 1 to 1024"},
        {"subscribers = 65536", "file:1: subscribers has to be a number from 1 to 65535"},
        {"radius-port = 65536", "file:1: radius-port has to be a number from 1 to 65535"},
        {"radius-server = localhost", "file:1: radius-server has to be an IP address"},
        {"stations = 5\nstations = 5", "file:2: stations is in line 1 already"},
        {"stations", "file:1: it has no '='"},
        {"= 5", "file:1: there is no key ''; the keys are driver, interfaces, hostapd, "},
        {"station = 5", "file:1: there is no key 'station'; did you mean 'stations'?"},
        {"runtime_folder = /x",
         "file:1: there is no key 'runtime_folder'; did you mean "
         "'runtime-folder'?"},
        {"Zebra = 5", "file:1: there is no key 'Zebra'; the keys are driver, "},
        {"hostapd = /a\x01", "file:1: it has a control character"},
        {"driver = wired", "file: the driver wired needs interfaces"},
        {"radius-server = ::1", "file: radius-server needs radius-secret-file"},
        {"radius-server = ::1\nradius-secret-file = /s\neap-user-file = /u",
         "file: radius-server and eap-user-file exclude each other"},
    };
    for (const Case& one : cases) EXPECT_THAT(faultOf(one.text), StartsWith(one.error)) << one.text;
    const std::string nul = std::string("hostapd = /a") + '\0';
    EXPECT_EQ(faultOf(nul), "file:1: it has a control character");
}

TEST(SettingsFile, LeavesRoomForControlSockets) {
    const std::string longest = "/" + std::string(63, 'x');
    EXPECT_EQ(read("runtime-folder = " + longest).runtimeFolder, longest);
    EXPECT_THAT(faultOf("runtime-folder = " + longest + "x"),
                StartsWith("file:1: runtime-folder has to be a path of at most 64 bytes"));
}

TEST(SettingsFile, MayBeMissingIfNobodyNamedIt) {
    const TemporaryFolder folder;
    const std::string path = (folder.path() / "halvaned.conf").string();
    EXPECT_EQ(readSettings(path, IfMissing::UseDefaults), Settings());
    EXPECT_EQ(readSettings(path, IfMissing::Fail).error(), path + ": No such file or directory");
    std::ofstream(path) << "stations = 9\n";
    EXPECT_EQ(readSettings(path, IfMissing::Fail)->stations, 9U);
    std::ofstream(path) << "stations = 0\n";
    EXPECT_THAT(readSettings(path, IfMissing::UseDefaults).error(),
                StartsWith(path + ":1: stations has to be"));
    EXPECT_EQ(readSettings(folder.path().string(), IfMissing::UseDefaults).error(),
              folder.path().string() + ": Is a directory");
    std::ofstream(path) << std::string(kLargestSettingsFile + 1, '\n');
    EXPECT_EQ(readSettings(path, IfMissing::UseDefaults).error(),
              path + ": it has more than 65536 bytes");
}

TEST(Settings, TellWhichKeysNeedARestart) {
    const Settings before;
    EXPECT_EQ(changesBetween(before, before), ChangedSettings());
    Settings after;
    after.driver = Driver::Wired;
    after.interfaces = {"eth0"};
    after.stations = 5;
    after.country = "DE";
    const ChangedSettings changes = changesBetween(before, after);
    EXPECT_THAT(changes.needRestart, ElementsAre("driver", "interfaces"));
    EXPECT_THAT(changes.applied, ElementsAre("country", "stations"));
}

TEST(Settings, KeepWhatNeedsARestart) {
    Settings before;
    before.interfaces = {"eth0"};
    Settings after;
    after.driver = Driver::Wired;
    after.runtimeFolder = "/tmp/other";
    after.hostapd = "/tmp/hostapd";
    after.stations = 5;
    Settings expected = before;
    expected.stations = 5;
    EXPECT_EQ(settingsWithoutRestart(before, after), expected);
}

// Every field has a key: settings with other values than the defaults differ in all of them.
TEST(SettingKeys, WriteWhatTheyRead) {
    Settings all;
    all.driver = Driver::Wired;
    all.interfaces = {"eth0", "eth1"};
    all.hostapd = all.runtimeFolder = all.stateFile = "/x";
    all.country = "DE";
    all.stations = all.configurations = all.subscribers = all.radiusPort = 9;
    all.radiusServer = "::1";
    all.radiusSecretFile = all.eapUserFile = "/y";
    Settings read;
    for (const SettingKey& key : settingKeys()) {
        EXPECT_TRUE(key.read(key.write(all), read)) << key.name;
        EXPECT_NE(key.write(all), key.write(Settings())) << key.name;
    }
    EXPECT_EQ(read, all);
}

// "#key = value" for each key, in the order of the table, and nothing but comments.
TEST(ExampleOfSettings, HasEachKeyWithItsDefault) {
    std::ifstream file(std::string(HALVANE_DATA) + "/halvaned.conf");
    ASSERT_TRUE(file);
    std::vector<std::string> lines;
    std::string active;
    for (std::string line; std::getline(file, line);) {
        EXPECT_LE(line.size(), 100U);
        const bool isText = line.empty() || line.starts_with("# ");
        if (isText) continue;
        ASSERT_TRUE(line.starts_with("#")) << line;
        lines.push_back(line);
        const bool hasValue = !line.ends_with("=");
        if (hasValue) active += line.substr(1) + "\n";
    }
    std::vector<std::string> expected;
    for (const SettingKey& key : settingKeys()) {
        const std::string value = key.write(Settings());
        expected.push_back("#" + std::string(key.name) + " =" + (value.empty() ? "" : " ") + value);
    }
    EXPECT_EQ(lines, expected);
    EXPECT_EQ(read(active), Settings());
}

TEST(ExampleOfSettings, TellsWhichKeysNeedARestart) {
    std::ifstream file(std::string(HALVANE_DATA) + "/halvaned.conf");
    std::vector<std::string> told;
    std::string comment;
    for (std::string line; std::getline(file, line);) {
        if (line.empty()) comment.clear();
        comment += line;
        const bool isKey = line.starts_with("#") && !line.starts_with("# ");
        if (isKey && comment.find("(restart)") != std::string::npos) {
            told.push_back(line.substr(1, line.find(' ') - 1));
        }
    }
    std::vector<std::string> expected;
    for (const SettingKey& key : settingKeys()) {
        if (key.needsRestart) expected.emplace_back(key.name);
    }
    EXPECT_EQ(told, expected);
}

}  // namespace
