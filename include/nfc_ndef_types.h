/*
 * nfc-ndef: the record types beyond the classic ones, read in place and built.
 *
 * SPDX-License-Identifier: MIT
 */
#ifndef NFC_NDEF_TYPES_H
#define NFC_NDEF_TYPES_H

#include "nfc_ndef_view.h"

/**
 * @file nfc_ndef_types.h
 * @brief Record types that tags and phones carry today, in plain C (C99 and C++). An addition of this library.
 *
 * All types follow one pattern, that of nfc_ndef_view.h, whose conventions hold here too. In addition:
 *
 * 1. **Reading.** `nfc_ndef_<type>_read(payload, &structure, &report)` does not look at the record's type, allocates
 *    nothing, and returns 1, or 0 when the payload is refused.
 * 2. **Presence.** Where it says "may be absent", a byte string has a null pointer when it is not there; one that is
 *    there and empty has a pointer and the length 0. Where a number may be absent, a member `has_...` tells.
 * 3. **Several of a kind** lie in the structure in their wire form, as bytes of the payload: `next` functions hand them
 *    out one by one and step on.
 * 4. **Building.** `nfc_ndef_<type>_record_create(&structure, id)` takes the structure that reading fills in; pointers
 *    and bytes are borrowed. It returns a new record, which the caller deletes with nfc_ndef_record_delete(), or null:
 *    when memory runs out, when the id has more than 255 bytes, and when the payload would be one that reading refuses.
 *    The fields are written in the order in which they are declared, then what lies in wire form, as the `next`
 * function hands it out. To put such bytes together, `write` functions write one of a kind into a buffer and obey the
 *    conventions for writing of nfc_ndef_view.h.
 */

/** @defgroup types More record types */

#ifdef __cplusplus
extern "C" {
#endif

/**
 * @addtogroup types
 * @{
 */

/** One field of a payload that is a list of numbered fields. */
typedef struct nfc_ndef_element {
    nfc_ndef_bytes data; /**< What it holds. */
    uint16_t id;         /**< Its number. */
} nfc_ndef_element;

/** An Android Application Record, the external type "android.com:pkg". */
typedef struct nfc_ndef_android_application {
    nfc_ndef_bytes package; /**< Name of the package: ASCII letters, digits, '_' and '.', at least one. */
} nfc_ndef_android_application;

/** Reads the payload of an Android Application Record. */
NFC_NDEF_API uint8_t nfc_ndef_android_application_read(nfc_ndef_bytes payload,
                                                       nfc_ndef_android_application *application,
                                                       nfc_ndef_payload_report *report);

/** Makes an Android Application Record. */
NFC_NDEF_API nfc_ndef_record *
nfc_ndef_android_application_record_create(const nfc_ndef_android_application *application, nfc_ndef_bytes id);

/** A Device Information record, "Di" (NFC Forum Device Information RTD 1.0). Names should be UTF-8; not checked. */
typedef struct nfc_ndef_device_information {
    nfc_ndef_bytes vendor_name;    /**< Name of the maker, 1 to 255 bytes. */
    nfc_ndef_bytes model_name;     /**< Name of the model, 1 to 255 bytes. */
    nfc_ndef_bytes unique_name;    /**< Name of this device, 0 to 255 bytes; may be absent. */
    nfc_ndef_bytes uuid;           /**< UUID of this device, 16 bytes in the order of the text form; may be absent. */
    nfc_ndef_bytes version_string; /**< Version of the firmware, 0 to 255 bytes; may be absent. */
    nfc_ndef_bytes elements;       /**< Elements in wire form, for nfc_ndef_device_information_next(). */
} nfc_ndef_device_information;

/** Reads a Device Information payload. The elements may come in any order. */
NFC_NDEF_API uint8_t nfc_ndef_device_information_read(nfc_ndef_bytes payload, nfc_ndef_device_information *information,
                                                      nfc_ndef_payload_report *report);

/**
 * Hands out the next element that has no field in the structure.
 * @param information  a Device Information record that was read
 * @param element      out: the element, `id` from 5 to 255
 * @return 1; 0 behind the last
 */
NFC_NDEF_API uint8_t nfc_ndef_device_information_next(nfc_ndef_device_information *information,
                                                      nfc_ndef_element *element);

/**
 * Writes an element.
 * @param element   its `id`, from 5 to 255, and at most 255 bytes of data
 * @param buffer    where to; not written when the element does not fit
 * @param capacity  bytes that the buffer has room for
 * @return the number of bytes that are needed; 0 when the element has no wire form
 */
NFC_NDEF_API uint32_t nfc_ndef_device_information_element_write(const nfc_ndef_element *element, uint8_t *buffer,
                                                                uint32_t capacity);

/** Makes a Device Information record. */
NFC_NDEF_API nfc_ndef_record *nfc_ndef_device_information_record_create(const nfc_ndef_device_information *information,
                                                                        nfc_ndef_bytes id);

/** @} */

#ifdef __cplusplus
}
#endif

#endif
