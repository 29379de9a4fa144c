#include <algorithm>
#include <cstring>

#include "handles.h"

namespace kortavin::testing {
namespace {

void WriteIndicator(const Value& value, const Target& target, SQLLEN length) {
    if (target.indicator && value.writesIndicator)
        *target.indicator = static_cast<SQLLEN>(value.indicator.value_or(length));
}

SQLRETURN CopyPiece(Statement& statement, const Value& value, Progress& progress, const Target& target) {
    const std::size_t rest = value.bytes->size() - progress.offset;
    std::size_t count = std::min(rest, static_cast<std::size_t>(target.size - 1));
    if (value.pieceSize > 0)
        count = std::min(count, static_cast<std::size_t>(value.pieceSize));
    auto* bytes = static_cast<char*>(target.buffer);
    std::memcpy(bytes, value.bytes->data() + progress.offset, count);
    bytes[count] = '\0';
    progress.offset += count;
    progress.finished = count == rest;
    const bool tells = progress.finished || value.knowsTotal;
    WriteIndicator(value, target, tells ? static_cast<SQLLEN>(rest) : SQL_NO_TOTAL);
    if (progress.finished)
        return SQL_SUCCESS;
    statement.Fail("01004", "String data, right truncated");
    return SQL_SUCCESS_WITH_INFO;
}

SQLRETURN Copy(Statement& statement, const Value& value, Progress& progress, const Target& target) {
    if (!value.null) {
        return target.type == SQL_C_CHAR && target.size > 0
                   ? CopyPiece(statement, value, progress, target)
                   : statement.Fail("HYC00", "no conversion to that type is scripted");
    }
    progress.finished = true;
    WriteIndicator(value, target, SQL_NULL_DATA);
    return SQL_SUCCESS;
}

}  // namespace

SQLRETURN Deliver(Statement& statement, const Value& value, Progress& progress, const Target& target) {
    const bool faulty = value.fault && ++progress.calls >= value.faultPiece;
    const bool warned = faulty && value.fault->code == SQL_SUCCESS_WITH_INFO;
    if (progress.finished && (!faulty || warned))
        return SQL_NO_DATA;
    const std::size_t known = statement.records.size();
    SQLRETURN code = SQL_SUCCESS;
    if (!faulty || warned || value.dataDespiteFault)
        code = Copy(statement, value, progress, target);
    else if (value.indicator)
        WriteIndicator(value, target, 0);
    if (!faulty || code == SQL_ERROR)
        return code;
    if (!warned)
        statement.records.resize(known);
    return Obey(statement, statement.connection, *value.fault);
}

}  // namespace kortavin::testing
