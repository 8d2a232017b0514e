#include "tools/halvane/commands/bus_diagnosis.h"

#include <cstring>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <string>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

#include "tests/support/temporary_folder.h"

using halvane::testing::TemporaryFolder;
using halvane::tool::isInstalled;
using halvane::tool::unreachableReason;

namespace {

TEST(UnreachableReason, NamesTheSocketAndWhatIsWrongWithIt) {
    const TemporaryFolder folder;
    const std::string place = folder.path().string();
    EXPECT_EQ(unreachableReason("unix:path=" + place + "/none"),
              place + "/none: No such file or directory");
    EXPECT_EQ(unreachableReason("unix:guid=0123,path=" + place + "/none;tcp:host=localhost"),
              place + "/none: No such file or directory");
    EXPECT_EQ(unreachableReason("unix:path=" + place + "/a%20b"),
              place + "/a b: No such file or directory");
    std::ofstream(folder.path() / "file") << "no socket";
    EXPECT_EQ(unreachableReason("unix:path=" + place + "/file"),
              place + "/file: Connection refused");
    EXPECT_EQ(unreachableReason("unix:path=/" + std::string(200, 'x')),
              "/" + std::string(200, 'x') + ": File name too long");
}

TEST(UnreachableReason, IsThePlaceAloneWhereNothingIsKnown) {
    for (const char* address : {"tcp:host=localhost,port=1", "unix:abstract=/tmp/x", "unix:"}) {
        EXPECT_EQ(unreachableReason(address), address);
    }
    EXPECT_EQ(unreachableReason(""), "''");
    EXPECT_EQ(unreachableReason("unix:path=%4"), "%4: No such file or directory");
}

TEST(UnreachableReason, IsThePlaceAloneWhereTheBusIsBack) {
    const TemporaryFolder folder;
    const std::string path = (folder.path() / "bus").string();
    const int listener = ::socket(AF_UNIX, SOCK_STREAM, 0);
    sockaddr_un place{};
    place.sun_family = AF_UNIX;
    ASSERT_LT(path.size(), sizeof(place.sun_path));
    std::memcpy(place.sun_path, path.c_str(), path.size() + 1);
    ASSERT_EQ(::bind(listener, reinterpret_cast<const sockaddr*>(&place), sizeof(place)), 0);
    ASSERT_EQ(::listen(listener, 1), 0);
    EXPECT_EQ(unreachableReason("unix:path=" + path), path);
    ::close(listener);
}

TEST(IsInstalled, LooksForProgramsInFolders) {
    const TemporaryFolder folder;
    const std::string place = folder.path().string();
    EXPECT_FALSE(isInstalled("halvaned", place));
    std::ofstream(folder.path() / "halvaned") << "#!/bin/sh\n";
    std::filesystem::permissions(folder.path() / "halvaned", std::filesystem::perms::owner_read);
    EXPECT_FALSE(isInstalled("halvaned", place));
    std::filesystem::permissions(folder.path() / "halvaned", std::filesystem::perms::owner_all);
    EXPECT_TRUE(isInstalled("halvaned", place));
    EXPECT_TRUE(isInstalled("halvaned", "/nowhere:" + place + ":"));
    EXPECT_FALSE(isInstalled("halvaned", ""));
    EXPECT_FALSE(isInstalled("halvaned", "::/nowhere"));
}

}  // namespace
