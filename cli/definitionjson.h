#pragma once

#include <string>
#include <string_view>

#include "kortavin/base/cstring.h"

namespace kortavin::cli {

// The statement that is composed from a definition in JSON:
//   {"tables": ["A", "B"], "relations": [["A", "x", "B", "y"]], "fields": [["A", "x"]],
//    "conditions": {"columns": [["A", "x"]], "rows": [[">1"], ["<0"]]}, "sort": [["A", "x", "升序"]]}
// Every key may be left out. Throws Failure telling where the text is no such definition.
CString ComposeFromJson(std::string_view json);

}  // namespace kortavin::cli
