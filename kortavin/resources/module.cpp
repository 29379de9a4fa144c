#include "kortavin/resources/module.h"

#include "kortavin/resources/dialogs.h"
#include "kortavin/window/ownmodule.h"

namespace kortavin::resources {
namespace {

using base::TextId;

const char* NumberedText(unsigned number) {
    const bool exists = number >= 1 && number <= static_cast<unsigned>(TextId::Count);
    return exists ? Text(static_cast<TextId>(number - 1)) : nullptr;
}

// This library's record: its name "Kortavin.dll", its dialogs, texts and version.
const window::ResourceModule& Module() {
    static const window::ResourceModule module{
        "Kortavin.dll",
        Dialogs(),
        &NumberedText,
        {KORTAVIN_VERSION_MAJOR, KORTAVIN_VERSION_MINOR, KORTAVIN_VERSION_PATCH, "Kortavin",
         Text(TextId::ProductDescription)}};
    return module;
}

[[maybe_unused]] const bool s_registered = window::RegisterOwnModule(&Module);

}  // namespace
}  // namespace kortavin::resources
