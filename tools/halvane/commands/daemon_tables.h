// The Wi-Fi daemon's lists as tables for people.
#ifndef TOOLS_HALVANE_COMMANDS_DAEMON_TABLES_H
#define TOOLS_HALVANE_COMMANDS_DAEMON_TABLES_H

#include <string>
#include <vector>

#include "halvane/model/bss_config.h"
#include "halvane/model/client.h"
#include "halvane/model/device.h"
#include "halvane/model/interface.h"

#include "tools/halvane/output/list_table.h"

namespace halvane::tool {

// A configuration does not tell its interface; empty if it is not known.
struct HostedConfig {
    std::string interface;
    HalvaneBSSConfig config;
};

void printTableOf(const std::vector<HalvaneDevice>& devices, const ListLook& look);
void printTableOf(const std::vector<HalvaneInterface>& interfaces, const ListLook& look);
void printTableOf(const std::vector<HostedConfig>& configs, const ListLook& look);
void printTableOf(const std::vector<HalvaneClient>& clients, const ListLook& look);

}  // namespace halvane::tool

#endif
