// The captures of samples/. Each function returns the bytes of a file. samples/README.md describes
// the files.
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
Bytes todayCapture();
Bytes sharedBeaconCapture();
Bytes multiLinkCapture();
Bytes contradictionsCapture();

}  // namespace halvane::samples

#endif
