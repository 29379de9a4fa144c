#include "kortavin/qt/keys.h"

#include <algorithm>
#include <array>
#include <string>

#include "kortavin/base/codepage.h"
#include "kortavin/qt/text.h"
#include "kortavin/window/keys.h"

namespace kortavin::qt {
namespace {

constexpr UINT kNoKey = 0xE7;

struct NamedKey {
    Qt::Key key;
    UINT virtualKey;
};

// Where several keys have one number, the first stands for it.
constexpr std::array kNamedKeys{
    NamedKey{Qt::Key_Backspace, VK_BACK},  NamedKey{Qt::Key_Tab, VK_TAB},
    NamedKey{Qt::Key_Backtab, VK_TAB},     NamedKey{Qt::Key_Return, VK_RETURN},
    NamedKey{Qt::Key_Enter, VK_RETURN},    NamedKey{Qt::Key_Shift, VK_SHIFT},
    NamedKey{Qt::Key_Control, VK_CONTROL}, NamedKey{Qt::Key_Alt, VK_MENU},
    NamedKey{Qt::Key_Escape, VK_ESCAPE},   NamedKey{Qt::Key_Space, VK_SPACE},
    NamedKey{Qt::Key_PageUp, VK_PRIOR},    NamedKey{Qt::Key_PageDown, VK_NEXT},
    NamedKey{Qt::Key_End, VK_END},         NamedKey{Qt::Key_Home, VK_HOME},
    NamedKey{Qt::Key_Left, VK_LEFT},       NamedKey{Qt::Key_Up, VK_UP},
    NamedKey{Qt::Key_Right, VK_RIGHT},     NamedKey{Qt::Key_Down, VK_DOWN},
    NamedKey{Qt::Key_Insert, VK_INSERT},   NamedKey{Qt::Key_Delete, VK_DELETE},
};

// Letters and digits have the same numbers in both systems.
bool IsLetterOrDigit(UINT key) {
    return (key >= 'A' && key <= 'Z') || (key >= '0' && key <= '9');
}

int KeyOf(UINT virtualKey) {
    const auto found = std::ranges::find(kNamedKeys, virtualKey, &NamedKey::virtualKey);
    if (found != kNamedKeys.end())
        return found->key;
    if (virtualKey >= VK_F1 && virtualKey < VK_F1 + 12)
        return Qt::Key_F1 + static_cast<int>(virtualKey - VK_F1);
    return IsLetterOrDigit(virtualKey) ? static_cast<int>(virtualKey) : Qt::Key_unknown;
}

// A widget inserts the text of a key press; a backspace is a key to it.
std::unique_ptr<QEvent> CharacterEventOf(WPARAM character) {
    if (character == VK_BACK)
        return std::make_unique<QKeyEvent>(QEvent::KeyPress, Qt::Key_Backspace, Qt::NoModifier);
    std::string bytes;
    for (int shift = 24; shift >= 0; shift -= 8)
        if (const auto byte = static_cast<char>(character >> shift); byte != 0 || !bytes.empty())
            bytes += byte;
    return std::make_unique<QKeyEvent>(QEvent::KeyPress, Qt::Key_unknown, Qt::NoModifier, ToQt(bytes));
}

}  // namespace

UINT VirtualKeyOf(const QKeyEvent& event) {
    const auto key = static_cast<UINT>(event.key());
    if (IsLetterOrDigit(key))
        return key;
    if (key >= Qt::Key_F1 && key <= Qt::Key_F12)
        return VK_F1 + (key - Qt::Key_F1);
    const auto found = std::ranges::find(kNamedKeys, static_cast<Qt::Key>(key), &NamedKey::key);
    return found != kNamedKeys.end() ? found->virtualKey : kNoKey;
}

std::vector<WPARAM> CharactersOf(const QString& text) {
    const CString bytes = FromQt(text);
    std::vector<WPARAM> characters;
    for (std::string_view rest = bytes.View(); !rest.empty();) {
        const std::string_view character = rest.substr(0, base::CharacterLength(rest));
        WPARAM value = 0;
        for (const char byte : character)
            value = value << 8 | static_cast<BYTE>(byte);
        characters.push_back(value);
        rest.remove_prefix(character.size());
    }
    return characters;
}

std::unique_ptr<QEvent> KeyEventOf(const window::Message& message) {
    switch (message.message) {
        case WM_KEYDOWN:
            return std::make_unique<QKeyEvent>(QEvent::KeyPress, KeyOf(static_cast<UINT>(message.wParam)),
                                               Qt::NoModifier);
        case WM_KEYUP:
            return std::make_unique<QKeyEvent>(QEvent::KeyRelease, KeyOf(static_cast<UINT>(message.wParam)),
                                               Qt::NoModifier);
        case WM_CHAR:
            return CharacterEventOf(message.wParam);
        default:
            return nullptr;
    }
}

}  // namespace kortavin::qt
