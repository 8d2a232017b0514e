// A failure: a domain, and a code within it. Carries no text.
#ifndef HALVANE_BASE_ERROR_H
#define HALVANE_BASE_ERROR_H

#include <cstdint>
#include <string>

namespace halvane {

struct Error {
    std::string domain;
    std::int64_t code = 0;

    friend bool operator==(const Error&, const Error&) = default;
};

}  // namespace halvane

#endif
