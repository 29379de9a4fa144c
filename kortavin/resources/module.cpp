#include "resources/module.h"

#include "resources/dialogs.h"

namespace kortavin::resources {
namespace {

const char* NumberedText(unsigned number) {
    const bool exists = number >= 1 && number <= static_cast<unsigned>(TextId::Count);
    return exists ? Text(static_cast<TextId>(number - 1)) : nullptr;
}

}  // namespace

const window::ResourceModule& Module() {
    static const window::ResourceModule module{
        "Kortavin.dll",
        Dialogs(),
        &NumberedText,
        {KORTAVIN_VERSION_MAJOR, KORTAVIN_VERSION_MINOR, KORTAVIN_VERSION_PATCH, "Kortavin",
         Text(TextId::ProductDescription)}};
    return module;
}

}  // namespace kortavin::resources
