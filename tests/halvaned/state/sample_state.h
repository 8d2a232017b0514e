// A state with everything that a state can have.
#ifndef TESTS_HALVANED_STATE_SAMPLE_STATE_H
#define TESTS_HALVANED_STATE_SAMPLE_STATE_H

#include "tests/support/made_config.h"
#include "tools/halvaned/state/daemon_state.h"

namespace halvane::testing {

inline hosting::DaemonState sampleState() {
    hosting::DaemonState state;
    state.interfaces["wlan0"] = {
        .configurations = {wpa2Network("PSK", "Garden"), openNetwork("\xFF<&>\x01")},
        .role = "AP",
        .isEnabled = true,
        .isStarted = true};
    state.interfaces["wlan0"].configurations[0].setWirelessPassphrase_error("a rather secret one");
    state.interfaces["wlan0"].configurations[0].setWpsDeviceName("Shed & garden");
    state.interfaces["wlan1"] = {.isEnabled = false};
    state.interfaces["wl\xC3\xA4n.2"] = {.role = "", .isStarted = true};
    return state;
}

}  // namespace halvane::testing

#endif
