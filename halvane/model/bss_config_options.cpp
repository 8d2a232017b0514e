#include <algorithm>
#include <array>
#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "halvane/model/bss_config.h"
#include "halvane/model/bss_option_table_internal.h"
#include "halvane/model/config_parser.h"

namespace halvane {

namespace {

// Returns the words of the group that `text` lists.
template <std::size_t kCount>
auto wordsListed(const std::array<BSSOption, kCount>& group, std::string_view text,
                 std::optional<Error>* error) {
    std::array<std::string_view, kCount> words;
    std::ranges::transform(group, words.begin(), &BSSOption::word);
    return ConfigParser::convertParamStringToArray_error(text, words, error);
}

// Sets the flags of the listed words to true, and the group's other flags to false.
template <std::size_t kCount>
bool allowOnly(HalvaneBSSConfig& configuration, const std::array<BSSOption, kCount>& group,
               const std::optional<std::vector<std::string>>& listed) {
    for (const BSSOption& option : group) {
        (configuration.*option.allow)(std::ranges::count(*listed, option.word) > 0);
    }
    return true;
}

}  // namespace

#define HALVANE_BSS_OPTION_SETTER(operation, group)                                         \
    bool HalvaneBSSConfig::operation(std::string_view words, std::optional<Error>* error) { \
        const auto listed = wordsListed(group, words, error);                               \
        return listed && fieldsToSet(error) != nullptr && allowOnly(*this, group, listed);  \
    }
HALVANE_BSS_OPTION_SETTER(setAuthenticationWithOptionString_error, kAuthenticationOptions)
HALVANE_BSS_OPTION_SETTER(setSecurityWithOptionString_error, kSecurityOptions)
HALVANE_BSS_OPTION_SETTER(setUnicastCipherWithOptionString_error, kUnicastCipherOptions)
HALVANE_BSS_OPTION_SETTER(setMulticastCipherWithOptionString_error, kMulticastCipherOptions)
HALVANE_BSS_OPTION_SETTER(setKeyManagementWithOptionString_error, kKeyManagementOptions)
HALVANE_BSS_OPTION_SETTER(setPHYModeWithOptionString_error, kPHYModeOptions)
HALVANE_BSS_OPTION_SETTER(setWPSConfigurationMethodsString_error, kWPSMethodOptions)
#undef HALVANE_BSS_OPTION_SETTER

}  // namespace halvane
