#include "tools/halvaned/hostapd/control_socket.h"

#include <cstdint>
#include <filesystem>
#include <gtest/gtest.h>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "tests/halvaned/hostapd/played_server.h"
#include "tests/halvaned/hostapd/test_loop.h"
#include "tests/support/temporary_folder.h"

using namespace halvane;
using namespace halvane::hosting;
using halvane::testing::PlayedServer;
using halvane::testing::TemporaryFolder;
using halvane::testing::TestLoop;

namespace {

constexpr std::uint64_t kLong = 60'000'000;  // microseconds, which no test waits for
using Texts = std::vector<std::string>;

class ControlSocketTest : public ::testing::Test {
  protected:
    std::string serverPath() const { return folder_.path() / "wlan0"; }

    void serve(PlayedServer::Script script) {
        server_.emplace(loop_.get(), serverPath(), std::move(script));
    }

    void connect(std::uint64_t timeout = kLong) {
        auto connected = ControlSocket::connect(
            loop_.get(), {serverPath(), folder_.path()}, timeout,
            {.event = [this](std::string_view event) { events_.emplace_back(event); },
             .lost = [this](const std::string& reason) { lost_.push_back(reason); }});
        if (!connected) FAIL() << connected.error();
        socket_ = *std::move(connected);
    }

    void request(const std::string& command) {
        socket_->request(command, [this](Result<std::string_view, ControlFailure> reply) {
            if (reply) {
                replies_.emplace_back(*reply);
            } else {
                failures_.push_back(reply.error());
            }
        });
    }

    std::size_t files() const {
        std::size_t count = 0;
        for ([[maybe_unused]] const auto& entry :
             std::filesystem::directory_iterator(folder_.path())) {
            ++count;
        }
        return count;
    }

    TestLoop loop_;
    TemporaryFolder folder_;
    std::optional<PlayedServer> server_;
    std::unique_ptr<ControlSocket> socket_;
    Texts events_, replies_, lost_;
    std::vector<ControlFailure> failures_;
};

std::string echo(const std::string& request) {
    return "reply to " + request;
}

TEST_F(ControlSocketTest, MatchesRepliesToRequestsInOrder) {
    serve(echo);
    connect();
    for (const char* command : {"PING", "STATUS", "STA-FIRST"}) request(command);
    loop_.runUntil([this] { return replies_.size() == 3; });
    EXPECT_EQ(replies_, (Texts{"reply to PING", "reply to STATUS", "reply to STA-FIRST"}));
    EXPECT_EQ(server_->requests(), (Texts{"PING", "STATUS", "STA-FIRST"}));
}

TEST_F(ControlSocketTest, HasOneRequestOnItsWayAtATime) {
    serve([](const std::string&) { return std::nullopt; });
    connect();
    request("PING");
    request("STATUS");
    loop_.runUntil([this] { return !server_->requests().empty(); });
    loop_.settle();
    EXPECT_EQ(server_->requests(), Texts{"PING"});
    server_->send("PONG\n");
    loop_.runUntil([this] { return server_->requests().size() == 2; });
    EXPECT_EQ(replies_, Texts{"PONG\n"});
}

TEST_F(ControlSocketTest, TellsEventsAmongReplies) {
    serve([this](const std::string& request) {
        server_->send("<3>AP-STA-CONNECTED 02:00:00:00:00:01");
        return echo(request);
    });
    connect();
    request("PING");
    loop_.runUntil([this] { return !replies_.empty(); });
    EXPECT_EQ(events_, Texts{"<3>AP-STA-CONNECTED 02:00:00:00:00:01"});
    server_->send("nobody asked");
    server_->send("<3>AP-DISABLED ");
    loop_.runUntil([this] { return events_.size() == 2; });
    EXPECT_EQ(replies_.size(), 1U);
}

TEST_F(ControlSocketTest, TakesAnEmptyReply) {
    serve([](const std::string&) { return ""; });
    connect();
    request("STA-FIRST");
    loop_.runUntil([this] { return !replies_.empty(); });
    EXPECT_EQ(replies_, Texts{""});
}

TEST_F(ControlSocketTest, RefusesWhatIsTooLarge) {
    serve([this](const std::string&) {
        server_->send("<3>" + std::string(ControlSocket::kLargestMessage, 'x'));
        return std::string(ControlSocket::kLargestMessage + 1, 'x');
    });
    connect();
    request("STATUS");
    loop_.runUntil([this] { return !failures_.empty(); });
    EXPECT_EQ(failures_, std::vector{ControlFailure::TooLarge});
    EXPECT_TRUE(events_.empty());
    server_->setScript(
        [](const std::string&) { return std::string(ControlSocket::kLargestMessage, 'x'); });
    request("STATUS");
    loop_.runUntil([this] { return !replies_.empty(); });
    EXPECT_EQ(replies_[0].size(), ControlSocket::kLargestMessage);
    EXPECT_TRUE(lost_.empty());
}

TEST_F(ControlSocketTest, IsLostWithoutAReplyInTime) {
    serve([](const std::string&) { return std::nullopt; });
    connect(1000);
    request("PING");
    request("STATUS");
    loop_.runUntil([this] { return !lost_.empty(); });
    EXPECT_EQ(lost_, Texts{"hostapd does not answer \"PING\""});
    EXPECT_EQ(failures_, (std::vector{ControlFailure::Lost, ControlFailure::Lost}));
    request("PING");
    EXPECT_EQ(failures_.size(), 3U);
    EXPECT_EQ(lost_.size(), 1U);
}

TEST_F(ControlSocketTest, IsLostWithItsServer) {
    serve(echo);
    connect();
    server_.reset();
    request("PING");
    loop_.runUntil([this] { return !lost_.empty(); });
    EXPECT_EQ(lost_, Texts{"hostapd is gone: Connection refused"});
    EXPECT_EQ(failures_, std::vector{ControlFailure::Lost});
}

TEST_F(ControlSocketTest, LimitsWhatWaits) {
    serve([](const std::string&) { return std::nullopt; });
    connect();
    for (std::size_t i = 0; i < ControlSocket::kMostRequests; ++i) request("PING");
    EXPECT_TRUE(failures_.empty());
    request("PING");
    EXPECT_EQ(failures_, std::vector{ControlFailure::TooMany});
}

TEST_F(ControlSocketTest, WaitsForRoomInTheServersQueue) {
    serve(echo);
    std::vector<std::unique_ptr<ControlSocket>> others;
    int answered = 0;
    constexpr int kCount = 64;  // more than a queue holds
    for (int i = 0; i < kCount; ++i) {
        auto other = ControlSocket::connect(loop_.get(), {serverPath(), folder_.path()}, kLong, {});
        ASSERT_TRUE(other);
        (*other)->request("PING", [&](auto reply) { answered += reply ? 1 : 0; });
        others.push_back(*std::move(other));
    }
    loop_.runUntil([&] { return answered == kCount; });
    EXPECT_EQ(server_->requests().size(), std::size_t{kCount});
}

TEST_F(ControlSocketTest, SurvivesAFloodOfEvents) {
    serve([this](const std::string& request) {
        for (int i = 0; i < 10000; ++i) server_->send("<3>AP-STA-CONNECTED " + std::to_string(i));
        return echo(request);
    });
    connect();
    request("PING");
    loop_.runUntil([this] { return !events_.empty(); });
    loop_.settle();
    EXPECT_LT(events_.size(), 10000U) << "the queue holds no more";
    server_->setScript(echo);
    if (replies_.empty()) server_->send("late");
    loop_.runUntil([this] { return !replies_.empty(); });
    EXPECT_TRUE(lost_.empty());
}

TEST_F(ControlSocketTest, LeavesNoFile) {
    serve(echo);
    connect();
    EXPECT_EQ(files(), 2U);
    auto second = ControlSocket::connect(loop_.get(), {serverPath(), folder_.path()}, kLong, {});
    ASSERT_TRUE(second);
    EXPECT_EQ(files(), 3U);
    *second = nullptr;
    socket_.reset();
    EXPECT_EQ(files(), 1U) << "the server's";
}

TEST_F(ControlSocketTest, SaysWhyItCannotConnect) {
    const auto reasonOf = [this](const std::string& server, const std::string& folder) {
        const auto socket = ControlSocket::connect(loop_.get(), {server, folder}, kLong, {});
        return socket ? "" : socket.error();
    };
    const std::string folder = folder_.path();
    EXPECT_EQ(reasonOf(serverPath(), folder), serverPath() + ": No such file or directory");
    EXPECT_EQ(reasonOf(std::string(200, 'x'), folder),
              std::string(200, 'x') + ": File name too long");
    EXPECT_EQ(reasonOf(serverPath(), folder + "/none"),
              folder + "/none: No such file or directory");
    EXPECT_EQ(files(), 0U);
}

TEST_F(ControlSocketTest, MayBeDestroyedByEachHandler) {
    serve(echo);
    connect();
    bool isDone = false;
    socket_->request("PING", [&](auto) {
        socket_.reset();
        isDone = true;
    });
    loop_.runUntil([&] { return isDone; });
    auto destroysItself =
        ControlSocket::connect(loop_.get(), {serverPath(), folder_.path()}, kLong,
                               {.event = [&](std::string_view) { socket_.reset(); }});
    ASSERT_TRUE(destroysItself);
    socket_ = *std::move(destroysItself);
    socket_->request("PING", [](auto) {});
    server_->setScript([this](const std::string&) {
        server_->send("<3>AP-ENABLED");
        return "<3>AP-DISABLED";
    });
    loop_.runUntil([&] { return socket_ == nullptr; });
    connect(1000);
    server_->setScript([](const std::string&) { return std::nullopt; });
    isDone = false;
    socket_->request("PING", [&](auto) {
        socket_.reset();
        isDone = true;
    });
    loop_.runUntil([&] { return isDone; });
    EXPECT_TRUE(lost_.empty()) << "nobody is left to be told";
}

}  // namespace
