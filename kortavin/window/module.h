#pragma once

#include <optional>
#include <span>

#include "kortavin/base/cstring.h"
#include "kortavin/window/dialogtemplate.h"

// Where dialog templates and texts come from: resource modules, chained in the order in which they were
// added, one of which is the current source and asked first. This library's own module answers to
// "Kortavin.dll" and is in the chain from the start; a host adds its own in front.
namespace kortavin::window {

struct VersionInformation {
    int major = 0, minor = 0, patch = 0;
    const char* product = "";
    const char* description = "";  // GBK
};

// A module's record. Everything it points to must live as long as it is in the chain.
struct ResourceModule {
    const char* name = "";
    std::span<const DialogTemplate> dialogs;
    const char* (*text)(unsigned number) = nullptr;  // GBK; null for a number that it does not have
    VersionInformation version;
};

// This library's own. CResourceException when its record is damaged.
KORTAVIN_API const ResourceModule& OwnModule();

KORTAVIN_API void AddModule(const ResourceModule* module);        // to the front; twice does nothing
KORTAVIN_API void RemoveModule(const ResourceModule* module);     // no longer the current source either
KORTAVIN_API const ResourceModule* FindModule(const char* name);  // ASCII letters fold; null for none

// The current source; null: the first of the chain. Setting answers the former.
KORTAVIN_API const ResourceModule* CurrentSource();
KORTAVIN_API const ResourceModule* SetCurrentSource(const ResourceModule* module);

// Makes a module the current source for its own life.
class KORTAVIN_API SourceScope {
  public:
    explicit SourceScope(const ResourceModule* module) : m_former(SetCurrentSource(module)) {}
    ~SourceScope() { SetCurrentSource(m_former); }
    SourceScope(const SourceScope&) = delete;
    SourceScope& operator=(const SourceScope&) = delete;

  private:
    const ResourceModule* m_former;
};

struct FoundDialog {
    const DialogTemplate* dialog;
    const ResourceModule* module;
};
// In the current source, then along the chain.
KORTAVIN_API std::optional<FoundDialog> FindDialog(unsigned id);
KORTAVIN_API std::optional<CString> FindText(unsigned number);

}  // namespace kortavin::window
