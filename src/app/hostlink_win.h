// The host link's channel on Windows: SendMessageW to the link window.
#pragma once

#include <windows.h>

#include "request/hostlink.h"

namespace qrl {

IHostChannel& WindowHostChannel();

}  // namespace qrl
