// The daemon's log categories and their controls, which clients and daemons share.
#ifndef HALVANE_DAEMON_DAEMON_LOG_CONTROLS_H
#define HALVANE_DAEMON_DAEMON_LOG_CONTROLS_H

#include "halvane/model/daemon_log_controls.h"  // IWYU pragma: export

#endif
