#include <QShortcut>
#include <QSignalBlocker>
#include <QStyle>
#include <QStyleOptionTabWidgetFrame>
#include <QTabBar>
#include <QTabWidget>
#include <memory>

#include "kortavin/qt/geometry.h"
#include "kortavin/qt/window.h"
#include "kortavin/window/styles.h"

namespace kortavin::qt {
namespace {

struct OptionAccess : QTabWidget {
    using QTabWidget::initStyleOption;
};

// The pane within its frame, in tabs of the given size.
QRect PaneOf(const QTabWidget& tabs, QSize size) {
    QStyleOptionTabWidgetFrame option;
    (tabs.*(&OptionAccess::initStyleOption))(&option);
    option.rect = QRect(QPoint(), size);
    return tabs.style()->subElementRect(QStyle::SE_TabWidgetTabContents, &option, &tabs);
}

// Tabs whose own pages stay empty: they draw the bar and the frame. The keys and the focus are the bar's.
class QtTabs final : public QtWindow, public window::NativeTabs {
  public:
    QtTabs(window::WindowRecord& window, QTabWidget& tabs) : QtWindow(window, tabs, Ownership::Ours) {
        AddPart(*tabs.tabBar());
        connect(&tabs, &QTabWidget::currentChanged, this, [this] {
            if (IsReporting())
                ReportNotification(GetWindow(), TCN_SELCHANGE);
        });
        MoveBy(1, Qt::Key_PageDown);
        MoveBy(-1, Qt::Key_PageUp);
    }

    window::NativeTabs* AsTabs() override { return this; }

    void Add(std::string_view text) override {
        QTabWidget* const tabs = Tabs();
        if (tabs == nullptr)
            return;
        const QSignalBlocker blocker(tabs);
        tabs->addTab(new QWidget, ToQt(text).replace('&', "&&"));
    }
    int Selection() const override {
        const QTabWidget* const tabs = Tabs();
        return tabs != nullptr ? tabs->currentIndex() : -1;
    }
    void Select(int index) override {
        QTabWidget* const tabs = Tabs();
        if (tabs == nullptr)
            return;
        const QSignalBlocker blocker(tabs);
        tabs->setCurrentIndex(index);
    }
    CRect Around(const CRect& page) const override {
        const QTabWidget* const tabs = Tabs();
        if (tabs == nullptr)
            return page;
        tabs->ensurePolished();
        constexpr QSize kAmple(1000, 1000);
        const QRect pane = PaneOf(*tabs, kAmple);
        return {page.left - pane.left(), page.top - pane.top(),
                page.right + kAmple.width() - 1 - pane.right(),
                page.bottom + kAmple.height() - 1 - pane.bottom()};
    }
    CRect TabRect(int index) const override {
        const QTabWidget* const tabs = Tabs();
        return tabs != nullptr ? FromQt(tabs->tabBar()->tabRect(index).translated(tabs->tabBar()->pos()))
                               : CRect();
    }

  private:
    QTabWidget* Tabs() const { return qobject_cast<QTabWidget*>(Widget()); }

    // With Ctrl, from anywhere in the dialog; behind the last comes the first.
    void MoveBy(int step, Qt::Key key) {
        auto* const shortcut = new QShortcut(Qt::CTRL | key, Widget());
        connect(shortcut, &QShortcut::activated, this, [this, step] {
            if (QTabWidget* const tabs = Tabs(); tabs != nullptr && tabs->count() > 0)
                tabs->setCurrentIndex((tabs->currentIndex() + step + tabs->count()) % tabs->count());
        });
    }
};

}  // namespace

std::unique_ptr<QtWindow> MakeTabs(window::WindowRecord& window, const window::WindowRequest& request) {
    auto* const tabs = new QTabWidget(ParentWidget(request));
    tabs->hide();
    tabs->lower();  // the pages lie over it
    return std::make_unique<QtTabs>(window, *tabs);
}

}  // namespace kortavin::qt
