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
 *    function hands it out. To put such bytes together, `write` functions write one of a kind into a buffer and obey
 * the conventions for writing of nfc_ndef_view.h.
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

/**
 * Reads the payload of an Android Application Record.
 * @param payload      the payload
 * @param application  out: what was read
 * @param report       out: what is wrong; may be null
 * @return 1, or 0 when the payload is refused
 */
NFC_NDEF_API uint8_t nfc_ndef_android_application_read(nfc_ndef_bytes payload,
                                                       nfc_ndef_android_application *application,
                                                       nfc_ndef_payload_report *report);

/**
 * Makes an Android Application Record.
 * @param application  borrowed
 * @param id           id of the record, at most 255 bytes; may be empty
 * @return a new record; null when memory runs out, and when reading would refuse it
 */
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

/**
 * Reads a Device Information payload. The elements may come in any order.
 * @param payload      the payload
 * @param information  out: what was read
 * @param report       out: what is wrong; may be null
 * @return 1, or 0 when the payload is refused
 */
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

/**
 * Makes a Device Information record.
 * @param information  borrowed
 * @param id           id of the record, at most 255 bytes; may be empty
 * @return a new record; null when memory runs out, and when reading would refuse it
 */
NFC_NDEF_API nfc_ndef_record *nfc_ndef_device_information_record_create(const nfc_ndef_device_information *information,
                                                                        nfc_ndef_bytes id);

/**
 * A Bluetooth LE out-of-band record, "application/vnd.bluetooth.le.oob" (NFC Forum Bluetooth Secure Simple Pairing
 * Using NFC; Bluetooth Core, Supplement, Part A). All bytes are in the order of the payload, least significant first. A
 * device that pairs has an address and a role, but no field must be there.
 */
typedef struct nfc_ndef_bt_le {
    nfc_ndef_bytes device_address;      /**< Device address, 6 bytes; may be absent. */
    nfc_ndef_bytes security_manager_tk; /**< Temporary key of legacy pairing, 16 bytes; may be absent. */
    nfc_ndef_bytes confirmation;        /**< Confirmation value of LE Secure Connections, 16 bytes; may be absent. */
    nfc_ndef_bytes random_value;        /**< Random value of LE Secure Connections, 16 bytes; may be absent. */
    nfc_ndef_bytes local_name;          /**< Local name, at most 254 bytes, which should be UTF-8; may be absent. */
    nfc_ndef_bytes uuid16_list;         /**< 16-bit service class UUIDs, at least one; may be absent. */
    nfc_ndef_bytes uuid32_list;         /**< 32-bit service class UUIDs, at least one; may be absent. */
    nfc_ndef_bytes uuid128_list;        /**< 128-bit service class UUIDs, at least one; may be absent. */
    nfc_ndef_bytes structures;          /**< Structures in wire form, for nfc_ndef_bt_le_next(). */
    uint16_t appearance;                /**< Appearance: the category in bits 6 to 15. */
    uint8_t has_appearance;             /**< 1 with an appearance, else 0. */
    uint8_t has_address_type;           /**< 1 when the address says its type, else 0. */
    uint8_t address_type;               /**< 0 public, 1 random; other values are reserved. */
    uint8_t has_le_role;                /**< 1 with a role, else 0. */
    uint8_t le_role;           /**< 0 only peripheral, 1 only central, 2 peripheral preferred, 3 central preferred. */
    uint8_t has_flags;         /**< 1 with flags of one byte, else 0. */
    uint8_t flags;             /**< Flags. */
    uint8_t local_name_type;   /**< With a name 8 (shortened) or 9 (complete). */
    uint8_t uuid16_list_type;  /**< With a list 2 (incomplete) or 3 (complete). */
    uint8_t uuid32_list_type;  /**< With a list 4 (incomplete) or 5 (complete). */
    uint8_t uuid128_list_type; /**< With a list 6 (incomplete) or 7 (complete). */
} nfc_ndef_bt_le;

/**
 * Reads a Bluetooth LE out-of-band payload. There must be a structure; bytes of zero between structures are padding.
 * @param payload  the payload
 * @param le       out: what was read
 * @param report   out: what is wrong; may be null
 * @return 1, or 0 when the payload is refused
 */
NFC_NDEF_API uint8_t nfc_ndef_bt_le_read(nfc_ndef_bytes payload, nfc_ndef_bt_le *le, nfc_ndef_payload_report *report);

/**
 * Hands out the next structure that has no field in #nfc_ndef_bt_le: service data (0x16, 0x20, 0x21; it begins with a
 * UUID of 2, 4 or 16 bytes), data of a manufacturer (0xFF; it begins with a company identifier of two bytes), any
 * other.
 * @param le         a Bluetooth LE record that was read
 * @param structure  out: the structure
 * @return 1; 0 behind the last
 */
NFC_NDEF_API uint8_t nfc_ndef_bt_le_next(nfc_ndef_bt_le *le, nfc_ndef_eir *structure);

/**
 * Writes a structure.
 * @param structure  its type, and at most 254 bytes of data
 * @param buffer     where to; not written when the structure does not fit
 * @param capacity   bytes that the buffer has room for
 * @return the number of bytes that are needed; 0 when the structure has no wire form
 */
NFC_NDEF_API uint32_t nfc_ndef_eir_write(const nfc_ndef_eir *structure, uint8_t *buffer, uint32_t capacity);

/**
 * Makes a Bluetooth LE out-of-band record. Behind the fields stand service data, then data of manufacturers, then other
 * structures.
 * @param le  borrowed
 * @param id  id of the record, at most 255 bytes; may be empty
 * @return a new record; null when memory runs out, and when reading would refuse it
 */
NFC_NDEF_API nfc_ndef_record *nfc_ndef_bt_le_record_create(const nfc_ndef_bt_le *le, nfc_ndef_bytes id);

/** A Signature record of version 2.0, "Sig" (NFC Forum Signature RTD 2.0). Nothing here computes or checks one. */
typedef struct nfc_ndef_signature {
    nfc_ndef_bytes signature;       /**< The signature, or with `is_uri` the URI of it; at most 65535 bytes. */
    nfc_ndef_bytes certificates;    /**< Certificates in wire form, for nfc_ndef_signature_next(). */
    nfc_ndef_bytes certificate_uri; /**< URI of the certificate that follows in the chain; empty when there is none. */
    uint8_t version;                /**< 0x20. */
    uint8_t is_uri;                 /**< 1 when `signature` is a URI, else 0. */
    uint8_t signature_type;         /**< Signature type, 0 to 127; 0 for none. */
    uint8_t hash_type;              /**< Hash type; 2 is SHA-256. */
    uint8_t certificate_format;     /**< Certificate format, 0 to 7: 0 X.509, 1 M2M. */
    uint8_t certificate_count;      /**< Number of certificates that were not handed out yet, 0 to 15. */
} nfc_ndef_signature;

/**
 * Reads a Signature payload. URIs must be UTF-8 without control characters, and not empty.
 * @param payload    the payload
 * @param signature  out: what was read
 * @param report     out: what is wrong; may be null
 * @return 1, or 0 when the payload is refused
 */
NFC_NDEF_API uint8_t nfc_ndef_signature_read(nfc_ndef_bytes payload, nfc_ndef_signature *signature,
                                             nfc_ndef_payload_report *report);

/**
 * Hands out the next certificate, that of the signer first.
 * @param signature    a Signature record that was read
 * @param certificate  out: the certificate, which may be empty
 * @return 1; 0 behind the last
 */
NFC_NDEF_API uint8_t nfc_ndef_signature_next(nfc_ndef_signature *signature, nfc_ndef_bytes *certificate);

/**
 * Writes a certificate.
 * @param certificate  at most 65535 bytes
 * @param buffer       where to; not written when the certificate does not fit
 * @param capacity     bytes that the buffer has room for
 * @return the number of bytes that are needed; 0 when the certificate has no wire form
 */
NFC_NDEF_API uint32_t nfc_ndef_signature_certificate_write(nfc_ndef_bytes certificate, uint8_t *buffer,
                                                           uint32_t capacity);

/**
 * Makes a Signature record. `certificate_count` says how many of the certificates it takes.
 * @param signature  borrowed
 * @param id         id of the record, at most 255 bytes; may be empty
 * @return a new record; null when memory runs out, and when reading would refuse it
 */
NFC_NDEF_API nfc_ndef_record *nfc_ndef_signature_record_create(const nfc_ndef_signature *signature, nfc_ndef_bytes id);

/**
 * Reads the payload of a Handover Mediation record, "Hm" (NFC Forum Connection Handover 1.5): a version, and nothing or
 * a message of Alternative Carrier records, which nfc_ndef_handover_next_carrier() hands out. `collision` and `error`
 * stay "no record". The message must not have chunks.
 * @param payload    the payload
 * @param mediation  out: what was read
 * @param report     out: what is wrong; may be null
 * @return 1, or 0 when the payload is refused
 */
NFC_NDEF_API uint8_t nfc_ndef_handover_mediation_read(nfc_ndef_bytes payload, nfc_ndef_handover *mediation,
                                                      nfc_ndef_payload_report *report);

/**
 * Makes a Handover Mediation record of a version and of the bytes of a message, `message.rest`, as #nfc_ndef_msg_writer
 * writes them; the other fields are not consulted.
 * @param mediation  borrowed
 * @param id         id of the record, at most 255 bytes; may be empty
 * @return a new record; null when memory runs out, and when reading would refuse it
 */
NFC_NDEF_API nfc_ndef_record *nfc_ndef_handover_mediation_record_create(const nfc_ndef_handover *mediation,
                                                                        nfc_ndef_bytes id);

/**
 * Reads the payload of a Handover Initiate record, "Hi"; it is that of nfc_ndef_handover_mediation_read().
 * @param payload   the payload
 * @param initiate  out: what was read
 * @param report    out: what is wrong; may be null
 * @return 1, or 0 when the payload is refused
 */
NFC_NDEF_API uint8_t nfc_ndef_handover_initiate_read(nfc_ndef_bytes payload, nfc_ndef_handover *initiate,
                                                     nfc_ndef_payload_report *report);

/**
 * Makes a Handover Initiate record, as nfc_ndef_handover_mediation_record_create() does.
 * @param initiate  borrowed
 * @param id        id of the record, at most 255 bytes; may be empty
 * @return a new record; null when memory runs out, and when reading would refuse it
 */
NFC_NDEF_API nfc_ndef_record *nfc_ndef_handover_initiate_record_create(const nfc_ndef_handover *initiate,
                                                                       nfc_ndef_bytes id);

/** A Service Parameter record, "Tp" (NFC Forum TNEP 1.0): a service that a tag has. */
typedef struct nfc_ndef_service_parameter {
    nfc_ndef_bytes service_name;   /**< Name of the service, a URI of 1 to 255 visible ASCII characters. */
    uint16_t maximum_message_size; /**< The longest message that the tag takes, in bytes. */
    uint8_t version;               /**< Version byte: the major version, 1, in bits 4 to 7, the minor in bits 0 to 3. */
    uint8_t communication_mode;    /**< 0 for a single response, 0xFE for what the service defines. */
    uint8_t minimum_waiting_time;  /**< n of 2^(n / 4 - 1) milliseconds; 0 to 63 where it is made. */
    uint8_t maximum_waiting_time_extensions; /**< How often that time may pass; 0 to 15 where it is made. */
} nfc_ndef_service_parameter;

/**
 * Reads a Service Parameter payload.
 * @param payload    the payload
 * @param parameter  out: what was read
 * @param report     out: what is wrong; may be null
 * @return 1, or 0 when the payload is refused
 */
NFC_NDEF_API uint8_t nfc_ndef_service_parameter_read(nfc_ndef_bytes payload, nfc_ndef_service_parameter *parameter,
                                                     nfc_ndef_payload_report *report);

/**
 * Makes a Service Parameter record.
 * @param parameter  borrowed
 * @param id         id of the record, at most 255 bytes; may be empty
 * @return a new record; null when memory runs out, and when reading would refuse it
 */
NFC_NDEF_API nfc_ndef_record *nfc_ndef_service_parameter_record_create(const nfc_ndef_service_parameter *parameter,
                                                                       nfc_ndef_bytes id);

/** A Service Select record, "Ts" (NFC Forum TNEP 1.0). */
typedef struct nfc_ndef_service_select {
    nfc_ndef_bytes service_name; /**< Name of the service, at most 255 visible ASCII characters; empty to leave it. */
} nfc_ndef_service_select;

/**
 * Reads a Service Select payload.
 * @param payload  the payload
 * @param select   out: what was read
 * @param report   out: what is wrong; may be null
 * @return 1, or 0 when the payload is refused
 */
NFC_NDEF_API uint8_t nfc_ndef_service_select_read(nfc_ndef_bytes payload, nfc_ndef_service_select *select,
                                                  nfc_ndef_payload_report *report);

/**
 * Makes a Service Select record.
 * @param select  borrowed
 * @param id      id of the record, at most 255 bytes; may be empty
 * @return a new record; null when memory runs out, and when reading would refuse it
 */
NFC_NDEF_API nfc_ndef_record *nfc_ndef_service_select_record_create(const nfc_ndef_service_select *select,
                                                                    nfc_ndef_bytes id);

/** A TNEP Status record, "Te" (NFC Forum TNEP 1.0): what came of a request. */
typedef struct nfc_ndef_tnep_status {
    uint8_t status; /**< 0 success, 1 protocol error, 0x80 to 0xFE errors of the service. */
} nfc_ndef_tnep_status;

/**
 * Reads a TNEP Status payload.
 * @param payload  the payload
 * @param status   out: what was read
 * @param report   out: what is wrong; may be null
 * @return 1, or 0 when the payload is refused
 */
NFC_NDEF_API uint8_t nfc_ndef_tnep_status_read(nfc_ndef_bytes payload, nfc_ndef_tnep_status *status,
                                               nfc_ndef_payload_report *report);

/**
 * Makes a TNEP Status record.
 * @param status  borrowed
 * @param id      id of the record, at most 255 bytes; may be empty
 * @return a new record; null when memory runs out, and when reading would refuse it
 */
NFC_NDEF_API nfc_ndef_record *nfc_ndef_tnep_status_record_create(const nfc_ndef_tnep_status *status, nfc_ndef_bytes id);

/**
 * Attributes of a Wi-Fi configuration record, or of a credential in it (Wi-Fi Simple Configuration 2.0). Any of them
 * may be absent. Numbers in the attributes are most significant byte first.
 */
typedef struct nfc_ndef_wifi_attributes {
    nfc_ndef_bytes uuid_e;      /**< UUID of the enrollee, 16 bytes. */
    nfc_ndef_bytes uuid_r;      /**< UUID of the registrar, 16 bytes. */
    nfc_ndef_bytes ssid;        /**< Name of the network, at most 32 bytes. */
    nfc_ndef_bytes network_key; /**< Passphrase or key, at most 64 bytes. */
    nfc_ndef_bytes mac_address; /**< MAC address, 6 bytes; of a credential the enrollee's, FF-FF-FF-FF-FF-FF for any. */
    nfc_ndef_bytes device_name; /**< Name of the device, at most 32 bytes, which should be UTF-8. */
    nfc_ndef_bytes manufacturer;            /**< Name of the maker, at most 64 bytes. */
    nfc_ndef_bytes model_name;              /**< Name of the model, at most 32 bytes. */
    nfc_ndef_bytes model_number;            /**< Number of the model, at most 32 bytes. */
    nfc_ndef_bytes serial_number;           /**< Serial number, at most 32 bytes. */
    nfc_ndef_bytes primary_device_type;     /**< What the device is, 8 bytes: category, OUI, subcategory. */
    nfc_ndef_bytes secondary_device_types;  /**< What else it is, 1 to 16 times 8 bytes. */
    nfc_ndef_bytes attributes;              /**< Attributes in wire form, for nfc_ndef_wifi_next_attribute(). */
    uint16_t authentication_type;           /**< Bits: 0x0001 open, 0x0002 WPA-Personal, 0x0020 WPA2-Personal ... */
    uint16_t encryption_type;               /**< Bits: 0x0001 none, 0x0002 WEP, 0x0004 TKIP, 0x0008 AES. */
    uint16_t ap_channel;                    /**< Channel of the access point. */
    uint16_t config_methods;                /**< Bits of the ways in which the device can be configured. */
    uint8_t has_authentication_type;        /**< 1 with an `authentication_type`, else 0; so for those that follow. */
    uint8_t has_encryption_type;            /**< Whether there is an `encryption_type`. */
    uint8_t has_ap_channel;                 /**< Whether there is an `ap_channel`. */
    uint8_t has_config_methods;             /**< Whether there are `config_methods`. */
    uint8_t has_network_index;              /**< Whether there is a `network_index`. */
    uint8_t network_index;                  /**< Always 1; deprecated. */
    uint8_t has_rf_bands;                   /**< Whether there are `rf_bands`. */
    uint8_t rf_bands;                       /**< Bits: 0x01 2.4 GHz, 0x02 5 GHz, 0x04 60 GHz. */
    uint8_t has_key_provided_automatically; /**< Whether there is a `key_provided_automatically`. */
    uint8_t key_provided_automatically;     /**< 1 when the network provides the key by itself, else 0. */
    uint8_t has_version;                    /**< Whether there is a `version`. */
    uint8_t version;                        /**< Version byte, always 0x10. */
    uint8_t is_credential;                  /**< 1 for those of a credential; set by the functions that know it. */
} nfc_ndef_wifi_attributes;

/** A Wi-Fi configuration record, "application/vnd.wfa.wsc" (Wi-Fi Simple Configuration 2.0). */
typedef struct nfc_ndef_wifi {
    nfc_ndef_bytes credentials;     /**< Credentials in wire form, for nfc_ndef_wifi_next_credential(). */
    nfc_ndef_bytes public_key_hash; /**< Of an out-of-band device password the hash, 20 bytes; may be absent. */
    nfc_ndef_bytes device_password; /**< The password, 16 to 32 bytes; empty with password id 7. */
    nfc_ndef_wifi_attributes own;   /**< Attributes of the record itself. */
    uint16_t password_id;           /**< With a `public_key_hash`: 7 in a handover, else from 16. */
    uint8_t length_prefix;          /**< 1 when the length stands in front of the attributes, else 0. */
} nfc_ndef_wifi;

/**
 * Reads a Wi-Fi configuration payload. A credential must have a network name, both types, and a key unless the network
 * is open.
 * @param payload  the payload
 * @param wifi     out: what was read
 * @param report   out: what is wrong; may be null
 * @return 1, or 0 when the payload is refused
 */
NFC_NDEF_API uint8_t nfc_ndef_wifi_read(nfc_ndef_bytes payload, nfc_ndef_wifi *wifi, nfc_ndef_payload_report *report);

/**
 * Hands out the next credential.
 * @param wifi        a Wi-Fi configuration record that was read
 * @param credential  out: what joins a network
 * @return 1; 0 behind the last
 */
NFC_NDEF_API uint8_t nfc_ndef_wifi_next_credential(nfc_ndef_wifi *wifi, nfc_ndef_wifi_attributes *credential);

/**
 * Hands out the next attribute that has no field: of a vendor (0x1049, for nfc_ndef_wifi_extension_read()), or another.
 * @param attributes  attributes of a record or a credential that was read
 * @param attribute   out: the attribute, `id` from 0x1000
 * @return 1; 0 behind the last
 */
NFC_NDEF_API uint8_t nfc_ndef_wifi_next_attribute(nfc_ndef_wifi_attributes *attributes, nfc_ndef_element *attribute);

/**
 * Writes an attribute.
 * @param attribute  its `id`, from 0x1000, and at most 65535 bytes of data
 * @param buffer     where to; not written when the attribute does not fit
 * @param capacity   bytes that the buffer has room for
 * @return the number of bytes that are needed; 0 when the attribute has no wire form
 */
NFC_NDEF_API uint32_t nfc_ndef_wifi_attribute_write(const nfc_ndef_element *attribute, uint8_t *buffer,
                                                    uint32_t capacity);

/**
 * Writes a credential.
 * @param credential  its attributes, with those that must be there
 * @param buffer      where to; not written when the credential does not fit
 * @param capacity    bytes that the buffer has room for
 * @return the number of bytes that are needed; 0 when an attribute is missing, and for more than 65535 bytes
 */
NFC_NDEF_API uint32_t nfc_ndef_wifi_credential_write(const nfc_ndef_wifi_attributes *credential, uint8_t *buffer,
                                                     uint32_t capacity);

/** The vendor extension of the Wi-Fi Alliance (Wi-Fi Simple Configuration 2.0). */
typedef struct nfc_ndef_wifi_extension {
    nfc_ndef_bytes authorized_macs; /**< MAC addresses of devices that may enroll, at most 5; may be absent. */
    nfc_ndef_bytes elements;        /**< Elements in wire form, for nfc_ndef_wifi_extension_next(). */
    uint16_t registrar_configuration_methods;    /**< As `config_methods`, of the registrar. */
    uint8_t has_registrar_configuration_methods; /**< Whether there are `registrar_configuration_methods`. */
    uint8_t has_version2;                        /**< Whether there is a `version2`. */
    uint8_t version2;                            /**< Version byte, 0x20 of version 2.0. */
    uint8_t has_network_key_shareable;           /**< Whether there is a `network_key_shareable`. */
    uint8_t network_key_shareable;               /**< 1 when the key may be handed on, else 0. */
    uint8_t has_request_to_enroll;               /**< Whether there is a `request_to_enroll`. */
    uint8_t request_to_enroll;                   /**< 1 when the device wants to enroll, else 0. */
    uint8_t has_settings_delay_time;             /**< Whether there is a `settings_delay_time`. */
    uint8_t settings_delay_time;                 /**< How long new settings take, in seconds. */
} nfc_ndef_wifi_extension;

/**
 * Reads the value of a vendor extension.
 * @param value      data of an attribute 0x1049: a vendor's id of three bytes and what follows
 * @param extension  out; zeros when it is not read
 * @return 1 for an extension of the Wi-Fi Alliance, 00-37-2A, with its elements in ascending order, each once; else 0
 */
NFC_NDEF_API uint8_t nfc_ndef_wifi_extension_read(nfc_ndef_bytes value, nfc_ndef_wifi_extension *extension);

/**
 * Hands out the next element that has no field.
 * @param extension  an extension that was read
 * @param element    out: the element, `id` from 6 to 255
 * @return 1; 0 behind the last
 */
NFC_NDEF_API uint8_t nfc_ndef_wifi_extension_next(nfc_ndef_wifi_extension *extension, nfc_ndef_element *element);

/**
 * Writes an element of the extension.
 * @param element   its `id`, from 6 to 255, and at most 255 bytes of data
 * @param buffer    where to; not written when the element does not fit
 * @param capacity  bytes that the buffer has room for
 * @return the number of bytes that are needed; 0 when the element has no wire form
 */
NFC_NDEF_API uint32_t nfc_ndef_wifi_extension_element_write(const nfc_ndef_element *element, uint8_t *buffer,
                                                            uint32_t capacity);

/**
 * Writes the extension as a whole attribute.
 * @param extension  the extension
 * @param buffer     where to; not written when the attribute does not fit
 * @param capacity   bytes that the buffer has room for
 * @return the number of bytes that are needed; 0 for a value of more than 1024 bytes
 */
NFC_NDEF_API uint32_t nfc_ndef_wifi_extension_write(const nfc_ndef_wifi_extension *extension, uint8_t *buffer,
                                                    uint32_t capacity);

/**
 * Makes a Wi-Fi configuration record: credentials first, as phones want them, and vendor extensions last.
 * @param wifi  borrowed
 * @param id    id of the record, at most 255 bytes; may be empty
 * @return a new record; null when memory runs out, and when reading would refuse it
 */
NFC_NDEF_API nfc_ndef_record *nfc_ndef_wifi_record_create(const nfc_ndef_wifi *wifi, nfc_ndef_bytes id);

/** @} */

#ifdef __cplusplus
}
#endif

#endif
