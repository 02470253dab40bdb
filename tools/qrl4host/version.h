// --version: the program's name and the project's version, as its resource gives them too.
#pragma once

namespace qrl4host {

int PrintVersion();

}  // namespace qrl4host
