// sd-bus and sd-event, which programs load when they first use a bus.
#ifndef HALVANE_PLATFORM_BUS_LIBSYSTEMD_INTERNAL_H
#define HALVANE_PLATFORM_BUS_LIBSYSTEMD_INTERNAL_H

#include <systemd/sd-bus.h>
#include <systemd/sd-event.h>

#include "halvane/platform/os/late_library_internal.h"

// What the library uses of it.
#define HALVANE_LIBSYSTEMD_NAMES(FUNCTION)     \
    FUNCTION(sd_bus_add_match)                 \
    FUNCTION(sd_bus_add_match_async)           \
    FUNCTION(sd_bus_add_object_vtable)         \
    FUNCTION(sd_bus_attach_event)              \
    FUNCTION(sd_bus_call_async)                \
    FUNCTION(sd_bus_call_method)               \
    FUNCTION(sd_bus_call_method_async)         \
    FUNCTION(sd_bus_close_unref)               \
    FUNCTION(sd_bus_detach_event)              \
    FUNCTION(sd_bus_error_set_const)           \
    FUNCTION(sd_bus_flush)                     \
    FUNCTION(sd_bus_get_events)                \
    FUNCTION(sd_bus_get_fd)                    \
    FUNCTION(sd_bus_get_n_queued_write)        \
    FUNCTION(sd_bus_get_timeout)               \
    FUNCTION(sd_bus_interface_name_is_valid)   \
    FUNCTION(sd_bus_is_open)                   \
    FUNCTION(sd_bus_is_ready)                  \
    FUNCTION(sd_bus_match_signal)              \
    FUNCTION(sd_bus_message_append_array)      \
    FUNCTION(sd_bus_message_append_basic)      \
    FUNCTION(sd_bus_message_at_end)            \
    FUNCTION(sd_bus_message_close_container)   \
    FUNCTION(sd_bus_message_enter_container)   \
    FUNCTION(sd_bus_message_exit_container)    \
    FUNCTION(sd_bus_message_get_bus)           \
    FUNCTION(sd_bus_message_get_error)         \
    FUNCTION(sd_bus_message_get_sender)        \
    FUNCTION(sd_bus_message_is_method_error)   \
    FUNCTION(sd_bus_message_new_method_call)   \
    FUNCTION(sd_bus_message_new_method_errno)  \
    FUNCTION(sd_bus_message_new_method_return) \
    FUNCTION(sd_bus_message_new_signal)        \
    FUNCTION(sd_bus_message_open_container)    \
    FUNCTION(sd_bus_message_peek_type)         \
    FUNCTION(sd_bus_message_read)              \
    FUNCTION(sd_bus_message_read_array)        \
    FUNCTION(sd_bus_message_read_basic)        \
    FUNCTION(sd_bus_message_rewind)            \
    FUNCTION(sd_bus_message_set_auto_start)    \
    FUNCTION(sd_bus_message_skip)              \
    FUNCTION(sd_bus_message_unref)             \
    FUNCTION(sd_bus_negotiate_fds)             \
    FUNCTION(sd_bus_new)                       \
    FUNCTION(sd_bus_object_vtable_format)      \
    FUNCTION(sd_bus_process)                   \
    FUNCTION(sd_bus_release_name)              \
    FUNCTION(sd_bus_reply_method_errorf)       \
    FUNCTION(sd_bus_request_name)              \
    FUNCTION(sd_bus_send)                      \
    FUNCTION(sd_bus_send_to)                   \
    FUNCTION(sd_bus_service_name_is_valid)     \
    FUNCTION(sd_bus_set_address)               \
    FUNCTION(sd_bus_set_bus_client)            \
    FUNCTION(sd_bus_set_method_call_timeout)   \
    FUNCTION(sd_bus_start)                     \
    FUNCTION(sd_event_add_defer)               \
    FUNCTION(sd_event_add_post)                \
    FUNCTION(sd_event_new)                     \
    FUNCTION(sd_event_source_disable_unref)    \
    FUNCTION(sd_event_unref)

namespace halvane {

HALVANE_LATE_LIBRARY(Libsystemd, libsystemd, "libsystemd.so.0", HALVANE_LIBSYSTEMD_NAMES)

}  // namespace halvane

#endif
