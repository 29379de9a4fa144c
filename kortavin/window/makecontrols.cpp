#include <algorithm>
#include <array>
#include <string_view>

#include "kortavin/base/texts.h"
#include "kortavin/window/dialog.h"
#include "kortavin/window/windowclass.h"
#include "kortavin/window/windowrecord.h"

namespace kortavin::window {
namespace {

WindowKind RequireKind(const char* className) {
    if (const auto kind = KindOfClass(className))
        return *kind;
    CString text;
    text.Format(Text(base::TextId::NoSuchControlClass), className);
    throw CResourceException(text);
}

CString TextOf(const ResourceModule& module, unsigned number) {
    return number != 0 && module.text != nullptr ? CString(module.text(number)) : CString();
}

// The dialog's font is for the toolkit's own controls; what the library paints keeps its own.
void MakeControl(WindowRecord* parent, const ControlTemplate& control, const ResourceModule& module,
                 CSize unit, const CFont& font) {
    const WindowKind kind = RequireKind(control.className);
    const CRect place{CPoint(control.x, control.y), CSize(control.width, control.height)};
    const WindowRequest request{kind,
                                &parent->Native(),
                                control.style | WS_CHILD,
                                PixelsOf(place, unit),
                                TextOf(module, control.text),
                                kind == WindowKind::Plain ? nullptr : &font};
    WindowRecord::Create({kind, parent, nullptr, control.id, request.style}, request);
}

}  // namespace

CFont DialogFont(const DialogTemplate& dialog) {
    const int pixelsPerInch = RequireToolkit().PixelsPerInch().cy;
    LOGFONT description;
    description.lfHeight = -MulDiv(dialog.fontPoints, pixelsPerInch, 72);
    const std::string_view name = dialog.fontName != nullptr ? dialog.fontName : "";
    name.copy(description.lfFaceName.data(), description.lfFaceName.size() - 1);
    return CFont(description);
}

// The average over both alphabets, which is what positions were designed with.
CSize DialogUnitOf(const CFont& font) {
    constexpr std::string_view kLetters = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz";
    const int width = (font.GetNative()->Width(kLetters) / 26 + 1) / 2;
    return {width, static_cast<int>(font.GetNative()->Metrics().tmHeight)};
}

CRect PixelsOf(const CRect& units, CSize unit) {
    return {MulDiv(units.left, unit.cx, 4), MulDiv(units.top, unit.cy, 8), MulDiv(units.right, unit.cx, 4),
            MulDiv(units.bottom, unit.cy, 8)};
}

CSize MakeControls(WindowRecord* parent, const DialogTemplate& dialog, const ResourceModule& module) {
    const CFont font = DialogFont(dialog);
    const CSize unit = DialogUnitOf(font);
    for (const ControlTemplate& control : dialog.controls)
        MakeControl(parent, control, module, unit, font);
    return unit;
}

WindowRecord* MakeDialogWindow(const FoundDialog& found, WindowRecord* parent) {
    const CFont font = DialogFont(*found.dialog);
    WindowRequest request{WindowKind::Dialog,
                          parent != nullptr ? &parent->Native() : nullptr,
                          found.dialog->style & ~WS_VISIBLE,
                          PixelsOf({0, 0, found.dialog->width, found.dialog->height}, DialogUnitOf(font)),
                          TextOf(*found.module, found.dialog->caption),
                          &font};
    return WindowRecord::Create({WindowKind::Dialog, nullptr, parent, 0, request.style}, request);
}

}  // namespace kortavin::window
