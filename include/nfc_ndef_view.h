/*
 * nfc-ndef: reads NFC Forum NDEF data in place, and writes it into the caller's buffer.
 *
 * SPDX-License-Identifier: MIT
 */
#ifndef NFC_NDEF_VIEW_H
#define NFC_NDEF_VIEW_H

#include "nfc_ndef.h"

/**
 * @file nfc_ndef_view.h
 * @brief Reading in place and writing into a buffer, in plain C (C99 and C++). An addition of this library.
 *
 * Whatever nfc_ndef.h parses into objects can be read here where it lies, under the same rules. Conventions that every
 * function obeys:
 *
 * 1. **Memory.** No function allocates. All structures are the caller's, on the stack or anywhere, and there is nothing
 *    to free. What they point to belongs to the bytes or to the record that was read: it is valid as long as these are
 *    unchanged, and nothing is kept behind the caller's back.
 * 2. **Byte strings** are an #nfc_ndef_bytes. The pointer of those handed out is null exactly when the length is 0. Of
 *    those passed in, a null pointer means no bytes, whatever the length, and so do more than 2^32 - 1 bytes.
 * 3. **Reading a payload.** A function `nfc_ndef_<type>_read(payload, &structure, &report)` accepts exactly the
 * payloads that the extractor of that type in nfc_ndef.h accepts, and like it does not look at the record's type. It
 * returns 1, or 0 when the payload is refused. The structure then holds what was read before the rule broke, and zeros.
 * The report says why and at which byte; it may be null. No other argument may be null.
 * 4. **Several of a kind** are handed out one by one: `next` functions return a value that is not 0 and step on, or 0
 *    behind the last and write nothing. The place is kept in the structure; a copy of the structure keeps the place it
 *    had.
 * 5. **Writing.** Functions that write return the number of bytes that are needed, 0 when there is nothing that could
 * be written. They write all of them when the buffer has room, and nothing of use when it has not: call with capacity 0
 *    to learn the length. The buffer may be null then. It must not overlap what is written unless a function says so.
 * 6. **Chunks.** The payload of a record that came in chunks is in pieces: its view has an empty `payload`, and
 *    nfc_ndef_record_view_join() puts it into a buffer of the caller's.
 */

/** @defgroup view Messages and records in place */
/** @defgroup view_types Payloads in place */
/** @defgroup view_write Writing into a buffer */
/** @defgroup view_tlv The data area of a tag */

#ifdef __cplusplus
extern "C" {
#endif

/**
 * @addtogroup version
 * @{
 */

/** The version as one number, which grows from release to release: 0x010200 is 1.2.0. */
#define NFC_NDEF_VERSION (NFC_NDEF_VERSION_MAJOR << 16 | NFC_NDEF_VERSION_MINOR << 8 | NFC_NDEF_VERSION_PATCH)

/**
 * Gets the version of the library that runs, which may be newer than the header that a program was compiled with.
 * @return a number as #NFC_NDEF_VERSION
 */
NFC_NDEF_API uint32_t nfc_ndef_version(void);
/** @} */

/**
 * @addtogroup view
 * @{
 */

/** Bytes that belong to somebody else. */
typedef struct nfc_ndef_bytes {
    const uint8_t *data; /**< The first byte. */
    size_t length;       /**< How many there are. */
} nfc_ndef_bytes;

#define NFC_NDEF_FLAG_MB 0x80 /**< Message Begin. */
#define NFC_NDEF_FLAG_ME 0x40 /**< Message End. */
#define NFC_NDEF_FLAG_CF 0x20 /**< Chunk Flag. */
#define NFC_NDEF_FLAG_SR 0x10 /**< Short Record. */
#define NFC_NDEF_FLAG_IL 0x08 /**< ID Length present. */

/** One record where it lies (NFC Forum NDEF 1.0). One of zeros alone stands for "no record". */
typedef struct nfc_ndef_record_view {
    nfc_ndef_bytes type;     /**< The type name. */
    nfc_ndef_bytes id;       /**< The id. */
    nfc_ndef_bytes payload;  /**< The payload; empty when it is in chunks. */
    nfc_ndef_bytes chunks;   /**< Of a record in chunks: all of them as they stand, with their headers; else empty. */
    uint32_t payload_length; /**< Bytes of payload, those of all chunks together. */
    uint8_t format;          /**< One of the NFC_NDEF_TNF_ values. */
    uint8_t flags; /**< NFC_NDEF_FLAG_ values. Of a record in chunks, those that it has when they are joined. */
} nfc_ndef_record_view;

/** A message where it lies; also the place up to which its records have been handed out. */
typedef struct nfc_ndef_msg_view {
    nfc_ndef_bytes rest;   /**< The records that were not handed out yet. */
    uint32_t record_count; /**< Their number, chunks joined. */
} nfc_ndef_msg_view;

/**
 * Opens a message: checks it as a whole, by the rules of nfc_ndef_msg_check(), before any record is handed out.
 * @param message  the bytes, which must be the message and nothing else
 * @param view     out: the message; one without records when it is refused
 * @param report   out: as from nfc_ndef_msg_check(); may be null
 * @return 1 for a valid message, else 0
 */
NFC_NDEF_API uint8_t nfc_ndef_msg_view_open(nfc_ndef_bytes message, nfc_ndef_msg_view *view,
                                            nfc_ndef_msg_report *report);

/**
 * Hands out the next record of a message.
 * @param view    the message
 * @param record  out: the record, chunks as one
 * @return 1; 0 behind the last record
 */
NFC_NDEF_API uint8_t nfc_ndef_msg_view_next(nfc_ndef_msg_view *view, nfc_ndef_record_view *record);

/**
 * Reads one record by itself, as nfc_ndef_record_create_from_byte_array() does: bytes after it are ignored, and a chunk
 * is a record like any other, with its CF flag.
 * @param bytes   where the record's header is
 * @param record  out: the record; zeros when it is refused
 * @param report  out: what is wrong (`record` is 0); of a whole record, the length that it takes as `offset`, and 1 as
 *                `record`; may be null
 * @return 1 for a whole record, else 0
 */
NFC_NDEF_API uint8_t nfc_ndef_record_view_read(nfc_ndef_bytes bytes, nfc_ndef_record_view *record,
                                               nfc_ndef_msg_report *report);

/**
 * Views a record that is an object. A field with a null pointer or a length of 0 is empty.
 * @param record  borrowed, and unchanged as long as the view is used; null gives "no record"
 * @return the view
 */
NFC_NDEF_API nfc_ndef_record_view nfc_ndef_record_view_of(const nfc_ndef_record *record);

/**
 * Hands out the payload of a record piece by piece: the payload of each chunk, which may be empty, or the one payload
 * of a record that is not in chunks.
 * @param record    borrowed
 * @param position  the place in the record; 0 before the first piece
 * @param piece     out: the piece
 * @return 1; 0 behind the last piece
 */
NFC_NDEF_API uint8_t nfc_ndef_record_view_next_piece(const nfc_ndef_record_view *record, uint32_t *position,
                                                     nfc_ndef_bytes *piece);

/**
 * Puts the payload of a record, in chunks or not, into a buffer.
 * @param record    borrowed
 * @param buffer    where to; not written when the payload does not fit
 * @param capacity  bytes that the buffer has room for
 * @return bytes in the payload, which may be 0
 */
NFC_NDEF_API uint32_t nfc_ndef_record_view_join(const nfc_ndef_record_view *record, uint8_t *buffer, uint32_t capacity);

/**
 * Tells whether the type of a record matches a key, as nfc_ndef_record_type_equals() says.
 * @param record  borrowed
 * @param format  type name format of the key
 * @param name    type name of the key
 * @return 1 or 0
 */
NFC_NDEF_API uint8_t nfc_ndef_record_view_matches(const nfc_ndef_record_view *record, uint32_t format,
                                                  nfc_ndef_bytes name);

/** The types of record that the library reads. */
typedef enum nfc_ndef_kind {
    NFC_NDEF_KIND_OTHER = 0,                /**< Any other. */
    NFC_NDEF_KIND_TEXT = 1,                 /**< nfc_ndef_text_read() */
    NFC_NDEF_KIND_URI = 2,                  /**< nfc_ndef_uri_read() */
    NFC_NDEF_KIND_SMART_POSTER = 3,         /**< nfc_ndef_smart_poster_read() */
    NFC_NDEF_KIND_GENERIC_CONTROL = 4,      /**< nfc_ndef_generic_control_read() */
    NFC_NDEF_KIND_HANDOVER_REQUEST = 5,     /**< nfc_ndef_handover_request_read() */
    NFC_NDEF_KIND_HANDOVER_SELECT = 6,      /**< nfc_ndef_handover_select_read() */
    NFC_NDEF_KIND_HANDOVER_CARRIER = 7,     /**< nfc_ndef_handover_carrier_read() */
    NFC_NDEF_KIND_ALTERNATIVE_CARRIER = 8,  /**< nfc_ndef_alternative_carrier_read() */
    NFC_NDEF_KIND_COLLISION_RESOLUTION = 9, /**< nfc_ndef_collision_resolution_read() */
    NFC_NDEF_KIND_HANDOVER_ERROR = 10,      /**< nfc_ndef_handover_error_read() */
    NFC_NDEF_KIND_BT_OOB = 11,              /**< nfc_ndef_bt_oob_read() */
    NFC_NDEF_KIND_BT_LEGACY = 12,           /**< nfc_ndef_bt_legacy_read() */
    NFC_NDEF_KIND_SHARING_ENQUIRY = 13,     /**< nfc_ndef_sharing_enquiry_read() */
    NFC_NDEF_KIND_ANDROID_APPLICATION = 14, /**< nfc_ndef_android_application_read() of nfc_ndef_types.h */
    NFC_NDEF_KIND_DEVICE_INFORMATION = 15,  /**< nfc_ndef_device_information_read() */
    NFC_NDEF_KIND_WIFI = 16,                /**< nfc_ndef_wifi_read() */
    NFC_NDEF_KIND_BT_LE = 17,               /**< nfc_ndef_bt_le_read() */
    NFC_NDEF_KIND_HANDOVER_MEDIATION = 18,  /**< nfc_ndef_handover_mediation_read() */
    NFC_NDEF_KIND_HANDOVER_INITIATE = 19,   /**< nfc_ndef_handover_initiate_read() */
    NFC_NDEF_KIND_SERVICE_PARAMETER = 20,   /**< nfc_ndef_service_parameter_read() */
    NFC_NDEF_KIND_SERVICE_SELECT = 21,      /**< nfc_ndef_service_select_read() */
    NFC_NDEF_KIND_TNEP_STATUS = 22,         /**< nfc_ndef_tnep_status_read() */
    NFC_NDEF_KIND_SIGNATURE = 23            /**< nfc_ndef_signature_read() */
} nfc_ndef_kind;

/**
 * Tells which of the library's types a record has, by the matching of nfc_ndef_record_type_equals().
 * @param record  borrowed
 * @return an #nfc_ndef_kind
 */
NFC_NDEF_API uint32_t nfc_ndef_record_view_kind(const nfc_ndef_record_view *record);
/** @} */

/**
 * @addtogroup view_types
 * @{
 */

/** Why a payload is refused. */
typedef enum nfc_ndef_payload_reason {
    NFC_NDEF_PAYLOAD_VALID = 0,                    /**< It is not. */
    NFC_NDEF_PAYLOAD_EMPTY = 1,                    /**< There is none. */
    NFC_NDEF_PAYLOAD_FIELD_PAST_END = 2,           /**< A field runs past the end. */
    NFC_NDEF_PAYLOAD_BYTES_LEFT_OVER = 3,          /**< Bytes follow the last field. */
    NFC_NDEF_PAYLOAD_FIELD_TOO_LONG = 4,           /**< A field is longer than its type allows. */
    NFC_NDEF_PAYLOAD_WRONG_LENGTH = 5,             /**< A field or a nested record has a length it must not have. */
    NFC_NDEF_PAYLOAD_FIELD_REPEATED = 6,           /**< A field that may come once comes again. */
    NFC_NDEF_PAYLOAD_TOO_MANY = 7,                 /**< More of a kind than can be counted. */
    NFC_NDEF_PAYLOAD_NOT_A_MESSAGE = 8,            /**< What must be a nested message is none. */
    NFC_NDEF_PAYLOAD_RECORD_MISSING = 9,           /**< A nested record that must be there is not. */
    NFC_NDEF_PAYLOAD_RECORD_REPEATED = 10,         /**< A nested record that may come once comes again. */
    NFC_NDEF_PAYLOAD_VERSION_NOT_READ = 11,        /**< The version is not one that is read. */
    NFC_NDEF_PAYLOAD_NO_TEXT = 12,                 /**< No text follows the language code. */
    NFC_NDEF_PAYLOAD_CONTROL_CHARACTER = 13,       /**< A URI has a byte below 0x20. */
    NFC_NDEF_PAYLOAD_REFERENCE_CHARACTER = 14,     /**< A reference has a character that is not allowed there. */
    NFC_NDEF_PAYLOAD_NOTHING_SELECTED = 15,        /**< A Handover Select without a message is not alone in its own. */
    NFC_NDEF_PAYLOAD_RANDOMIZER_WITHOUT_HASH = 16, /**< There is a Randomizer R, but no Hash C. */
    NFC_NDEF_PAYLOAD_PAIRING_TYPE = 17,            /**< The pairing type is not known. */
    NFC_NDEF_PAYLOAD_LIST_NOT_WHOLE = 18,          /**< A list of UUIDs ends within one. */
    NFC_NDEF_PAYLOAD_FIELD_MISSING = 19,           /**< A field that must be there is not. */
    NFC_NDEF_PAYLOAD_CHARACTER_NOT_ALLOWED = 20,   /**< A name has a character that is not allowed there. */
    NFC_NDEF_PAYLOAD_NOT_UTF8 = 21,                /**< A URI is not UTF-8. */
    NFC_NDEF_PAYLOAD_NUMBER_NOT_ALLOWED = 22,      /**< A number is not one that its field may have. */
    NFC_NDEF_PAYLOAD_FIELD_EMPTY = 23,             /**< A field is empty that must not be. */
    NFC_NDEF_PAYLOAD_IN_CHUNKS = 24                /**< A nested record is in chunks where none may be. */
} nfc_ndef_payload_reason;

/** What a function that reads a payload found. */
typedef struct nfc_ndef_payload_report {
    uint32_t reason; /**< An #nfc_ndef_payload_reason. */
    uint32_t offset; /**< Where the rule broke, counted from the payload's first byte: the field or the header of the
                          nested record that breaks it; for what is missing, and of a valid payload, the payload's
                          length. With #NFC_NDEF_PAYLOAD_NOT_A_MESSAGE, where the message breaks. */
    uint32_t message_reason; /**< With #NFC_NDEF_PAYLOAD_NOT_A_MESSAGE an #nfc_ndef_msg_reason, else 0. */
    uint32_t record;         /**< With #NFC_NDEF_PAYLOAD_NOT_A_MESSAGE the record of the nested message that broke the
                                  rule, counted as by nfc_ndef_msg_check(), else 0. */
} nfc_ndef_payload_report;

/**
 * Gives the text of a reason, in English and without a full stop.
 * @param reason  an #nfc_ndef_payload_reason
 * @return a constant string; "unknown reason" for any other value
 */
NFC_NDEF_API const char *nfc_ndef_payload_reason_text(uint32_t reason);

/** A Text record, "T" (NFC Forum Text RTD 1.0). */
typedef struct nfc_ndef_text {
    nfc_ndef_bytes language; /**< Language code, 0 to 63 bytes, such as "en". */
    nfc_ndef_bytes text;     /**< The text, at least one byte, in the encoding that `utf16` says; not checked. */
    uint8_t utf16;           /**< 0 for UTF-8, 1 for UTF-16. */
} nfc_ndef_text;

/**
 * Reads a Text payload; see rtdlib_text_record_extract().
 * @param payload  the payload
 * @param text     out: what was read
 * @param report   out: what is wrong; may be null
 * @return 1, or 0 when the payload is refused
 */
NFC_NDEF_API uint8_t nfc_ndef_text_read(nfc_ndef_bytes payload, nfc_ndef_text *text, nfc_ndef_payload_report *report);

/** A URI record, "U" (NFC Forum URI RTD 1.0). The URI is the prefix and, right behind it, the field. */
typedef struct nfc_ndef_uri {
    const char *prefix;      /**< What the code stands for, as nfc_ndef_uri_prefix() says; terminated. */
    nfc_ndef_bytes field;    /**< The rest of the URI, no byte below 0x20; may be empty. */
    uint8_t identifier_code; /**< Code of the prefix, any value. */
} nfc_ndef_uri;

/**
 * Reads a URI payload; see rtdlib_uri_record_extract().
 * @param payload  the payload
 * @param uri      out: what was read
 * @param report   out: what is wrong; may be null
 * @return 1, or 0 when the payload is refused
 */
NFC_NDEF_API uint8_t nfc_ndef_uri_read(nfc_ndef_bytes payload, nfc_ndef_uri *uri, nfc_ndef_payload_report *report);

/**
 * Gives the prefix that an identifier code stands for (NFC Forum URI RTD 1.0).
 * @param identifier_code  the code
 * @return a constant string; "" for 0 and for a code that the document reserves
 */
NFC_NDEF_API const char *nfc_ndef_uri_prefix(uint8_t identifier_code);

/**
 * Finds the longest prefix of a URI that has an identifier code (NFC Forum URI RTD 1.0).
 * @param uri            a whole URI
 * @param prefix_length  out: bytes of the URI that the code stands for; may be null
 * @return the code; 0 when no prefix fits
 */
NFC_NDEF_API uint8_t nfc_ndef_uri_prefix_code(nfc_ndef_bytes uri, uint32_t *prefix_length);

/** What a record in a Smart Poster is there for. */
typedef enum nfc_ndef_smart_poster_part {
    NFC_NDEF_SMART_POSTER_URI = 1,    /**< The one URI record. */
    NFC_NDEF_SMART_POSTER_TITLE = 2,  /**< A Text record. */
    NFC_NDEF_SMART_POSTER_TYPE = 3,   /**< The first type record, "t": the media type of what the URI leads to. */
    NFC_NDEF_SMART_POSTER_SIZE = 4,   /**< The first size record, "s". */
    NFC_NDEF_SMART_POSTER_ACTION = 5, /**< The first action record, "act". */
    NFC_NDEF_SMART_POSTER_IMAGE = 6,  /**< An icon: a media record that matches "image*". */
    NFC_NDEF_SMART_POSTER_VIDEO = 7,  /**< An icon: a media record that matches "video*" alone. */
    NFC_NDEF_SMART_POSTER_OTHER = 8   /**< Any other record, such as a second action record. */
} nfc_ndef_smart_poster_part;

/** A Smart Poster record, "Sp" (NFC Forum Smart Poster RTD 1.0). */
typedef struct nfc_ndef_smart_poster {
    nfc_ndef_record_view uri;  /**< The one URI record; its payload is not looked at. */
    nfc_ndef_msg_view message; /**< The nested message, in which nfc_ndef_smart_poster_next() keeps its place. */
    uint32_t size;             /**< Size of what the URI leads to, in bytes. */
    uint8_t has_size;          /**< 1 with a size record, else 0. */
    uint8_t has_action;        /**< 1 with an action record, else 0. */
    uint8_t action;            /**< The action; 255 when there is none. */
    uint8_t title_count;       /**< Number of titles. */
    uint8_t icon_count;        /**< Number of icons. */
    uint8_t other_count;       /**< Number of other records. */
    uint8_t handed_out;        /**< For nfc_ndef_smart_poster_next(). */
} nfc_ndef_smart_poster;

/**
 * Reads a Smart Poster payload; see rtdlib_smart_poster_record_extract().
 * @param payload  the payload
 * @param poster   out: what was read
 * @param report   out: what is wrong; may be null
 * @return 1, or 0 when the payload is refused
 */
NFC_NDEF_API uint8_t nfc_ndef_smart_poster_read(nfc_ndef_bytes payload, nfc_ndef_smart_poster *poster,
                                                nfc_ndef_payload_report *report);

/**
 * Hands out the next record of a Smart Poster, in the order of the bytes.
 * @param poster  a Smart Poster that was read
 * @param record  out: the record
 * @return an #nfc_ndef_smart_poster_part; 0 behind the last record
 */
NFC_NDEF_API uint32_t nfc_ndef_smart_poster_next(nfc_ndef_smart_poster *poster, nfc_ndef_record_view *record);

/** What a record in a Generic Control record is there for. */
typedef enum nfc_ndef_generic_control_part {
    NFC_NDEF_GENERIC_CONTROL_TARGET = 1, /**< The one target record, "t". */
    NFC_NDEF_GENERIC_CONTROL_ACTION = 2, /**< The action record, "a". */
    NFC_NDEF_GENERIC_CONTROL_DATA = 3,   /**< The data record, "d". */
    NFC_NDEF_GENERIC_CONTROL_NESTED = 4, /**< A nested Generic Control record, "Gc". */
    NFC_NDEF_GENERIC_CONTROL_OTHER = 5   /**< Any other record, which means nothing here. */
} nfc_ndef_generic_control_part;

/** A Generic Control record, "Gc" (NFC Forum Generic Control RTD 1.0). */
typedef struct nfc_ndef_generic_control {
    nfc_ndef_record_view target;        /**< The one target record. */
    nfc_ndef_record_view action_record; /**< The record that describes the action, with `action_flag` 0; "no record"
                                           when it does not decode, and when the action record is in chunks: then join
                                           its payload and read the record behind the first byte. */
    nfc_ndef_msg_view message;          /**< The nested message, in which nfc_ndef_generic_control_next() keeps its
                                             place. */
    uint8_t config;                     /**< Configuration byte. */
    uint8_t has_action;                 /**< 1 with an action record, else 0. */
    uint8_t action_flag;                /**< First byte of the action record. */
    uint8_t action_code;                /**< Action code, when `action_flag` is not 0. */
    uint8_t has_data;                   /**< 1 with a data record, else 0. */
    uint8_t nested_count;               /**< Number of nested Generic Control records. */
} nfc_ndef_generic_control;

/**
 * Reads a Generic Control payload; see rtdlib_generic_control_record_extract().
 * @param payload  the payload
 * @param control  out: what was read
 * @param report   out: what is wrong; may be null
 * @return 1, or 0 when the payload is refused
 */
NFC_NDEF_API uint8_t nfc_ndef_generic_control_read(nfc_ndef_bytes payload, nfc_ndef_generic_control *control,
                                                   nfc_ndef_payload_report *report);

/**
 * Hands out the next record of a Generic Control record, in the order of the bytes.
 * @param control  a Generic Control record that was read
 * @param record   out: the record
 * @return an #nfc_ndef_generic_control_part; 0 behind the last record
 */
NFC_NDEF_API uint32_t nfc_ndef_generic_control_next(nfc_ndef_generic_control *control, nfc_ndef_record_view *record);

/** A Handover Request or Handover Select record, "Hr" or "Hs" (NFC Forum Connection Handover 1.2). */
typedef struct nfc_ndef_handover {
    nfc_ndef_record_view collision; /**< Of a request of minor version 2: the Collision Resolution record. */
    nfc_ndef_record_view error;     /**< Of a selection of minor version 2: the error record, if any. */
    nfc_ndef_msg_view message; /**< The nested message, in which nfc_ndef_handover_next_carrier() keeps its place. */
    uint8_t version;           /**< Version byte: the major version in bits 4 to 7, the minor in bits 0 to 3. */
    uint8_t carrier_count;     /**< Number of Alternative Carrier records. */
} nfc_ndef_handover;

/**
 * Reads a Handover Request payload; see rtdlib_handover_request_record_extract().
 * @param payload  the payload
 * @param request  out: what was read
 * @param report   out: what is wrong; may be null
 * @return 1, or 0 when the payload is refused
 */
NFC_NDEF_API uint8_t nfc_ndef_handover_request_read(nfc_ndef_bytes payload, nfc_ndef_handover *request,
                                                    nfc_ndef_payload_report *report);

/**
 * Reads a Handover Select payload; see rtdlib_handover_select_record_extract().
 * @param payload  the payload
 * @param flags    the record's flags: with both NFC_NDEF_FLAG_MB and NFC_NDEF_FLAG_ME, the version alone is a payload
 * @param select   out
 * @param report   out; may be null
 * @return 1, or 0 when the payload is refused
 */
NFC_NDEF_API uint8_t nfc_ndef_handover_select_read(nfc_ndef_bytes payload, uint8_t flags, nfc_ndef_handover *select,
                                                   nfc_ndef_payload_report *report);

/**
 * Hands out the next Alternative Carrier record of a request or a selection.
 * @param handover  a request or a selection that was read
 * @param carrier   out: the record, for nfc_ndef_alternative_carrier_read()
 * @return 1; 0 behind the last
 */
NFC_NDEF_API uint8_t nfc_ndef_handover_next_carrier(nfc_ndef_handover *handover, nfc_ndef_record_view *carrier);

/** A Handover Carrier record, "Hc" (NFC Forum Connection Handover 1.2). */
typedef struct nfc_ndef_handover_carrier {
    nfc_ndef_bytes type; /**< Carrier type. */
    nfc_ndef_bytes data; /**< Carrier data, at most 255 bytes. */
    uint8_t format;      /**< Carrier type format, 0 to 7: one of the NFC_NDEF_TNF_ values. */
} nfc_ndef_handover_carrier;

/**
 * Reads a Handover Carrier payload; see rtdlib_handover_carrier_record_extract().
 * @param payload  the payload
 * @param carrier  out: what was read
 * @param report   out: what is wrong; may be null
 * @return 1, or 0 when the payload is refused
 */
NFC_NDEF_API uint8_t nfc_ndef_handover_carrier_read(nfc_ndef_bytes payload, nfc_ndef_handover_carrier *carrier,
                                                    nfc_ndef_payload_report *report);

/** An Alternative Carrier record, "ac" (NFC Forum Connection Handover 1.2). */
typedef struct nfc_ndef_alternative_carrier {
    nfc_ndef_bytes reference; /**< Id of the record that configures the carrier. */
    nfc_ndef_bytes auxiliary; /**< For nfc_ndef_alternative_carrier_next(). */
    uint8_t power_state;      /**< 0 inactive, 1 active, 2 activating, 3 unknown. */
    uint8_t auxiliary_count;  /**< Number of auxiliary references that were not handed out yet. */
} nfc_ndef_alternative_carrier;

/**
 * Reads an Alternative Carrier payload; see rtdlib_alternative_carrier_record_extract().
 * @param payload  the payload
 * @param carrier  out: what was read
 * @param report   out: what is wrong; may be null
 * @return 1, or 0 when the payload is refused
 */
NFC_NDEF_API uint8_t nfc_ndef_alternative_carrier_read(nfc_ndef_bytes payload, nfc_ndef_alternative_carrier *carrier,
                                                       nfc_ndef_payload_report *report);

/**
 * Hands out the next auxiliary reference.
 * @param carrier    an Alternative Carrier record that was read
 * @param reference  out: the id of an auxiliary record; may be empty
 * @return 1; 0 behind the last
 */
NFC_NDEF_API uint8_t nfc_ndef_alternative_carrier_next(nfc_ndef_alternative_carrier *carrier,
                                                       nfc_ndef_bytes *reference);

/** A Collision Resolution record, "cr" (NFC Forum Connection Handover 1.2). */
typedef struct nfc_ndef_collision_resolution {
    uint16_t random_number; /**< The random number. */
} nfc_ndef_collision_resolution;

/**
 * Reads a Collision Resolution payload; see rtdlib_collision_resolution_record_extract().
 * @param payload    the payload
 * @param collision  out: what was read
 * @param report     out: what is wrong; may be null
 * @return 1, or 0 when the payload is refused
 */
NFC_NDEF_API uint8_t nfc_ndef_collision_resolution_read(nfc_ndef_bytes payload,
                                                        nfc_ndef_collision_resolution *collision,
                                                        nfc_ndef_payload_report *report);

/** A Handover Select Error record, "err" (NFC Forum Connection Handover 1.2). */
typedef struct nfc_ndef_handover_error {
    uint8_t reason; /**< Error reason. */
    uint8_t data;   /**< Error data. */
} nfc_ndef_handover_error;

/**
 * Reads a Handover Select Error payload; see rtdlib_handover_select_error_record_extract().
 * @param payload  the payload
 * @param error    out: what was read
 * @param report   out: what is wrong; may be null
 * @return 1, or 0 when the payload is refused
 */
NFC_NDEF_API uint8_t nfc_ndef_handover_error_read(nfc_ndef_bytes payload, nfc_ndef_handover_error *error,
                                                  nfc_ndef_payload_report *report);

/**
 * A Bluetooth 2.1 out-of-band record, "application/vnd.bluetooth.ep.oob" (NFC Forum Bluetooth Secure Simple Pairing
 * Using NFC; Bluetooth Core, Supplement, Part A). All bytes are in the order of the payload. A `_type` is that of the
 * structure the field stood in, 0 when there is none.
 */
typedef struct nfc_ndef_bt_oob {
    nfc_ndef_bytes local_name;   /**< Local name. */
    nfc_ndef_bytes hash_c;       /**< Simple Pairing Hash C: 16 bytes, or none. */
    nfc_ndef_bytes randomizer_r; /**< Simple Pairing Randomizer R: 16 bytes, or none; only with a Hash C. */
    nfc_ndef_bytes uuid16_list;  /**< 16-bit service class UUIDs. */
    nfc_ndef_bytes uuid32_list;  /**< 32-bit service class UUIDs. */
    nfc_ndef_bytes uuid128_list; /**< 128-bit service class UUIDs. */
    nfc_ndef_bytes structures;   /**< The structures that nfc_ndef_bt_oob_next() has not handed out yet. */
    uint16_t stated_length;      /**< The payload's length as its first two bytes state it; nothing depends on it. */
    uint8_t device_address[6];   /**< Device address. */
    uint8_t class_of_device[3];  /**< Class of Device; zeros when there is none. */
    uint8_t has_class_of_device; /**< 1 with a Class of Device, else 0. */
    uint8_t local_name_type;     /**< 8 (shortened) or 9 (complete). */
    uint8_t uuid16_list_type;    /**< 2 (incomplete) or 3 (complete). */
    uint8_t uuid32_list_type;    /**< 4 (incomplete) or 5 (complete). */
    uint8_t uuid128_list_type;   /**< 6 (incomplete) or 7 (complete). */
    uint8_t manufacturer_count;  /**< Number of manufacturer-specific structures. */
} nfc_ndef_bt_oob;

/** One Extended Inquiry Response structure (Bluetooth Core, Supplement, Part A). */
typedef struct nfc_ndef_eir {
    nfc_ndef_bytes data; /**< What follows the type; of type 0xFF the company identifier, two bytes, and its data. */
    uint8_t type;        /**< What it holds. */
} nfc_ndef_eir;

/**
 * Reads a Bluetooth 2.1 out-of-band payload; see rtdlib_bt_2_1_configuration_data_record_extract().
 * @param payload  the payload
 * @param oob      out: what was read
 * @param report   out: what is wrong; may be null
 * @return 1, or 0 when the payload is refused
 */
NFC_NDEF_API uint8_t nfc_ndef_bt_oob_read(nfc_ndef_bytes payload, nfc_ndef_bt_oob *oob,
                                          nfc_ndef_payload_report *report);

/**
 * Hands out the next structure of whatever type, past padding.
 * @param oob        an out-of-band record that was read
 * @param structure  out: the structure
 * @return 1; 0 behind the last
 */
NFC_NDEF_API uint8_t nfc_ndef_bt_oob_next(nfc_ndef_bt_oob *oob, nfc_ndef_eir *structure);

/** A legacy Bluetooth configuration record, an external type of the vendor's domain and ":bt". */
typedef struct nfc_ndef_bt_legacy {
    nfc_ndef_bytes pairing_data; /**< Pairing data, 0 to 16 bytes. */
    nfc_ndef_bytes local_name;   /**< Device name, at most 248 bytes. */
    uint8_t device_address[6];   /**< Device address; the payload holds it last byte first. */
    uint8_t class_of_device[3];  /**< Class of Device; the payload holds it last byte first. */
    uint8_t pairing_type;        /**< As in #nfc_ndef_bt_rtd_2_0_str. */
} nfc_ndef_bt_legacy;

/**
 * Reads a legacy Bluetooth payload; see rtdlib_bt_configuration_data_record_extract().
 * @param payload  the payload
 * @param legacy   out: what was read
 * @param report   out: what is wrong; may be null
 * @return 1, or 0 when the payload is refused
 */
NFC_NDEF_API uint8_t nfc_ndef_bt_legacy_read(nfc_ndef_bytes payload, nfc_ndef_bt_legacy *legacy,
                                             nfc_ndef_payload_report *report);

/** A Sharing Enquiry record, an external type of the vendor's domain and ":she". */
typedef struct nfc_ndef_sharing_enquiry {
    nfc_ndef_bytes data; /**< Enquiry data, at most 255 bytes. */
    uint8_t version;     /**< Version byte. */
    uint8_t type;        /**< Enquiry type. */
} nfc_ndef_sharing_enquiry;

/**
 * Reads a Sharing Enquiry payload; see rtdlib_sharing_enquiry_record_extract().
 * @param payload  the payload
 * @param enquiry  out: what was read
 * @param report   out: what is wrong; may be null
 * @return 1, or 0 when the payload is refused
 */
NFC_NDEF_API uint8_t nfc_ndef_sharing_enquiry_read(nfc_ndef_bytes payload, nfc_ndef_sharing_enquiry *enquiry,
                                                   nfc_ndef_payload_report *report);
/** @} */

/**
 * @addtogroup view_write
 * @{
 */

/**
 * Writes a record with its own flags, as nfc_ndef_record_to_byte_array() does.
 * @param record    borrowed; may be null
 * @param buffer    where to; not written when the record does not fit
 * @param capacity  bytes that the buffer has room for
 * @return the number of bytes that are needed; 0 for a null record and for one that cannot be encoded
 */
NFC_NDEF_API uint32_t nfc_ndef_record_write(const nfc_ndef_record *record, uint8_t *buffer, uint32_t capacity);

/**
 * Writes a message, as nfc_ndef_msg_to_byte_array() does.
 * @param ndef_msg  borrowed; may be null
 * @param buffer    where to; what is in it is of no use when the message does not fit or cannot be encoded
 * @param capacity  bytes that the buffer has room for
 * @return the number of bytes that are needed; 0 for a null or empty message, one with a record that cannot be encoded,
 *         and one of more than 2^31 - 1 bytes
 */
NFC_NDEF_API uint32_t nfc_ndef_msg_write(const nfc_ndef_msg *ndef_msg, uint8_t *buffer, uint32_t capacity);

/**
 * Writes a record that is viewed, in one piece: with its MB and ME flags, and with CF only when it is a chunk that was
 * read by itself.
 * @param record    borrowed
 * @param buffer    where to; not written when the record does not fit
 * @param capacity  bytes that the buffer has room for
 * @return the number of bytes that are needed; 0 for an empty record with a type, an id or a payload, and for one of
 *         more than 2^31 - 1 bytes
 */
NFC_NDEF_API uint32_t nfc_ndef_record_view_write(const nfc_ndef_record_view *record, uint8_t *buffer,
                                                 uint32_t capacity);

/** A message that is being written record by record. Set it up with nfc_ndef_msg_writer_begin(). */
typedef struct nfc_ndef_msg_writer {
    uint8_t *buffer;       /**< Where the message goes. */
    uint32_t capacity;     /**< Bytes that the buffer has room for. */
    uint32_t length;       /**< Bytes of the records so far, whether or not there was room; 0 before the first. */
    uint32_t last;         /**< Where the last of them begins. */
    uint32_t record_count; /**< Number of them. */
    uint8_t failed;        /**< 1 when a record could not be added, else 0. */
} nfc_ndef_msg_writer;

/**
 * Begins a message.
 * @param writer    out
 * @param buffer    where to
 * @param capacity  bytes that the buffer has room for
 */
NFC_NDEF_API void nfc_ndef_msg_writer_begin(nfc_ndef_msg_writer *writer, uint8_t *buffer, uint32_t capacity);

/**
 * Adds a record, from whichever message or object. Its payload is written in one piece; its MB, ME and CF flags are not
 * consulted.
 * @param writer  a message that was begun
 * @param record  borrowed
 * @return 1; 0 for a record that cannot be encoded, after 254 records, or after 2^31 - 1 bytes. The message is then not
 *         written at all
 */
NFC_NDEF_API uint8_t nfc_ndef_msg_writer_add(nfc_ndef_msg_writer *writer, const nfc_ndef_record_view *record);

/**
 * Ends a message: its first record gets MB, its last ME.
 * @param writer  a message that was begun; more records may still be added and the message be ended again
 * @return the number of bytes that are needed; 0 for no record, and when one could not be added
 */
NFC_NDEF_API uint32_t nfc_ndef_msg_writer_end(nfc_ndef_msg_writer *writer);
/** @} */

/**
 * @addtogroup view_tlv
 * @{
 * The data area of an NFC Forum tag is a sequence of TLV blocks (NFC Forum Type 2 Tag 1.1): a tag, a length, which
 * follows 0xFF in two bytes when it is 255 or more, and a value. A lock or memory control TLV reserves bytes that
 * belong to no block, although a block may begin before and end behind them.
 */

/** Why there is no message in a data area. */
typedef enum nfc_ndef_tlv_reason {
    NFC_NDEF_TLV_FOUND = 0,         /**< There is one. */
    NFC_NDEF_TLV_CUT_SHORT = 1,     /**< The area ends within a block. */
    NFC_NDEF_TLV_NO_MESSAGE = 2,    /**< The terminator, or the end of the area, comes before any message. */
    NFC_NDEF_TLV_TOO_MANY_AREAS = 3 /**< More than #NFC_NDEF_TLV_MOST_RESERVED areas are reserved. */
} nfc_ndef_tlv_reason;

/** How many reserved areas are kept in mind; no tag has as many. */
#define NFC_NDEF_TLV_MOST_RESERVED 8

/** What nfc_ndef_tlv_find() found. */
typedef struct nfc_ndef_tlv_report {
    uint32_t reason; /**< An #nfc_ndef_tlv_reason. */
    uint32_t offset; /**< From the first byte of the memory: of the message found or the area too many, its TLV block;
                          else where the search ended. */
} nfc_ndef_tlv_report;

/** The value of an NDEF message TLV. */
typedef struct nfc_ndef_tlv {
    nfc_ndef_bytes message;  /**< The message; empty when reserved bytes lie in between: then join it. */
    uint32_t length;         /**< Bytes of the message; 0 for the empty message of a tag without data. */
    nfc_ndef_bytes memory;   /**< The memory that was searched, up to the end of its data area. */
    uint32_t position;       /**< Where the part of the message begins that nfc_ndef_tlv_next_piece() hands out next. */
    uint32_t left;           /**< Bytes of the message from there on. */
    uint32_t reserved_count; /**< Number of reserved areas. */
    uint32_t reserved_begin[NFC_NDEF_TLV_MOST_RESERVED]; /**< Offset of each in the memory. */
    uint32_t reserved_end[NFC_NDEF_TLV_MOST_RESERVED];   /**< Offset of what follows each. */
} nfc_ndef_tlv;

/**
 * Finds the first NDEF message TLV. Blocks of other tags are stepped over.
 * @param memory  the data area, or the whole memory of an NFC Forum Type 2 Tag: bytes 12 to 15 are then a capability
 *                container (0xE1, version 1, a size), which says how long the data area behind it is
 * @param tlv     out: the message; zeros when there is none
 * @param report  out; may be null
 * @return 1 when there is one, else 0
 */
NFC_NDEF_API uint8_t nfc_ndef_tlv_find(nfc_ndef_bytes memory, nfc_ndef_tlv *tlv, nfc_ndef_tlv_report *report);

/**
 * Hands out the message piece by piece, between the reserved areas.
 * @param tlv    a message that was found
 * @param piece  out: the piece, which is not empty
 * @return 1; 0 behind the last
 */
NFC_NDEF_API uint8_t nfc_ndef_tlv_next_piece(nfc_ndef_tlv *tlv, nfc_ndef_bytes *piece);

/**
 * Puts the message, in pieces or not, into a buffer.
 * @param tlv       a message that was found, of which no piece was handed out
 * @param buffer    where to; not written when the message does not fit
 * @param capacity  bytes that the buffer has room for
 * @return bytes in the message, which may be 0
 */
NFC_NDEF_API uint32_t nfc_ndef_tlv_join(const nfc_ndef_tlv *tlv, uint8_t *buffer, uint32_t capacity);

/**
 * Wraps a message for a data area: an NDEF message TLV, then a terminator TLV.
 * @param message   the message; may be empty, and may lie anywhere in the buffer
 * @param buffer    where to; not written when it has no room
 * @param capacity  bytes that the buffer has room for
 * @return the number of bytes that are needed; 0 for a message of more than 65534 bytes
 */
NFC_NDEF_API uint32_t nfc_ndef_tlv_wrap(nfc_ndef_bytes message, uint8_t *buffer, uint32_t capacity);

/**
 * Gives the text of a reason, in English and without a full stop.
 * @param reason  an #nfc_ndef_tlv_reason
 * @return a constant string; "unknown reason" for any other value
 */
NFC_NDEF_API const char *nfc_ndef_tlv_reason_text(uint32_t reason);
/** @} */

#ifdef __cplusplus
}
#endif

#endif
