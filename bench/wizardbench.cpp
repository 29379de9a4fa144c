// Measures how soon the query wizard shows on a database, and how soon the list of a cell that offers all its
// tables opens. Runs offscreen unless told otherwise. Usage: wizardbench CONNECTION-STRING [OUT_JSON]

#include <QApplication>
#include <QElapsedTimer>
#include <QListView>
#include <QPaintEvent>
#include <algorithm>
#include <cstdio>
#include <fstream>
#include <nlohmann/json.hpp>
#include <vector>

#include "kortavin/qt/qtwidgets.h"
#include "kortavin/service/querysql.h"
#include "kortavin/window/combobox.h"
#include "kortavin/wizard/cataloggrids.h"

namespace {

constexpr int kRuns = 5;

double Median(std::vector<double> times) {
    std::sort(times.begin(), times.end());
    return times[times.size() / 2];
}

double Milliseconds(const QElapsedTimer& timer) {
    return static_cast<double>(timer.nsecsElapsed()) / 1e6;
}

// Notes when the wizard's lists are first painted, and closes it then.
class FirstPaint : public QObject {
  public:
    explicit FirstPaint(const QElapsedTimer& timer) : m_timer(timer) { qApp->installEventFilter(this); }
    double Time() const { return m_time; }

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override {
        const auto* const widget = qobject_cast<const QWidget*>(watched);
        if (event->type() == QEvent::Paint && m_time < 0 && widget != nullptr &&
            qobject_cast<QListView*>(widget->parentWidget()) != nullptr) {
            m_time = Milliseconds(m_timer);
            QMetaObject::invokeMethod(widget->window(), "reject", Qt::QueuedConnection);
        }
        return false;
    }

  private:
    const QElapsedTimer& m_timer;
    double m_time = -1;
};

// On a connection that was just opened, as users mostly do it.
double TimeOpening(const char* connection) {
    std::vector<double> times;
    for (int run = 0; run <= kRuns; ++run) {
        CGeoDatabase database;
        database.Open(connection);
        CQuerySql query(&database);
        CString sql;
        QElapsedTimer timer;
        const FirstPaint painted(timer);
        timer.start();
        query.ConstructQuery(sql);
        if (run > 0)
            times.push_back(painted.Time());
    }
    return Median(times);
}

double TimeList(CGeoDatabase& database) {
    CStringArray names;
    database.GetAllTables(names);
    QWidget form;
    form.resize(600, 400);
    form.show();
    std::vector<double> times;
    for (int run = 0; run <= kRuns; ++run) {
        CTableFieldGrid grid;
        grid.m_pSelTables = &names;
        grid.Create({0, 0, 500, 300}, kortavin::qt::WindowOf(&form), 1);
        grid.SetRowCount(3);
        grid.SetFixedRowCount(1);
        grid.SetColumnCount(2);
        QApplication::processEvents();
        QElapsedTimer timer;
        timer.start();
        grid.StartCellEdit(1, 0, VK_LBUTTON);
        if (CWnd* const editor = grid.GetDlgItem(GridEditorControlId); editor != nullptr)
            static_cast<CComboBox*>(editor)->ShowDropDown();
        QApplication::processEvents();
        if (run > 0)
            times.push_back(Milliseconds(timer));
    }
    return Median(times);
}

}  // namespace

int main(int argc, char** argv) {
    if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    const QApplication application(argc, argv);
    if (argc < 2) {
        std::fputs("usage: wizardbench CONNECTION-STRING [OUT_JSON]\n", stderr);
        return 2;
    }
    try {
        const double opening = TimeOpening(argv[1]);
        CGeoDatabase database;
        database.Open(argv[1]);
        const double list = TimeList(database);
        std::printf("%.1f ms until the wizard shows, %.1f ms until a cell's list does\n", opening, list);
        if (argc > 2)
            std::ofstream(argv[2]) << nlohmann::json{{"opening_ms", opening}, {"list_ms", list}};
    } catch (const CException& error) {
        std::fprintf(stderr, "%s\n", error.what());
        return 1;
    }
    return 0;
}
