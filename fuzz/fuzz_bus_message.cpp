// D-Bus messages: a body of any types can be read. What was read, and any dictionary, is either
// refused, or can be written and reads back the same.
#include <array>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <sys/socket.h>
#include <systemd/sd-bus.h>
#include <unistd.h>

#include "halvane/base/byte_buffer.h"
#include "halvane/platform/bus/ipc_message.h"
#include "halvane/platform/bus/message_check_internal.h"
#include "halvane/platform/bus/message_reader_internal.h"
#include "halvane/platform/bus/message_writer_internal.h"
#include "halvane/platform/bus/pointers_internal.h"

#include "fuzz/byte_source.h"
#include "fuzz/property_list_source.h"
#include "fuzz/require.h"

using namespace halvane;

namespace {

constexpr std::size_t kLimit = 1048576;

// Only a connection can make a message; this one has no peer.
sd_bus* busWithoutPeer() {
    static const BusPointer owner = [] {
        sd_bus* bus = nullptr;
        std::array<int, 2> ends{};
        REQUIRE(::sd_bus_new(&bus) >= 0);
        REQUIRE(::socketpair(AF_UNIX, SOCK_STREAM, 0, ends.data()) == 0);
        REQUIRE(::sd_bus_set_fd(bus, ends[0], ends[0]) >= 0 && ::sd_bus_start(bus) >= 0);
        return BusPointer(bus);
    }();
    return owner.get();
}

BusMessagePointer emptyMessage() {
    sd_bus_message* message = nullptr;
    REQUIRE(::sd_bus_message_new_signal(busWithoutPeer(), &message, "/x", "org.example.X", "X") >=
            0);
    return BusMessagePointer(message);
}

sd_bus_message* sealed(const BusMessagePointer& message) {
    if (::sd_bus_message_seal(message.get(), 1, 0) < 0) return nullptr;
    return ::sd_bus_message_rewind(message.get(), 1) >= 0 ? message.get() : nullptr;
}

// Appends one value of a type that the source chooses; some attempts fail, and append nothing.
class BodyWriter {
  public:
    BodyWriter(sd_bus_message* message, fuzzing::ByteSource& source)
        : message_(message), source_(source) {}

    void writeEntries(int depth) {
        if (!open('a', "{sv}")) return;
        for (std::size_t i = source_.below(8); i > 0; --i) {
            if (!open('e', "sv")) break;
            const std::string key = fuzzing::keyFrom(source_);
            const bool isKey = ::sd_bus_message_append_basic(message_, 's', key.c_str()) >= 0;
            if (!isKey) ::sd_bus_message_append_basic(message_, 's', "key");
            writeVariant(depth);
            close();
        }
        close();
    }

  private:
    bool open(char type, const char* contents) {
        return ::sd_bus_message_open_container(message_, type, contents) >= 0;
    }
    void close() { ::sd_bus_message_close_container(message_); }

    void writeVariant(int depth) {
        static constexpr const char* kTypes[] = {
            "y",  "b",  "n",  "q",    "i",     "u",     "x",     "t",  "d", "s",   "o",    "g",
            "ay", "as", "ai", "(sx)", "a(ix)", "a{is}", "a{sv}", "av", "v", "aay", "a{ss}"};
        const char* const type = source_.oneOf(kTypes);
        if (!open('v', type)) return;
        writeType(type, depth);
        close();
    }

    void writeType(std::string_view type, int depth) {
        if (type == "a{sv}" && depth > 0) return writeEntries(depth - 1);
        if (type == "av" && depth > 0) return writeVariants(depth - 1);
        if (type == "v") return depth > 0 ? writeVariant(depth - 1) : writeNothing();
        if (type == "ay") return writeBytes();
        if (type == "(sx)") {
            ::sd_bus_message_append(message_, "(sx)", "a", std::int64_t{1});
        } else if (type.size() == 1) {
            writeBasic(type[0]);
        } else {
            writeContainer(std::string(type.substr(1)));
        }
    }
    void writeNothing() { ::sd_bus_message_append(message_, "v", "s", ""); }

    void writeVariants(int depth) {
        if (!open('a', "v")) return;
        for (std::size_t i = source_.below(6); i > 0; --i) writeVariant(depth);
        close();
    }
    void writeBytes() {
        const auto bytes = source_.bytes();
        ::sd_bus_message_append_array(message_, 'y', bytes.data(), bytes.size());
    }
    void writeContainer(const std::string& contents) {
        if (!open('a', contents.c_str())) return;
        for (std::size_t i = source_.below(3); i > 0; --i) {
            if (contents == "s" || contents == "i") writeBasic(contents[0]);
            if (contents == "ay") writeBytes();
            if (contents == "(ix)") ::sd_bus_message_append(message_, "(ix)", 1, std::int64_t{2});
            if (contents == "{is}") ::sd_bus_message_append(message_, "{is}", 1, "x");
            if (contents == "{ss}") ::sd_bus_message_append(message_, "{ss}", "k", "v");
        }
        close();
    }
    void writeBasic(char type) {
        if (type == 's' || type == 'o' || type == 'g') {
            const std::string text = type == 'o' ? "/" + source_.text(20) : source_.text(20);
            if (::sd_bus_message_append_basic(message_, type, text.c_str()) >= 0) return;
            ::sd_bus_message_append_basic(message_, type, type == 'o' ? "/" : "");
        } else {
            const auto bits = type == 'b' ? source_.flag() : source_.integer<std::uint64_t>();
            ::sd_bus_message_append_basic(message_, type, &bits);
        }
    }

    sd_bus_message* message_;
    fuzzing::ByteSource& source_;
};

void checkWritten(const IPCMessage& message) {
    const BusMessageCheck check = checkBusMessage(message, kLimit);
    REQUIRE(check.refusal.empty() || check.size == 0);
    if (!check.refusal.empty()) return;
    REQUIRE(checkBusMessage(message, check.size).refusal.empty());
    REQUIRE(!checkBusMessage(message, check.size - 1).refusal.empty());
    const auto wire = emptyMessage();
    REQUIRE(writeBusMessage(wire.get(), message) >= 0);
    const auto again = readBusMessage(sealed(wire));
    REQUIRE(again.has_value());
    // Compares texts, because a NaN is equal to nothing.
    REQUIRE(again->description() == message.description());
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    fuzzing::ByteSource source(data, size);
    if (source.flag()) {
        checkWritten(IPCMessage(fuzzing::dictionaryFrom(source, 6)));
        return 0;
    }
    const auto wire = emptyMessage();
    BodyWriter(wire.get(), source).writeEntries(12);
    sd_bus_message* const complete = sealed(wire);
    if (complete == nullptr) return 0;
    if (const auto read = readBusMessage(complete)) checkWritten(*read);
    return 0;
}
