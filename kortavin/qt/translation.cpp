#include "kortavin/qt/translation.h"

#include <QCoreApplication>
#include <QLibraryInfo>
#include <QTranslator>
#include <memory>

namespace kortavin::qt {

void TranslateQt() {
    const char* const probe = "Cancel";
    if (QCoreApplication::translate("QPlatformTheme", probe) != QLatin1String(probe))
        return;
    auto translator = std::make_unique<QTranslator>();
    const QString folder = QLibraryInfo::path(QLibraryInfo::TranslationsPath);
    if (!translator->load(QStringLiteral("qtbase_zh_CN"), folder))
        return;
    QCoreApplication::installTranslator(translator.get());
    translator.release()->setParent(QCoreApplication::instance());
}

}  // namespace kortavin::qt
