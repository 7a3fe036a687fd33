#include "window/ChartJobs.h"

#include "BareStatement.h"
#include "Floors.h"
#include "Lines.h"

#include "app/MainModule.h"
#include "extras/Chart.h"
#include "extras/frmChart.h"

#include <QTableView>

#include <stdexcept>

namespace quavernet::bench {

namespace {

constexpr std::size_t ListedAtFirst = 10; // As many as a new user sees.
constexpr Wanted ChartLimits{.ratio = 2};
constexpr Wanted PaintedSoon{.limit = 0.1};

/// One of the two lists.
struct List {
    const char* Name;
    const char* Key; ///< On the toolbar.
    bool MainModule::*Flag;
    const char* Statement; ///< What the bare engine runs for it.
};

constexpr List ChartLists[] = {
    {"most played", "top", &MainModule::ChartShowTop,
     "select Name, Hits, Path, File_id from Files order by Hits desc, DateLastModified desc, rowid limit 10"},
    {"newest", "date", &MainModule::ChartShowNew,
     "select Name, DateLastModified, Path, File_id from Files order by DateLastModified desc, rowid limit "
     "10"}};

void RequireTen(std::size_t rows) {
    if (rows != ListedAtFirst) {
        throw std::runtime_error("the charts have " + std::to_string(rows) + " rows");
    }
}

void Fill(const List& list) {
    mainModule.*list.Flag = true;
    Chart chart;
    chart.Form_Load();
    RequireTen(chart.FillChart().Lines.size());
}

void ReadFirst(BareLibrary& library, const List& list) {
    Statement statement(library.Handle(), list.Statement);
    std::size_t rows = 0;
    for (; statement.Step(); ++rows) {
        (void)statement.Text(0);
        (void)statement.Text(1);
        (void)statement.Text(2);
        (void)statement.Integer(3);
    }
    RequireTen(rows);
}

void UntilShown(RealWindow& window, const List& list) {
    auto& grid = *window.Form().findChild<frmChart*>()->findChild<QTableView*>(QStringLiteral("grdChart"));
    window.UntilPainted([&] { window.Control<QAction>(list.Key).trigger(); }, grid);
    RequireTen(static_cast<std::size_t>(grid.model()->rowCount()));
}

} // namespace

void ChartJobs(RealWindow& window, int rounds) {
    mainModule.Connection->Execute("Update Files Set Hits = (File_id * 7919) % 50");
    mainModule.Connection->Commit();
    BareLibrary library(LibraryPath());
    const std::string size = ", " + std::to_string(window.Grid().Model().Rows().Count()) + " files";
    for (const List& list : ChartLists) {
        Print(Measure(std::string("charts, ") + list.Name + size, 0, ChartLimits, rounds,
                      {nullptr, [&] { Fill(list); }}, {nullptr, [&] { ReadFirst(library, list); }}));
    }
    for (const List& list : ChartLists) {
        window.Control<QAction>(list.Key).trigger();
        const auto close = [&] { window.Form().findChild<frmChart*>()->close(); };
        Print(Measure(std::string("charts to the painted window, ") + list.Name + size, 0, PaintedSoon,
                      rounds, {close, [&] { UntilShown(window, list); }}, {}));
        close();
    }
}

} // namespace quavernet::bench
