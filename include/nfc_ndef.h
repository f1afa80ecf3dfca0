/*
 * nfc-ndef: builds, edits, encodes and decodes NFC Forum NDEF data.
 *
 * SPDX-License-Identifier: MIT
 */
#ifndef NFC_NDEF_H
#define NFC_NDEF_H

#include <stddef.h>
#include <stdint.h>

/**
 * @file nfc_ndef.h
 * @brief The whole interface of nfc-ndef, in plain C (C99 and C++).
 *
 * Conventions that every function obeys:
 *
 * 1. **Byte strings** cross the interface as a pointer and a length, never terminated. The pointer is null exactly when
 *    the length is 0; a pair where only one of the two is zero is refused unless a function says otherwise.
 * 2. **Ownership.** What a constructor, builder, parser or copy returns is the caller's. What an accessor, lookup or
 *    query returns points into an object and belongs to that object; only a query's array itself is the caller's.
 *    Records are freed with nfc_ndef_record_delete(), messages with nfc_ndef_msg_delete(), record types with
 *    nfc_ndef_record_type_delete(), the Bluetooth structures with their own delete functions, and every other block or
 *    array with os_block_dealloc().
 * 3. **Results.** Constructors, builders and copies: a new object, or null. Editing: #NFC_NDEF_OK, which is 1, or
 *    #NFC_NDEF_REFUSED, which is 255. Encoders: a number of bytes, 0 on failure. Extractors: #NFC_NDEF_OK, otherwise
 *    #NFC_NDEF_FAILURE, #NFC_NDEF_BAD_PAYLOAD or #NFC_NDEF_DECODING_FAILED, as each of them says by the number.
 * 4. **Outputs** of extractors are written step by step. An output that is not mentioned as written keeps the value the
 *    caller gave it, so set every pointer output to null and every count to 0 before the call, and free whatever is
 *    non-null after it, whatever the result. When memory runs out, the outputs of the steps before are written, and an
 *    array that cannot be completed is null with count 0.
 * 5. **Memory** comes from os_block_alloc() and os_block_alloc_and_clear(). Running out of it is reported like any
 * other failure unless a function says otherwise; nothing is leaked and the objects passed in are unchanged.
 * 6. **Threads.** No function locks anything and there is no global state: use each object on one thread at a time.
 */

/** @defgroup version Version */
/** @defgroup results Results */
/** @defgroup memory Memory */
/** @defgroup records Records and record types */
/** @defgroup messages Messages */
/** @defgroup read_tag Read a tag */
/** @defgroup write_tag Write a tag */
/** @defgroup control Generic Control */
/** @defgroup handover Connection handover */
/** @defgroup bluetooth Bluetooth pairing */
/** @defgroup vendor Vendor records */

/**
 * @addtogroup version
 * @{
 */
#define NFC_NDEF_VERSION_MAJOR 1 /**< Raised when a structure or a signature changes; also the SONAME's number. */
#define NFC_NDEF_VERSION_MINOR 0 /**< Raised when a function is added. */
#define NFC_NDEF_VERSION_PATCH 0 /**< Raised by any other release. */
/** @} */

/**
 * @addtogroup results
 * @{
 * What the functions that return a code return. Compare with #NFC_NDEF_OK: anything else is a failure.
 */
#define NFC_NDEF_OK 1              /**< Done, by editing calls; read, by extractors. */
#define NFC_NDEF_REFUSED 255       /**< Editing calls: nothing was changed. */
#define NFC_NDEF_FAILURE (-1)      /**< Extractors: bad arguments, a payload that is not of the type, or no memory. */
#define NFC_NDEF_BAD_PAYLOAD 2     /**< Extractors: the payload breaks a rule of its format. Of some types only. */
#define NFC_NDEF_DECODING_FAILED 0 /**< Bluetooth extractors: cut short, a field too many, or no memory. */
/** @} */

#if defined(__GNUC__)
#define NFC_NDEF_API __attribute__((visibility("default"))) /**< Marks an exported function. */
#else
#define NFC_NDEF_API /**< Marks an exported function. */
#endif

#ifdef __cplusplus
extern "C" {
#endif

/**
 * @addtogroup memory
 * @{
 * The block allocator of the host. The library brings defaults over the C library's heap. Whoever defines these three
 * functions and comes before this library in the order in which the dynamic linker looks for symbols gets every call:
 * the program itself, a preloaded library, or a library that is linked before this one; one that comes after it does
 * not. A program that loads this library with dlopen() must export its own three (`-rdynamic`). Their blocks must be
 * releasable by GLib's g_free(), because the Bluetooth structures are released with it; in a library that was built
 * without GLib (`-DNFC_NDEF_GLIB=OFF`) they are released by os_block_dealloc() like everything else.
 */

/**
 * Allocates a block.
 * @param size  its size in bytes; 0 yields a block too
 * @return the block, aligned for any object; null when memory runs out
 */
NFC_NDEF_API void *os_block_alloc(size_t size);

/**
 * Allocates a block of zeros.
 * @param size  its size in bytes; 0 yields a block too
 * @return the block, aligned for any object; null when memory runs out
 */
NFC_NDEF_API void *os_block_alloc_and_clear(size_t size);

/**
 * Frees a block.
 * @param block  a block from os_block_alloc() or os_block_alloc_and_clear(); null is ignored
 */
NFC_NDEF_API void os_block_dealloc(void *block);
/** @} */

/**
 * @addtogroup records
 * @{
 */

#define NFC_NDEF_TNF_EMPTY 0        /**< No type, id or payload. */
#define NFC_NDEF_TNF_WELL_KNOWN 1   /**< An NFC Forum well-known type, such as "T". */
#define NFC_NDEF_TNF_MIME 2         /**< A media type, such as "text/plain". */
#define NFC_NDEF_TNF_ABSOLUTE_URI 3 /**< The type name is an absolute URI. */
#define NFC_NDEF_TNF_EXTERNAL 4     /**< An NFC Forum external type, such as "example.com:bt". */
#define NFC_NDEF_TNF_UNKNOWN 5      /**< A payload of unknown type; no type name. */
#define NFC_NDEF_TNF_UNCHANGED 6    /**< A middle or terminating chunk. */
#define NFC_NDEF_TNF_RESERVED 7     /**< Reserved by the NFC Forum. */

/**
 * What a record carries: a type name format and, for most formats, a type name.
 * The format is the TNF field of NFC Forum NDEF 1.0.
 */
typedef struct nfc_ndef_record_type {
    uint8_t *name;       /**< The type name, `name_length` bytes; null when there is none. */
    uint8_t name_length; /**< Bytes in `name`, 0 to 255. */
    uint32_t format;     /**< One of the NFC_NDEF_TNF_ values. */
} nfc_ndef_record_type;

/** One NDEF record (NFC Forum NDEF 1.0). It owns every byte string it points to. */
typedef struct nfc_ndef_record {
    uint8_t mb;                       /**< Message Begin, 0 or 1. */
    uint8_t me;                       /**< Message End, 0 or 1. */
    uint8_t cf;                       /**< Chunk Flag, 0 or 1. */
    uint8_t sr;                       /**< Short Record, 0 or 1; not consulted when encoding. */
    uint8_t il;                       /**< ID Length present, 0 or 1; not consulted when encoding. */
    uint32_t payload_length;          /**< Bytes in `payload`. */
    uint8_t id_length;                /**< Bytes in `id`, 0 to 255. */
    uint8_t *id;                      /**< The id; null when there is none. */
    uint8_t *payload;                 /**< The payload; null when there is none. */
    nfc_ndef_record_type record_type; /**< The type; its name belongs to the record. */
    uint32_t parsed_length;           /**< Bytes the record occupied where it was decoded from; 0 otherwise. */
} nfc_ndef_record;

/**
 * Creates a free-standing record type.
 * @param format       type name format; values above 7 are kept as they are
 * @param name         type name, copied; null with NFC_NDEF_TNF_EMPTY and NFC_NDEF_TNF_UNKNOWN, else required
 * @param name_length  bytes in `name`, 0 to 255
 * @return a new type, freed with nfc_ndef_record_type_delete(); null when name and length disagree, a name is missing
 *         or not allowed, or memory runs out
 */
NFC_NDEF_API nfc_ndef_record_type *nfc_ndef_record_type_create(uint32_t format, const uint8_t *name,
                                                               uint8_t name_length);

/**
 * Frees a free-standing record type with its name.
 * @param type  the type; null is ignored; never the type embedded in a record
 */
NFC_NDEF_API void nfc_ndef_record_type_delete(nfc_ndef_record_type *type);

/**
 * Gets the name of a type.
 * @param type         borrowed; may be null
 * @param name_length  out, never null: bytes in the name, 0 when there is none
 * @return the type's own bytes, valid as long as the type is unchanged; null when there is no name, and always for the
 *         formats NFC_NDEF_TNF_EMPTY and NFC_NDEF_TNF_UNKNOWN
 */
NFC_NDEF_API const uint8_t *nfc_ndef_record_type_get_name(const nfc_ndef_record_type *type, uint8_t *name_length);

/**
 * Gets the type name format.
 * @param type  borrowed; may be null
 * @return the format; 255 for null
 */
NFC_NDEF_API uint32_t nfc_ndef_record_type_get_format(const nfc_ndef_record_type *type);

/**
 * Tells whether a record's type matches a search key. Empty and unknown types match when neither has a name; well-known
 * types match exactly; absolute URIs and external types ignore ASCII case; types of any other format match nothing but
 * themselves. Media types ignore case, and the two sides are read differently:
 * - a ';' (parameters) ends the compared part of either name, and so does a '*' in the candidate;
 * - a '*' in the key ends it one character earlier, so "image*" compares the four letters "imag";
 * - a candidate that begins with ';' or '*' matches every key, a key that begins with '*' matches only such candidates;
 * - two names with neither character must be equally long.
 * @param key        borrowed; may be null
 * @param candidate  borrowed; may be null
 * @return 1 when they match, and when both are the same object or both null; 0 otherwise
 */
NFC_NDEF_API uint8_t nfc_ndef_record_type_equals(const nfc_ndef_record_type *key,
                                                 const nfc_ndef_record_type *candidate);

/**
 * Creates a record from its parts, which are copied. With the format NFC_NDEF_TNF_EMPTY the name, the id
 * and the payload are dropped, with NFC_NDEF_TNF_UNKNOWN the name is.
 * @param type            borrowed; required
 * @param id              id bytes, or null
 * @param id_length       bytes in `id`, 0 to 255
 * @param payload         payload bytes, or null
 * @param payload_length  bytes in `payload`
 * @return a new record with `mb`, `me` and `cf` 0, `il` 1 with an id, `sr` 1 with a payload below 255 bytes; null for a
 *         null type, a pointer and length that disagree, or when memory runs out
 */
NFC_NDEF_API nfc_ndef_record *nfc_ndef_record_create_from_param(const nfc_ndef_record_type *type, const uint8_t *id,
                                                                uint8_t id_length, const uint8_t *payload,
                                                                uint32_t payload_length);

/**
 * Copies a record with all that it owns, flags and `parsed_length` included.
 * @param record  borrowed; may be null
 * @return a new record; null for null, or when memory runs out
 */
NFC_NDEF_API nfc_ndef_record *nfc_ndef_rec_create_and_copy(const nfc_ndef_record *record);

/**
 * Frees a record with all that it owns and sets the caller's pointer to null.
 * @param record  address of the pointer; a null address or pointer is ignored
 */
NFC_NDEF_API void nfc_ndef_record_delete(nfc_ndef_record **record);

/**
 * Gets the id.
 * @param record     borrowed; may be null
 * @param id_length  out: bytes in the id, 1 to 255; not written when there is none
 * @return the record's own id; null when there is none
 */
NFC_NDEF_API const uint8_t *nfc_ndef_record_get_id(const nfc_ndef_record *record, uint8_t *id_length);

/**
 * Gets the payload.
 * @param record          borrowed; may be null
 * @param payload_length  out, never null: bytes in the payload, 0 when there is none
 * @return the record's own payload; null when there is none
 */
NFC_NDEF_API const uint8_t *nfc_ndef_record_get_payload(const nfc_ndef_record *record, uint32_t *payload_length);

/**
 * Gets the payload's length.
 * @param record  borrowed; may be null
 * @return bytes in the payload; 0 for null
 */
NFC_NDEF_API uint32_t nfc_ndef_record_get_payload_length(const nfc_ndef_record *record);

/**
 * Gets the record's type.
 * @param record  borrowed; may be null
 * @return the type embedded in the record, not to be deleted; null for null
 */
NFC_NDEF_API const nfc_ndef_record_type *nfc_ndef_record_get_record_type(const nfc_ndef_record *record);

/**
 * Replaces or removes the id. This is the one call that takes a buffer over instead of copying it.
 * @param record     the record to change
 * @param id         the new id, a block from os_block_alloc() that the record owns from now on; the record's own id
 * stays where it is, with the new length; null removes the id
 * @param id_length  bytes in `id`, 0 to 255
 * @return the new length; 0 when the id was removed, for a null record, and when a pointer and its length disagree (the
 *         buffer is then still the caller's)
 */
NFC_NDEF_API uint8_t nfc_ndef_record_set_id(nfc_ndef_record *record, uint8_t *id, uint8_t id_length);

/**
 * Appends bytes to a payload that is not empty.
 * @param record       the record to change
 * @param data         bytes to append, copied; required
 * @param data_length  bytes in `data`; not 0
 * @return 1; 255 for bad arguments, a record without payload, a sum beyond 32 bits, or when memory runs out (the record
 *         is unchanged)
 */
NFC_NDEF_API uint8_t nfc_ndef_record_append_payload(nfc_ndef_record *record, const uint8_t *data, uint32_t data_length);

/**
 * Encodes one record with its own `mb`, `me` and `cf` (NFC Forum NDEF 1.0).
 * @param record      borrowed; may be null
 * @param byte_array  out: a new block of exactly the returned length; not written when the record is null, inconsistent
 * or would take more than 2^31 - 1 bytes, null when memory runs out
 * @return the number of bytes; 0 on failure
 */
NFC_NDEF_API uint32_t nfc_ndef_record_to_byte_array(const nfc_ndef_record *record, uint8_t **byte_array);

/**
 * Decodes one record (NFC Forum NDEF 1.0); bytes after it are ignored. A chunk is returned as an ordinary record.
 * @param data      the bytes; null is refused
 * @param position  where the record's header is, counted from `data`
 * @param length    bytes in `data`, counted from `data` itself and not from `position`
 * @return a new record; null when the bytes are not a whole record, or when memory runs out
 */
NFC_NDEF_API nfc_ndef_record *nfc_ndef_record_create_from_byte_array(const uint8_t *data, uint32_t position,
                                                                     uint32_t length);
/** @} */

/**
 * @addtogroup messages
 * @{
 */

#define NFC_NDEF_MSG_MOST_RECORDS 254 /**< Records, chunks counted singly, in a message that is read. */

/** The list of records inside a message. */
struct ctlDList;

/** An NDEF message: records in order, at most 255, all owned by the message. One more than is read. */
typedef struct nfc_ndef_msg {
    struct ctlDList *records; /**< Never null in a message that the library made; checked, and fatal if it is. */
} nfc_ndef_msg;

/**
 * Creates an empty message.
 * @return a new message, freed with nfc_ndef_msg_delete(); null when memory runs out
 */
NFC_NDEF_API nfc_ndef_msg *nfc_ndef_msg_create(void);

/**
 * Frees a message with its records and sets the caller's pointer to null.
 * @param ndef_msg  address of the pointer; a null address or pointer is ignored
 */
NFC_NDEF_API void nfc_ndef_msg_delete(nfc_ndef_msg **ndef_msg);

/**
 * Copies a message with all its records.
 * @param msg  borrowed; may be null
 * @return a new message; null for null, or when memory runs out
 */
NFC_NDEF_API nfc_ndef_msg *nfc_ndef_msg_copy(const nfc_ndef_msg *msg);

/**
 * Makes a message of an array of records.
 * @param records  block from os_block_alloc() with `count` records; on success the records and the array are freed
 * @param count    number of records, 1 to 255
 * @return a new message holding copies in array order; null when the array, the count or a record is null, or when
 *         memory runs out (the array and the records are then still the caller's, and unchanged)
 */
NFC_NDEF_API nfc_ndef_msg *nfc_ndef_msg_create_by_records(nfc_ndef_record **records, uint8_t count);

/**
 * Appends a copy of a record.
 * @param ndef_msg  the message
 * @param record    borrowed; stays the caller's
 * @return 1; 255 for a null argument, a message of 255 records, or when memory runs out
 */
NFC_NDEF_API uint32_t nfc_ndef_msg_append_record(nfc_ndef_msg *ndef_msg, const nfc_ndef_record *record);

/**
 * Inserts a record, which the message takes over.
 * @param ndef_msg  the message
 * @param position  0 to the number of records; the latter means at the end
 * @param record    the record; after success it must neither be used nor freed by the caller
 * @return 1; 255 for a null argument, a position out of range, a message of 255 records, or when memory runs out (the
 *         record is then still the caller's)
 */
NFC_NDEF_API uint32_t nfc_ndef_msg_insert_record(nfc_ndef_msg *ndef_msg, uint8_t position, nfc_ndef_record *record);

/**
 * Replaces a record, which is freed, by another, which the message takes over.
 * @param ndef_msg  the message
 * @param position  0 to the number of records - 1
 * @param record    the record; after success it must neither be used nor freed by the caller
 * @return 1; 255 for a null argument or a position out of range (the record is then still the caller's)
 */
NFC_NDEF_API uint32_t nfc_ndef_msg_set_record(nfc_ndef_msg *ndef_msg, uint8_t position, nfc_ndef_record *record);

/**
 * Removes a record and frees it.
 * @param ndef_msg  the message
 * @param position  0 to the number of records - 1
 * @return 1; 255 for a null message or a position out of range
 */
NFC_NDEF_API uint32_t nfc_ndef_msg_remove_record(nfc_ndef_msg *ndef_msg, uint8_t position);

/**
 * Looks a record up by position, for reading.
 * @param ndef_msg  borrowed; may be null
 * @param position  counted from 0
 * @return the message's own record; null when there is none
 */
NFC_NDEF_API const nfc_ndef_record *nfc_ndef_msg_get_record_by_index(const nfc_ndef_msg *ndef_msg, uint8_t position);

/**
 * Looks a record up by position, for changing it in place.
 * @param ndef_msg  the message; may be null
 * @param position  counted from 0
 * @return the message's own record; null when there is none
 */
NFC_NDEF_API nfc_ndef_record *nfc_ndef_msg_edit_record_by_index(nfc_ndef_msg *ndef_msg, uint8_t position);

/**
 * Looks up the first record with an id, for reading.
 * @param ndef_msg   borrowed; may be null
 * @param id         id bytes; null finds nothing
 * @param id_length  bytes in `id`; 0 finds nothing
 * @return the message's own record; null when there is none
 */
NFC_NDEF_API const nfc_ndef_record *nfc_ndef_msg_get_record_by_id(const nfc_ndef_msg *ndef_msg, const uint8_t *id,
                                                                  uint8_t id_length);

/**
 * Looks up the first record with an id, for changing it in place.
 * @param ndef_msg   the message; may be null
 * @param id         id bytes; null finds nothing
 * @param id_length  bytes in `id`; 0 finds nothing
 * @return the message's own record; null when there is none
 */
NFC_NDEF_API nfc_ndef_record *nfc_ndef_msg_edit_record_by_id(nfc_ndef_msg *ndef_msg, const uint8_t *id,
                                                             uint8_t id_length);

/**
 * Counts the records.
 * @param ndef_msg  borrowed; may be null
 * @return the number of records, 0 for null
 */
NFC_NDEF_API uint8_t nfc_ndef_msg_get_number_of_records(const nfc_ndef_msg *ndef_msg);

/**
 * Gets all records.
 * @param ndef_msg  borrowed; may be null
 * @param count     out: entries in the array, 0 when there is none; null is refused
 * @return a new array (freed with os_block_dealloc()) of the message's own records, in order; null when there are none
 *         or memory runs out
 */
NFC_NDEF_API const nfc_ndef_record **nfc_ndef_msg_get_records(const nfc_ndef_msg *ndef_msg, uint8_t *count);

/**
 * Gets the types of all records.
 * @param ndef_msg  borrowed; may be null
 * @param count     out: entries in the array, 0 when there is none; null is refused
 * @return a new array (freed with os_block_dealloc()) of the types embedded in the message's records, in order; null
 *         when there are none or memory runs out
 */
NFC_NDEF_API const nfc_ndef_record_type **nfc_ndef_msg_get_record_types(const nfc_ndef_msg *ndef_msg, uint8_t *count);

/**
 * Gets the records whose type matches a key, as nfc_ndef_record_type_equals() says.
 * @param ndef_msg  borrowed; may be null
 * @param key       borrowed; null finds nothing
 * @param count     out: entries in the array, 0 when there is none; null is refused
 * @return a new array (freed with os_block_dealloc()) of the message's own records, in order; null when none match or
 *         memory runs out
 */
NFC_NDEF_API const nfc_ndef_record **nfc_ndef_msg_get_records_by_type(const nfc_ndef_msg *ndef_msg,
                                                                      const nfc_ndef_record_type *key, uint8_t *count);

/**
 * Finds the first record whose type matches a key, as nfc_ndef_record_type_equals() says.
 * @param ndef_msg  borrowed; may be null
 * @param key       borrowed; null finds nothing
 * @return the record's position, counted from 0; -1 when none matches
 */
NFC_NDEF_API int32_t nfc_ndef_record_index_by_type_from_msg(const nfc_ndef_msg *ndef_msg,
                                                            const nfc_ndef_record_type *key);

/**
 * Encodes a message (NFC Forum NDEF 1.0): MB on the first record, ME on the last, no chunks, whatever flags the records
 * hold.
 * @param ndef_msg    borrowed; may be null
 * @param byte_array  out: a new block of exactly the returned length; not written for a null or empty message, when no
 *                    record can be encoded, or when the total exceeds 2^31 - 1 bytes; null when one of several records
 *                    cannot be encoded or memory runs out
 * @return the number of bytes; 0 on failure
 */
NFC_NDEF_API int32_t nfc_ndef_msg_to_byte_array(const nfc_ndef_msg *ndef_msg, uint8_t **byte_array);

/**
 * Decodes a message (NFC Forum NDEF 1.0), joining chunks. The bytes must be whole records, at most
 * #NFC_NDEF_MSG_MOST_RECORDS, that fill `length` exactly, with MB and ME where they belong; when the first record's
 * type is "Gc", each record must carry both. In a message without chunks the format "unchanged" breaks no rule.
 * nfc_ndef_msg_check() tells why bytes were refused. What parses can be encoded again, but for two things: an initial
 * chunk of the format "empty" whose later chunks have a payload, and more than 2^31 - 1 bytes.
 * @param data    the bytes; null is refused
 * @param offset  where the message starts, counted from `data`; must be below `length`
 * @param length  bytes of the message, counted from `data` + `offset`; not 0
 * @return a new message; null when the bytes are not a message, or when memory runs out
 */
NFC_NDEF_API nfc_ndef_msg *nfc_ndef_msg_create_by_msg_offset(const uint8_t *data, uint32_t offset, uint32_t length);

/** Why bytes are not an NDEF message. */
typedef enum nfc_ndef_msg_reason {
    NFC_NDEF_MSG_VALID = 0,                     /**< They are one. */
    NFC_NDEF_MSG_BAD_ARGUMENTS = 1,             /**< Null data, no length, or an offset that is not below the length. */
    NFC_NDEF_MSG_HEADER_CUT_SHORT = 2,          /**< The bytes end within a record header. */
    NFC_NDEF_MSG_TYPE_PAST_END = 3,             /**< A type runs past the end. */
    NFC_NDEF_MSG_ID_PAST_END = 4,               /**< An id runs past the end. */
    NFC_NDEF_MSG_PAYLOAD_PAST_END = 5,          /**< A payload runs past the end. */
    NFC_NDEF_MSG_EMPTY_WITH_LENGTHS = 6,        /**< An empty record has a type, an id or a payload. */
    NFC_NDEF_MSG_TYPE_NOT_ALLOWED = 7,          /**< An unknown or reserved record has a type. */
    NFC_NDEF_MSG_BYTES_LEFT_OVER = 8,           /**< What follows the last record is not a record. Behind a leading "Gc"
                                                     record none is the last, and the reason is what is wrong there. */
    NFC_NDEF_MSG_TOO_MANY_RECORDS = 9,          /**< More than #NFC_NDEF_MSG_MOST_RECORDS records. */
    NFC_NDEF_MSG_MB_MISSING = 10,               /**< A record that must carry MB does not. */
    NFC_NDEF_MSG_MB_REPEATED = 11,              /**< A record after the first carries MB. */
    NFC_NDEF_MSG_ME_MISSING = 12,               /**< A record that must carry ME does not. */
    NFC_NDEF_MSG_ME_EARLY = 13,                 /**< A record before the last carries ME. */
    NFC_NDEF_MSG_CHUNK_WITH_ME = 14,            /**< A chunk that others must follow carries ME. */
    NFC_NDEF_MSG_CHUNK_FIRST_UNCHANGED = 15,    /**< An initial chunk has the format "unchanged". */
    NFC_NDEF_MSG_CHUNK_WITH_ID = 16,            /**< A middle or terminating chunk has an id length. */
    NFC_NDEF_MSG_CHUNK_WITH_TYPE = 17,          /**< A middle or terminating chunk has a type. */
    NFC_NDEF_MSG_CHUNK_NOT_UNCHANGED = 18,      /**< A middle or terminating chunk has a format of its own. */
    NFC_NDEF_MSG_UNCHANGED_OUTSIDE_CHUNKS = 19, /**< A record with the format "unchanged" continues no chunk. */
    NFC_NDEF_MSG_CHUNK_UNFINISHED = 20,         /**< The bytes end before the terminating chunk. */
    NFC_NDEF_MSG_OUT_OF_MEMORY = 21 /**< For callers whose parse of valid bytes failed; nfc_ndef_msg_check() needs no
                                         memory and never gives it. */
} nfc_ndef_msg_reason;

/** What nfc_ndef_msg_check() found. */
typedef struct nfc_ndef_msg_report {
    uint32_t reason; /**< An #nfc_ndef_msg_reason. */
    uint32_t record; /**< The record that broke the rule, counted from 0, chunks singly; of a valid message, the number
                          of its records, chunks joined. */
    uint32_t offset; /**< Where the rule broke, counted from the message's first byte: the field that runs past the end,
                        the bytes left over, or the header of the record that breaks any other rule; of a valid message,
                          its length. */
} nfc_ndef_msg_report;

/**
 * Tells why nfc_ndef_msg_create_by_msg_offset() refuses bytes, or that it accepts them. An addition of this library; it
 * allocates nothing.
 * @param data    as for nfc_ndef_msg_create_by_msg_offset()
 * @param offset  as for nfc_ndef_msg_create_by_msg_offset()
 * @param length  as for nfc_ndef_msg_create_by_msg_offset()
 * @param report  out: the first rule that broke, in the order of the bytes; may be null
 * @return 1 for a valid message, else 0
 */
NFC_NDEF_API uint8_t nfc_ndef_msg_check(const uint8_t *data, uint32_t offset, uint32_t length,
                                        nfc_ndef_msg_report *report);

/**
 * Gives the text of a reason, in English and without a full stop.
 * @param reason  an #nfc_ndef_msg_reason
 * @return a constant string; "unknown reason" for any other value
 */
NFC_NDEF_API const char *nfc_ndef_msg_check_text(uint32_t reason);
/** @} */

/**
 * @addtogroup write_tag
 * @{
 * The everyday record types. None of the builders sets `mb`, `me` or `cf`; encoding a message sets them.
 */

/**
 * Builds a Text record, "T" (NFC Forum Text RTD 1.0). The text is neither checked nor converted.
 * @param utf16                 0 for UTF-8, 1 for UTF-16; only the lowest bit counts
 * @param language_code_length  1 to 63
 * @param language_code         language code, such as "en"; required
 * @param text                  the text; required
 * @param text_length           bytes in `text`; not 0
 * @return a new record; null for bad arguments, or when memory runs out
 */
NFC_NDEF_API nfc_ndef_record *rtdlib_text_record_create(uint8_t utf16, uint8_t language_code_length,
                                                        const uint8_t *language_code, const uint8_t *text,
                                                        uint32_t text_length);

/**
 * Builds a URI record, "U" (NFC Forum URI RTD 1.0).
 * @param identifier_code   code of the prefix that the field goes without; not checked
 * @param uri_field_length  bytes in `uri_field`; 0 to 2^32 - 2
 * @param uri_field         rest of the URI, no byte below 0x20; null when empty
 * @return a new record; null for bad arguments, or when memory runs out
 */
NFC_NDEF_API nfc_ndef_record *rtdlib_uri_record_create(uint8_t identifier_code, uint32_t uri_field_length,
                                                       const uint8_t *uri_field);

/**
 * Builds a Smart Poster record, "Sp" (NFC Forum Smart Poster RTD 1.0), from copies of other records. Null entries of
 * the arrays are skipped; an array may be null.
 * @param title_count    slots in `titles`
 * @param titles         Text records
 * @param uri_record     the URI record; required
 * @param action         byte for the action record, which is always written
 * @param icon_count     slots in `icons`
 * @param icons          media records
 * @param size_record    size record, or null
 * @param type_record    type record, or null
 * @param other_count    slots in `other_records`
 * @param other_records  further records
 * @return a new record; null for a null `uri_record`, a record that cannot be encoded, more than 255 records in all, or
 *         when memory runs out
 */
NFC_NDEF_API nfc_ndef_record *rtdlib_smart_poster_record_create(uint8_t title_count, nfc_ndef_record *const *titles,
                                                                const nfc_ndef_record *uri_record, uint8_t action,
                                                                uint8_t icon_count, nfc_ndef_record *const *icons,
                                                                const nfc_ndef_record *size_record,
                                                                const nfc_ndef_record *type_record, uint8_t other_count,
                                                                nfc_ndef_record *const *other_records);
/** @} */

/**
 * @addtogroup read_tag
 * @{
 * None of the extractors looks at the record's type: find the record first, then read it.
 */

/**
 * Reads a Text record (NFC Forum Text RTD 1.0). No output may be null.
 * @param record                borrowed
 * @param utf16                 out: 0 for UTF-8, 1 for UTF-16
 * @param language_code_length  out: 0 to 63
 * @param language_code         out: new block; not written when the length is 0, null when memory runs out
 * @param text_length           out: bytes in the text, at least 1
 * @param text                  out: new block; null when memory runs out
 * @return 1; -1 for a null record or one without payload (nothing written), or when no text follows the language code
 *         (`utf16` and `language_code_length` written)
 */
NFC_NDEF_API int8_t rtdlib_text_record_extract(const nfc_ndef_record *record, uint8_t *utf16,
                                               uint8_t *language_code_length, uint8_t **language_code,
                                               uint32_t *text_length, uint8_t **text);

/**
 * Reads a URI record (NFC Forum URI RTD 1.0). No output may be null.
 * @param record            borrowed
 * @param identifier_code   out: code of the prefix, any value
 * @param uri_field         out: new block, the URI without its prefix; null when empty or when memory runs out
 * @param uri_field_length  out: bytes in the field
 * @return 1; -1 for a null record or one without payload (nothing written), or for a byte below 0x20 in the field
 *         (`identifier_code` written, the field null with length 0)
 */
NFC_NDEF_API int8_t rtdlib_uri_record_extract(const nfc_ndef_record *record, uint8_t *identifier_code,
                                              uint8_t **uri_field, uint32_t *uri_field_length);

/**
 * Reads a Smart Poster record (NFC Forum Smart Poster RTD 1.0) into copies of its parts. No output may be null. Arrays
 * are new blocks of `_count` records each.
 * @param record         borrowed
 * @param title_count    out: number of titles, 0 when there are none
 * @param titles         out: Text records; not written when there are none
 * @param uri_record     out: the one URI record
 * @param action         out: the first action record's byte; 255 when there is none
 * @param icon_count     out: number of icons; not written when there are none
 * @param icons          out: media records, first images, then videos; not written when there are none
 * @param size_record    out: the first size record; not written when there is none
 * @param type_record    out: the first type record; not written when there is none
 * @param other_count    out: number of other records
 * @param other_records  out: all other records; not written when there are none
 * @return 1; -1 for a null record, a payload that is no message, or not exactly one URI record (nothing written), for a
 *         size record not of 4 bytes, an action record not of 1 byte, or when memory runs out (outputs of the earlier
 *         steps, in the order URI, titles, type, size, action, icons, others, stay written and are the caller's)
 */
NFC_NDEF_API int8_t rtdlib_smart_poster_record_extract(const nfc_ndef_record *record, uint8_t *title_count,
                                                       nfc_ndef_record ***titles, nfc_ndef_record **uri_record,
                                                       uint32_t *action, uint8_t *icon_count, nfc_ndef_record ***icons,
                                                       nfc_ndef_record **size_record, nfc_ndef_record **type_record,
                                                       uint8_t *other_count, nfc_ndef_record ***other_records);
/** @} */

/**
 * @addtogroup control
 * @{
 */

/**
 * Builds a Generic Control record, "Gc" (NFC Forum Generic Control RTD 1.0), from copies of other records.
 * @param config         configuration byte
 * @param target_record  target record, "t"; required
 * @param action_flag    not 0: the action is `action_code`; 0: it is `action_record`
 * @param action_code    action code
 * @param action_record  record that describes the action, or null; one that cannot be encoded is left out like null
 * @param data_record    data record, "d", or null
 * @param gc_count       number of nested records
 * @param gc_records     nested Generic Control records, written from the last to the first; no null entry
 * @return a new record with `mb`, `me` and `sr` 1; null for a null target or entry, a count with a null array, a
 * target, data or nested record that cannot be encoded, more than 255 records in all, or when memory runs out
 */
NFC_NDEF_API nfc_ndef_record *rtdlib_generic_control_record_create(uint8_t config, const nfc_ndef_record *target_record,
                                                                   uint8_t action_flag, uint8_t action_code,
                                                                   const nfc_ndef_record *action_record,
                                                                   const nfc_ndef_record *data_record, uint8_t gc_count,
                                                                   nfc_ndef_record *const *gc_records);

/**
 * Reads a Generic Control record (NFC Forum Generic Control RTD 1.0) into copies of its parts. No output may be null,
 * and `target_record` and `action_record` must hold null: they are freed on some failures.
 * @param record         borrowed
 * @param config         out: configuration byte
 * @param target_record  out: the one "t" record
 * @param action_flag    out: first byte of the "a" record; not written when there is none
 * @param action_code    out: action code; written when the flag is not 0
 * @param action_record  out: record that describes the action; written when the flag is 0, null when it does not decode
 * @param data_record    out: the "d" record; not written when there is none
 * @param gc_count       out: number of nested "Gc" records
 * @param gc_records     out: new array of them, in message order; not written when there are none
 * @return 1; -1 for a null record or a payload without a nested message (nothing written), not exactly one "t" record
 *         (`config` written), several or malformed "a" records (also, `target_record` null), several "d" records (the
 *         action's outputs written too, `target_record` and `action_record` null), or when memory runs out (outputs of
 *         the earlier steps stay written and are the caller's)
 */
NFC_NDEF_API int8_t rtdlib_generic_control_record_extract(const nfc_ndef_record *record, uint32_t *config,
                                                          nfc_ndef_record **target_record, uint8_t *action_flag,
                                                          uint32_t *action_code, nfc_ndef_record **action_record,
                                                          nfc_ndef_record **data_record, uint8_t *gc_count,
                                                          nfc_ndef_record ***gc_records);
/** @} */

/**
 * @addtogroup handover
 * @{
 * The records of NFC Forum Connection Handover 1.2. A version byte holds the major version in bits 4 to 7 and the minor
 * version in bits 0 to 3.
 */

/**
 * Builds a Handover Request record, "Hr" (NFC Forum Connection Handover 1.2), from copies of other records.
 * @param cr_record   Collision Resolution record; required with version 0x12, null with 0x10
 * @param ac_count    slots in `ac_records`
 * @param ac_records  Alternative Carrier records, null entries are skipped; null exactly when the count is 0
 * @param version     0x10 or 0x12
 * @return a new record; null for bad arguments, nothing to nest, a record that cannot be encoded, or when memory runs
 *         out
 */
NFC_NDEF_API nfc_ndef_record *rtdlib_handover_request_record_create(const nfc_ndef_record *cr_record, uint8_t ac_count,
                                                                    nfc_ndef_record *const *ac_records,
                                                                    uint8_t version);

/**
 * Reads a Handover Request record (NFC Forum Connection Handover 1.2) into copies of its parts.
 * @param record      borrowed
 * @param cr_record   out: the Collision Resolution record of minor version 2, else null
 * @param ac_count    out: number of Alternative Carrier records
 * @param ac_records  out: new array of them, not written when there are none; must hold null on entry
 * @param version     out: version byte
 * @return 1; 2 when minor version 2 has no or several Collision Resolution records (`version` written); -1 for a null
 *         argument, `ac_records` not null or no payload (nothing written), a major version other than 1 or a payload
 *         without a nested message (`version` written), or when memory runs out
 */
NFC_NDEF_API int8_t rtdlib_handover_request_record_extract(const nfc_ndef_record *record, nfc_ndef_record **cr_record,
                                                           uint8_t *ac_count, nfc_ndef_record ***ac_records,
                                                           uint8_t *version);

/**
 * Builds a Handover Select record, "Hs" (NFC Forum Connection Handover 1.2), from copies of other records.
 * @param ac_count    slots in `ac_records`
 * @param ac_records  Alternative Carrier records, null entries are skipped; null exactly when the count is 0
 * @param err_record  Handover Select Error record, or null; null with version 0x10
 * @param version     0x10 or 0x12
 * @return a new record; null for bad arguments, nothing to nest, a record that cannot be encoded, or when memory runs
 *         out
 */
NFC_NDEF_API nfc_ndef_record *rtdlib_handover_select_record_create(uint8_t ac_count, nfc_ndef_record *const *ac_records,
                                                                   const nfc_ndef_record *err_record, uint8_t version);

/**
 * Reads a Handover Select record (NFC Forum Connection Handover 1.2) into copies of its parts.
 * @param record      borrowed; a payload of the version byte alone is accepted when its `mb` and `me` are 1
 * @param ac_count    out: number of Alternative Carrier records
 * @param ac_records  out: new array of them, not written when there are none; must hold null on entry
 * @param err_record  out: the error record of minor version 2; null when there are several, not written when none
 * @param version     out: version byte
 * @return 1; 2 when minor version 2 has several error records (the outputs of success written); -1 for a null argument,
 *         `ac_records` not null or no payload (nothing written), a major version other than 1 or a payload without
 *         a nested message (`version` written), or when memory runs out
 */
NFC_NDEF_API int8_t rtdlib_handover_select_record_extract(const nfc_ndef_record *record, uint8_t *ac_count,
                                                          nfc_ndef_record ***ac_records, nfc_ndef_record **err_record,
                                                          uint8_t *version);

/**
 * Builds a Handover Carrier record, "Hc" (NFC Forum Connection Handover 1.2).
 * @param ctf                  carrier type format, an NFC_NDEF_TNF_ value; its low byte is stored
 * @param carrier_type_length  bytes in `carrier_type`
 * @param carrier_type         carrier type; never null, even when the length is 0
 * @param carrier_data_length  bytes in `carrier_data`
 * @param carrier_data         carrier data; null with a length gives zeros, not read when the length is 0
 * @return a new record with `mb`, `me` and `sr` 1; null for a null `carrier_type`, or when memory runs out
 */
NFC_NDEF_API nfc_ndef_record *rtdlib_handover_carrier_record_create(uint32_t ctf, uint8_t carrier_type_length,
                                                                    const uint8_t *carrier_type,
                                                                    uint8_t carrier_data_length,
                                                                    const uint8_t *carrier_data);

/**
 * Reads a Handover Carrier record (NFC Forum Connection Handover 1.2). No output may be null.
 * @param record               borrowed
 * @param ctf                  out: carrier type format, 0 to 7
 * @param carrier_type_length  out: bytes in the carrier type
 * @param carrier_type         out: new block, even when the length is 0
 * @param carrier_data_length  out: bytes in the carrier data; not written when there is none
 * @param carrier_data         out: new block; not written when there is none
 * @return 1; -1 for a null record or a payload that is missing, too short or too long (nothing written), or when memory
 *         runs out (`carrier_type` null with length 0)
 */
NFC_NDEF_API int8_t rtdlib_handover_carrier_record_extract(const nfc_ndef_record *record, uint32_t *ctf,
                                                           uint8_t *carrier_type_length, uint8_t **carrier_type,
                                                           uint8_t *carrier_data_length, uint8_t **carrier_data);

/**
 * Builds an Alternative Carrier record, "ac" (NFC Forum Connection Handover 1.2). Reference characters are not checked.
 * @param cps                      carrier power state (0 inactive, 1 active, 2 activating, 3 unknown); low byte stored
 * @param carrier_data_ref_length  bytes in `carrier_data_ref`
 * @param carrier_data_ref         id of the record that configures the carrier; null only when the length is 0
 * @param aux_data_ref_count       number of auxiliary references
 * @param aux_data_ref_lengths     length of each; null only when the count is 0
 * @param aux_data_refs            ids of auxiliary records; null only when the count is 0, an entry only when its
 *                                 length is
 * @return a new record with `mb`, `me` and `sr` 1; null for bad arguments, a payload over 255 bytes, or when memory
 *         runs out
 */
NFC_NDEF_API nfc_ndef_record *rtdlib_alternative_carrier_record_create(uint32_t cps, uint8_t carrier_data_ref_length,
                                                                       const uint8_t *carrier_data_ref,
                                                                       uint8_t aux_data_ref_count,
                                                                       const uint8_t *aux_data_ref_lengths,
                                                                       const uint8_t *const *aux_data_refs);

/**
 * Reads an Alternative Carrier record (NFC Forum Connection Handover 1.2). No output may be null.
 * @param record                   borrowed
 * @param cps                      out: carrier power state, 0 to 3
 * @param carrier_data_ref_length  out: bytes in the reference
 * @param carrier_data_ref         out: new block; null when the length is 0
 * @param aux_data_ref_count       out: number of auxiliary references
 * @param aux_data_ref_lengths     out: new block with the length of each; not written when there are none
 * @param aux_data_refs            out: new array of new blocks, an entry is null when its length is 0; not written when
 *                                 there are none
 * @return 1; -1 for a null record or a payload that is missing or shorter than its fields say (nothing written), a
 *         character not allowed in the reference (`cps` and `carrier_data_ref_length` written, the reference null), or
 *         when memory runs out (all blocks of this call freed and null, the count 0)
 */
NFC_NDEF_API int8_t rtdlib_alternative_carrier_record_extract(const nfc_ndef_record *record, uint32_t *cps,
                                                              uint8_t *carrier_data_ref_length,
                                                              uint8_t **carrier_data_ref, uint8_t *aux_data_ref_count,
                                                              uint8_t **aux_data_ref_lengths, uint8_t ***aux_data_refs);

/**
 * Builds a Collision Resolution record, "cr" (NFC Forum Connection Handover 1.2).
 * @param random_number  the random number
 * @return a new record; null when memory runs out
 */
NFC_NDEF_API nfc_ndef_record *rtdlib_collision_resolution_record_create(uint16_t random_number);

/**
 * Reads a Collision Resolution record (NFC Forum Connection Handover 1.2).
 * @param record         borrowed
 * @param random_number  out: the random number
 * @return 1; -1 for a null argument or a payload not of 2 bytes (nothing written)
 */
NFC_NDEF_API int8_t rtdlib_collision_resolution_record_extract(const nfc_ndef_record *record, uint16_t *random_number);

/**
 * Builds a Handover Select Error record, "err" (NFC Forum Connection Handover 1.2).
 * @param error_reason  reason; its low byte is stored
 * @param error_data    data; its low byte is stored
 * @return a new record; null when memory runs out
 */
NFC_NDEF_API nfc_ndef_record *rtdlib_handover_select_error_record_create(uint32_t error_reason, uint32_t error_data);

/**
 * Reads a Handover Select Error record (NFC Forum Connection Handover 1.2).
 * @param record        borrowed
 * @param error_reason  out: reason
 * @param error_data    out: data
 * @return 1; -1 for a null argument, 2 for a payload not of 2 bytes (nothing written)
 */
NFC_NDEF_API int8_t rtdlib_handover_select_error_record_extract(const nfc_ndef_record *record, uint8_t *error_reason,
                                                                uint8_t *error_data);
/** @} */

/**
 * @addtogroup bluetooth
 * @{
 */

/**
 * The fields of a Bluetooth 2.1 out-of-band record (Bluetooth Core, Supplement, Part A; NFC Forum Bluetooth Secure
 * Simple Pairing Using NFC). Addresses, classes and UUIDs are in payload byte order.
 */
typedef struct nfc_ndef_bt_rtd_2_1_str {
    uint8_t device_address[6];          /**< Device address. */
    uint8_t class_of_device[3];         /**< Class of Device. */
    uint8_t local_name_length;          /**< Bytes in `local_name`, 0 to 254. */
    uint8_t *local_name;                /**< Local name. */
    uint8_t hash_c_length;              /**< 0 or 16. */
    uint8_t *hash_c;                    /**< Simple Pairing Hash C. */
    uint8_t randomizer_r_length;        /**< 0 or 16. */
    uint8_t *randomizer_r;              /**< Simple Pairing Randomizer R; only with a Hash C. */
    uint8_t uuid16_list_length;         /**< Bytes in `uuid16_list`, a multiple of 2. */
    uint8_t *uuid16_list;               /**< 16-bit service class UUIDs. */
    uint8_t uuid32_list_length;         /**< Bytes in `uuid32_list`, a multiple of 4. */
    uint8_t *uuid32_list;               /**< 32-bit service class UUIDs. */
    uint8_t uuid128_list_length;        /**< Bytes in `uuid128_list`, a multiple of 16. */
    uint8_t *uuid128_list;              /**< 128-bit service class UUIDs. */
    uint8_t manufacturer_data_count;    /**< Number of manufacturer-specific entries. */
    uint8_t manufacturer_id_length;     /**< 2 when there are entries, else 0. */
    uint8_t **manufacturer_ids;         /**< Company identifier of each entry, 2 bytes. */
    uint8_t *manufacturer_data_lengths; /**< Bytes of data of each entry, 0 to 252. */
    uint8_t **manufacturer_data;        /**< Data of each entry; null when its length is 0. */
} nfc_ndef_bt_rtd_2_1_str;

/**
 * Builds a Bluetooth 2.1 out-of-band record, "application/vnd.bluetooth.ep.oob" (NFC Forum Bluetooth Secure Simple
 * Pairing Using NFC; Bluetooth Core, Supplement, Part A).
 * @param fields             borrowed; required
 * @param local_name_type    8 (shortened) or 9 (complete), even without a name
 * @param uuid16_list_type   2 (incomplete) or 3 (complete) with a 16-bit list, else 0
 * @param uuid32_list_type   4 (incomplete) or 5 (complete) with a 32-bit list, else 0
 * @param uuid128_list_type  6 (incomplete) or 7 (complete) with a 128-bit list, else 0
 * @param id                 record id, or null
 * @param id_length          bytes in `id`
 * @param id_present         1 with an id, 0 without
 * @return a new record; null for bad arguments, a name of 255 bytes, an entry of more than 252 bytes of data, a payload
 *         over 65535 bytes, or when memory runs out
 */
NFC_NDEF_API nfc_ndef_record *rtdlib_bt_2_1_configuration_data_record_create(
    const nfc_ndef_bt_rtd_2_1_str *fields, uint8_t local_name_type, uint8_t uuid16_list_type, uint8_t uuid32_list_type,
    uint8_t uuid128_list_type, const uint8_t *id, uint8_t id_length, uint8_t id_present);

/**
 * Reads a Bluetooth 2.1 out-of-band record (NFC Forum Bluetooth Secure Simple Pairing Using NFC; Bluetooth Core,
 * Supplement, Part A).
 * @param record  borrowed
 * @param fields  out: new structure, the caller's whatever the result (freed with nfc_ndef_bt_rtd_2_1_str_delete());
 *                must hold null on entry
 * @return 1; -1 for a null argument or `fields` not null (nothing written); 2 for fewer than 8 bytes, a UUID list of a
 *         wrong length, or a Randomizer R without a Hash C; 0 for a structure that runs past the end or has a wrong
 *         length, a second Class of Device, key, name or list of one width, more than 255 manufacturer entries, or when
 *         memory runs out. After any result but 1 the structure holds what was read so far, and a length or count may
 *         stand beside a null pointer: only free it
 */
NFC_NDEF_API int8_t rtdlib_bt_2_1_configuration_data_record_extract(const nfc_ndef_record *record,
                                                                    nfc_ndef_bt_rtd_2_1_str **fields);

/**
 * Frees a structure with all that it owns, with g_free() (see @ref memory), and sets the caller's pointer to null.
 * @param fields  address of the pointer; a null address or pointer is ignored
 */
NFC_NDEF_API void nfc_ndef_bt_rtd_2_1_str_delete(nfc_ndef_bt_rtd_2_1_str **fields);
/** @} */

/**
 * @addtogroup vendor
 * @{
 */

/** The fields of a legacy Bluetooth configuration record. */
typedef struct nfc_ndef_bt_rtd_2_0_str {
    uint8_t device_address[6];  /**< Device address; the payload holds it last byte first. */
    uint8_t class_of_device[3]; /**< Class of Device; the payload holds it last byte first. */
    uint8_t pairing_type; /**< 0x00, 0x01, 0x02 or 0x20: 16 bytes of pairing data; 0x10: none; 0x21 to 0x2F: as many
                               as the low four bits say. */
    uint8_t pairing_data_length; /**< Bytes in `pairing_data`, 0 to 16. */
    uint8_t *pairing_data;       /**< Pairing data. */
    uint8_t local_name_length;   /**< Bytes in `local_name`, 0 to 248. */
    uint8_t *local_name;         /**< Device name. */
} nfc_ndef_bt_rtd_2_0_str;

/**
 * Builds a legacy Bluetooth configuration record, an external type of the vendor's domain and ":bt".
 * @param fields      borrowed; required
 * @param id          record id, or null
 * @param id_length   bytes in `id`
 * @param id_present  1 with an id, 0 without
 * @return a new record; null for bad arguments, or when memory runs out
 */
NFC_NDEF_API nfc_ndef_record *rtdlib_bt_configuration_data_record_create(const nfc_ndef_bt_rtd_2_0_str *fields,
                                                                         const uint8_t *id, uint8_t id_length,
                                                                         uint8_t id_present);

/**
 * Reads a legacy Bluetooth configuration record.
 * @param record  borrowed
 * @param fields  out: new structure, the caller's whatever the result (freed with nfc_ndef_bt_rtd_2_0_str_delete());
 *                must hold null on entry
 * @return 1; -1 for a null argument or `fields` not null (nothing written), or no payload (an empty structure); 2 for
 * an unknown pairing type; 0 for a payload too short, a name over 248 bytes, or when memory runs out. After any result
 * but 1 the structure holds what was read so far, and a length may stand beside a null pointer: only free it
 */
NFC_NDEF_API int8_t rtdlib_bt_configuration_data_record_extract(const nfc_ndef_record *record,
                                                                nfc_ndef_bt_rtd_2_0_str **fields);

/**
 * Frees a structure with all that it owns, with g_free() (see @ref memory), and sets the caller's pointer to null.
 * @param fields  address of the pointer; a null address or pointer is ignored
 */
NFC_NDEF_API void nfc_ndef_bt_rtd_2_0_str_delete(nfc_ndef_bt_rtd_2_0_str **fields);

/**
 * Builds a Sharing Enquiry record, an external type of the vendor's domain and ":she".
 * @param enquiry_type         carried unchanged
 * @param enquiry_data_length  bytes in `enquiry_data`
 * @param enquiry_data         data, or null
 * @param version              version byte; its major version must be 1 or its minor version 0
 * @return a new record; null for bad arguments, or when memory runs out
 */
NFC_NDEF_API nfc_ndef_record *rtdlib_sharing_enquiry_record_create(uint8_t enquiry_type, uint8_t enquiry_data_length,
                                                                   const uint8_t *enquiry_data, uint8_t version);

/**
 * Reads a Sharing Enquiry record.
 * @param record               borrowed
 * @param enquiry_type         out: enquiry type
 * @param enquiry_data_length  out: bytes in the data
 * @param enquiry_data         out: new block, null when the length is 0; must hold null on entry
 * @param version              out, never null: version byte
 * @return 1; -1 for a null argument, `enquiry_data` not null or no payload (nothing written), a version refused
 *         (`version` written), or when memory runs out (`enquiry_data` null with length 0); 2 for a payload of 1 or 2
 *         bytes (nothing written), or a length that does not fit the payload (all but `enquiry_data` written)
 */
NFC_NDEF_API int8_t rtdlib_sharing_enquiry_record_extract(const nfc_ndef_record *record, uint8_t *enquiry_type,
                                                          uint8_t *enquiry_data_length, uint8_t **enquiry_data,
                                                          uint8_t *version);
/** @} */

#ifdef __cplusplus
}
#endif

#endif
