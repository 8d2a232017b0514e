// The library's categories.
#include "halvane/utils/log/categories.h"

#include "halvane/utils/log/level.h"

extern "C" {

HALVANE_LOG_CATEGORY(LogUtils, kLogLevelAll, kLogHeaderTime, nullptr);

#define HALVANE_DEFINE_WIFI_CATEGORY(name)                                          \
    HALVANE_LOG_CATEGORY(name, kLogLevelError, kLogHeaderTime | kLogHeaderCategory, \
                         "?" #name ":output=file;path=/var/log/halvaned.log");
HALVANE_WIFI_LOG_CATEGORIES(HALVANE_DEFINE_WIFI_CATEGORY)
#undef HALVANE_DEFINE_WIFI_CATEGORY

}  // extern "C"
