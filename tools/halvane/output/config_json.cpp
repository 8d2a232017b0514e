#include "tools/halvane/output/config_json.h"

#include "halvane/model/bss_config_table_internal.h"

namespace halvane::tool {

JSON jsonOf(const HalvaneBSSConfig& configuration) {
    JSON object = JSON::object();
#define HALVANE_PUT_GIVEN(type, getter, key) putMember(object, #getter, configuration.getter());
#define HALVANE_PUT_VALUE(getter, setter, key, value) \
    putMember(object, #getter, JSON(configuration.getter()));
#define HALVANE_PUT_NAME(getter, setter, key) putMember(object, #getter, configuration.getter());
    HALVANE_BSS_CONFIG_FIELDS(HALVANE_PUT_GIVEN, HALVANE_PUT_VALUE, HALVANE_PUT_VALUE,
                              HALVANE_PUT_NAME)
#undef HALVANE_PUT_GIVEN
#undef HALVANE_PUT_VALUE
#undef HALVANE_PUT_NAME
    return object;
}

}  // namespace halvane::tool
