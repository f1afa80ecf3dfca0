// Messages inside the library: owning them, walking them, adding to them.
#pragma once

#include "host/check.h"
#include "host/list.h"
#include "record/record.h"

namespace ndef {

constexpr uint32_t most_records = 255; // positions and counts are 8 bits wide

struct MessageDelete {
    void operator()(nfc_ndef_msg *message) const noexcept { nfc_ndef_msg_delete(&message); }
};
using MessagePtr = std::unique_ptr<nfc_ndef_msg, MessageDelete>;

inline nfc_ndef_record *record_at(const ctlDListNode *node) { return static_cast<nfc_ndef_record *>(node->member); }

// The records of a list, in order.
class Records {
public:
    class Iterator {
    public:
        explicit Iterator(const ctlDListNode *node) : node_(node) {}
        nfc_ndef_record &operator*() const { return *record_at(node_); }
        Iterator &operator++()
        {
            node_ = node_->next;
            return *this;
        }
        bool operator==(const Iterator &) const = default;

    private:
        const ctlDListNode *node_;
    };

    explicit Records(const ctlDList &list) : list_(list) {}
    Iterator begin() const { return Iterator{list_.first}; }
    Iterator end() const { return Iterator{nullptr}; }
    size_t size() const { return list_.count; }

private:
    const ctlDList &list_;
};

// A message without a list is fatal, in the name of the operation that asks.
inline void require_records(const nfc_ndef_msg *ndef_msg, const char *operation = __builtin_FUNCTION(),
                            unsigned line = __builtin_LINE())
{
    require(ndef_msg->records != nullptr, "((void *)0) != ndef_msg->records", operation, line);
}

// Adds a record at the end; false when there is none, or no memory for the list's part.
inline bool push_record(nfc_ndef_msg &message, RecordPtr record)
{
    if (!record || !ctlDListPushEnd(message.records, record.get()))
        return false;
    record.release();
    return true;
}

} // namespace ndef
