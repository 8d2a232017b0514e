// Where the library's categories would log if private_logs.cpp did not redirect them.
#ifndef TESTS_SUPPORT_PRIVATE_LOGS_H
#define TESTS_SUPPORT_PRIVATE_LOGS_H

#include <map>
#include <string>

namespace halvane::testing {

// The control strings that the Wi-Fi categories were defined with, by the category's name.
const std::map<std::string, std::string>& definedInitConfigs();

}  // namespace halvane::testing

#endif
