#include "desktop/text.h"

#include "desktop/report.h"
#include "kortavin/base/codepage.h"

namespace kortavin::desktop {

QString Shown(const CString& gbk) {
    return QString::fromStdString(base::GbkForDisplay(gbk.View()));
}

CString ToGbk(const QString& text) {
    const auto gbk = text.isValidUtf16() ? CString::FromUtf8(text.toStdString()) : std::nullopt;
    return gbk ? *gbk : throw Failure("文字中有不完整的字符。");
}

}  // namespace kortavin::desktop
