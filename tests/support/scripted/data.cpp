#include <algorithm>
#include <charconv>
#include <cstring>

#include "handles.h"

namespace kortavin::testing {
namespace {

void WriteIndicator(const Value& value, const Target& target, SQLLEN length) {
    if (target.indicator && value.writesIndicator)
        *target.indicator = static_cast<SQLLEN>(value.indicator.value_or(length));
}

SQLRETURN CopyNull(Statement& statement, const Value& value, Progress& progress, const Target& target) {
    progress.finished = true;
    if (target.indicator == nullptr)
        return statement.Fail("22002", "a NULL needs an indicator");
    WriteIndicator(value, target, SQL_NULL_DATA);
    return SQL_SUCCESS;
}

SQLRETURN CopyPiece(Statement& statement, const Value& value, Progress& progress, const Target& target) {
    if (target.size < 0)
        return statement.Fail("HY090", "Invalid string or buffer length");
    const std::size_t end = target.type == SQL_C_CHAR ? 1 : 0;
    const auto size = static_cast<std::size_t>(target.size);
    const std::size_t rest = value.bytes->size() - progress.offset;
    std::size_t count = std::min(rest, size > end ? size - end : 0);
    if (value.pieceSize > 0)
        count = std::min(count, static_cast<std::size_t>(value.pieceSize));
    auto* bytes = static_cast<char*>(target.buffer);
    if (count > 0)
        std::memcpy(bytes, value.bytes->data() + progress.offset, count);
    if (end == 1 && size > 0)
        bytes[count] = '\0';
    progress.offset += count;
    progress.finished = count == rest && size >= end;
    WriteIndicator(value, target,
                   progress.finished || value.knowsTotal ? static_cast<SQLLEN>(rest) : SQL_NO_TOTAL);
    if (progress.finished)
        return SQL_SUCCESS;
    statement.Fail("01004", "String data, right truncated");
    return SQL_SUCCESS_WITH_INFO;
}

template <class Number>
SQLRETURN CopyNumber(Statement& statement, const Value& value, Progress& progress, const Target& target) {
    Number number{};
    const char* end = value.bytes->data() + value.bytes->size();
    const auto parsed = std::from_chars(value.bytes->data(), end, number);
    if (parsed.ec == std::errc::result_out_of_range)
        return statement.Fail("22003", "Numeric value out of range");
    if (parsed.ec != std::errc() || parsed.ptr != end)
        return statement.Fail("22018", "Invalid character value for cast specification");
    std::memcpy(target.buffer, &number, sizeof number);
    progress.finished = true;
    WriteIndicator(value, target, sizeof number);
    return SQL_SUCCESS;
}

SQLRETURN CopyBytes(Statement& statement, const Value& value, Progress& progress, const Target& target) {
    switch (target.type) {
        case SQL_C_CHAR:
        case SQL_C_BINARY:
            return CopyPiece(statement, value, progress, target);
        case SQL_C_LONG:
        case SQL_C_SLONG:
            return CopyNumber<SQLINTEGER>(statement, value, progress, target);
        case SQL_C_ULONG:
            return CopyNumber<SQLUINTEGER>(statement, value, progress, target);
        case SQL_C_SHORT:
        case SQL_C_SSHORT:
            return CopyNumber<SQLSMALLINT>(statement, value, progress, target);
        case SQL_C_USHORT:
            return CopyNumber<SQLUSMALLINT>(statement, value, progress, target);
        case SQL_C_SBIGINT:
            return CopyNumber<SQLBIGINT>(statement, value, progress, target);
        case SQL_C_DOUBLE:
            return CopyNumber<double>(statement, value, progress, target);
        default:
            return statement.Fail("HYC00", "no conversion to that type is scripted");
    }
}

SQLRETURN Copy(Statement& statement, const Value& value, Progress& progress, const Target& target) {
    if (value.null)
        return CopyNull(statement, value, progress, target);
    return CopyBytes(statement, value, progress, target);
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
    statement.connection.dead = value.fault->connectionDies;
    return statement.Obey(*value.fault);
}

}  // namespace kortavin::testing
