#include "version.h"

#include <cstdio>

namespace qrl4host {

int PrintVersion() {
    std::printf("qrl4host %s\n", QRL_VERSION);
    return 0;
}

}  // namespace qrl4host
