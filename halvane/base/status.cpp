#include "halvane/base/status.h"

extern "C" const char* HalvaneStatusText(HalvaneStatus status) {
    switch (status) {
        case kStatusOK:
            return "success";
        case kStatusConversionFailed:
            return "conversion or reply failed";
        case kStatusBadPath:
            return "bad path";
        case kStatusUnsupported:
            return "unsupported, null or unrecognised input";
        case kStatusOutOfRange:
            return "value out of range";
        case kStatusDigitsAfterGap:
            return "digits after a gap";
        case kStatusNoMemory:
            return "out of memory or nothing produced";
        case kStatusUnknownParameter:
            return "unknown parameter";
        case kStatusForbidden:
            return "forbidden part";
        case kStatusMalformed:
            return "malformed text";
        case kStatusWrongLength:
            return "wrong length";
        case kStatusTooFew:
            return "too few parts or empty";
        case kStatusTruncated:
            return "truncated or too long";
        case kStatusDone:
            return "help or version printed";
        case kStatusCannotOpen:
            return "cannot open file";
        case kStatusEmptyType:
            return "empty type";
        case kStatusNoRoom:
            return "no room";
        default:
            return "unknown status";
    }
}
