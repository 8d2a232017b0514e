#include "halvane/platform/plist/preferences.h"

#include <algorithm>
#include <atomic>
#include <chrono>
#include <filesystem>
#include <fstream>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <iterator>
#include <sys/stat.h>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>
#include <vector>

#include "halvane/base/property_list_value.h"
#include "halvane/platform/os/process_internal.h"
#include "halvane/platform/plist/xml_property_list.h"
#include "halvane/platform/plist/xml_property_list_reader.h"

#include "tests/support/scoped_environment.h"
#include "tests/support/temporary_folder.h"

namespace fs = std::filesystem;

using halvane::PreferenceResult;
using halvane::PropertyListArray;
using halvane::PropertyListDictionary;
using halvane::PropertyListValue;
using halvane::readPreference;
using halvane::writePreference;
using halvane::testing::ScopedEnvironment;
using halvane::testing::TemporaryFolder;
using namespace std::string_literals;

namespace {

class Preferences : public ::testing::Test {
  protected:
    fs::path folder() const { return configuration_.path() / "halvane"; }
    fs::path file(const std::string& name) const { return folder() / (name + ".plist"); }

    // The names in the folder, without locks.
    std::vector<std::string> names() const {
        std::vector<std::string> names;
        if (!fs::exists(folder())) return names;
        for (const auto& entry : fs::directory_iterator(folder())) {
            if (entry.path().extension() != ".lock") names.push_back(entry.path().filename());
        }
        std::ranges::sort(names);
        return names;
    }

    void put(const fs::path& path, const std::string& contents) const {
        fs::create_directories(path.parent_path());
        std::ofstream(path, std::ios::binary) << contents;
    }

    static std::string contentsOf(const fs::path& path) {
        std::ifstream stream(path, std::ios::binary);
        return {std::istreambuf_iterator<char>(stream), {}};
    }

    static void set(std::string_view application, std::string_view key, std::string_view value) {
        const auto result = writePreference(application, key, value);
        EXPECT_EQ(result.status, kStatusOK);
        EXPECT_EQ(result.setAside, "");
    }

    // The value, or "(none)".
    static std::string get(std::string_view application, std::string_view key) {
        const auto result = readPreference(application, key);
        EXPECT_EQ(result.status, kStatusOK);
        EXPECT_EQ(result.setAside, "");
        return result.value.value_or("(none)");
    }

    const fs::path& configuration() const { return configuration_.path(); }

  private:
    TemporaryFolder configuration_;
    ScopedEnvironment environment_{"XDG_CONFIG_HOME", configuration_.path().string()};
};

TEST_F(Preferences, ReadNothingWhereNothingWasWritten) {
    EXPECT_EQ(get("app", "key"), "(none)");
    EXPECT_FALSE(fs::exists(folder()));
}

TEST_F(Preferences, ReadBackWhatWasWritten) {
    set("app", "logconfig", "?WiFi:level=info");
    EXPECT_EQ(get("app", "logconfig"), "?WiFi:level=info");
    EXPECT_EQ(get("app", "Logconfig"), "(none)");
    set("app", "logconfig", "other");
    EXPECT_EQ(get("app", "logconfig"), "other");
    set("app", "", "");
    EXPECT_EQ(get("app", ""), "");
    EXPECT_THAT(names(), ::testing::ElementsAre("app.plist"));
}

TEST_F(Preferences, AreForTheUserAlone) {
    set("app", "key", "value");
    EXPECT_EQ(fs::status(folder()).permissions(), fs::perms::owner_all);
    EXPECT_EQ(fs::status(file("app")).permissions(),
              fs::perms::owner_read | fs::perms::owner_write);
}

TEST_F(Preferences, AreOnePropertyListAnApplication) {
    set("one", "b", "1");
    set("one", "a", "2");
    set("two", "a", "3");
    EXPECT_EQ(contentsOf(file("one")),
              "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<plist version=\"1.0\">\n<dict>\n"
              "\t<key>b</key>\n\t<string>1</string>\n\t<key>a</key>\n\t<string>2</string>\n"
              "</dict>\n</plist>\n");
    EXPECT_EQ(get("one", "a"), "2");
    EXPECT_EQ(get("two", "a"), "3");
    EXPECT_EQ(get("two", "b"), "(none)");
}

TEST_F(Preferences, RemoveAKey) {
    set("app", "a", "1");
    set("app", "b", "2");
    EXPECT_EQ(writePreference("app", "a", std::nullopt).status, kStatusOK);
    EXPECT_EQ(get("app", "a"), "(none)");
    EXPECT_EQ(get("app", "b"), "2");
    EXPECT_EQ(writePreference("app", "a", std::nullopt).status, kStatusOK);
    EXPECT_EQ(writePreference("app", "b", std::nullopt).status, kStatusOK);
    EXPECT_EQ(get("app", "b"), "(none)");
}

TEST_F(Preferences, MakeNoFileToRemoveAKeyFrom) {
    EXPECT_EQ(writePreference("app", "a", std::nullopt).status, kStatusOK);
    EXPECT_FALSE(fs::exists(folder()));
}

TEST_F(Preferences, KeepWhateverElseTheFileHolds) {
    PropertyListDictionary values;
    values.set("number", 7);
    values.set("list", PropertyListArray{"a", true});
    values.set("text", "kept");
    put(file("app"), *halvane::xmlPropertyList(values));

    EXPECT_EQ(get("app", "number"), "(none)");  // there, but no string
    set("app", "new", "value");
    values.set("new", "value");
    EXPECT_EQ(halvane::propertyListFromXml(contentsOf(file("app"))), PropertyListValue(values));

    set("app", "list", "now a string");
    EXPECT_EQ(get("app", "list"), "now a string");
}

TEST_F(Preferences, CarryEveryCharacterThatXmlCan) {
    const std::string value =
        "<&>\"' ]]> <![CDATA[x]]> &amp; \t\r\n\x7F\xC2\x85\xE2\x80\xA8\xF0\x9F\x93\xB6 ";
    set("app", value, value);
    EXPECT_EQ(get("app", value), value);
    set("app", "blank", " ");
    EXPECT_EQ(get("app", "blank"), " ");
}

TEST_F(Preferences, RefuseTextThatNoXmlCarries) {
    set("app", "key", "before");
    const auto before = contentsOf(file("app"));
    for (const auto& text : {"\0"s, "a\0b"s, "\xFF"s, "\xED\xA0\x80"s, "\xEF\xBF\xBF"s}) {
        EXPECT_EQ(writePreference("app", "key", text).status, kStatusConversionFailed);
        EXPECT_EQ(writePreference("app", text, "value").status, kStatusConversionFailed);
        EXPECT_EQ(writePreference("new", "key", text).status, kStatusConversionFailed);
        EXPECT_EQ(get("app", text), "(none)");
        EXPECT_EQ(writePreference("app", text, std::nullopt).status, kStatusOK);
    }
    EXPECT_EQ(contentsOf(file("app")), before);
    EXPECT_THAT(names(), ::testing::ElementsAre("app.plist"));
}

TEST_F(Preferences, RefuseAValueThatTheFileHasNoRoomFor) {
    set("app", "key", "before");
    const std::string huge(halvane::kPreferencesFileLimit, 'x');
    EXPECT_EQ(writePreference("app", "key", huge).status, kStatusNoRoom);
    EXPECT_EQ(get("app", "key"), "before");
}

TEST_F(Preferences, AreOfTheProgramWhereNoApplicationIsNamed) {
    set("", "key", "mine");
    EXPECT_EQ(get(halvane::programName(), "key"), "mine");
    EXPECT_EQ(get("", "key"), "mine");
}

TEST_F(Preferences, StayInTheirFolderWhateverTheApplicationIsCalled) {
    struct Row {
        std::string application;
        const char* name;
    };
    const std::vector<Row> rows = {
        {"org.example.App-1_x", "org.example.App-1_x.plist"},
        {"../x", "%2E.%2Fx.plist"},
        {"..", "%2E..plist"},
        {".", "%2E.plist"},
        {".hidden", "%2Ehidden.plist"},
        {"a/b", "a%2Fb.plist"},
        {"/etc/passwd", "%2Fetc%2Fpasswd.plist"},
        {"a b%2F", "a%20b%252F.plist"},
        {"\n\0\xC3\xA9"s, "%0A%00%C3%A9.plist"},
        {"app.plist.lock", "app.plist.lock.plist"},
    };
    std::vector<std::string> expected;
    for (const Row& row : rows) {
        set(row.application, "key", row.application == "\n\0\xC3\xA9"s ? "odd" : row.application);
        expected.emplace_back(row.name);
    }
    for (const Row& row : rows) {
        EXPECT_NE(get(row.application, "key"), "(none)");
        EXPECT_TRUE(fs::exists(folder() / row.name)) << row.name;
    }
    EXPECT_THAT(names(), ::testing::UnorderedElementsAreArray(expected));
    EXPECT_EQ(std::distance(fs::directory_iterator(configuration()), {}), 1);
}

TEST_F(Preferences, RefuseAnApplicationWhoseNameIsTooLong) {
    // 255 bytes, less ".plist" and ".damaged.9999".
    const std::string longest(236, 'x');
    set(longest, "key", "value");
    EXPECT_EQ(get(longest, "key"), "value");
    for (const auto& name : {longest + "x", std::string(79, '/'), std::string(100000, '.')}) {
        EXPECT_EQ(writePreference(name, "key", "value").status, kStatusBadPath);
        EXPECT_EQ(readPreference(name, "key").status, kStatusBadPath);
    }
}

TEST_F(Preferences, SetADamagedFileAsideAndSayWhere) {
    put(file("app"), "no property list");
    const auto first = readPreference("app", "key");
    EXPECT_EQ(first.status, kStatusOK);
    EXPECT_EQ(first.value, std::nullopt);
    EXPECT_EQ(first.setAside, file("app").string() + ".damaged");
    EXPECT_EQ(get("app", "key"), "(none)");

    put(file("app"), "<plist><string>no dictionary</string></plist>");
    const auto second = writePreference("app", "key", "value");
    EXPECT_EQ(second.status, kStatusOK);
    EXPECT_EQ(second.setAside, file("app").string() + ".damaged.2");
    EXPECT_EQ(get("app", "key"), "value");

    put(file("app"), "");
    const auto third = writePreference("app", "key", std::nullopt);
    EXPECT_EQ(third.status, kStatusOK);
    EXPECT_EQ(third.setAside, file("app").string() + ".damaged.3");

    EXPECT_EQ(contentsOf(first.setAside), "no property list");
    EXPECT_EQ(contentsOf(second.setAside), "<plist><string>no dictionary</string></plist>");
    EXPECT_EQ(contentsOf(third.setAside), "");
    EXPECT_THAT(names(), ::testing::ElementsAre("app.plist.damaged", "app.plist.damaged.2",
                                                "app.plist.damaged.3"));
}

TEST_F(Preferences, TakeAFileBeyondTheLimitForDamaged) {
    const std::string head = "<plist><dict><key>key</key><string>",
                      tail = "</string></dict></plist>";
    const std::size_t room = halvane::kPreferencesFileLimit - head.size() - tail.size();
    put(file("app"), head + std::string(room, 'x') + tail);
    EXPECT_EQ(get("app", "key").size(), room);
    put(file("app"), head + std::string(room + 1, 'x') + tail);
    EXPECT_EQ(readPreference("app", "key").setAside, file("app").string() + ".damaged");
}

TEST_F(Preferences, DoNotWaitForWhatIsNoFile) {
    fs::create_directories(folder());
    ASSERT_EQ(::mkfifo(file("fifo").c_str(), 0600), 0);
    fs::create_directory(file("folder"));
    fs::create_symlink("/dev/zero", file("device"));
    fs::create_symlink(file("loop"), file("loop"));
    for (const char* name : {"fifo", "folder", "device"}) {
        EXPECT_EQ(readPreference(name, "key").status, kStatusCannotOpen) << name;
        EXPECT_EQ(readPreference(name, "key").setAside, "");
    }
    for (const char* name : {"fifo", "folder"}) {
        EXPECT_EQ(writePreference(name, "key", "value").status, kStatusCannotOpen) << name;
        EXPECT_EQ(writePreference(name, "key", std::nullopt).status, kStatusCannotOpen) << name;
    }
    EXPECT_EQ(readPreference("loop", "key").status, kStatusBadPath);
    EXPECT_EQ(writePreference("loop", "key", "value").status, kStatusBadPath);
    EXPECT_TRUE(fs::is_fifo(file("fifo")));
}

TEST_F(Preferences, FollowALinkToAFile) {
    const auto target = configuration() / "elsewhere" / "real.plist";
    put(target, "<plist><dict><key>a</key><string>1</string></dict></plist>");
    fs::create_directories(folder());
    fs::create_symlink(target, file("app"));
    set("app", "b", "2");
    EXPECT_TRUE(fs::is_symlink(file("app")));
    EXPECT_EQ(get("app", "a"), "1");
    EXPECT_NE(contentsOf(target).find("<key>b</key>"), std::string::npos);

    fs::remove(target);
    EXPECT_EQ(get("app", "b"), "(none)");
    set("app", "b", "3");
    EXPECT_EQ(get("app", "b"), "3");
    EXPECT_TRUE(fs::is_regular_file(fs::symlink_status(file("app"))));
}

TEST_F(Preferences, TellWhenThereIsNoFolder) {
    put(folder(), "a file in its place");
    EXPECT_EQ(get("app", "key"), "(none)");
    EXPECT_EQ(writePreference("app", "key", "value").status, kStatusBadPath);
    EXPECT_EQ(writePreference("app", "key", std::nullopt).status, kStatusOK);
    EXPECT_EQ(contentsOf(folder()), "a file in its place");
}

TEST_F(Preferences, LeaveTheOldFileWhereTheNewOneCannotBeMade) {
    set("app", "key", "before");
    // A folder with content is in the place of the new file. Not even root can remove it as a file.
    fs::create_directories(folder() / "app.plist.new" / "in the way");
    EXPECT_EQ(writePreference("app", "key", "after").status, kStatusCannotOpen);
    EXPECT_EQ(get("app", "key"), "before");
    fs::remove_all(folder() / "app.plist.new");
    put(folder() / "app.plist.new", "left by a crash");
    set("app", "key", "after");
    EXPECT_EQ(get("app", "key"), "after");
    EXPECT_THAT(names(), ::testing::ElementsAre("app.plist"));
}

TEST_F(Preferences, RefuseAFolderThatIsNotWritable) {
    if (::geteuid() == 0) GTEST_SKIP() << "root may write anywhere";
    set("app", "key", "before");
    fs::permissions(folder(), fs::perms::owner_read | fs::perms::owner_exec);
    EXPECT_EQ(writePreference("app", "key", "after").status, kStatusCannotOpen);
    EXPECT_EQ(writePreference("new", "key", "after").status, kStatusCannotOpen);
    EXPECT_EQ(get("app", "key"), "before");
    fs::permissions(folder(), fs::perms::owner_all);
    EXPECT_THAT(names(), ::testing::ElementsAre("app.plist"));
}

TEST_F(Preferences, LieInTheHomeFolderWithoutAnAbsoluteConfigurationFolder) {
    const TemporaryFolder home;
    const ScopedEnvironment homeVariable("HOME", home.path().string());
    const auto file = home.path() / ".config" / "halvane" / "app.plist";
    int count = 0;
    const std::vector<std::optional<std::string>> notAbsolute = {std::nullopt, "", "relative",
                                                                 "./relative"};
    for (const auto& folder : notAbsolute) {
        const ScopedEnvironment variable("XDG_CONFIG_HOME", folder);
        const auto value = std::to_string(++count);
        set("app", "key", value);
        EXPECT_EQ(get("app", "key"), value);
        EXPECT_NE(contentsOf(file).find("<string>" + value + "<"), std::string::npos);
    }
    EXPECT_FALSE(fs::exists(folder()));
    EXPECT_FALSE(fs::exists("relative"));
}

// Writes `count` keys, and returns whether all were written.
bool writeKeys(const std::string& name, int count) {
    bool isWritten = true;
    for (int i = 0; i < count; ++i) {
        const auto result = writePreference("app", name + std::to_string(i), name);
        isWritten = isWritten && result.status == kStatusOK && result.setAside.empty();
    }
    return isWritten;
}

// Reads until it is told to stop. Returns whether every read found the whole file, and no key was
// lost.
bool readWhileWritten(const std::atomic<bool>& isDone, const std::string& name, int count) {
    int found = 0;
    bool isWhole = true;
    while (!isDone && isWhole) {
        const auto key = name + std::to_string(std::min(found, count - 1));
        const auto result = readPreference("app", key);
        isWhole = result.status == kStatusOK && result.setAside.empty();
        if (result.value) found = std::min(found + 1, count - 1);
        if (found > 0) isWhole = isWhole && readPreference("app", name + "0").value == name;
    }
    return isWhole;
}

constexpr int kWriters = 4;
constexpr int kKeys = 25;

TEST_F(Preferences, LoseNothingToOtherProcesses) {
    std::vector<pid_t> writers;
    for (int i = 0; i < kWriters; ++i) {
        const pid_t child = ::fork();
        ASSERT_GE(child, 0);
        if (child == 0) ::_exit(writeKeys("writer" + std::to_string(i) + "-", kKeys) ? 0 : 1);
        writers.push_back(child);
    }
    std::atomic<bool> isDone = false;
    std::thread waiter([&] {
        for (const pid_t writer : writers) {
            int status = -1;
            EXPECT_EQ(::waitpid(writer, &status, 0), writer);
            EXPECT_TRUE(WIFEXITED(status) && WEXITSTATUS(status) == 0) << status;
        }
        isDone = true;
    });
    EXPECT_TRUE(readWhileWritten(isDone, "writer0-", kKeys));
    waiter.join();

    const auto values = halvane::propertyListFromXml(contentsOf(file("app")));
    ASSERT_TRUE(values.has_value());
    EXPECT_EQ(values->as<PropertyListDictionary>()->size(), std::size_t{kWriters * kKeys});
    EXPECT_THAT(names(), ::testing::ElementsAre("app.plist"));
}

TEST_F(Preferences, LoseNothingToOtherThreads) {
    std::atomic<bool> isDone = false;
    std::atomic<int> failures = 0;
    std::thread reader([&] {
        if (!readWhileWritten(isDone, "writer0-", kKeys)) ++failures;
    });
    std::vector<std::thread> writers;
    for (int i = 0; i < kWriters; ++i) {
        writers.emplace_back([i, &failures] {
            if (!writeKeys("writer" + std::to_string(i) + "-", kKeys)) ++failures;
        });
    }
    for (auto& writer : writers) writer.join();
    isDone = true;
    reader.join();
    EXPECT_EQ(failures, 0);

    const auto values = halvane::propertyListFromXml(contentsOf(file("app")));
    ASSERT_TRUE(values.has_value());
    EXPECT_EQ(values->as<PropertyListDictionary>()->size(), std::size_t{kWriters * kKeys});
}

TEST_F(Preferences, SetADamagedFileAsideOnceHoweverManySeeIt) {
    put(file("app"), "damaged");
    std::atomic<int> reports = 0;
    std::vector<std::thread> readers;
    for (int i = 0; i < kWriters; ++i) {
        readers.emplace_back([&reports] {
            const auto result = readPreference("app", "key");
            if (result.status != kStatusOK || !result.setAside.empty()) ++reports;
        });
    }
    for (auto& reader : readers) reader.join();
    EXPECT_EQ(reports, 1);
    EXPECT_THAT(names(), ::testing::ElementsAre("app.plist.damaged"));
}

}  // namespace
