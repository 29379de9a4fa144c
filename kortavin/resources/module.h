#pragma once

#include "kortavin/base/texts.h"
#include "kortavin/window/module.h"

namespace kortavin::resources {

// The number by which dialog templates name a text; 0 stands for none.
constexpr unsigned TextNumber(base::TextId id) {
    return static_cast<unsigned>(id) + 1;
}

}  // namespace kortavin::resources
