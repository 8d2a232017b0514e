#include "halvane/model/client_builder.h"

#include "halvane/base/byte_buffer.h"
#include "halvane/base/number.h"

namespace halvane {

ClientBuilder::ClientBuilder(const MacAddress& address)
    : client_(HalvaneClient::initWithMAC(address.buffer())) {
    client_.setDeauthReason(0);
}

ClientBuilder& ClientBuilder::capabilities(std::uint16_t field) {
    client_.setCapabilityField(field);
    return *this;
}

ClientBuilder& ClientBuilder::elements(std::span<const std::uint8_t> octets) {
    client_.setInformationElements(ByteBuffer(octets));
    return *this;
}

ClientBuilder& ClientBuilder::signal(int dBm) {
    client_.setRSSI(Number(dBm));
    return *this;
}

ClientBuilder& ClientBuilder::noise(int dBm) {
    client_.setNoise(Number(dBm));
    return *this;
}

ClientBuilder& ClientBuilder::channel(int number) {
    client_.setChannel(Number(number));
    return *this;
}

ClientBuilder& ClientBuilder::isAssociated(bool value) {
    client_.setIsAssociated(value);
    return *this;
}

ClientBuilder& ClientBuilder::created(std::uint64_t time) {
    client_.setCreateTime(time);
    return *this;
}

ClientBuilder& ClientBuilder::joined(std::uint64_t time) {
    client_.setJoinTime(time);
    return *this;
}

ClientBuilder& ClientBuilder::left(std::uint64_t time) {
    client_.setLeftTime(time);
    return *this;
}

ClientBuilder& ClientBuilder::deauthReason(std::uint16_t code) {
    client_.setDeauthReason(code);
    return *this;
}

}  // namespace halvane
