#include "kortavin/window/toolkit.h"

#include <dlfcn.h>

#include <string>
#include <utility>

#include "kortavin/base/codepage.h"
#include "kortavin/base/texts.h"
#include "kortavin/window/fontcache.h"

namespace kortavin::window {
namespace {

constinit ToolkitFactory s_factory = nullptr;

// Never destroyed: at the process's end the toolkit's own library may have been taken down before this one.
std::unique_ptr<Toolkit>& Holder() {
    static auto* toolkit = new std::unique_ptr<Toolkit>;
    return *toolkit;
}

[[noreturn]] void ThrowNoWindows(std::string_view reason) {
    throw CResourceException(CString(Text(base::TextId::NoWindows)).Append(reason));
}

// The folder that this library was loaded from, ending in a slash.
std::string OwnFolder() {
    Dl_info info{};
    if (dladdr(reinterpret_cast<const void*>(&RegisterToolkit), &info) == 0 || info.dli_fname == nullptr)
        return {};
    const std::string path = info.dli_fname;
    return path.substr(0, path.rfind('/') + 1);
}

// Loading the library makes it register itself. It stays loaded: its windows may outlive any scope here.
void LoadToolkitLibrary() {
    const std::string path = OwnFolder() + KORTAVIN_TOOLKIT_LIBRARY;
    if (dlopen(path.c_str(), RTLD_NOW | RTLD_LOCAL) == nullptr)
        ThrowNoWindows(base::Utf8ForMessage(dlerror()));
    if (s_factory == nullptr)
        ThrowNoWindows(path);
}

}  // namespace

NativeFont::~NativeFont() = default;
Painter::~Painter() = default;
NativeWindow::~NativeWindow() = default;
NativeButton::~NativeButton() = default;
NativeCombo::~NativeCombo() = default;
NativeList::~NativeList() = default;
NativeTabs::~NativeTabs() = default;
AccessibleTable::~AccessibleTable() = default;
Toolkit::~Toolkit() = default;

void NativeWindow::ObjectLeft() {}
void NativeWindow::SetAccessibleTable(AccessibleTable*) {}
void NativeWindow::TellTableChange(TableChange, AccessibleTable::Cell) {}

NativeCombo* NativeWindow::AsCombo() {
    return nullptr;
}
NativeButton* NativeWindow::AsButton() {
    return nullptr;
}
NativeList* NativeWindow::AsList() {
    return nullptr;
}
NativeTabs* NativeWindow::AsTabs() {
    return nullptr;
}

std::unique_ptr<NativeWindow> NativeCombo::MakeEditField(WindowRecord&) {
    return nullptr;
}

void RegisterToolkit(ToolkitFactory factory) {
    s_factory = factory;
}

std::unique_ptr<Toolkit> SetToolkit(std::unique_ptr<Toolkit> toolkit) {
    ForgetFonts();
    return std::exchange(Holder(), std::move(toolkit));
}

Toolkit& RequireToolkit() {
    auto& toolkit = Holder();
    if (toolkit == nullptr) {
        if (s_factory == nullptr)
            LoadToolkitLibrary();
        toolkit = s_factory();
    }
    return *toolkit;
}

Toolkit* CurrentToolkit() {
    return Holder().get();
}

}  // namespace kortavin::window
