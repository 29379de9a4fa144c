#include "kortavin/window/module.h"

#include <algorithm>
#include <string_view>
#include <utility>
#include <vector>

#include "kortavin/base/codepage.h"
#include "kortavin/base/exception.h"
#include "kortavin/base/texts.h"
#include "kortavin/window/ownmodule.h"

namespace kortavin::window {
namespace {

bool HasText(const ResourceModule& module, unsigned number) {
    return number == 0 || (module.text != nullptr && module.text(number) != nullptr);
}

bool IsSound(const ResourceModule& module, const DialogTemplate& dialog) {
    const auto isSame = [&](const DialogTemplate& other) { return other.id == dialog.id; };
    const auto hasText = [&](const ControlTemplate& control) { return HasText(module, control.text); };
    return std::ranges::count_if(module.dialogs, isSame) == 1 && HasText(module, dialog.caption) &&
           std::ranges::all_of(dialog.controls, hasText);
}

void RequireSound(const ResourceModule& module) {
    const auto isSound = [&](const DialogTemplate& dialog) { return IsSound(module, dialog); };
    if (module.name != nullptr && *module.name != 0 && std::ranges::all_of(module.dialogs, isSound))
        return;
    CString text;
    text.Format(Text(base::TextId::DamagedModule), module.name != nullptr ? module.name : "");
    throw CResourceException(text);
}

// The modules in the order in which they are asked, this library's own last.
std::vector<const ResourceModule*>& Chain() {
    static auto* chain = new std::vector<const ResourceModule*>{&OwnModule()};
    return *chain;
}

constinit const ResourceModule* s_current = nullptr;
constinit OwnModuleFactory s_makeOwn = nullptr;

// Asks the current source, then the chain, until `ask` answers something.
template <class Ask>
auto AskModules(Ask ask) -> decltype(ask(std::declval<const ResourceModule&>())) {
    if (s_current != nullptr)
        if (const auto answer = ask(*s_current))
            return answer;
    for (const ResourceModule* module : Chain())
        if (const auto answer = ask(*module))
            return answer;
    return {};
}

}  // namespace

const ResourceModule& OwnModule() {
    static const ResourceModule& own = [&]() -> const ResourceModule& {
        const ResourceModule& module = s_makeOwn();
        RequireSound(module);
        return module;
    }();
    return own;
}

bool RegisterOwnModule(OwnModuleFactory factory) noexcept {
    s_makeOwn = factory;
    return true;
}

void AddModule(const ResourceModule* module) {
    RequireSound(*module);
    auto& chain = Chain();
    if (std::ranges::find(chain, module) == chain.end())
        chain.insert(chain.begin(), module);
}

void RemoveModule(const ResourceModule* module) {
    std::erase(Chain(), module);
    if (s_current == module)
        s_current = nullptr;
}

const ResourceModule* FindModule(const char* name) {
    const std::string_view wanted = name != nullptr ? name : "";
    const auto found = std::ranges::find_if(Chain(), [wanted](const ResourceModule* module) {
        return base::CompareNoCase(module->name, wanted) == 0;
    });
    return found == Chain().end() ? nullptr : *found;
}

const ResourceModule* CurrentSource() {
    return s_current != nullptr ? s_current : Chain().front();
}

const ResourceModule* SetCurrentSource(const ResourceModule* module) {
    return std::exchange(s_current, module);
}

std::optional<FoundDialog> FindDialog(unsigned id) {
    return AskModules([id](const ResourceModule& module) -> std::optional<FoundDialog> {
        const auto found = std::ranges::find(module.dialogs, id, &DialogTemplate::id);
        if (found == module.dialogs.end())
            return std::nullopt;
        return FoundDialog{&*found, &module};
    });
}

std::optional<CString> FindText(unsigned number) {
    return AskModules([number](const ResourceModule& module) -> std::optional<CString> {
        const char* const text = number != 0 && module.text != nullptr ? module.text(number) : nullptr;
        return text != nullptr ? std::optional<CString>(text) : std::nullopt;
    });
}

}  // namespace kortavin::window
