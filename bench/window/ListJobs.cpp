#include "window/ListJobs.h"

#include "Floors.h"
#include "Lines.h"

#include "app/MainModule.h"

#include <fstream>
#include <stdexcept>

namespace quavernet::bench {

namespace {

constexpr const char* Orders[] = {"performer", "title", "length", "size", "quality", "format"};
constexpr Wanted TwiceTheFloor{.ratio = 2};
constexpr Wanted HardlyMoreThanPainted{.over = 0.003};
constexpr std::size_t RowsOfAShortFilter = 100'000; ///< Of more rows a genre is a list of its own.
constexpr Wanted CombosFilled{.limit = 0.01};
constexpr Wanted PeakMegabytes{.limit = 600};

/// One entry of a combo, as a filter of the list.
class Combo {
public:
    Combo(RealWindow& window, const char* combo, int index, const std::string& name)
        : m_window(window), m_box(window.Control<QComboBox>(combo)), m_index(index),
          m_clause(" and F." + name + "_id = " + m_box.itemData(index).toString().toStdString()) {}

    const std::string& Clause() const { return m_clause; }
    void Choose() const { m_box.setCurrentIndex(m_index); }

    /// Shows the list of an entry, until nothing is left to paint.
    void Rest(int index) const {
        if (m_box.currentIndex() != index) {
            m_window.UntilPainted([&] { m_box.setCurrentIndex(index); });
        }
        m_window.Rest();
    }

private:
    RealWindow& m_window;
    QComboBox& m_box;
    int m_index;
    std::string m_clause;
};

class Lists {
public:
    Lists(RealWindow& window, int rounds)
        : m_window(window), m_rounds(rounds), m_library(LibraryPath()),
          m_rows(window.Grid().Model().Rows().Count()), m_size(", " + std::to_string(m_rows) + " rows") {}

    /// Prints a job whose floor reads the rows of AllRows with `filter` after it.
    void Job(const std::string& name, const std::function<void()>& prepare,
             const std::function<void()>& action, const std::string& filter) {
        Job(name, TwiceTheFloor, {prepare, [&] { m_window.UntilPainted(action); }},
            {nullptr, [&] { m_found = m_library.ReadAll(AllRows + filter); }});
    }
    /// As Job, for an action whose result must have as many rows as its floor has read.
    void FilterJob(const std::string& name, const std::function<void()>& prepare,
                   const std::function<void()>& action, const std::string& filter) {
        Job(name, prepare, action, filter);
        RequireListed(m_found);
    }
    void ComboJob(const char* combo, int index, const std::string& name) {
        const Combo filter(m_window, combo, index, name);
        FilterJob(
            "filter by " + name, [&] { filter.Rest(0); }, [&] { filter.Choose(); }, filter.Clause());
        filter.Rest(0);
    }
    /// A filter that leaves few rows is hardly more than their painting, which is in the floor.
    void FewRowsJob(const char* combo, int index, const std::string& name) {
        const Combo filter(m_window, combo, index, name);
        const auto paint = [&] { m_window.UntilPainted([&] { filter.Choose(); }); };
        const auto bare = [&] {
            m_found = m_library.ReadAll(AllRows + filter.Clause());
            m_window.PaintAgain();
        };
        const Wanted& wanted = m_rows <= RowsOfAShortFilter ? HardlyMoreThanPainted : TwiceTheFloor;
        Job("filter by " + name + ", floor: with painting", wanted, {[&] { filter.Rest(0); }, paint},
            {[&] { filter.Rest(index); }, bare});
        RequireListed(m_found);
        filter.Rest(0);
    }
    void PaintJob() {
        Print(Measure("one painting of the rows in view" + m_size, 0, {}, m_rounds,
                      {nullptr, [&] { m_window.PaintAgain(); }}, {}));
    }
    void FillCombos() {
        FilterRow& filter = m_window.Form().Panes().Filter();
        Print(Measure("filling the three combos, 5000 albums, " + std::to_string(m_rows) + " files", 0,
                      CombosFilled, m_rounds,
                      {WriteIntoLibrary, // As a scan does before it fills them.
                       [&] {
                           filter.FillDriveCombo();
                           filter.FillGenreCombo();
                           filter.FillAlbumCombo();
                       }},
                      {nullptr, [&] {
                           m_library.ReadAll("select Drive, Drive_id from Drive where Drive_id in "
                                             "(select Drive_id from Files)");
                           m_library.ReadAll("select Genre, Genre_id from Genres where Genre_id in "
                                             "(select Genre_id from Files)");
                           m_library.ReadAll("select Name, Album_id from Albums where Album_id in "
                                             "(select Album_id from Files)");
                       }}));
    }
    void RequireListed(std::size_t rows) const {
        const std::size_t listed = m_window.Grid().Model().Rows().Count();
        if (listed != rows || rows == 0) {
            throw std::runtime_error("listed " + std::to_string(listed) + " rows, not " +
                                     std::to_string(rows));
        }
    }

private:
    void Job(const std::string& name, const Wanted& wanted, const Timed& painted, const Timed& floor) {
        const Line line = Measure(name + m_size, 0, wanted, m_rounds, painted, floor);
        m_window.RequireShown();
        Print(line);
    }

    RealWindow& m_window;
    int m_rounds;
    BareLibrary m_library;
    std::size_t m_rows;
    std::string m_size;
    std::size_t m_found = 0;
};

void SortBy(RealWindow& window, int column) {
    emit window.Grid().DoubleClicked(column, 0); // As a double click on the header.
}

void Search(RealWindow& window) {
    window.Control<QPushButton>("cmdSearch").click();
}

double PeakOfThisProcess() {
    std::ifstream status("/proc/self/status");
    for (std::string word; status >> word;) {
        if (word == "VmHWM:") {
            double kilobytes = 0;
            status >> kilobytes;
            return kilobytes / 1024;
        }
    }
    throw std::runtime_error("the system does not tell the peak of memory");
}

} // namespace

void ListJobs(RealWindow& window, int rounds) {
    Lists lists(window, rounds);
    for (int column = 0; column < ListColumnCount; ++column) {
        lists.FilterJob(
            std::string("list by ") + Orders[column], nullptr, [&] { SortBy(window, column); }, "");
    }
    SortBy(window, 0);
    auto& text = window.Control<QLineEdit>("txtSearch");
    text.setText(QStringLiteral("nacht"));
    lists.FilterJob(
        "search", nullptr, [&] { Search(window); },
        " and (I.Interpret like '%nacht%' or T.Name like '%nacht%')");
    text.clear();
    lists.Job(
        "letter", nullptr, [&] { emit window.Control<LetterLabel>("lblB").Clicked(); }, "");
    emit window.Control<LetterLabel>("lblAll").Clicked();
    lists.ComboJob("cboDrive", 1, "drive");
    lists.FewRowsJob("cboGenre", 17, "genre");
    lists.FewRowsJob("cboAlbum", 2500, "album");
    lists.PaintJob();
    lists.FillCombos();
}

void ListMemory(RealWindow& window) {
    const std::size_t rows = window.Grid().Model().Rows().Count();
    for (int column = 0; column < ListColumnCount; ++column) {
        window.UntilPainted([&] { SortBy(window, column); });
    }
    window.Control<QLineEdit>("txtSearch").setText(QStringLiteral("nacht"));
    window.UntilPainted([&] { Search(window); });
    const Line line{"peak of memory, lists of " + std::to_string(rows) + " rows",
                    "MB",
                    PeakOfThisProcess(),
                    0,
                    0,
                    PeakMegabytes};
    Print(line);
}

} // namespace quavernet::bench
