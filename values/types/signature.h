// A Signature record (NFC Forum Signature RTD 2.0).
#pragma once

#include "../kind.h"

namespace nfc_ndef::values {

struct Signature {
    uint8_t version = 0x20;
    uint8_t signature_type = 0;
    uint8_t hash_type = 0;
    Bytes signature;
    std::optional<std::string> signature_uri; // in place of the signature
    uint8_t certificate_format = 0;
    std::vector<Bytes> certificates;
    std::string certificate_uri; // empty when there is none
    bool operator==(const Signature &) const = default;
};

inline constexpr Name signature_types[] = {{0, "none"},
                                           {1, "rsassa-pss-1024", "RSASSA-PSS 1024"},
                                           {2, "rsassa-pkcs1-v1_5-1024", "RSASSA-PKCS1-v1_5 1024"},
                                           {3, "dsa-1024", "DSA 1024"},
                                           {4, "ecdsa-p192", "ECDSA P-192"},
                                           {5, "rsassa-pss-2048", "RSASSA-PSS 2048"},
                                           {6, "rsassa-pkcs1-v1_5-2048", "RSASSA-PKCS1-v1_5 2048"},
                                           {7, "dsa-2048", "DSA 2048"},
                                           {8, "ecdsa-p224", "ECDSA P-224"},
                                           {9, "ecdsa-k233", "ECDSA K-233"},
                                           {10, "ecdsa-b233", "ECDSA B-233"},
                                           {11, "ecdsa-p256", "ECDSA P-256"}};
inline constexpr Name hash_types[] = {{2, "sha-256", "SHA-256"}};
inline constexpr Name certificate_formats[] = {{0, "x.509", "X.509"}, {1, "m2m", "M2M"}};

template <> struct Kind<Signature> : Leaf {
    static constexpr Type type = well_known("Sig");
    static constexpr std::string_view json = "signature", title = "Signature";
    static std::optional<Signature> read(const nfc_ndef_record_view &record, const Nesting &nesting,
                                         nfc_ndef_payload_report &report);
    static nfc_ndef::Record make(const Signature &signature);
    static void show(const Signature &signature, View &view);

    template <class Fields> static void map(Fields &fields, Value<Fields, Signature> &signature)
    {
        constexpr Sizes of_a_field{0, 65535};
        fields.version("version", signature.version);
        fields.makes("version", {"2.0"});
        fields.enumeration("signature_type", signature.signature_type, signature_types);
        fields.require(signature.signature_type <= 127, "signature_type", "must be at most 127");
        fields.enumeration("hash_type", signature.hash_type, hash_types);
        fields.bytes("signature", signature.signature, of_a_field);
        fields.text_or_hex("signature_uri", signature.signature_uri, {1, 65535});
        fields.require(!signature.signature_uri || signature.signature.empty(), "signature_uri",
                       "must not be there along with signature");
        fields.enumeration("certificate_format", signature.certificate_format, certificate_formats);
        fields.require(signature.certificate_format <= 7, "certificate_format", "must be at most 7");
        fields.byte_strings("certificates", signature.certificates, of_a_field, at_most(15));
        fields.text_or_hex("certificate_uri", signature.certificate_uri, of_a_field);
    }
};

} // namespace nfc_ndef::values
