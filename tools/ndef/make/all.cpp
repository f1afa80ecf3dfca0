#include "make/thing.h"

namespace tool::make {

// Each has the source of its name, but for those that share one.
Thing text();
Thing uri();
Thing poster();
Thing wifi();
Thing contact();
Thing app();
Thing geo(); // addresses.cpp
Thing tel();
Thing sms();
Thing mail();
Thing media(); // file_record.cpp
Thing external();
Thing json();

std::vector<Thing> all_things()
{
    return {text(), uri(), poster(), wifi(),  contact(),  app(), geo(),
            tel(),  sms(), mail(),   media(), external(), json()};
}

} // namespace tool::make
