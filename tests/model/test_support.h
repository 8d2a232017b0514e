// Values of a kind that a skeleton's key does not expect.
#ifndef TESTS_MODEL_TEST_SUPPORT_H
#define TESTS_MODEL_TEST_SUPPORT_H

#include <vector>

#include "halvane/base/number.h"
#include "halvane/base/property_list_value.h"

#include "tests/support/skeletons.h"

namespace halvane::testing {

// valuesOfEveryKind() without the values of these kinds.
template <typename... Kinds>
std::vector<PropertyListValue> valuesOfOtherKinds() {
    auto values = valuesOfEveryKind();
    std::erase_if(values, [](const PropertyListValue& value) {
        return ((value.as<Kinds>() != nullptr) || ...);
    });
    return values;
}

// A number and a boolean stand in for each other.
inline std::vector<PropertyListValue> valuesThatAreNoNumber() {
    return valuesOfOtherKinds<Number, bool>();
}

}  // namespace halvane::testing

#endif
