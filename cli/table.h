#pragma once

#include <string>
#include <vector>

namespace kortavin::cli {

struct TableColumn {
    std::string title;
    bool alignRight = false;
};

// The rows under their titles in columns that line up on a terminal, two blanks apart, a line of dashes
// between; no blanks at line ends. Texts are UTF-8 without control characters; every row has as many as there
// are columns.
std::string LineUp(const std::vector<TableColumn>& columns,
                   const std::vector<std::vector<std::string>>& rows);

}  // namespace kortavin::cli
