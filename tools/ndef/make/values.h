// What the sources of this folder take from the values of records: their structures, building and encoding.
#pragma once

#include "json.h"
#include "model.h"
#include "text_encoding.h"
#include "uri_prefix.h"

namespace tool::make {

namespace values = model;

} // namespace tool::make
