#include <QAbstractListModel>
#include <QListView>
#include <QMouseEvent>
#include <QStyledItemDelegate>
#include <algorithm>
#include <functional>
#include <memory>
#include <utility>
#include <vector>

#include "kortavin/qt/scrollbars.h"
#include "kortavin/qt/window.h"
#include "kortavin/window/styles.h"

namespace kortavin::qt {
namespace {

// The items, decoded when they show: a list of ten thousand opens as fast as a short one.
class TextsModel : public QAbstractListModel {
  public:
    using QAbstractListModel::QAbstractListModel;

    int rowCount(const QModelIndex& parent = {}) const override {
        return parent.isValid() ? 0 : static_cast<int>(m_items.size());
    }
    QVariant data(const QModelIndex& index, int role) const override {
        return role == Qt::DisplayRole && index.isValid() ? QVariant(ToQt(ItemText(index.row()).View()))
                                                          : QVariant();
    }

    const CString& ItemText(int index) const { return m_items.at(static_cast<std::size_t>(index)); }
    void Insert(int index, std::string_view text) {
        beginInsertRows({}, index, index);
        m_items.emplace(m_items.begin() + index, text);
        endInsertRows();
    }
    void Remove(int index) {
        beginRemoveRows({}, index, index);
        m_items.erase(m_items.begin() + index);
        endRemoveRows();
    }
    void Clear() {
        beginResetModel();
        m_items.clear();
        endResetModel();
    }
    // Of the item with the most bytes, which stand for columns of a terminal and so nearly for the width.
    CString LongestText() const {
        const auto longest = std::ranges::max_element(m_items, {}, &CString::GetLength);
        return longest != m_items.end() ? *longest : CString();
    }

  private:
    std::vector<CString> m_items;
};

// All lines have one size, since measuring each takes longer than all else. Without a horizontal bar a line
// is as wide as the box, and an end that does not fit shows as dots; with one it is as wide as the longest.
class LineDelegate : public QStyledItemDelegate {
  public:
    LineDelegate(QObject* parent, const TextsModel& model, bool scrolls)
        : QStyledItemDelegate(parent), m_model(model), m_scrolls(scrolls) {}
    QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override {
        const int height = QStyledItemDelegate::sizeHint(option, index).height();
        if (!m_scrolls)
            return {0, height};
        constexpr int kMargin = 6;
        const QString longest = ToQt(m_model.LongestText().View());
        return {option.fontMetrics.horizontalAdvance(longest) + kMargin, height};
    }

  private:
    const TextsModel& m_model;
    bool m_scrolls;
};

// Qt tells of a new selection in the midst of making it. Here that is told when the event is done with, so
// that whoever hears it may do anything to the list.
class ListView : public QListView {
  public:
    std::function<void()> selected, doubleClicked;

    ListView(QWidget* parent, DWORD style) : QListView(parent) {
        setModel(&m_model);
        setUniformItemSizes(true);
        setItemDelegate(new LineDelegate(this, m_model, (style & WS_HSCROLL) != 0));
        connect(selectionModel(), &QItemSelectionModel::selectionChanged, this,
                [this] { m_wasSelected = !m_isChanging; });
        connect(this, &QListView::doubleClicked, this, [this] { m_wasDoubleClicked = true; });
    }

    TextsModel& Texts() { return m_model; }
    const TextsModel& Texts() const { return m_model; }
    // By the program, which nobody is told of.
    template <class Body>
    void Change(Body body) {
        const bool wasChanging = std::exchange(m_isChanging, true);
        body();
        m_isChanging = wasChanging;
    }

  protected:
    bool event(QEvent* event) override {
        const QPointer<ListView> self(this);
        const bool isDone = QListView::event(event);
        if (self != nullptr)
            Tell();
        return isDone;
    }
    bool viewportEvent(QEvent* event) override {
        const QPointer<ListView> self(this);
        const bool isDone = QListView::viewportEvent(event);
        if (self != nullptr)
            Tell();
        return isDone;
    }
    // Qt would make the first item the current one, so that the arrow down could never select it.
    void focusInEvent(QFocusEvent* event) override {
        QListView::focusInEvent(event);
        if (selectedIndexes().isEmpty())
            selectionModel()->setCurrentIndex({}, QItemSelectionModel::NoUpdate);
    }
    // Only the left button selects.
    void mousePressEvent(QMouseEvent* event) override {
        if (event->button() == Qt::LeftButton)
            QListView::mousePressEvent(event);
    }
    void mouseDoubleClickEvent(QMouseEvent* event) override {
        if (event->button() == Qt::LeftButton)
            QListView::mouseDoubleClickEvent(event);
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

    TextsModel m_model;
    bool m_isChanging = false;
    bool m_wasSelected = false;
    bool m_wasDoubleClicked = false;
};

class QtListBox final : public QtWindow, public window::NativeList {
  public:
    QtListBox(window::WindowRecord& window, ListView& list) : QtWindow(window, list, Ownership::Ours) {
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

    int Count() const override { return List() != nullptr ? List()->Texts().rowCount() : 0; }
    void Insert(int index, std::string_view text) override {
        Change([&](ListView& list) { list.Texts().Insert(index, text); });
    }
    // Qt would select the neighbour of an item that goes.
    void Remove(int index) override {
        const bool wasSelected = index == Selection();
        Change([&](ListView& list) {
            list.Texts().Remove(index);
            if (wasSelected)
                Unselect(list);
        });
    }
    void Clear() override {
        Change([](ListView& list) { list.Texts().Clear(); });
    }
    CString ItemText(int index) const override {
        return List() != nullptr ? List()->Texts().ItemText(index) : CString();
    }

    int Selection() const override {
        const auto selected =
            List() != nullptr ? List()->selectionModel()->selectedRows() : QModelIndexList();
        return selected.isEmpty() ? -1 : selected.front().row();
    }
    void Select(int index) override {
        Change([&](ListView& list) {
            index < 0 ? Unselect(list) : list.setCurrentIndex(list.model()->index(index, 0));
        });
    }

  protected:
    UINT DialogCode() const override { return DLGC_WANTARROWS; }

  private:
    ListView* List() const { return static_cast<ListView*>(Widget()); }

    static void Unselect(ListView& list) {
        list.clearSelection();
        list.selectionModel()->setCurrentIndex({}, QItemSelectionModel::NoUpdate);
    }

    template <class Body>
    void Change(Body body) {
        if (ListView* const list = List(); list != nullptr)
            list->Change([&] { body(*list); });
    }
};

}  // namespace

std::unique_ptr<QtWindow> MakeListBox(window::WindowRecord& window, const window::WindowRequest& request) {
    auto* const list = new ListView(ParentWidget(request), request.style);
    list->hide();
    list->setEditTriggers(QAbstractItemView::NoEditTriggers);
    list->setSelectionMode(QAbstractItemView::SingleSelection);
    if ((request.style & WS_BORDER) == 0)
        list->setFrameShape(QFrame::NoFrame);
    list->setVerticalScrollBarPolicy(BarPolicy(request.style, WS_VSCROLL));
    list->setHorizontalScrollBarPolicy(BarPolicy(request.style, WS_HSCROLL));
    return std::make_unique<QtListBox>(window, *list);
}

}  // namespace kortavin::qt
