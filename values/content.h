// The list of types: what stands here is read, made, shown, written as JSON and described by the schema.
#pragma once

#include "types/alternative_carrier.h"
#include "types/android_application.h"
#include "types/bluetooth_le.h"
#include "types/bluetooth_legacy.h"
#include "types/bluetooth_oob.h"
#include "types/collision_resolution.h"
#include "types/device_information.h"
#include "types/generic_control.h"
#include "types/handover_carrier.h"
#include "types/handover_initiate.h"
#include "types/handover_mediation.h"
#include "types/handover_request.h"
#include "types/handover_select.h"
#include "types/handover_select_error.h"
#include "types/service_parameter.h"
#include "types/service_select.h"
#include "types/sharing_enquiry.h"
#include "types/signature.h"
#include "types/smart_poster.h"
#include "types/text.h"
#include "types/tnep_status.h"
#include "types/uri.h"
#include "types/wifi.h"

namespace nfc_ndef::values {

using AllKinds = Kinds<Text, Uri, SmartPoster, GenericControl, HandoverRequest, HandoverSelect, HandoverCarrier,
                       AlternativeCarrier, CollisionResolution, HandoverSelectError, BluetoothOob, BluetoothLegacy,
                       SharingEnquiry, Wifi, BluetoothLe, AndroidApplication, DeviceInformation, HandoverMediation,
                       HandoverInitiate, ServiceParameter, ServiceSelect, TnepStatus, Signature>;

// What a record holds; Generic where only its bytes are known.
using Content = AllKinds::Content;

} // namespace nfc_ndef::values
