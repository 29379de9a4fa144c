#include <QListWidget>
#include <QMouseEvent>
#include <QSignalBlocker>
#include <QStyledItemDelegate>
#include <functional>
#include <memory>
#include <utility>
#include <vector>

#include "framework/qt/scrollbars.h"
#include "framework/qt/window.h"
#include "framework/window/styles.h"

namespace kortavin::qt {
namespace {

// Without a horizontal bar a line is as wide as the box, and an end that does not fit shows as dots.
class LineDelegate : public QStyledItemDelegate {
  public:
    using QStyledItemDelegate::QStyledItemDelegate;
    QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override {
        return {0, QStyledItemDelegate::sizeHint(option, index).height()};
    }
};

// Qt tells of a new selection in the midst of making it. Here that is told when the event is done with, so
// that whoever hears it may do anything to the list.
class ListWidget : public QListWidget {
  public:
    std::function<void()> selected, doubleClicked;

    explicit ListWidget(QWidget* parent) : QListWidget(parent) {
        connect(this, &QListWidget::itemSelectionChanged, this, [this] { m_wasSelected = true; });
        connect(this, &QListWidget::itemDoubleClicked, this, [this] { m_wasDoubleClicked = true; });
    }

  protected:
    bool event(QEvent* event) override {
        const QPointer<ListWidget> self(this);
        const bool isDone = QListWidget::event(event);
        if (self != nullptr)
            Tell();
        return isDone;
    }
    bool viewportEvent(QEvent* event) override {
        const QPointer<ListWidget> self(this);
        const bool isDone = QListWidget::viewportEvent(event);
        if (self != nullptr)
            Tell();
        return isDone;
    }
    // Qt would make the first item the current one, so that the arrow down could never select it.
    void focusInEvent(QFocusEvent* event) override {
        QListWidget::focusInEvent(event);
        if (selectedIndexes().isEmpty())
            selectionModel()->setCurrentIndex({}, QItemSelectionModel::NoUpdate);
    }
    // Only the left button selects.
    void mousePressEvent(QMouseEvent* event) override {
        if (event->button() == Qt::LeftButton)
            QListWidget::mousePressEvent(event);
    }
    void mouseDoubleClickEvent(QMouseEvent* event) override {
        if (event->button() == Qt::LeftButton)
            QListWidget::mouseDoubleClickEvent(event);
    }
    // With Ctrl, Qt would take a selection away or move without one.
    QItemSelectionModel::SelectionFlags selectionCommand(const QModelIndex& index,
                                                         const QEvent* /*event*/) const override {
        return index.isValid() ? QItemSelectionModel::ClearAndSelect : QItemSelectionModel::NoUpdate;
    }

  private:
    // The list may be on its way out after the first.
    void Tell() {
        if (std::exchange(m_wasSelected, false) && selected)
            selected();
        if (std::exchange(m_wasDoubleClicked, false) && doubleClicked)
            doubleClicked();
    }

    bool m_wasSelected = false;
    bool m_wasDoubleClicked = false;
};

class QtListBox final : public QtWindow, public window::NativeList {
  public:
    QtListBox(window::Window& window, ListWidget& list) : QtWindow(window, list, Ownership::Ours) {
        if ((window.Style() & LBS_NOTIFY) == 0)
            return;
        const auto notify = [self = QPointer<QtListBox>(this)](WORD code) {
            if (self != nullptr && self->IsReporting())
                ReportNotification(self->GetWindow(), code);
        };
        list.selected = [notify] { notify(LBN_SELCHANGE); };
        list.doubleClicked = [notify] { notify(LBN_DBLCLK); };
    }

    window::NativeList* AsList() override { return this; }

    int Count() const override { return static_cast<int>(m_items.size()); }
    void Insert(int index, std::string_view text) override {
        m_items.insert(m_items.begin() + index, CString(text));
        Change([&](QListWidget& list) { list.insertItem(index, ToQt(text)); });
    }
    // Qt would select the neighbour of an item that goes.
    void Remove(int index) override {
        const bool wasSelected = index == Selection();
        m_items.erase(m_items.begin() + index);
        Change([&](QListWidget& list) {
            delete list.takeItem(index);
            if (wasSelected)
                Unselect(list);
        });
    }
    void Clear() override {
        m_items.clear();
        Change([](QListWidget& list) { list.clear(); });
    }
    CString ItemText(int index) const override { return m_items.at(static_cast<std::size_t>(index)); }

    int Selection() const override {
        const QListWidget* const list = List();
        const auto selected = list != nullptr ? list->selectionModel()->selectedRows() : QModelIndexList();
        return selected.isEmpty() ? -1 : selected.front().row();
    }
    void Select(int index) override {
        Change([&](QListWidget& list) { index < 0 ? Unselect(list) : list.setCurrentRow(index); });
    }

  protected:
    UINT DialogCode() const override { return DLGC_WANTARROWS; }

  private:
    QListWidget* List() const { return qobject_cast<QListWidget*>(Widget()); }

    static void Unselect(QListWidget& list) {
        list.clearSelection();
        list.selectionModel()->setCurrentIndex({}, QItemSelectionModel::NoUpdate);
    }

    // By the program, which nobody is told of.
    template <class Body>
    void Change(Body body) {
        QListWidget* const list = List();
        if (list == nullptr)
            return;
        const QSignalBlocker blocker(list);
        body(*list);
    }

    std::vector<CString> m_items;
};

}  // namespace

std::unique_ptr<QtWindow> MakeListBox(window::Window& window, const window::WindowRequest& request) {
    auto* const list = new ListWidget(ParentWidget(request));
    list->hide();
    list->setEditTriggers(QAbstractItemView::NoEditTriggers);
    list->setSelectionMode(QAbstractItemView::SingleSelection);
    if ((request.style & WS_BORDER) == 0)
        list->setFrameShape(QFrame::NoFrame);
    list->setVerticalScrollBarPolicy(BarPolicy(request.style, WS_VSCROLL));
    list->setHorizontalScrollBarPolicy(BarPolicy(request.style, WS_HSCROLL));
    if ((request.style & WS_HSCROLL) == 0) {
        list->setUniformItemSizes(true);
        list->setItemDelegate(new LineDelegate(list));
    }
    return std::make_unique<QtListBox>(window, *list);
}

}  // namespace kortavin::qt
