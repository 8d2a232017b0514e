#include "halvane/air/element_writer.h"

#include <utility>

#include "halvane/air/pieces_internal.h"

namespace halvane::air {

namespace {

// Appends the element of the ID `id` that holds `head` and `body`.
void append(std::vector<std::uint8_t>& octets, std::uint8_t id, std::vector<std::uint8_t> head,
            Octets body) {
    octets.push_back(id);
    head.insert(head.end(), body.begin(), body.end());
    appendPieces(octets, idOctetOf(ElementId::Fragment), head);
}

}  // namespace

void appendElement(std::vector<std::uint8_t>& octets, ElementId id, Octets body) {
    std::vector<std::uint8_t> head;
    if (const auto extension = extensionOf(id)) head.push_back(*extension);
    append(octets, idOctetOf(id), std::move(head), body);
}

void appendVendorElement(std::vector<std::uint8_t>& octets, const OUI& oui, std::uint8_t type,
                         Octets body) {
    std::vector<std::uint8_t> head(oui.begin(), oui.end());
    head.push_back(type);
    append(octets, idOctetOf(ElementId::Vendor), std::move(head), body);
}

}  // namespace halvane::air
