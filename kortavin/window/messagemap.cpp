#include "kortavin/window/messagemap.h"

#include "kortavin/window/wnd.h"

namespace kortavin::window {
namespace {

bool Matches(const MessageEntry& entry, RouteKind kind, UINT message, int code, int id) {
    if (entry.kind != kind)
        return false;
    switch (kind) {
        case RouteKind::Window:
            return entry.message == message;
        case RouteKind::Reflected:
            return entry.code == code;
        default:
            return entry.code == code && entry.firstId <= id && id <= entry.lastId;
    }
}

}  // namespace

const MessageEntry* MessageMap::Find(RouteKind kind, UINT message, int code, int id) const {
    for (const MessageMap* map = this; map != nullptr; map = map->base)
        for (const MessageEntry& entry : map->entries)
            if (Matches(entry, kind, message, code, id))
                return &entry;
    return nullptr;
}

CWnd* WindowOfParam(std::uintptr_t param) {
    return CWnd::FromHandle(reinterpret_cast<WindowRecord*>(param));
}

CDC* DcOfParam(std::uintptr_t param) {
    return reinterpret_cast<CDC*>(param);
}

}  // namespace kortavin::window
