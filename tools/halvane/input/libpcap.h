// libpcap, which is loaded when a capture is opened.
#ifndef TOOLS_HALVANE_INPUT_LIBPCAP_H
#define TOOLS_HALVANE_INPUT_LIBPCAP_H

#include <pcap/pcap.h>

#include "halvane/platform/os/late_library_internal.h"

// What the tool uses of it.
#define HALVANE_LIBPCAP_NAMES(FUNCTION)                \
    FUNCTION(pcap_activate)                            \
    FUNCTION(pcap_close)                               \
    FUNCTION(pcap_create)                              \
    FUNCTION(pcap_datalink)                            \
    FUNCTION(pcap_datalink_ext)                        \
    FUNCTION(pcap_datalink_val_to_description)         \
    FUNCTION(pcap_datalink_val_to_name)                \
    FUNCTION(pcap_file)                                \
    FUNCTION(pcap_fopen_offline_with_tstamp_precision) \
    FUNCTION(pcap_get_required_select_timeout)         \
    FUNCTION(pcap_get_selectable_fd)                   \
    FUNCTION(pcap_get_tstamp_precision)                \
    FUNCTION(pcap_geterr)                              \
    FUNCTION(pcap_next_ex)                             \
    FUNCTION(pcap_set_buffer_size)                     \
    FUNCTION(pcap_set_snaplen)                         \
    FUNCTION(pcap_set_timeout)                         \
    FUNCTION(pcap_set_tstamp_precision)                \
    FUNCTION(pcap_setnonblock)                         \
    FUNCTION(pcap_snapshot)                            \
    FUNCTION(pcap_stats)                               \
    FUNCTION(pcap_statustostr)

namespace halvane::tool {

HALVANE_LATE_LIBRARY(Libpcap, libpcap, "libpcap.so.0.8", HALVANE_LIBPCAP_NAMES)

}  // namespace halvane::tool

#endif
