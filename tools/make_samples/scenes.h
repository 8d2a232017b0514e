// The captures of samples/, each a function that answers the file's bytes. What each holds is told
// in samples/README.md.
#ifndef TOOLS_MAKE_SAMPLES_SCENES_H
#define TOOLS_MAKE_SAMPLES_SCENES_H

#include "tools/make_samples/bytes.h"

namespace halvane::samples {

Bytes neighbourhoodCapture();
Bytes elementsCapture();
Bytes securityCapture();
Bytes setupCapture();
Bytes countryCapture();
Bytes damagedCapture();

}  // namespace halvane::samples

#endif
