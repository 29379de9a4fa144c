#pragma once

#include "framework/window/module.h"
#include "resources/texts.h"

namespace kortavin::resources {

// This library's record: its name "Kortavin.dll", its dialogs, texts and version.
const window::ResourceModule& Module();

// The number by which dialog templates name a text; 0 stands for none.
constexpr unsigned TextNumber(TextId id) {
    return static_cast<unsigned>(id) + 1;
}

}  // namespace kortavin::resources
