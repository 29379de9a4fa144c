#pragma once

#include "framework/base/cstring.h"

// The texts that people see, by name. Sources hold them in UTF-8; here they become GBK, once, at first use,
// whatever the compiler's execution character set is.
namespace kortavin::resources {

enum class TextId {
    Ascending,
    WrongFileFormat,
    MemoryError,
    Count,  // not a text
};

KORTAVIN_API const CString& Text(TextId id);

}  // namespace kortavin::resources
