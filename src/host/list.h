// The host's doubly linked list: as much of it as a message needs.
#pragma once

#include "nfc_ndef.h"

struct ctlDListNode {
    ctlDListNode *next;     // null after the last
    ctlDListNode *previous; // null before the first
    void *member;
};

// The one configuration in use: the list allocates its nodes, and stores member pointers as they are handed to it.
enum ctlNodeConfig { CTL_NODE_CFG_NODE };
struct ctlMemberConfig {};
inline constexpr ctlMemberConfig ctlMemberConfig_NoAlloc{};

struct ctlDList {
    ctlDListNode *first; // null when empty
    ctlDListNode *last;
    const ctlMemberConfig *member_config; // makes the head larger than a node, so that a heap keeps them apart
    uint32_t count;
};

// A new empty list, or null.
ctlDList *ctlDListCreateConfig(ctlNodeConfig node_config, const ctlMemberConfig *member_config);

// Adds a member before a node, or behind the last when the node is null; 0 when no node can be allocated.
inline int ctlDListInsertBefore(ctlDList *list, ctlDListNode *node, void *member)
{
    auto *added = static_cast<ctlDListNode *>(os_block_alloc(sizeof(ctlDListNode)));
    if (!added)
        return 0;
    ctlDListNode *const previous = node ? node->previous : list->last;
    *added = {.next = node, .previous = previous, .member = member};
    (previous ? previous->next : list->first) = added;
    (node ? node->previous : list->last) = added;
    ++list->count;
    return 1;
}

// Adds a member behind the last; 0 when no node can be allocated.
inline int ctlDListPushEnd(ctlDList *list, void *member) { return ctlDListInsertBefore(list, nullptr, member); }

// Removes the node at a position, which becomes null; the member is left alone.
void ctlDListRemoveAt(ctlDList *list, ctlDListNode **position);

// Frees the list and its nodes, and hands each member to the callback.
void ctlDListDestroyFree(ctlDList *list, void (*free_member)(void *member));
