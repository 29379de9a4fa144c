#include "kortavin/qt/application.h"

#include <QApplication>
#include <QThread>
#include <array>
#include <clocale>
#include <string>

#include "kortavin/base/exception.h"
#include "kortavin/base/texts.h"
#include "kortavin/qt/platform.h"

namespace kortavin::qt {
namespace {

using base::TextId;

[[noreturn]] void ThrowNoWindows(TextId reason) {
    throw CResourceException(CString(Text(TextId::NoWindows)) + Text(reason));
}

// Qt takes the process to the user's locale. The host did not ask for another decimal point.
class NumbersKept {
  public:
    NumbersKept() : m_former(std::setlocale(LC_NUMERIC, nullptr)) {}
    ~NumbersKept() { std::setlocale(LC_NUMERIC, m_former.c_str()); }
    NumbersKept(const NumbersKept&) = delete;
    NumbersKept& operator=(const NumbersKept&) = delete;

  private:
    std::string m_former;
};

// What an application refers to for as long as it lives.
struct Arguments {
    explicit Arguments(QByteArray chosenPlatform) : platform(std::move(chosenPlatform)) {}

    QByteArray program = "kortavin", option = "-platform", platform;
    std::array<char*, 4> values{program.data(), option.data(), platform.data(), nullptr};
    int count = 3;
};

// Never destroyed: windows of a host's static objects may go later than anything here could.
void MakeApplication() {
    const NumbersKept kept;
    const Platform platform = UsablePlatform();
    auto* const arguments = new Arguments(platform.name);
    new QApplication(arguments->count, arguments->values.data());
    QGuiApplication::setQuitOnLastWindowClosed(false);
}

constinit bool s_isProcessEnding = false;

// Destroyed before what Qt made for its application, and after the static objects that were made later.
struct EndOfProcess {
    EndOfProcess() = default;
    ~EndOfProcess() { s_isProcessEnding = true; }
    EndOfProcess(const EndOfProcess&) = delete;
    EndOfProcess& operator=(const EndOfProcess&) = delete;
};

}  // namespace

void RequireApplication() {
    if (QCoreApplication::instance() == nullptr)
        MakeApplication();
    [[maybe_unused]] static const EndOfProcess end;
    if (qobject_cast<QApplication*>(QCoreApplication::instance()) == nullptr)
        ThrowNoWindows(TextId::NotForWindows);
    if (QThread::currentThread() != QCoreApplication::instance()->thread())
        ThrowNoWindows(TextId::WrongThread);
}

bool CanTouchWidgets() {
    return QCoreApplication::instance() != nullptr && !s_isProcessEnding;
}

}  // namespace kortavin::qt
