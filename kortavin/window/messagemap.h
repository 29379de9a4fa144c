#pragma once

#include <span>

#include "kortavin/base/export.h"
#include "kortavin/window/messages.h"

namespace kortavin {

class CWnd;
class CCmdUI;

namespace window {

// One message on its way through a message map.
struct Message {
    UINT message = 0;
    WPARAM wParam = 0;
    LPARAM lParam = 0;
};

// What an entry matches besides the message number.
enum class RouteKind {
    Window,     // a message to the window itself
    Command,    // WM_COMMAND from a control or menu: code and ids
    Notify,     // WM_NOTIFY: code and ids
    Reflected,  // a notification of the control itself, before its parent sees it: code
    Update,     // the state of a command, which a menu asks for: ids
};

using Invoke = LRESULT (*)(CWnd& window, const Message& message);

struct MessageEntry {
    RouteKind kind;
    UINT message;  // of RouteKind::Window
    int code;      // of the other kinds
    int firstId;   // of commands and notifications
    int lastId;
    Invoke invoke;
};

// The messages that a class handles, and the map of its base class, which is asked next.
struct MessageMap {
    const MessageMap* base;
    std::span<const MessageEntry> entries;

    // The first entry that matches, here or further down; null for none. `code` and `id` do not count for
    // window messages, nor `id` for reflected ones.
    KORTAVIN_API const MessageEntry* Find(RouteKind kind, UINT message, int code = 0, int id = 0) const;
};

// Handlers are members; their signatures say how the parameters are handed over. A message's signature stands
// with its number in messages.h.
KORTAVIN_API CWnd* WindowOfParam(std::uintptr_t param);
KORTAVIN_API CDC* DcOfParam(std::uintptr_t param);

template <class C>
LRESULT Call(C& c, void (C::*f)(), const Message&) {
    return (c.*f)(), 0;
}
template <class C>
LRESULT Call(C& c, UINT (C::*f)(), const Message&) {
    return static_cast<LRESULT>((c.*f)());
}
template <class C>
LRESULT Call(C& c, LRESULT (C::*f)(WPARAM, LPARAM), const Message& m) {
    return (c.*f)(m.wParam, m.lParam);
}
template <class C>
LRESULT Call(C& c, void (C::*f)(UINT, CPoint), const Message& m) {
    return (c.*f)(static_cast<UINT>(m.wParam), PointOfParam(m.lParam)), 0;
}
template <class C>
LRESULT Call(C& c, void (C::*f)(UINT, UINT, UINT), const Message& m) {
    return (c.*f)(static_cast<UINT>(m.wParam), LOWORD(m.lParam), HIWORD(m.lParam)), 0;
}
template <class C>
LRESULT Call(C& c, void (C::*f)(UINT, int, int), const Message& m) {
    return (c.*f)(static_cast<UINT>(m.wParam), LOWORD(m.lParam), HIWORD(m.lParam)), 0;
}
template <class C>
LRESULT Call(C& c, void (C::*f)(UINT, UINT, CWnd*), const Message& m) {
    return (c.*f)(LOWORD(m.wParam), HIWORD(m.wParam), WindowOfParam(static_cast<std::uintptr_t>(m.lParam))),
           0;
}
template <class C>
LRESULT Call(C& c, BOOL (C::*f)(UINT, SHORT, CPoint), const Message& m) {
    return (c.*f)(LOWORD(m.wParam), static_cast<SHORT>(HIWORD(m.wParam)), PointOfParam(m.lParam));
}
template <class C>
LRESULT Call(C& c, BOOL (C::*f)(CWnd*, UINT, UINT), const Message& m) {
    return (c.*f)(WindowOfParam(m.wParam), LOWORD(m.lParam), HIWORD(m.lParam));
}
template <class C>
LRESULT Call(C& c, BOOL (C::*f)(CDC*), const Message& m) {
    return (c.*f)(DcOfParam(m.wParam));
}
template <class C>
LRESULT Call(C& c, void (C::*f)(CWnd*), const Message& m) {
    return (c.*f)(m.message == WM_CAPTURECHANGED ? WindowOfParam(static_cast<std::uintptr_t>(m.lParam))
                                                 : WindowOfParam(m.wParam)),
           0;
}
template <class C>
LRESULT Call(C& c, void (C::*f)(UINT_PTR), const Message& m) {
    return (c.*f)(m.wParam), 0;
}
template <class C>
LRESULT Call(C& c, void (C::*f)(BOOL), const Message& m) {
    return (c.*f)(static_cast<BOOL>(m.wParam)), 0;
}
template <class C>
LRESULT Call(C& c, void (C::*f)(NMHDR*, LRESULT*), const Message& m) {
    LRESULT result = 0;
    return (c.*f)(reinterpret_cast<NMHDR*>(m.lParam), &result), result;
}

template <class C>
LRESULT Call(C& c, void (C::*f)(CCmdUI*), const Message& m) {
    return (c.*f)(reinterpret_cast<CCmdUI*>(m.lParam)), 0;
}

template <class Member>
struct ClassOfMember;
template <class C, class Function>
struct ClassOfMember<Function C::*> {
    using Type = C;
};

template <auto member>
LRESULT InvokeMember(CWnd& window, const Message& message) {
    using Class = typename ClassOfMember<decltype(member)>::Type;
    return Call<Class>(static_cast<Class&>(window), member, message);
}

// The entries of a map. For example:
//     static constexpr MessageEntry kEntries[] = {OnMessage<WM_PAINT, &CSwatch::OnPaint>()};
template <UINT message, auto member>
constexpr MessageEntry OnMessage() {
    return {RouteKind::Window, message, 0, 0, 0, &InvokeMember<member>};
}
template <int id, auto member>
constexpr MessageEntry OnCommand() {
    return {RouteKind::Command, WM_COMMAND, 0, id, id, &InvokeMember<member>};
}
template <int code, int id, auto member>
constexpr MessageEntry OnControl() {
    return {RouteKind::Command, WM_COMMAND, code, id, id, &InvokeMember<member>};
}
template <int code, int id, auto member>
constexpr MessageEntry OnNotify() {
    return {RouteKind::Notify, WM_NOTIFY, code, id, id, &InvokeMember<member>};
}
template <int id, auto member>
constexpr MessageEntry OnUpdateCommand() {
    return {RouteKind::Update, 0, 0, id, id, &InvokeMember<member>};
}
template <int code, auto member>
constexpr MessageEntry OnReflected() {
    return {RouteKind::Reflected, WM_COMMAND, code, 0, 0, &InvokeMember<member>};
}

}  // namespace window

}  // namespace kortavin
