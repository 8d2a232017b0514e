// Captures with the real library, on interfaces of a private network that hear what a test writes.
#include "tools/halvane/input/live_source.h"

#include <array>
#include <chrono>
#include <cstddef>
#include <cstdint>
#include <ctime>
#include <filesystem>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <linux/capability.h>
#include <memory>
#include <net/if_arp.h>
#include <optional>
#include <string>
#include <sys/eventfd.h>
#include <sys/syscall.h>
#include <sys/timerfd.h>
#include <unistd.h>
#include <utility>
#include <vector>

#include "halvane/capture/link_type.h"

#include "tests/support/capture_bytes.h"
#include "tests/support/private_network.h"
#include "tests/support/temporary_folder.h"
#include "tools/halvane/input/input_stream.h"
#include "tools/halvane/input/packet_source.h"
#include "tools/halvane/input/pcapng_writer.h"

using halvane::capture::LinkType;
using halvane::testing::append;
using halvane::testing::beaconFrame;
using halvane::testing::Bytes;
using halvane::testing::HeardInterface;
using halvane::testing::inPrivateNetwork;
using halvane::testing::TemporaryFolder;
using ::testing::ElementsAre;
using ::testing::Field;
using ::testing::IsEmpty;
using namespace halvane::tool;

namespace {

using Clock = LiveSource::Clock;
using Pause = LiveSource::Pause;

constexpr std::chrono::seconds kLong{60};  // a test that waits as long fails

std::unique_ptr<LiveSource> listen(const std::vector<std::string>& names,
                                   LiveOptions options = {}) {
    options.delay = std::chrono::milliseconds(10);
    auto source = LiveSource::open(names, options);
    EXPECT_TRUE(source) << source.error().interface << ": " << source.error().text;
    if (source) (*source)->setDeadline(Clock::now() + kLong);
    return source ? std::move(*source) : nullptr;
}

LiveFault faultOf(const std::vector<std::string>& names) {
    auto source = LiveSource::open(names, {});
    EXPECT_FALSE(source);
    return source ? LiveFault{} : source.error();
}

// An interface that hears 802.11 and is up.
struct Monitor : HeardInterface {
    explicit Monitor(const std::string& name) : HeardInterface(name) { setUp(true); }
};

Bytes radiotapPacket(std::uint8_t last) {
    Bytes packet = {0x00, 0x00, 0x09, 0x00, 0x20, 0x00, 0x00, 0x00, 0xC4};
    append(packet, beaconFrame(last));
    return packet;
}

// The octets of the next packet; none if there is none.
Bytes nextBytes(LiveSource& source) {
    const NextPacket packet = source.next();
    EXPECT_TRUE(packet) << packet.error().text;
    if (!packet || !*packet) return {};
    return {(*packet)->bytes.begin(), (*packet)->bytes.end()};
}

std::unique_ptr<PacketSource> openFile(const std::string& path) {
    auto stream = InputStream::open(path);
    EXPECT_TRUE(stream) << path;
    auto input = std::make_unique<InputStream>(std::move(*stream));
    auto source =
        path.ends_with(".pcapng") ? openPcapng(std::move(input)) : openPcap(std::move(input));
    EXPECT_TRUE(source) << path;
    return std::move(*source);
}

// All packets with a radiotap header of the captures that come with the tree.
std::vector<Bytes> samplePackets() {
    std::vector<Bytes> packets;
    for (const auto& entry : std::filesystem::directory_iterator(HALVANE_SAMPLES)) {
        if (!entry.path().extension().string().starts_with(".pcap")) continue;
        const auto source = openFile(entry.path().string());
        for (auto packet = source->next(); packet && *packet; packet = source->next()) {
            if ((*packet)->linkType != LinkType::Radiotap) continue;
            packets.emplace_back((*packet)->bytes.begin(), (*packet)->bytes.end());
        }
    }
    return packets;
}

std::int64_t nowInNanoseconds() {
    timespec now{};
    ::clock_gettime(CLOCK_REALTIME, &now);
    return std::int64_t{now.tv_sec} * 1'000'000'000 + now.tv_nsec;
}

TEST(LiveSource, HearsTheFramesOfTheSamples) {
    inPrivateNetwork([] {
        Monitor monitor("mon0");
        const auto source = listen({"mon0"});
        const std::vector<Bytes> packets = samplePackets();
        EXPECT_GT(packets.size(), 20U);
        std::uint64_t number = 0, octets = 0;
        for (const Bytes& sent : packets) {
            const std::int64_t before = nowInNanoseconds();
            monitor.hear(sent);
            const NextPacket packet = source->next();
            if (!packet || !*packet) FAIL() << "no packet " << number;
            EXPECT_EQ((*packet)->number, ++number);
            EXPECT_EQ((*packet)->linkType, LinkType::Radiotap);
            EXPECT_EQ(Bytes((*packet)->bytes.begin(), (*packet)->bytes.end()), sent);
            EXPECT_EQ((*packet)->originalLength, sent.size());
            EXPECT_GE((*packet)->time.value_or(0), before);
            EXPECT_LE((*packet)->time.value_or(0), nowInNanoseconds());
            octets += sent.size();
        }
        EXPECT_EQ(source->bytesRead(), octets);
        EXPECT_EQ(source->counts().received, packets.size());
        EXPECT_EQ(source->counts().droppedByKernel, 0U);
    });
}

TEST(LiveSource, WritesWhatItHears) {
    const TemporaryFolder folder;
    const std::string path = (folder.path() / "live.pcapng").string();
    inPrivateNetwork([&path] {
        Monitor first("mon0"), second("mon1");
        const auto source = listen({"mon0", "mon1"});
        std::vector<WrittenInterface> written;
        for (const LiveInterface& interface : source->interfaces()) {
            written.push_back({interface.name, interface.linkType,
                               static_cast<std::uint32_t>(interface.snapshotLength)});
        }
        auto writer = PcapngWriter::create(path, written, "halvane");
        const std::vector<Bytes> packets = samplePackets();
        std::vector<std::optional<std::int64_t>> times;
        for (std::size_t i = 0; i < packets.size(); ++i) {
            (i % 3 == 0 ? second : first).hear(packets[i]);
            const NextPacket packet = source->next();
            if (!packet || !*packet) FAIL() << "no packet " << i;
            EXPECT_EQ(writer->add(**packet), std::nullopt);
            times.push_back((*packet)->time);
        }
        EXPECT_EQ(writer->flush(), std::nullopt);
        const auto file = openFile(path);
        for (std::size_t i = 0; i < packets.size(); ++i) {
            const NextPacket packet = file->next();
            if (!packet || !*packet) FAIL() << "no packet " << i;
            EXPECT_EQ(Bytes((*packet)->bytes.begin(), (*packet)->bytes.end()), packets[i]);
            EXPECT_EQ((*packet)->interface, i % 3 == 0 ? 1U : 0U);
            EXPECT_EQ((*packet)->time, times[i]);
        }
    });
}

TEST(LiveSource, HearsBusyInterfacesInTurn) {
    inPrivateNetwork([] {
        Monitor first("mon0"), second("mon1");
        const auto source = listen({"mon0", "mon1"});
        for (int i = 0; i < 200; ++i) first.hear(radiotapPacket(1));
        for (int i = 0; i < 20; ++i) second.hear(radiotapPacket(2));
        std::array<int, 2> heard{};
        // All of both were written before the first is read, but the kernel may hand over late.
        while (heard[0] + heard[1] < 220) {
            const NextPacket packet = source->next();
            if (!packet || !*packet) FAIL() << heard[0] << " " << heard[1];
            EXPECT_EQ((*packet)->bytes[9 + 15], (*packet)->interface + 1);
            ++heard.at((*packet)->interface);
        }
        EXPECT_THAT(heard, ElementsAre(200, 20));
        EXPECT_EQ(source->counts(0).received, 200U);
        EXPECT_EQ(source->counts(1).received, 20U);
        EXPECT_EQ(source->counts().received, 220U);
    });
}

TEST(LiveSource, KeepsAsMuchAsItIsAskedFor) {
    inPrivateNetwork([] {
        Monitor monitor("mon0");
        const auto source = listen({"mon0"}, {.snapshotLength = 40});
        const Bytes sent = radiotapPacket(1);
        monitor.hear(sent);
        const NextPacket packet = source->next();
        if (!packet || !*packet) FAIL();
        EXPECT_EQ((*packet)->bytes.size(), 40U);
        EXPECT_EQ((*packet)->originalLength, sent.size());
        EXPECT_EQ(source->interfaces().front().snapshotLength, 40);
    });
}

TEST(LiveSource, EndsAWaitAtItsDeadline) {
    inPrivateNetwork([] {
        Monitor monitor("mon0");
        const auto source = listen({"mon0"});
        const auto deadline = Clock::now() + std::chrono::milliseconds(20);
        source->setDeadline(deadline);
        EXPECT_THAT(nextBytes(*source), IsEmpty());
        EXPECT_GE(Clock::now(), deadline);
        EXPECT_EQ(source->pause(), Pause::Deadline);
        // What came in the meantime waits.
        monitor.hear(radiotapPacket(1));
        EXPECT_THAT(nextBytes(*source), IsEmpty());
        source->setDeadline(Clock::now() + kLong);
        EXPECT_EQ(nextBytes(*source), radiotapPacket(1));
        EXPECT_EQ(source->pause(), Pause::None);
    });
}

TEST(LiveSource, EndsAWaitAtAnInterrupt) {
    inPrivateNetwork([] {
        Monitor monitor("mon0");
        const int timer = ::timerfd_create(CLOCK_MONOTONIC, TFD_CLOEXEC);
        const int event = ::eventfd(0, EFD_CLOEXEC);
        const auto source = listen({"mon0"}, {.interrupts = {event, timer}});
        source->setDeadline(std::nullopt);
        const itimerspec soon{{}, {0, 5'000'000}};  // while next() waits
        ::timerfd_settime(timer, 0, &soon, nullptr);
        EXPECT_THAT(nextBytes(*source), IsEmpty());
        EXPECT_EQ(source->pause(), Pause::Interrupt);

        const itimerspec never{};
        ::timerfd_settime(timer, 0, &never, nullptr);
        monitor.hear(radiotapPacket(1));
        EXPECT_EQ(nextBytes(*source), radiotapPacket(1));
        ::eventfd_write(event, 1);
        EXPECT_THAT(nextBytes(*source), IsEmpty());
        EXPECT_EQ(source->pause(), Pause::Interrupt);
    });
}

TEST(LiveSource, SeesAnInterruptBetweenPackets) {
    inPrivateNetwork([] {
        Monitor monitor("mon0");
        const int event = ::eventfd(1, EFD_CLOEXEC);
        const auto source = listen({"mon0"}, {.interrupts = {event}});
        for (int i = 0; i < 500; ++i) monitor.hear(radiotapPacket(1));
        int heard = 0;
        while (!nextBytes(*source).empty()) ++heard;
        EXPECT_EQ(source->pause(), Pause::Interrupt);
        EXPECT_LE(heard, 64);
    });
}

TEST(LiveSource, GoesOnWithoutAnInterfaceThatGoes) {
    inPrivateNetwork([] {
        Monitor first("mon0"), second("mon1");
        const auto source = listen({"mon0", "mon1"});
        first.hear(radiotapPacket(1));
        EXPECT_EQ(nextBytes(*source), radiotapPacket(1));
        first.remove();
        while (source->faults().empty()) {
            second.hear(radiotapPacket(2));
            EXPECT_EQ(nextBytes(*source), radiotapPacket(2));
            if (HasFailure()) return;
        }
        EXPECT_THAT(source->faults(),
                    ElementsAre(Field(&LiveFault::problem, LiveProblem::WentAway)));
        EXPECT_EQ(source->faults().front().interface, "mon0");
        EXPECT_TRUE(source->interfaces()[0].hasEnded);
        EXPECT_FALSE(source->interfaces()[1].hasEnded);
        EXPECT_EQ(source->counts(0).received, 1U);

        second.remove();
        const NextPacket end = source->next();
        ASSERT_FALSE(end);
        EXPECT_EQ(end.error().text, "mon1: went away while it was listened to");
        EXPECT_FALSE(source->next());
    });
}

TEST(LiveSource, DeliversWhatAnInterfaceHeardBeforeItWent) {
    inPrivateNetwork([] {
        Monitor monitor("mon0");
        const auto source = listen({"mon0"});
        for (int i = 0; i < 10; ++i) monitor.hear(radiotapPacket(1));
        monitor.remove();
        int heard = 0;
        while (true) {
            const NextPacket packet = source->next();
            if (!packet || !*packet) break;
            ++heard;
        }
        EXPECT_EQ(heard, 10);
        EXPECT_THAT(source->faults(),
                    ElementsAre(Field(&LiveFault::problem, LiveProblem::WentAway)));
    });
}

TEST(LiveSource, KnowsAnotherInterfaceOfTheSameName) {
    inPrivateNetwork([] {
        auto monitor = std::make_unique<Monitor>("mon0");
        const auto source = listen({"mon0"});
        monitor.reset();
        monitor = std::make_unique<Monitor>("mon0");
        const NextPacket end = source->next();
        ASSERT_FALSE(end);
        EXPECT_EQ(end.error().text, "mon0: went away while it was listened to");
    });
}

TEST(LiveSource, GoesOnOnceAnInterfaceIsUpAgain) {
    inPrivateNetwork([] {
        Monitor monitor("mon0");
        const auto source = listen({"mon0"});
        const auto waitFor = [&source](bool isDown) {
            const auto end = Clock::now() + kLong;
            while (source->interfaces()[0].isDown != isDown && Clock::now() < end) {
                source->setDeadline(Clock::now() + std::chrono::milliseconds(10));
                EXPECT_THAT(nextBytes(*source), IsEmpty());
            }
            EXPECT_EQ(source->interfaces()[0].isDown, isDown);
        };
        monitor.setUp(false);
        waitFor(true);
        monitor.setUp(true);
        waitFor(false);
        monitor.hear(radiotapPacket(3));
        source->setDeadline(Clock::now() + kLong);
        EXPECT_EQ(nextBytes(*source), radiotapPacket(3));
        EXPECT_THAT(source->faults(), IsEmpty());
    });
}

TEST(LiveSource, EndsWithAnInterfaceThatLeavesMonitorMode) {
    inPrivateNetwork([] {
        Monitor monitor("mon0");
        const auto source = listen({"mon0"});
        monitor.setUp(false);
        monitor.setHardwareType(ARPHRD_ETHER);
        const NextPacket end = source->next();
        ASSERT_FALSE(end);
        EXPECT_EQ(end.error().text, "mon0: left monitor mode while it was listened to");
    });
}

TEST(LiveSource, TellsWhichInterfaceThereIsNot) {
    for (const char* const name :
         {"halvane-none", "", "any", "nflog", "lo:1", "a-name-longer-than-the-kernel-keeps"}) {
        const LiveFault fault = faultOf({name});
        EXPECT_EQ(fault.problem, LiveProblem::NoSuchInterface) << name;
        EXPECT_EQ(fault.interface, name);
    }
}

TEST(LiveSource, TellsThatAnInterfaceIsNotInMonitorMode) {
    inPrivateNetwork([] {
        HeardInterface ethernet("eth7", ARPHRD_ETHER);
        ethernet.setUp(true);
        Monitor monitor("mon0");
        const LiveFault fault = faultOf({"mon0", "eth7"});
        EXPECT_EQ(fault.problem, LiveProblem::NotMonitor);
        EXPECT_EQ(fault.interface, "eth7");
        EXPECT_EQ(fault.linkType, 1);
    });
}

TEST(LiveSource, TellsThatAnInterfaceIsDown) {
    inPrivateNetwork([] {
        const HeardInterface monitor("mon0");
        const LiveFault fault = faultOf({"mon0"});
        EXPECT_EQ(fault.problem, LiveProblem::Down);
        EXPECT_EQ(fault.interface, "mon0");
    });
}

bool dropRights() {
    __user_cap_header_struct header{_LINUX_CAPABILITY_VERSION_3, 0};
    std::array<__user_cap_data_struct, 2> none{};
    return ::syscall(SYS_capset, &header, none.data()) == 0;
}

TEST(LiveSource, TellsThatItIsNotPermitted) {
    inPrivateNetwork([] {
        const Monitor monitor("mon0");
        EXPECT_TRUE(dropRights());
        const LiveFault fault = faultOf({"mon0"});
        EXPECT_EQ(fault.problem, LiveProblem::NotPermitted);
        EXPECT_EQ(fault.interface, "mon0");
    });
}

}  // namespace
