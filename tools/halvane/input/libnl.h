// libnl, which is loaded when the kernel is asked about its radios. libnl-genl brings libnl.
#ifndef TOOLS_HALVANE_INPUT_LIBNL_H
#define TOOLS_HALVANE_INPUT_LIBNL_H

#include <netlink/genl/ctrl.h>
#include <netlink/genl/genl.h>
#include <netlink/handlers.h>
#include <netlink/msg.h>
#include <netlink/netlink.h>
#include <netlink/socket.h>

#include "halvane/platform/os/late_library_internal.h"

// What the tool uses of it.
#define HALVANE_LIBNL_NAMES(FUNCTION)   \
    FUNCTION(genl_connect)              \
    FUNCTION(genl_ctrl_resolve)         \
    FUNCTION(genl_ctrl_resolve_grp)     \
    FUNCTION(genlmsg_put)               \
    FUNCTION(nl_cb_alloc)               \
    FUNCTION(nl_cb_err)                 \
    FUNCTION(nl_cb_put)                 \
    FUNCTION(nl_cb_set)                 \
    FUNCTION(nl_geterror)               \
    FUNCTION(nl_recvmsgs)               \
    FUNCTION(nl_send_auto)              \
    FUNCTION(nl_socket_add_membership)  \
    FUNCTION(nl_socket_alloc)           \
    FUNCTION(nl_socket_free)            \
    FUNCTION(nl_socket_get_fd)          \
    FUNCTION(nl_socket_set_buffer_size) \
    FUNCTION(nl_socket_set_nonblocking) \
    FUNCTION(nlmsg_alloc)               \
    FUNCTION(nlmsg_append)              \
    FUNCTION(nlmsg_data)                \
    FUNCTION(nlmsg_datalen)             \
    FUNCTION(nlmsg_free)                \
    FUNCTION(nlmsg_hdr)

namespace halvane::tool {

HALVANE_LATE_LIBRARY(Libnl, libnl, "libnl-genl-3.so.200", HALVANE_LIBNL_NAMES)

}  // namespace halvane::tool

#endif
