// The C++ interface of nfc-ndef: records as typed values, and JSON both ways.
#pragma once

#include "json.h"
#include "record.h"
