// libarchive, which is loaded when a file of one of its formats is opened.
#ifndef TOOLS_HALVANE_INPUT_LIBARCHIVE_H
#define TOOLS_HALVANE_INPUT_LIBARCHIVE_H

#include <archive.h>

#include "halvane/platform/os/late_library_internal.h"

// What the tool uses of it.
#define HALVANE_LIBARCHIVE_NAMES(FUNCTION)      \
    FUNCTION(archive_error_string)              \
    FUNCTION(archive_filter_code)               \
    FUNCTION(archive_read_data)                 \
    FUNCTION(archive_read_free)                 \
    FUNCTION(archive_read_new)                  \
    FUNCTION(archive_read_next_header)          \
    FUNCTION(archive_read_open)                 \
    FUNCTION(archive_read_support_filter_bzip2) \
    FUNCTION(archive_read_support_filter_lz4)   \
    FUNCTION(archive_read_support_filter_zstd)  \
    FUNCTION(archive_read_support_format_empty) \
    FUNCTION(archive_read_support_format_raw)   \
    FUNCTION(archive_set_error)

namespace halvane::tool {

HALVANE_LATE_LIBRARY(Libarchive, libarchive, "libarchive.so.13", HALVANE_LIBARCHIVE_NAMES)

}  // namespace halvane::tool

#endif
