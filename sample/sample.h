#pragma once

#include <span>
#include <string_view>

namespace kortavin {
class CDatabase;
}

// A small atlas of cities, rivers, lakes, roads and bridges, with Chinese and English names, to try queries
// on.
namespace kortavin::sample {

// The statements that make the atlas, in UTF-8 and in SQLite's dialect.
std::span<const std::string_view> AtlasStatements();

// Makes the atlas in an open, empty SQLite database: all of it, or nothing and an error (CDBException).
void WriteSample(CDatabase& database);

}  // namespace kortavin::sample
