#include <concepts>
#include <nlohmann/json.hpp>
#include <type_traits>

#include "script.h"

namespace kortavin::testing {
namespace {

using nlohmann::json;

template <class T, class U>
concept Is = std::same_as<std::remove_const_t<T>, U>;

// Each structure is described once; a writer or a reader walks along.
void Describe(auto& walk, Is<Diagnostic> auto& diagnostic) {
    walk("state", diagnostic.state);
    walk("message", diagnostic.message);
    walk("native", diagnostic.native);
}

void Describe(auto& walk, Is<Fault> auto& fault) {
    walk("diagnostics", fault.diagnostics);
    walk("code", fault.code);
    walk("argument", fault.argument);
    walk("after", fault.after);
    walk("connectionDies", fault.connectionDies);
}

void Describe(auto& walk, Is<Value> auto& value) {
    walk("bytes", value.bytes);
    walk("null", value.null);
    walk("indicator", value.indicator);
    walk("writesIndicator", value.writesIndicator);
    walk("pieceSize", value.pieceSize);
    walk("knowsTotal", value.knowsTotal);
    walk("fault", value.fault);
    walk("faultPiece", value.faultPiece);
    walk("dataDespiteFault", value.dataDespiteFault);
}

void Describe(auto& walk, Is<Row> auto& row) {
    walk("values", row.values);
    walk("fault", row.fault);
    walk("times", row.times);
}

void Describe(auto& walk, Is<Column> auto& column) {
    walk("name", column.name);
    walk("type", column.type);
    walk("precision", column.precision);
    walk("scale", column.scale);
    walk("nullable", column.nullable);
}

void Describe(auto& walk, Is<Answer> auto& answer) {
    walk("key", answer.key);
    walk("fault", answer.fault);
    walk("columns", answer.columns);
    walk("rows", answer.rows);
    walk("faults", answer.faults);
    walk("rowCount", answer.rowCount);
    walk("more", answer.more);
}

void Describe(auto& walk, Is<Script> auto& script) {
    walk("infoTexts", script.infoTexts);
    walk("infoNumbers", script.infoNumbers);
    walk("unsupported", script.unsupported);
    walk("faults", script.faults);
    walk("stillExecuting", script.stillExecuting);
    walk("statements", script.statements);
    walk("tables", script.tables);
    walk("columns", script.columns);
}

// JSON holds characters, not bytes: each byte travels as the character of its number.
std::string BytesToCharacters(const std::string& bytes) {
    std::string characters;
    for (const unsigned char byte : bytes) {
        if (byte < 0x80) {
            characters += static_cast<char>(byte);
        } else {
            characters += static_cast<char>(0xC0 | byte >> 6);
            characters += static_cast<char>(0x80 | (byte & 0x3F));
        }
    }
    return characters;
}

std::string CharactersToBytes(const std::string& characters) {
    std::string bytes;
    for (std::size_t i = 0; i < characters.size(); ++i) {
        const auto lead = static_cast<unsigned char>(characters[i]);
        if (lead < 0x80)
            bytes += characters[i];
        else if ((lead == 0xC2 || lead == 0xC3) && ++i < characters.size())
            bytes += static_cast<char>((lead & 0x03) << 6 | (characters[i] & 0x3F));
        else
            throw std::runtime_error("a text of the script holds a character above U+00FF");
    }
    return bytes;
}

template <class T>
concept Optional = requires(T value) {
    value.has_value();
};
template <class T>
concept Range = requires(T value) {
    value.begin();
};
template <class T>
concept Pair = requires(T value) {
    value.second;
};

struct Writer {
    json object = json::object();

    void operator()(const char* name, const auto& member) { object[name] = Write(member); }

    template <class T>
    static json Write(const T& value) {
        if constexpr (std::same_as<T, std::string>) {
            return BytesToCharacters(value);
        } else if constexpr (std::is_arithmetic_v<T>) {
            return value;
        } else if constexpr (Optional<T>) {
            return value ? Write(*value) : json();
        } else if constexpr (Pair<T>) {
            return json::array({Write(value.first), Write(value.second)});
        } else if constexpr (Range<T>) {
            json array = json::array();
            for (const auto& element : value)
                array.push_back(Write(element));
            return array;
        } else {
            Writer writer;
            Describe(writer, value);
            return std::move(writer.object);
        }
    }
};

struct Reader {
    const json& object;

    void operator()(const char* name, auto& member) const {
        if (object.contains(name))
            Read(object[name], member);
    }

    template <class T>
    static void Read(const json& source, T& value) {
        if constexpr (std::same_as<T, std::string>) {
            value = CharactersToBytes(source.get<std::string>());
        } else if constexpr (std::is_arithmetic_v<T>) {
            value = source.get<T>();
        } else if constexpr (Optional<T>) {
            if (!source.is_null())
                Read(source, value.emplace());
        } else if constexpr (Pair<T>) {
            Read(source.at(0), value.first);
            Read(source.at(1), value.second);
        } else if constexpr (Range<T>) {
            for (const json& element : source) {
                typename T::value_type item{};
                Read(element, item);
                value.insert(value.end(), std::move(item));
            }
        } else {
            const Reader reader{source};
            Describe(reader, value);
        }
    }
};

}  // namespace

std::string ToText(const Script& script) {
    return Writer::Write(script).dump();
}

Script FromText(const std::string& text) {
    Script script;
    Reader::Read(json::parse(text), script);
    return script;
}

}  // namespace kortavin::testing
