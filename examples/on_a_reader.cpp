// Reads the message of a tag on a reader.
#include <nfc_ndef/tags/pcsc.h>
#include <nfc_ndef/tags/tag.h>

#include <cstdio>

int main()
{
    using namespace nfc_ndef::tags;
    const Service service;
    const std::unique_ptr<Card> card = service.wait_for_card("", std::chrono::seconds(10));
    const std::unique_ptr<Tag> tag = open_tag(*card);
    std::printf("%zu bytes\n", tag->read().size());
}
