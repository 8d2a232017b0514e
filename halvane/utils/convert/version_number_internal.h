// The development stages of a version, with their letters.
#ifndef HALVANE_UTILS_CONVERT_VERSION_NUMBER_INTERNAL_H
#define HALVANE_UTILS_CONVERT_VERSION_NUMBER_INTERNAL_H

#include "halvane/utils/convert/version_number.h"

namespace halvane {

struct VersionStage {
    unsigned value;
    char letter;
};

inline constexpr VersionStage kVersionStages[] = {
    {kNumVersionStageDevelopment, 'd'},
    {kNumVersionStageAlpha, 'a'},
    {kNumVersionStageBeta, 'b'},
    {kNumVersionStageFinal, 'f'},
};

// Returns 0 for a value that is not a stage.
constexpr char stageLetter(unsigned value) {
    for (const VersionStage& stage : kVersionStages) {
        if (stage.value == value) return stage.letter;
    }
    return 0;
}

}  // namespace halvane

#endif
