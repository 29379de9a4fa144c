// Measures the grid beside Qt's own tables on the same texts and prints the ratios. Runs offscreen unless
// told otherwise. Usage: gridbench [OUT_JSON]

#include <malloc.h>

#include <QAbstractTableModel>
#include <QApplication>
#include <QElapsedTimer>
#include <QHeaderView>
#include <QScrollBar>
#include <QSortFilterProxyModel>
#include <QTableView>
#include <QTableWidget>
#include <algorithm>
#include <fstream>
#include <functional>
#include <nlohmann/json.hpp>
#include <random>

#include "kortavin/grid/gridctrl.h"
#include "kortavin/qt/qtwidgets.h"

namespace {

constexpr int kColumns = 10;
constexpr int kCellRows = 100'000;    // a million cells
constexpr int kTallRows = 1'000'000;  // for what must not depend on the rows
constexpr QSize kWindow(1200, 800);

std::string TextOf(int row, int col) {
    static constexpr std::uint32_t kSpread = 2654435761U;
    char text[16];
    std::snprintf(text, sizeof text, "%08X-%d",
                  static_cast<unsigned>(static_cast<std::uint32_t>(row * 16 + col) * kSpread), col);
    return text;
}

// Made before anything is measured.
const std::vector<std::string>& Texts() {
    static const auto texts = [] {
        std::vector<std::string> made;
        for (int row = 0; row < kCellRows; ++row)
            for (int col = 0; col < kColumns; ++col)
                made.push_back(TextOf(row, col));
        return made;
    }();
    return texts;
}

const std::string& TextAt(int row, int col) {
    return Texts()[static_cast<std::size_t>(row % kCellRows) * kColumns + static_cast<std::size_t>(col)];
}

// Median seconds of the runs; the first one is not counted.
double Median(int runs, const std::function<void()>& body) {
    std::vector<double> seconds;
    for (int run = 0; run <= runs; ++run) {
        QElapsedTimer timer;
        timer.start();
        body();
        if (run > 0)
            seconds.push_back(static_cast<double>(timer.nsecsElapsed()) * 1e-9);
    }
    std::nth_element(seconds.begin(), seconds.begin() + runs / 2, seconds.end());
    return seconds[static_cast<std::size_t>(runs / 2)];
}

std::size_t UsedBytes() {
    const auto info = mallinfo2();
    return info.uordblks + info.hblkhd;
}

void Fill(CGridCtrl& grid, int rows) {
    grid.SetColumnCount(kColumns);
    grid.SetRowCount(rows);
    for (int row = 0; row < rows; ++row)
        for (int col = 0; col < kColumns; ++col)
            grid.SetItemText(row, col, TextAt(row, col).c_str());
}

void Fill(QTableWidget& table, int rows) {
    table.setColumnCount(kColumns);
    table.setRowCount(rows);
    for (int row = 0; row < rows; ++row)
        for (int col = 0; col < kColumns; ++col)
            table.setItem(row, col, new QTableWidgetItem(QString::fromLatin1(TextAt(row, col).c_str())));
}

class Strings : public QAbstractTableModel {
  public:
    explicit Strings(int rows) : m_rows(rows) {
        for (int row = 0; row < std::min(rows, kCellRows); ++row)
            for (int col = 0; col < kColumns; ++col)
                m_texts.push_back(QString::fromLatin1(TextAt(row, col).c_str()));
    }
    int rowCount(const QModelIndex& = {}) const override { return m_rows; }
    int columnCount(const QModelIndex& = {}) const override { return kColumns; }
    QVariant data(const QModelIndex& index, int role) const override {
        return role == Qt::DisplayRole
                   ? QVariant(m_texts[index.row() % kCellRows * kColumns + index.column()])
                   : QVariant();
    }

  private:
    int m_rows;
    QList<QString> m_texts;
};

class Results {
  public:
    // `ratio`: how many times as long the peer takes, or as much.
    void Add(const std::string& what, double ours, double peers, const std::string& peer, double goal) {
        const double ratio = peers / ours;
        std::printf("%-42s %12.6g %12.6g  %-22s %8.2f (goal %.4g)\n", what.c_str(), ours, peers, peer.c_str(),
                    ratio, goal);
        m_json[what] = {{"ours", ours}, {"peer", peer}, {"peers", peers}, {"ratio", ratio}, {"goal", goal}};
    }
    void AddPlain(const std::string& what, double value, const std::string& goal) {
        std::printf("%-42s %12.6g  goal %s\n", what.c_str(), value, goal.c_str());
        m_json[what] = {{"ours", value}, {"goal", goal}};
    }
    void Write(const char* path) const { std::ofstream(path) << m_json.dump(2) << '\n'; }

  private:
    nlohmann::json m_json;
};

void MeasureBuilding(Results& results) {
    const auto usedBy = [](auto make) {
        const std::size_t before = UsedBytes();
        const auto made = make();
        return static_cast<double>(UsedBytes() - before) / (double{kCellRows} * kColumns);
    };
    const auto grid = [] {
        auto made = std::make_unique<CGridCtrl>();
        Fill(*made, kCellRows);
        return made;
    };
    const auto table = [] {
        auto made = std::make_unique<QTableWidget>();
        Fill(*made, kCellRows);
        return made;
    };
    results.AddPlain("bytes a cell", usedBy(grid), "at most 120");
    results.AddPlain("bytes a cell of QTableWidget", usedBy(table), "none");
    results.Add("seconds to build a million cells", Median(3, grid), Median(3, table), "QTableWidget", 3.5);
}

struct Shown {
    QWidget host;
    CGridCtrl grid;
    explicit Shown(int rows) {
        host.resize(kWindow);
        grid.SetColumnCount(kColumns);
        grid.SetRowCount(rows);
        for (int row = 0; row < std::min(rows, kCellRows); ++row)
            for (int col = 0; col < kColumns; ++col)
                grid.SetItemText(row, col, TextAt(row, col).c_str());
        kortavin::qt::AttachTo(grid, host);
        for (int row = 0; row < rows; ++row)
            grid.SetRowHeight(row, 24);
        for (int col = 0; col < kColumns; ++col)
            grid.SetColumnWidth(col, 110);
        host.setAutoFillBackground(true);
        host.show();
        QApplication::processEvents();
    }
};

struct ShownView {
    Strings model;
    QTableView view;
    explicit ShownView(int rows) : model(rows) {
        view.setModel(&model);
        view.resize(kWindow);
        view.verticalHeader()->hide();
        view.verticalHeader()->setDefaultSectionSize(24);
        view.horizontalHeader()->hide();
        view.horizontalHeader()->setDefaultSectionSize(110);
        view.setVerticalScrollMode(QAbstractItemView::ScrollPerPixel);
        view.show();
        QApplication::processEvents();
    }
};

void MeasurePainting(Results& results) {
    Shown ours(kCellRows);
    ShownView peers(kCellRows);
    constexpr int kFrames = 20;
    const double frame = Median(9, [&] {
        for (int i = 0; i < kFrames; ++i)
            ours.host.repaint();
    });
    const double peerFrame = Median(9, [&] {
        for (int i = 0; i < kFrames; ++i)
            peers.view.viewport()->repaint();
    });
    results.Add("seconds to paint a frame", frame / kFrames, peerFrame / kFrames, "QTableView", 1.7);

    constexpr int kLines = 60;
    const double lines = Median(9, [&] {
        ours.grid.SendMessage(WM_VSCROLL, SB_TOP);
        for (int i = 0; i < kLines; ++i) {
            ours.grid.SendMessage(WM_VSCROLL, SB_LINEDOWN);
            ours.grid.UpdateWindow();
        }
    });
    const double peerLines = Median(9, [&] {
        peers.view.verticalScrollBar()->setValue(0);
        for (int i = 1; i <= kLines; ++i) {
            peers.view.verticalScrollBar()->setValue(i * 24);
            QApplication::processEvents();
        }
    });
    results.Add("seconds to scroll by a line", lines / kLines, peerLines / kLines, "QTableView", 1.15);
}

void MeasureManyRows(Results& results) {
    Shown ours(kTallRows);
    ShownView peers(kTallRows);
    std::mt19937 random(1);
    const auto anyRow = [&] { return std::uniform_int_distribution<int>(0, kTallRows - 1)(random); };
    ours.grid.SetRedraw(FALSE);
    peers.view.setUpdatesEnabled(false);
    peers.view.verticalHeader()->setUpdatesEnabled(false);
    constexpr int kChanges = 1000;
    // A change counts with the first answer that depends on it, which a lazy table works for.
    CPoint place;
    int sum = 0;
    const double change = Median(5, [&] {
        for (int i = 0; i < kChanges; ++i) {
            ours.grid.SetRowHeight(anyRow(), 20 + i % 10);
            sum += ours.grid.GetCellTopLeft(kTallRows - 1, 0, &place);
        }
    });
    constexpr int kPeerChanges = 20;
    const double peerChange = Median(3, [&] {
        for (int i = 0; i < kPeerChanges; ++i) {
            peers.view.setRowHeight(anyRow(), 20 + i % 10);
            sum += peers.view.rowViewportPosition(kTallRows - 1);
        }
    });
    results.Add("seconds to change a row's height", change / kChanges, peerChange / kPeerChanges,
                "QTableView", 100);

    ours.grid.SetRedraw(TRUE, TRUE);
    ours.grid.SetScrollPosition(SB_VERT, 17'000'123);
    constexpr int kAsked = 100'000;
    const double first = Median(5, [&] {
        for (int i = 0; i < kAsked; ++i)
            sum += ours.grid.GetFirstScrollCell().row;
    });
    results.AddPlain("microseconds to find the first row", first / kAsked * 1e6, "under 1");
    const auto hit = [&](CGridCtrl& grid) {
        return Median(5,
                      [&] {
                          for (int i = 0; i < kAsked; ++i)
                              sum += grid.HitTestCell({i % 1000, i % 700}).row;
                      }) /
               kAsked * 1e6;
    };
    Shown few(100);
    results.AddPlain("microseconds of a hit test, a million rows", hit(ours.grid), "that of few rows");
    results.AddPlain("microseconds of a hit test, a hundred rows", hit(few.grid), sum == 0 ? "" : "none");
}

void MeasureSorting(Results& results) {
    CGridCtrl grid;
    Fill(grid, kCellRows);
    BOOL ascending = TRUE;
    int column = 0;
    const double ours = Median(5, [&] { grid.SortRowsByText(column++ % kColumns, ascending = !ascending); });
    Strings model(kCellRows);
    QSortFilterProxyModel proxy;
    proxy.setSourceModel(&model);
    const double peers = Median(5, [&] {
        ascending = !ascending;
        proxy.sort(column++ % kColumns, ascending ? Qt::AscendingOrder : Qt::DescendingOrder);
    });
    results.Add("seconds to sort 100,000 rows", ours, peers, "QSortFilterProxyModel", 5);
}

}  // namespace

int main(int argc, char** argv) {
    if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    const QApplication application(argc, argv);
    Texts();
    Results results;
    std::printf("%-42s %12s %12s  %-22s %8s\n", "", "ours", "peer's", "peer", "ratio");
    MeasureBuilding(results);
    MeasurePainting(results);
    MeasureManyRows(results);
    MeasureSorting(results);
    if (argc > 1)
        results.Write(argv[1]);
}
