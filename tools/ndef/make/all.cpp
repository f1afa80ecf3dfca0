#include "make/thing.h"

namespace tool::make {

// Each has the source of its name.
Thing text();
Thing uri();
Thing poster();
Thing json();

std::vector<Thing> all_things() { return {text(), uri(), poster(), json()}; }

} // namespace tool::make
