#include "fuzz.h"

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <unordered_map>

namespace fuzz {
namespace {

std::unordered_map<void *, size_t> live;
size_t live_bytes = 0, peak_bytes = 0, asked = 0;
size_t failing = 0; // in terms of `asked`; 0 when none is to fail
bool failed = false;

// Garbage in fresh blocks shows code that counts on zeros.
void *allocate(size_t size, int fill)
{
    if (++asked == failing) {
        failed = true;
        return nullptr;
    }
    void *const block = std::malloc(size + (size == 0));
    must(block != nullptr, "the fuzzer has memory");
    std::memset(block, fill, size);
    live.emplace(block, size);
    live_bytes += size;
    peak_bytes = std::max(peak_bytes, live_bytes);
    return block;
}

bool release(void *block)
{
    const auto found = live.find(block);
    if (found == live.end())
        return false;
    live_bytes -= found->second;
    live.erase(found);
    std::free(block);
    return true;
}

Bytes encoded_by(auto encode, const auto &object)
{
    nfc_ndef::Block<> block;
    const auto length = encode(&object, nfc_ndef::out(block));
    must((length != 0) == (block != nullptr), "an encoder gives a block and its length, or neither");
    return {block.get(), block.get() + length};
}

} // namespace

void must(bool holds, const char *property, const char *file, unsigned line)
{
    if (holds)
        return;
    std::fprintf(stderr, "%s:%u: does not hold: %s\n", file, line, property);
    std::abort();
}

Memory::Memory() : bytes_before(live_bytes), allocations_before(asked) { peak_bytes = live_bytes; }
size_t Memory::peak() const { return peak_bytes - bytes_before; }
size_t Memory::allocations() const { return asked - allocations_before; }

void fail_allocation(size_t n)
{
    failing = asked + n;
    failed = false;
}

bool end_failure()
{
    failing = 0;
    return failed;
}

bool same(const nfc_ndef_record &a, const nfc_ndef_record &b)
{
    return a.record_type.format == b.record_type.format && equal(name_of(a), name_of(b)) && equal(id_of(a), id_of(b)) &&
           equal(payload_of(a), payload_of(b));
}

Bytes encoded(const nfc_ndef_record &record) { return encoded_by(nfc_ndef_record_to_byte_array, record); }
Bytes encoded(const nfc_ndef_msg &message) { return encoded_by(nfc_ndef_msg_to_byte_array, message); }

nfc_ndef::Record make_record(uint32_t format, ByteView name, ByteView id, ByteView payload)
{
    const nfc_ndef::RecordType type{nfc_ndef_record_type_create(format, pointer(name), length8(name))};
    return nfc_ndef::Record{
        nfc_ndef_record_create_from_param(type.get(), pointer(id), length8(id), pointer(payload), length32(payload))};
}

} // namespace fuzz

void *os_block_alloc(size_t size) { return fuzz::allocate(size, 0xA5); }
void *os_block_alloc_and_clear(size_t size) { return fuzz::allocate(size, 0); }
void os_block_dealloc(void *block)
{
    fuzz::must(!block || fuzz::release(block), "what is freed is a live block of the host");
}

// The library frees its Bluetooth structures with this; other callers free GLib's own blocks with it.
extern "C" __attribute__((visibility("default"))) void g_free(void *block)
{
    if (!fuzz::release(block))
        std::free(block);
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    fuzz::run({data, size});
    fuzz::must(fuzz::live.empty(), "nothing is kept after a call");
    return 0;
}
