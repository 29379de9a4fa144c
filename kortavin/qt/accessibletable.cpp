#include "kortavin/qt/accessibletable.h"

#include <QAccessibleWidget>
#include <QPointer>
#include <algorithm>
#include <climits>
#include <map>
#include <utility>

#include "kortavin/qt/geometry.h"
#include "kortavin/qt/window.h"

namespace kortavin::qt {
namespace {

using Table = window::AccessibleTable;
using Cell = Table::Cell;

// Null once the widget, its window or the table is gone.
const QtWindow* WindowOfTable(const QWidget* widget) {
    const QtWindow* const window = widget != nullptr ? QtWindow::Of(widget) : nullptr;
    return window != nullptr && window->Table() != nullptr ? window : nullptr;
}

bool IsIn(const Table& table, Cell cell) {
    return cell.row >= 0 && cell.row < table.TableRows() && cell.column >= 0 &&
           cell.column < table.TableColumns();
}

// One cell, by its place: what is there now.
class CellAccess final : public QAccessibleInterface,
                         public QAccessibleTableCellInterface,
                         public QAccessibleActionInterface {
  public:
    CellAccess(QWidget& widget, Cell cell) : m_widget(&widget), m_cell(cell) {}

    bool isValid() const override { return Place() != nullptr; }
    QObject* object() const override { return nullptr; }
    QAccessibleInterface* parent() const override {
        return m_widget != nullptr ? QAccessible::queryAccessibleInterface(m_widget.data()) : nullptr;
    }
    QWindow* window() const override {
        return m_widget != nullptr ? m_widget->window()->windowHandle() : nullptr;
    }
    QAccessibleInterface* child(int /*index*/) const override { return nullptr; }
    int childCount() const override { return 0; }
    int indexOfChild(const QAccessibleInterface* /*child*/) const override { return -1; }
    QAccessibleInterface* childAt(int /*x*/, int /*y*/) const override { return nullptr; }

    QString text(QAccessible::Text kind) const override {
        const Table* const table = Place();
        const bool isAsked = kind == QAccessible::Name || (kind == QAccessible::Value && !IsHeading());
        return table != nullptr && isAsked ? ToQt(table->TableText(m_cell).View()) : QString();
    }
    void setText(QAccessible::Text /*kind*/, const QString& /*text*/) override {}
    QRect rect() const override {
        const Table* const table = Place();
        if (table == nullptr)
            return {};
        const CRect inClient = table->TableRect(m_cell);
        const CPoint corner = WindowOfTable(m_widget)->ClientToScreen(inClient.TopLeft());
        return inClient.IsRectEmpty() ? QRect() : ToQt(CRect(corner, inClient.Size()));
    }
    QAccessible::Role role() const override {
        const Table* const table = Place();
        if (table != nullptr && m_cell.row < table->HeadingRows())
            return QAccessible::ColumnHeader;
        return IsHeading() ? QAccessible::RowHeader : QAccessible::Cell;
    }
    QAccessible::State state() const override {
        QAccessible::State state;
        const Table* const table = Place();
        if (table == nullptr) {
            state.invalid = true;
            return state;
        }
        const bool isCell = !IsHeading();
        state.focusable = isCell;
        state.focused = m_widget->hasFocus() && table->TableFocus() == m_cell;
        state.selectable = isCell;
        state.selected = table->IsTableCellSelected(m_cell);
        state.editable = table->IsTableCellEditable(m_cell);
        state.readOnly = !state.editable;
        state.invisible = !m_widget->isVisible() || table->TableRect(m_cell).IsRectEmpty();
        state.disabled = !m_widget->isEnabled();
        return state;
    }
    void* interface_cast(QAccessible::InterfaceType type) override {
        if (type == QAccessible::TableCellInterface)
            return static_cast<QAccessibleTableCellInterface*>(this);
        return type == QAccessible::ActionInterface ? static_cast<QAccessibleActionInterface*>(this)
                                                    : nullptr;
    }

    QStringList actionNames() const override {
        return isValid() && !IsHeading() ? QStringList(setFocusAction()) : QStringList();
    }
    void doAction(const QString& name) override {
        if (!actionNames().contains(name) || !m_widget->isEnabled())
            return;
        window::Guarded([this] { Place()->FocusTableCell(m_cell); });
    }
    QStringList keyBindingsForAction(const QString& /*name*/) const override { return {}; }

    bool isSelected() const override { return state().selected; }
    QList<QAccessibleInterface*> columnHeaderCells() const override {
        return Headings(&Table::HeadingRows, [this](int row) { return Cell{row, m_cell.column}; });
    }
    QList<QAccessibleInterface*> rowHeaderCells() const override {
        return Headings(&Table::HeadingColumns, [this](int column) { return Cell{m_cell.row, column}; });
    }
    int columnIndex() const override { return m_cell.column; }
    int rowIndex() const override { return m_cell.row; }
    int columnExtent() const override { return 1; }
    int rowExtent() const override { return 1; }
    QAccessibleInterface* table() const override { return parent(); }

  private:
    Table* Place() const {
        const QtWindow* const window = WindowOfTable(m_widget);
        return window != nullptr && IsIn(*window->Table(), m_cell) ? window->Table() : nullptr;
    }
    bool IsHeading() const {
        const Table* const table = Place();
        return table != nullptr &&
               (m_cell.row < table->HeadingRows() || m_cell.column < table->HeadingColumns());
    }
    template <class CellOf>
    QList<QAccessibleInterface*> Headings(int (Table::*count)() const, CellOf cellOf) const {
        QList<QAccessibleInterface*> headings;
        const Table* const table = Place();
        for (int i = 0; table != nullptr && i < (table->*count)(); ++i)
            headings.append(parent()->tableInterface()->cellAt(cellOf(i).row, cellOf(i).column));
        return headings;
    }

    QPointer<QWidget> m_widget;
    Cell m_cell;
};

// Interfaces of cells are made when they are asked for, and kept until the rows or columns change.
class TableAccess final : public QAccessibleWidget, public QAccessibleTableInterface {
  public:
    explicit TableAccess(QWidget& widget) : QAccessibleWidget(&widget, QAccessible::Table) {}
    ~TableAccess() override { ForgetCells(); }

    void* interface_cast(QAccessible::InterfaceType type) override {
        return type == QAccessible::TableInterface ? static_cast<QAccessibleTableInterface*>(this)
                                                   : QAccessibleWidget::interface_cast(type);
    }

    int childCount() const override {
        return static_cast<int>(std::min<long long>(1LL * rowCount() * columnCount(), INT_MAX));
    }
    QAccessibleInterface* child(int index) const override {
        const int columns = columnCount();
        return index < 0 || columns == 0 ? nullptr : cellAt(index / columns, index % columns);
    }
    int indexOfChild(const QAccessibleInterface* child) const override {
        const auto* const cell = const_cast<QAccessibleInterface*>(child)->tableCellInterface();
        if (cell == nullptr || cell->table() != this)
            return -1;
        const long long index = 1LL * cell->rowIndex() * columnCount() + cell->columnIndex();
        return index < INT_MAX ? static_cast<int>(index) : -1;
    }
    // An open editor and the bars lie over the cells.
    QAccessibleInterface* childAt(int x, int y) const override {
        const QtWindow* const window = WindowOfTable(widget());
        if (window == nullptr)
            return nullptr;
        if (QWidget* const over = widget()->childAt(widget()->mapFromGlobal(QPoint(x, y))); over != nullptr)
            return QAccessible::queryAccessibleInterface(over);
        return At(window->Table()->TableCellAt(window->ScreenToClient({x, y})));
    }
    QAccessibleInterface* focusChild() const override {
        QWidget* const focus = widget()->window()->focusWidget();
        if (focus != nullptr && focus != widget() && widget()->isAncestorOf(focus))
            return QAccessible::queryAccessibleInterface(focus);
        const Table* const table = Shown();
        return table != nullptr && widget()->hasFocus() ? At(table->TableFocus()) : nullptr;
    }

    int rowCount() const override { return Shown() != nullptr ? Shown()->TableRows() : 0; }
    int columnCount() const override { return Shown() != nullptr ? Shown()->TableColumns() : 0; }
    QAccessibleInterface* cellAt(int row, int column) const override { return At(Cell{row, column}); }
    QAccessibleInterface* caption() const override { return nullptr; }
    QAccessibleInterface* summary() const override { return nullptr; }

    QString columnDescription(int column) const override {
        return Shown() != nullptr && Shown()->HeadingRows() > 0 ? TextAt({0, column}) : QString();
    }
    QString rowDescription(int row) const override {
        return Shown() != nullptr && Shown()->HeadingColumns() > 0 ? TextAt({row, 0}) : QString();
    }

    int selectedCellCount() const override {
        int count = 0;
        ForSelectedCells([&count](Cell) { return ++count < INT_MAX; });
        return count;
    }
    // The first ones only: all cells of a table may be too many to make something for each.
    QList<QAccessibleInterface*> selectedCells() const override {
        constexpr int kMost = 10'000;
        QList<QAccessibleInterface*> cells;
        ForSelectedCells([&](Cell cell) {
            cells.append(At(cell));
            return cells.size() < kMost;
        });
        return cells;
    }
    bool isRowSelected(int row) const override {
        const Table* const table = Shown();
        return table != nullptr && row >= table->HeadingRows() && row < table->TableRows() &&
               AllSelected(table->HeadingColumns(), table->TableColumns(), [row](int column) {
                   return Cell{row, column};
               });
    }
    bool isColumnSelected(int column) const override {
        const Table* const table = Shown();
        return table != nullptr && column >= table->HeadingColumns() && column < table->TableColumns() &&
               AllSelected(table->HeadingRows(), table->TableRows(), [column](int row) {
                   return Cell{row, column};
               });
    }
    QList<int> selectedRows() const override {
        return Selected(rowCount(), [this](int row) { return isRowSelected(row); });
    }
    QList<int> selectedColumns() const override {
        return Selected(columnCount(), [this](int column) { return isColumnSelected(column); });
    }
    int selectedRowCount() const override { return static_cast<int>(selectedRows().size()); }
    int selectedColumnCount() const override { return static_cast<int>(selectedColumns().size()); }
    bool selectRow(int /*row*/) override { return false; }
    bool selectColumn(int /*column*/) override { return false; }
    bool unselectRow(int /*row*/) override { return false; }
    bool unselectColumn(int /*column*/) override { return false; }
    void modelChange(QAccessibleTableModelChangeEvent* /*event*/) override { ForgetCells(); }

  private:
    const Table* Shown() const {
        const QtWindow* const window = WindowOfTable(widget());
        return window != nullptr ? window->Table() : nullptr;
    }
    QString TextAt(Cell cell) const {
        return IsIn(*Shown(), cell) ? ToQt(Shown()->TableText(cell).View()) : QString();
    }

    QAccessibleInterface* At(std::optional<Cell> cell) const {
        if (!cell || Shown() == nullptr || !IsIn(*Shown(), *cell))
            return nullptr;
        auto& id = m_cells[{cell->row, cell->column}];
        if (id == 0)
            id = QAccessible::registerAccessibleInterface(new CellAccess(*widget(), *cell));
        return QAccessible::accessibleInterface(id);
    }
    void ForgetCells() {
        for (const auto& [place, id] : std::exchange(m_cells, {}))
            QAccessible::deleteAccessibleInterface(id);
    }

    // Until `body` answers false.
    template <class Body>
    void ForSelectedCells(Body body) const {
        const Table* const table = Shown();
        if (table == nullptr)
            return;
        for (int row = table->HeadingRows(); row < table->TableRows(); ++row)
            for (int column = table->HeadingColumns(); column < table->TableColumns(); ++column)
                if (table->IsTableCellSelected({row, column}) && !body(Cell{row, column}))
                    return;
    }
    template <class CellOf>
    bool AllSelected(int first, int end, CellOf cellOf) const {
        for (int i = first; i < end; ++i)
            if (!Shown()->IsTableCellSelected(cellOf(i)))
                return false;
        return first < end;
    }
    template <class IsSelected>
    static QList<int> Selected(int count, IsSelected isSelected) {
        QList<int> selected;
        for (int i = 0; i < count; ++i)
            if (isSelected(i))
                selected.append(i);
        return selected;
    }

    mutable std::map<std::pair<int, int>, QAccessible::Id> m_cells;  // by row and column
};

QAccessibleInterface* MakeTableAccess(const QString& /*className*/, QObject* object) {
    auto* const widget = qobject_cast<QWidget*>(object);
    return WindowOfTable(widget) != nullptr ? new TableAccess(*widget) : nullptr;
}

void TellOfCell(QWidget& widget, QAccessible::Event what, Cell cell) {
    auto* const access = QAccessible::queryAccessibleInterface(&widget);
    auto* const table = access != nullptr ? access->tableInterface() : nullptr;
    auto* const changed = table != nullptr ? table->cellAt(cell.row, cell.column) : nullptr;
    if (changed == nullptr)
        return;
    QAccessibleEvent event(changed, what);
    QAccessible::updateAccessibility(&event);
}

}  // namespace

void InstallTableAccess() {
    QAccessible::installFactory(&MakeTableAccess);
}

void ForgetAccessible(QWidget& widget) {
    if (auto* const made = QAccessible::queryAccessibleInterface(&widget); made != nullptr)
        QAccessible::deleteAccessibleInterface(QAccessible::uniqueId(made));
}

void TellTableChange(QWidget& widget, window::TableChange change, Cell cell) {
    if (!QAccessible::isActive())
        return;
    switch (change) {
        case window::TableChange::Focus:
            // Without the keyboard's focus it is nowhere near the user.
            if (widget.hasFocus())
                TellOfCell(widget, QAccessible::Focus, cell);
            break;
        case window::TableChange::Text:
            TellOfCell(widget, QAccessible::NameChanged, cell);
            break;
        case window::TableChange::Selection:
            TellOfCell(widget, QAccessible::Selection, cell);
            break;
        case window::TableChange::Layout: {
            QAccessibleTableModelChangeEvent event(&widget, QAccessibleTableModelChangeEvent::ModelReset);
            QAccessible::updateAccessibility(&event);
            break;
        }
    }
}

void TellFocusLater(QtWindow& window) {
    const auto tell = [&window] {
        const auto focus = window.Table() != nullptr ? window.Table()->TableFocus() : std::nullopt;
        if (focus)
            window.TellTableChange(window::TableChange::Focus, *focus);
    };
    if (window.Table() != nullptr && QAccessible::isActive())
        QMetaObject::invokeMethod(&window, tell, Qt::QueuedConnection);
}

}  // namespace kortavin::qt
