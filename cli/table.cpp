#include "cli/table.h"

#include <algorithm>

#include "cli/text.h"

namespace kortavin::cli {
namespace {

using Row = std::vector<std::string>;

std::vector<int> Widths(const Row& titles, const std::vector<Row>& rows) {
    std::vector<int> widths;
    for (const std::string& title : titles)
        widths.push_back(DisplayWidth(title));
    for (const Row& row : rows)
        for (std::size_t i = 0; i < widths.size(); ++i)
            widths[i] = std::max(widths[i], DisplayWidth(row[i]));
    return widths;
}

void AppendLine(std::string& out, const Row& row, const std::vector<TableColumn>& columns,
                const std::vector<int>& widths) {
    std::string line;
    for (std::size_t i = 0; i < columns.size(); ++i) {
        const std::string padding(static_cast<std::size_t>(widths[i] - DisplayWidth(row[i])), ' ');
        if (i > 0)
            line += "  ";
        line += columns[i].alignRight ? padding + row[i] : row[i] + padding;
    }
    line.erase(line.find_last_not_of(' ') + 1);
    out += line + '\n';
}

}  // namespace

std::string LineUp(const std::vector<TableColumn>& columns, const std::vector<Row>& rows) {
    Row titles;
    for (const TableColumn& column : columns)
        titles.push_back(column.title);
    const std::vector<int> widths = Widths(titles, rows);
    Row dashes;
    for (const int width : widths)
        dashes.emplace_back(static_cast<std::size_t>(width), '-');

    std::string out;
    AppendLine(out, titles, columns, widths);
    AppendLine(out, dashes, columns, widths);
    for (const Row& row : rows)
        AppendLine(out, row, columns, widths);
    return out;
}

}  // namespace kortavin::cli
