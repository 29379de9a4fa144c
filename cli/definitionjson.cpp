#include "cli/definitionjson.h"

#include <fmt/format.h>
#include <fmt/ranges.h>

#include <algorithm>
#include <nlohmann/json.hpp>
#include <set>
#include <vector>

#include "cli/failure.h"
#include "cli/text.h"
#include "kortavin/query/clauses.h"
#include "kortavin/query/definition.h"

namespace kortavin::cli {
namespace {

using Json = nlohmann::json;
using Texts = std::vector<CString>;

// A value and where it stands: "sort[0][2]".
struct Place {
    const Json& value;
    std::string path;

    [[noreturn]] void Refuse(std::string_view expected) const {
        throw Failure(fmt::format("{}: {} expected", path.empty() ? "definition" : path, expected));
    }
};

// JSON lets a key come twice, and one of the two would be lost.
class DuplicateKeys {
  public:
    bool operator()(int, Json::parse_event_t event, const Json& parsed) {
        if (event == Json::parse_event_t::object_start)
            m_open.emplace_back();
        if (event == Json::parse_event_t::object_end)
            m_open.pop_back();
        if (event == Json::parse_event_t::key && !m_open.back().insert(parsed.get<std::string>()).second)
            throw Failure(fmt::format("definition: the key {} comes twice", parsed.dump()));
        return true;
    }

  private:
    std::vector<std::set<std::string>> m_open;
};

Json Parse(std::string_view text) {
    try {
        return Json::parse(text, DuplicateKeys());
    } catch (const Json::exception& error) {
        const std::string_view reason = error.what();
        const std::size_t tagEnd = reason.find("] ");
        throw Failure(
            fmt::format("definition: {}", tagEnd == reason.npos ? reason : reason.substr(tagEnd + 2)));
    }
}

void RequireObject(const Place& place, const std::vector<std::string>& keys) {
    if (!place.value.is_object())
        place.Refuse("an object");
    for (const auto& [key, value] : place.value.items())
        if (std::ranges::find(keys, key) == keys.end())
            throw Failure(fmt::format("{}: unknown key {}; known are {}",
                                      place.path.empty() ? "definition" : place.path, Json(key).dump(),
                                      fmt::join(keys, ", ")));
}

// The member `key`; an empty array where there is none.
Place Member(const Place& object, const std::string& key) {
    static const Json nothing = Json::array();
    const auto found = object.value.find(key);
    const std::string path = object.path.empty() ? key : object.path + "." + key;
    return {found == object.value.end() ? nothing : *found, path};
}

std::vector<Place> Elements(const Place& place) {
    if (!place.value.is_array())
        place.Refuse("an array");
    std::vector<Place> elements;
    for (const Json& element : place.value)
        elements.push_back({element, fmt::format("{}[{}]", place.path, elements.size())});
    return elements;
}

CString Text(const Place& place) {
    if (!place.value.is_string())
        place.Refuse("a text");
    return ToGbk(place.value.get_ref<const std::string&>());
}

Texts TextList(const Place& place) {
    Texts texts;
    for (const Place& element : Elements(place))
        texts.push_back(Text(element));
    return texts;
}

// Rows of as many texts as there are names in `shape`.
std::vector<Texts> TextRows(const Place& place, const std::vector<std::string_view>& shape) {
    std::vector<Texts> rows;
    for (const Place& element : Elements(place)) {
        rows.push_back(TextList(element));
        if (rows.back().size() != shape.size())
            element.Refuse(fmt::format("[{}]", fmt::join(shape, ", ")));
    }
    return rows;
}

query::ConditionGrid Conditions(const Place& definition) {
    query::ConditionGrid grid;
    if (!definition.value.contains("conditions"))
        return grid;
    const Place place = Member(definition, "conditions");
    RequireObject(place, {"columns", "rows"});
    for (const Texts& row : TextRows(Member(place, "columns"), {"table", "field"}))
        grid.columns.push_back({row[0], row[1]});
    for (const Place& element : Elements(Member(place, "rows"))) {
        grid.rows.push_back(TextList(element));
        if (grid.rows.back().size() != grid.columns.size())
            element.Refuse(fmt::format("one text for each condition column ({})", grid.columns.size()));
    }
    return grid;
}

CString TablesClause(const Place& definition) {
    CStringArray tables;
    for (const CString& table : TextList(Member(definition, "tables")))
        tables.Add(table);
    return query::BuildTablesClause(tables);
}

CString RelationClause(const Place& definition) {
    std::vector<query::RelationRow> rows;
    for (const Texts& row : TextRows(Member(definition, "relations"),
                                     {"first table", "first field", "second table", "second field"}))
        rows.push_back({row[0], row[1], row[2], row[3]});
    return query::BuildRelationClause(rows);
}

CString FieldsClause(const Place& definition) {
    std::vector<query::FieldRow> rows;
    for (const Texts& row : TextRows(Member(definition, "fields"), {"table", "field"}))
        rows.push_back({row[0], row[1]});
    return query::BuildFieldsClause(rows);
}

CString OrderClause(const Place& definition) {
    std::vector<query::SortRow> rows;
    for (const Texts& row : TextRows(Member(definition, "sort"), {"table", "field", "direction"}))
        rows.push_back({row[0], row[1], row[2]});
    return query::BuildOrderClause(rows);
}

}  // namespace

CString ComposeFromJson(std::string_view json) {
    const Json parsed = Parse(json);
    const Place definition{parsed, ""};
    RequireObject(definition, {"tables", "relations", "fields", "conditions", "sort"});

    query::QueryDefinition query;
    query.m_strTables = TablesClause(definition);
    query.m_strRelation = RelationClause(definition);
    query.m_strFields = FieldsClause(definition);
    query.m_strWhere = query::BuildWhereClause(Conditions(definition));
    query.m_strOrder = OrderClause(definition);
    return query.BuildSql();
}

}  // namespace kortavin::cli
