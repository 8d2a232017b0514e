#include "halvane/base/ssid.h"

#include "halvane/base/escaped_text.h"

namespace halvane {

std::string Ssid::text() const {
    return escapedText(bytes());
}

}  // namespace halvane
