#include "host/list.h"

ctlDList *ctlDListCreateConfig(ctlNodeConfig, const ctlMemberConfig *member_config)
{
    auto *list = static_cast<ctlDList *>(os_block_alloc(sizeof(ctlDList)));
    if (list)
        *list = {.first = nullptr, .last = nullptr, .member_config = member_config, .count = 0};
    return list;
}

void ctlDListRemoveAt(ctlDList *list, ctlDListNode **position)
{
    ctlDListNode *const node = *position;
    (node->previous ? node->previous->next : list->first) = node->next;
    (node->next ? node->next->previous : list->last) = node->previous;
    --list->count;
    os_block_dealloc(node);
    *position = nullptr;
}

void ctlDListDestroyFree(ctlDList *list, void (*free_member)(void *member))
{
    for (ctlDListNode *node = list->first; node;) {
        ctlDListNode *const next = node->next;
        free_member(node->member);
        os_block_dealloc(node);
        node = next;
    }
    os_block_dealloc(list);
}
