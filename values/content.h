// The list of types: what stands here is read, made, shown, written as JSON and described by the schema.
#pragma once

#include "types/alternative_carrier.h"
#include "types/android_application.h"
#include "types/bluetooth_legacy.h"
#include "types/bluetooth_oob.h"
#include "types/collision_resolution.h"
#include "types/device_information.h"
#include "types/generic_control.h"
#include "types/handover_carrier.h"
#include "types/handover_request.h"
#include "types/handover_select.h"
#include "types/handover_select_error.h"
#include "types/sharing_enquiry.h"
#include "types/smart_poster.h"
#include "types/text.h"
#include "types/uri.h"

namespace nfc_ndef::values {

using AllKinds = Kinds<Text, Uri, SmartPoster, GenericControl, HandoverRequest, HandoverSelect, HandoverCarrier,
                       AlternativeCarrier, CollisionResolution, HandoverSelectError, BluetoothOob, BluetoothLegacy,
                       SharingEnquiry, AndroidApplication, DeviceInformation>;

// What a record holds; Generic where only its bytes are known.
using Content = AllKinds::Content;

} // namespace nfc_ndef::values
