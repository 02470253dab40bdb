// Every text key the module looks up, with its English defaults: the texts the sources write out,
// and the numbered families of names that the colour and mouse editors build at run time.
#pragma once

#include "locale/textcatalogue.h"

namespace qrl {

TTextCatalogue ModuleTextCatalogue();

}  // namespace qrl
