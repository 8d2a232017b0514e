#include <cerrno>
#include <cstdint>
#include <string>
#include <variant>

#include "halvane/base/byte_buffer.h"
#include "halvane/base/number.h"
#include "halvane/base/property_list_value.h"
#include "halvane/platform/bus/libsystemd_internal.h"
#include "halvane/platform/bus/message_check_internal.h"
#include "halvane/platform/bus/message_writer_internal.h"

namespace halvane {

namespace {

// Writes nothing after the first failure.
class Writer {
  public:
    explicit Writer(sd_bus_message* target) : target_(target) {}

    int status() const { return status_; }

    void write(const PropertyListDictionary& entries) {
        open(SD_BUS_TYPE_ARRAY, "{sv}");
        for (const auto& [key, value] : entries) {
            open(SD_BUS_TYPE_DICT_ENTRY, "sv");
            write(key);
            writeVariant(value);
            close();
        }
        close();
    }

  private:
    template <typename Call>
    void attempt(Call call) {
        if (status_ >= 0) status_ = call();
    }

    void open(char type, const char* contents) {
        attempt(
            [&] { return libsystemd().sd_bus_message_open_container(target_, type, contents); });
    }
    void close() {
        attempt([&] { return libsystemd().sd_bus_message_close_container(target_); });
    }
    void writeBasic(char type, const void* value) {
        attempt([&] { return libsystemd().sd_bus_message_append_basic(target_, type, value); });
    }

    void writeVariant(const PropertyListValue& value) {
        open(SD_BUS_TYPE_VARIANT, busSignatureOf(value));
        std::visit([&](const auto& held) { write(held); }, value.variant());
        close();
    }

    void write(bool value) {
        const int wire = value ? 1 : 0;
        writeBasic(SD_BUS_TYPE_BOOLEAN, &wire);
    }
    void write(const Number& number) {
        if (number.isReal()) {
            const double wire = number.real();
            writeBasic(SD_BUS_TYPE_DOUBLE, &wire);
        } else if (const auto wire = number.exactInt64()) {
            writeBasic(SD_BUS_TYPE_INT64, &*wire);
        } else {
            const std::uint64_t large = number.uint64();
            writeBasic(SD_BUS_TYPE_UINT64, &large);
        }
    }
    void write(const std::string& text) { writeBasic(SD_BUS_TYPE_STRING, text.c_str()); }
    void write(const ByteBuffer& data) {
        const auto bytes = data.bytes();
        attempt([&] {
            return libsystemd().sd_bus_message_append_array(target_, SD_BUS_TYPE_BYTE, bytes.data(),
                                                            bytes.size());
        });
    }
    void write(const PropertyListArray& array) {
        open(SD_BUS_TYPE_ARRAY, "v");
        for (const PropertyListValue& value : array) writeVariant(value);
        close();
    }
    template <typename Other>
    void write(const Other&) {
        attempt([] { return -EINVAL; });  // it has no signature
    }

    sd_bus_message* const target_;
    int status_ = 0;
};

}  // namespace

int writeBusMessage(sd_bus_message* target, const IPCMessage& source) {
    Writer writer(target);
    writer.write(source.entries());
    return writer.status();
}

}  // namespace halvane
